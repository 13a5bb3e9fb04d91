// Number spelling exports: cSpellNumber and cSpellMoney. The words are
// strings by value, read up to their first zero byte; the work is done by
// the speller (convert/speller.h), which documents the limits.
#include "convert/speller.h"
#include "frame/frame.h"

using namespace brindle::frame;

BRINDLE_EXPORT(BSTR) cSpellNumber(double Value, int16_t Digits, BSTR Word) {
    return guarded_string(
        [&] { return new_string(brindle::convert::spell_number(Value, Digits, StrArg::by_val(Word).text())); });
}

BRINDLE_EXPORT(BSTR) cSpellMoney(double Value, BSTR CurrencyName, BSTR CentsName) {
    return guarded_string([&] {
        return new_string(brindle::convert::spell_money(Value, StrArg::by_val(CurrencyName).text(),
                                                        StrArg::by_val(CentsName).text()));
    });
}
