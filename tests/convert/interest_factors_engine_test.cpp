// Interest factors against textbook values worked by hand and the identities
// that tie the six factors together.
#include "convert/interest_factors.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace brindle::convert;
using K = InterestFactor;

TEST(InterestFactorsEngine, DiscreteKnownAnswers) {
    // 10 % over 2 periods: (1.1)^2 = 1.21; an annuity of 1 grows to 2.1.
    EXPECT_DOUBLE_EQ(discrete_factor(K::p_to_f, 0.1, 2), 1.21);
    EXPECT_DOUBLE_EQ(discrete_factor(K::f_to_p, 0.1, 2), 1.0 / 1.21);
    EXPECT_DOUBLE_EQ(discrete_factor(K::a_to_f, 0.1, 2), 2.1);
    EXPECT_NEAR(discrete_factor(K::f_to_a, 0.1, 2), 1.0 / 2.1, 1e-15);
    EXPECT_NEAR(discrete_factor(K::a_to_p, 0.1, 2), 1 / 1.1 + 1 / 1.21, 1e-12);
    EXPECT_NEAR(discrete_factor(K::p_to_a, 0.1, 2), 1 / (1 / 1.1 + 1 / 1.21), 1e-12);
}

TEST(InterestFactorsEngine, IdentitiesHoldForBothCompoundings) {
    for (double rate : {0.005, 0.07, 0.25, -0.03}) {
        for (int16_t n : {int16_t{1}, int16_t{12}, int16_t{360}}) {
            for (auto f : {discrete_factor, continuous_factor}) {
                SCOPED_TRACE(testing::Message() << rate << " " << n);
                EXPECT_NEAR(f(K::p_to_f, rate, n) * f(K::f_to_p, rate, n), 1.0, 1e-9);
                EXPECT_NEAR(f(K::a_to_f, rate, n) * f(K::f_to_a, rate, n), 1.0, 1e-9);
                EXPECT_NEAR(f(K::a_to_p, rate, n) * f(K::p_to_a, rate, n), 1.0, 1e-9);
                // Present value of the annuity is its future value discounted.
                EXPECT_NEAR(f(K::a_to_p, rate, n), f(K::a_to_f, rate, n) * f(K::f_to_p, rate, n),
                            1e-9 * f(K::a_to_f, rate, n));
            }
        }
    }
    // One period of continuous compounding: the annuity factor is 1.
    EXPECT_NEAR(continuous_factor(K::a_to_f, 0.08, 1), 1.0, 1e-12);
}

TEST(InterestFactorsEngine, ContinuousUsesTheRoundedConstant) {
    // e^(i n) with e = 2.718281828459, which differs from exp() in the 12th digit.
    const double rounded = std::pow(2.718281828459, 0.05 * 40);
    EXPECT_DOUBLE_EQ(continuous_factor(K::p_to_f, 0.05, 40), rounded);
    EXPECT_NEAR(continuous_factor(K::p_to_f, 0.05, 40), std::exp(2.0), 1e-10);
}

TEST(InterestFactorsEngine, ZeroRateOrNoPeriodsIsRefused) {
    for (auto kind : {K::p_to_f, K::f_to_p, K::a_to_f, K::f_to_a, K::a_to_p, K::p_to_a}) {
        EXPECT_EQ(discrete_factor(kind, 0.0, 5), -1.0);
        EXPECT_EQ(discrete_factor(kind, 0.1, 0), -1.0);
        EXPECT_EQ(continuous_factor(kind, 0.0, 5), -1.0);
        EXPECT_EQ(continuous_factor(kind, 0.1, -3), -1.0);
    }
}
