// LZARI as published, with our longest match of 80. The trees, the model and
// the coder make the same decisions as the 1989 program, since its output is
// the format; arithmetic is on 32-bit unsigned numbers as on the machines it
// was written for (the products never exceed 2^32).
//
// Where the time goes: the tree descent (one unpredictable branch per node)
// and the coder's bit-at-a-time renormalisation. The descent loads both
// children and the first bytes of both before it knows which way it goes, so
// a mispredicted turn finds its next comparison ready; the coder moves all
// the leading bits that its bounds share in one step.
#include "compress/lzari.h"

#include <array>
#include <bit>
#include <cstring>
#include <memory>
#include <vector>

namespace brindle::compress {

namespace {

constexpr int N = 4096;      // ring buffer
constexpr int F = 80;        // longest match
constexpr int THRESHOLD = 2; // matches this short go as literals
constexpr int NIL = N;       // no node
constexpr int N_CHAR = 256 - THRESHOLD + F; // 334 symbols

constexpr int M = 15; // coder precision: bounds are M + 2 = 17-bit numbers
constexpr uint32_t Q1 = 1u << M;
constexpr uint32_t Q2 = 2 * Q1;
constexpr uint32_t Q3 = 3 * Q1;
constexpr uint32_t Q4 = 4 * Q1;
constexpr uint32_t MAX_CUM = Q1 - 1;

// How far past the end of the input the decoder may read before it gives up.
constexpr int kMaxBytesPastEnd = 64;

// Positions have a fixed model, built from the top: near positions are the
// more likely. kPositionCum[i] is the total frequency of positions i..N-1.
using PositionCum = std::array<uint32_t, N + 1>;
constexpr PositionCum make_position_cum() {
    PositionCum cum{};
    cum[N] = 0;
    for (int i = N; i >= 1; i--)
        cum[i - 1] = cum[i] + 10000 / (i + 200);
    return cum;
}
constexpr PositionCum kPositionCum = make_position_cum();
// A constant divisor: the position steps divide by multiplication.
constexpr uint32_t kPositionTotal = kPositionCum[0];
static_assert(kPositionTotal < Q1, "products must stay below 2^32");

// The first k in [from, to) with cum[k] <= x, or `to` if there is none, for
// a cumulative table that falls as k grows.
template <typename Cum>
int first_at_or_below(const Cum &cum, int from, int to, uint32_t x) {
    while (from < to) {
        const int k = (from + to) / 2;
        if (cum[k] > x)
            from = k + 1;
        else
            to = k;
    }
    return from;
}

uint64_t load_big_endian(const uint8_t *p) {
    uint64_t v;
    std::memcpy(&v, p, 8);
    if constexpr (std::endian::native == std::endian::little)
        v = __builtin_bswap64(v);
    return v;
}

// ---- the coder's interval -----------------------------------------------
// The coder keeps [low, high) within [0, Q4). Leading bits that low and
// high - 1 share are settled and leave (the published loop does this a bit
// at a time, subtracting Q2 when the bit is 1); an interval straddling the
// middle within [Q1, Q3) is widened around it and the bit it will settle is
// deferred. The published decoder tests the straddle before a settled 0;
// both orders take the same steps to the same final interval, since they
// differ only by Q2 on an interval that must then settle a 1.
struct Interval {
    uint32_t low = 0, high = Q4;

    // The count of leading bits settled, at most 17.
    int settled_bits() const {
        const uint32_t differ = (low ^ (high - 1)) << (32 - (M + 2));
        return std::countl_zero(differ | (1u << (31 - (M + 2))));
    }
    void shift_settled(int k) {
        low = (low << k) & (Q4 - 1);
        high = ((((high - 1) << k) | ((1u << k) - 1)) & (Q4 - 1)) + 1;
    }
    bool straddles_middle() const { return low >= Q1 && high <= Q3; }
    void widen_around_middle() {
        low = 2 * (low - Q1);
        high = 2 * (high - Q1);
    }
};

// ---- bit output and input -----------------------------------------------
// Bits go out most significant first; the last byte is padded with zeros.
class BitWriter {
  public:
    explicit BitWriter(ByteSink &out) : out_(out) {}
    // The low `count` (at most 32) bits of `bits`, highest first.
    void put(uint32_t bits, int count) {
        word_ = (word_ << count) | bits;
        used_ += count;
        while (used_ >= 8) {
            used_ -= 8;
            out_.put(static_cast<uint8_t>(word_ >> used_));
        }
    }
    void put_run(int bit, int count) {
        for (; count > 0; count -= 32) {
            const int n = count < 32 ? count : 32;
            put(bit ? 0xFFFFFFFFu >> (32 - n) : 0, n);
        }
    }
    void flush() {
        if (used_ > 0)
            out_.put(static_cast<uint8_t>(word_ << (8 - used_)));
        used_ = 0;
    }

  private:
    ByteSink &out_;
    uint64_t word_ = 0;
    int used_ = 0; // below 8 between calls
};

// Past the end of the input the published reader sees EOF, all bits set.
// Bytes are read when their first bit is needed, as the published reader
// does, so bytes_past_end counts what it would have asked for.
class BitReader {
  public:
    explicit BitReader(ByteSource &in) : in_(in) {}
    // The next `count` bits (at most 17), first bit highest.
    uint32_t take(int count) {
        while (available_ < count) {
            int c = in_.get();
            if (c < 0) {
                c = 0xFF;
                ++bytes_past_end_;
            }
            word_ = (word_ << 8) | static_cast<uint32_t>(c);
            available_ += 8;
        }
        available_ -= count;
        return static_cast<uint32_t>(word_ >> available_) & ((1u << count) - 1);
    }
    int bytes_past_end() const { return bytes_past_end_; }

  private:
    ByteSource &in_;
    uint64_t word_ = 0;
    int available_ = 0;
    int bytes_past_end_ = 0;
};

// ---- the adaptive model of literals and lengths -------------------------
// Symbols are kept sorted by frequency, symbol 1 the most frequent;
// cum[s] is the total frequency of the symbols above s.
class SymbolModel {
  public:
    SymbolModel() {
        cum_[N_CHAR] = 0;
        for (int sym = N_CHAR; sym >= 1; sym--) {
            const int ch = sym - 1;
            char_to_sym_[ch] = sym;
            sym_to_char_[sym] = ch;
            freq_[sym] = 1;
            cum_[sym - 1] = cum_[sym] + freq_[sym];
        }
        freq_[0] = 0; // sentinel, differs from freq[1]
    }

    int symbol_of(int ch) const { return char_to_sym_[ch]; }
    int char_of(int sym) const { return sym_to_char_[sym]; }
    uint32_t cum(int sym) const { return cum_[sym]; }
    uint32_t total() const { return cum_[0]; }

    // 1 if x >= cum[1]; N_CHAR if cum[N_CHAR] > x; otherwise the s with
    // cum[s - 1] > x >= cum[s].
    int find(uint32_t x) const {
        // Symbols are ranked by frequency: the answer is most often among
        // the first few, and the search has one answer however it is found.
        for (int k = 1; k <= 8; ++k)
            if (cum_[k] <= x)
                return k;
        return first_at_or_below(cum_, 9, N_CHAR, x);
    }

    void update(int sym) {
        if (cum_[0] >= MAX_CUM) {
            uint32_t c = 0;
            for (int i = N_CHAR; i > 0; i--) {
                cum_[i] = c;
                c += (freq_[i] = (freq_[i] + 1) >> 1);
            }
            cum_[0] = c;
        }
        int i;
        for (i = sym; freq_[i] == freq_[i - 1]; i--) {
        }
        if (i < sym) {
            const int ch_i = sym_to_char_[i], ch_sym = sym_to_char_[sym];
            sym_to_char_[i] = ch_sym;
            sym_to_char_[sym] = ch_i;
            char_to_sym_[ch_i] = sym;
            char_to_sym_[ch_sym] = i;
        }
        freq_[i]++;
        for (int k = 0; k < i; k++)
            cum_[k]++;
    }

  private:
    std::array<int, N_CHAR> char_to_sym_{};
    std::array<int, N_CHAR + 1> sym_to_char_{};
    std::array<uint32_t, N_CHAR + 1> freq_{}, cum_{};
};

// ---- the LZSS trees -----------------------------------------------------
// Node i < N is the string of F bytes at ring position i; right_[N + 1 + c]
// is the root of the tree of strings starting with byte c. The trees are
// binary search trees of those strings, and a node's bytes never change
// while it is in a tree (a ring position is deleted before it is written).
class Trees {
  public:
    Trees() {
        for (int i = N + 1; i <= N + 256; i++)
            son_[1][i] = NIL;
        for (int i = 0; i < N; i++)
            dad_[i] = NIL;
    }

    uint8_t *text() { return text_.data(); }

    // Inserts the string at r and sets match_length and match_position to
    // the longest match met on the way down (the nearest among equals); a
    // match of the full F replaces the older node.
    void insert(int r) {
        const uint8_t *key = &text_[r];
        son_[0][r] = son_[1][r] = NIL;
        match_length = 0;
        int p = N + 1 + key[0];
        if (son_[1][p] == NIL) {
            link(p, 1, r);
            return;
        }
        p = son_[1][p];
        // The best match so far as (length << 12) | (N - 1 - distance): the
        // larger the better.
        uint32_t best = 0;
        const uint64_t key_head = load_big_endian(key + 1);
        uint64_t head = load_big_endian(&text_[p + 1]);
        for (;;) {
            // Both ways down, fetched before the way is known (NIL's bytes
            // lie inside the buffer and are never used).
            const int left = son_[0][p], right = son_[1][p];
            const uint64_t left_head = load_big_endian(&text_[left + 1]);
            const uint64_t right_head = load_big_endian(&text_[right + 1]);
            int length, cmp;
            if (head != key_head) {
                cmp = key_head > head ? 1 : -1;
                length = 1 + std::countl_zero(key_head ^ head) / 8;
            } else {
                length = compare_tail(key, &text_[p], &cmp);
            }
            if (length > THRESHOLD) {
                const uint32_t score = static_cast<uint32_t>(length) << 12 |
                                       static_cast<uint32_t>((N - 1) - ((r - p) & (N - 1)));
                best = score > best ? score : best;
            }
            if (cmp > 0) {
                if (right == NIL) {
                    link(p, 1, r);
                    break;
                }
                p = right;
                head = right_head;
            } else if (cmp < 0) {
                if (left == NIL) {
                    link(p, 0, r);
                    break;
                }
                p = left;
                head = left_head;
            } else {
                replace(p, r);
                break;
            }
        }
        if (best != 0) {
            match_length = static_cast<int>(best >> 12);
            match_position = (N - 1) - static_cast<int>(best & (N - 1));
        }
    }

    void remove(int p) {
        if (dad_[p] == NIL)
            return;
        int q;
        if (son_[1][p] == NIL) {
            q = son_[0][p];
        } else if (son_[0][p] == NIL) {
            q = son_[1][p];
        } else {
            q = son_[0][p];
            if (son_[1][q] != NIL) {
                do {
                    q = son_[1][q];
                } while (son_[1][q] != NIL);
                son_[1][dad_[q]] = son_[0][q];
                dad_[son_[0][q]] = dad_[q];
                son_[0][q] = son_[0][p];
                dad_[son_[0][p]] = static_cast<uint16_t>(q);
            }
            son_[1][q] = son_[1][p];
            dad_[son_[1][p]] = static_cast<uint16_t>(q);
        }
        dad_[q] = dad_[p];
        if (son_[1][dad_[p]] == p)
            son_[1][dad_[p]] = static_cast<uint16_t>(q);
        else
            son_[0][dad_[p]] = static_cast<uint16_t>(q);
        dad_[p] = NIL;
    }

    int match_position = 0, match_length = 0;

  private:
    void link(int parent, int side, int child) {
        son_[side][parent] = static_cast<uint16_t>(child);
        dad_[child] = static_cast<uint16_t>(parent);
    }

    // Node r takes the place of p, whose string it equals.
    void replace(int p, int r) {
        dad_[r] = dad_[p];
        son_[0][r] = son_[0][p];
        son_[1][r] = son_[1][p];
        dad_[son_[0][p]] = static_cast<uint16_t>(r);
        dad_[son_[1][p]] = static_cast<uint16_t>(r);
        if (son_[1][dad_[p]] == p)
            son_[1][dad_[p]] = static_cast<uint16_t>(r);
        else
            son_[0][dad_[p]] = static_cast<uint16_t>(r);
        dad_[p] = NIL;
    }

    // For strings that agree in their first 9 bytes: the length of their
    // common prefix (F when they agree throughout), and in *cmp the sign of
    // the first difference (0 when none). All reads stay inside the F bytes.
    static int compare_tail(const uint8_t *key, const uint8_t *other, int *cmp) {
        int i = 9;
        for (; i + 8 <= F; i += 8) {
            const uint64_t a = load_big_endian(key + i), b = load_big_endian(other + i);
            if (a != b) {
                *cmp = a > b ? 1 : -1;
                return i + std::countl_zero(a ^ b) / 8;
            }
        }
        for (; i < F; i++)
            if ((*cmp = key[i] - other[i]) != 0)
                return i;
        *cmp = 0;
        return F;
    }

    // The ring with F - 1 extra bytes mirroring its start, so that string
    // comparisons need no wrap-around. Zero beyond the input, as a fresh
    // process's memory is.
    std::array<uint8_t, N + F - 1> text_{};
    // son_[0] are the left, son_[1] the right children. 16-bit links keep
    // the trees within the first-level cache.
    uint16_t son_[2][N + 257] = {};
    std::array<uint16_t, N + 1> dad_{};
};

// ---- the encoder --------------------------------------------------------
class Encoder {
  public:
    explicit Encoder(ByteSink &out) : bits_(out) {}

    void encode(ByteSource &in) {
        uint8_t *text = trees_.text();
        int s = 0, r = N - F;
        std::memset(text, ' ', static_cast<size_t>(r));
        int len, c;
        for (len = 0; len < F && (c = in.get()) != -1; len++)
            text[r + len] = static_cast<uint8_t>(c);
        for (int i = 1; i <= F; i++)
            trees_.insert(r - i);
        trees_.insert(r);
        do {
            if (trees_.match_length > len)
                trees_.match_length = len;
            if (trees_.match_length <= THRESHOLD) {
                trees_.match_length = 1;
                encode_char(text[r]);
            } else {
                encode_char(255 - THRESHOLD + trees_.match_length);
                encode_position(trees_.match_position - 1);
            }
            const int last_match_length = trees_.match_length;
            int i;
            for (i = 0; i < last_match_length && (c = in.get()) != -1; i++) {
                trees_.remove(s);
                text[s] = static_cast<uint8_t>(c);
                if (s < F - 1)
                    text[s + N] = static_cast<uint8_t>(c);
                s = (s + 1) & (N - 1);
                r = (r + 1) & (N - 1);
                trees_.insert(r);
            }
            while (i++ < last_match_length) {
                trees_.remove(s);
                s = (s + 1) & (N - 1);
                r = (r + 1) & (N - 1);
                if (--len)
                    trees_.insert(r);
            }
        } while (len > 0);
        // The final bit tells which quarter low is in.
        deferred_++;
        send(low_quarter_bit(), 1);
        bits_.flush();
    }

  private:
    int low_quarter_bit() const { return interval_.low < Q1 ? 0 : 1; }

    // Sends `count` settled bits, the first followed by the deferred ones
    // (each the opposite of that first bit).
    void send(uint32_t bits, int count) {
        if (deferred_ == 0) {
            bits_.put(bits, count);
            return;
        }
        const int first = static_cast<int>(bits >> (count - 1));
        bits_.put(static_cast<uint32_t>(first), 1);
        bits_.put_run(!first, deferred_);
        deferred_ = 0;
        bits_.put(bits & ((1u << (count - 1)) - 1), count - 1);
    }

    template <typename Total>
    void narrow(uint32_t upper, uint32_t lower, Total total) {
        Interval &iv = interval_;
        const uint32_t range = iv.high - iv.low;
        iv.high = iv.low + (range * upper) / total;
        iv.low += (range * lower) / total;
        for (;;) {
            const int k = iv.settled_bits();
            if (k > 0) {
                send(iv.low >> (M + 2 - k), k);
                iv.shift_settled(k);
            }
            if (!iv.straddles_middle())
                break;
            deferred_++;
            iv.widen_around_middle();
        }
    }

    void encode_char(int ch) {
        const int sym = model_.symbol_of(ch);
        narrow(model_.cum(sym - 1), model_.cum(sym), model_.total());
        model_.update(sym);
    }

    void encode_position(int position) {
        narrow(kPositionCum[position], kPositionCum[position + 1],
               std::integral_constant<uint32_t, kPositionTotal>{});
    }

    Trees trees_;
    SymbolModel model_;
    Interval interval_;
    int deferred_ = 0;
    BitWriter bits_;
};

// ---- the decoder --------------------------------------------------------
using PositionTable = std::vector<uint16_t>;

// 0 if x >= cum[1]; otherwise the i with cum[i] > x >= cum[i + 1].
int search_position(uint32_t x) {
    return first_at_or_below(kPositionCum, 1, N, x) - 1;
}

// The answer of search_position for every x below the total, built once:
// the position model never changes.
const PositionTable &position_table() {
    static const PositionTable table = [] {
        PositionTable t(kPositionTotal);
        for (uint32_t x = 0; x < t.size(); ++x)
            t[x] = static_cast<uint16_t>(search_position(x));
        return t;
    }();
    return table;
}

class Decoder {
  public:
    explicit Decoder(ByteSource &in) : bits_(in), positions_(position_table()) {}

    // Returns false when it stopped because the input ran out.
    bool decode(uint32_t textsize, ByteSink &out) {
        value_ = bits_.take(M + 2);
        std::memset(ring_.data(), ' ', N - F);
        int r = N - F;
        uint32_t count = 0;
        while (count < textsize) {
            if (bits_.bytes_past_end() > kMaxBytesPastEnd)
                return false;
            const int c = decode_char();
            if (c < 256) {
                out.put(static_cast<uint8_t>(c));
                ring_[r++] = static_cast<uint8_t>(c);
                r &= (N - 1);
                count++;
            } else {
                const int i = (r - decode_position() - 1) & (N - 1);
                const int j = c - 255 + THRESHOLD;
                // A damaged stream may claim a match beyond the length.
                for (int k = 0; k < j && count < textsize; k++) {
                    const uint8_t b = ring_[(i + k) & (N - 1)];
                    out.put(b);
                    ring_[r++] = b;
                    r &= (N - 1);
                    count++;
                }
            }
        }
        return true;
    }

  private:
    // The decoder's value stays within [low, high) whatever the input (the
    // search picks the symbol whose share holds it), so it shares the
    // interval's settled bits and leaves with them.
    template <typename Total>
    void narrow(uint32_t upper, uint32_t lower, Total total, uint32_t range) {
        Interval &iv = interval_;
        iv.high = iv.low + (range * upper) / total;
        iv.low += (range * lower) / total;
        for (;;) {
            const int k = iv.settled_bits();
            if (k > 0) {
                iv.shift_settled(k);
                value_ = ((value_ << k) | bits_.take(k)) & (Q4 - 1);
            }
            if (!iv.straddles_middle())
                break;
            iv.widen_around_middle();
            value_ = 2 * (value_ - Q1) + bits_.take(1);
        }
    }

    int decode_char() {
        const uint32_t range = interval_.high - interval_.low;
        const uint32_t total = model_.total();
        const int sym = model_.find(((value_ - interval_.low + 1) * total - 1) / range);
        narrow(model_.cum(sym - 1), model_.cum(sym), total, range);
        const int ch = model_.char_of(sym);
        model_.update(sym);
        return ch;
    }

    int decode_position() {
        const uint32_t range = interval_.high - interval_.low;
        const uint32_t x = ((value_ - interval_.low + 1) * kPositionTotal - 1) / range;
        const int position = x < positions_.size() ? positions_[x] : search_position(x);
        narrow(kPositionCum[position], kPositionCum[position + 1],
               std::integral_constant<uint32_t, kPositionTotal>{}, range);
        return position;
    }

    SymbolModel model_;
    Interval interval_;
    uint32_t value_ = 0;
    BitReader bits_;
    const PositionTable &positions_;
    std::array<uint8_t, N> ring_{};
};

} // namespace

bool lzari_encode(ByteSource &in, uint32_t length, ByteSink &out) {
    for (int shift = 0; shift < 32; shift += 8)
        out.put(static_cast<uint8_t>(length >> shift));
    if (length != 0) {
        // A fresh coder per call: no state survives from the previous one.
        auto coder = std::make_unique<Encoder>(out);
        coder->encode(in);
    }
    const bool written = out.finish();
    return written && !in.failed();
}

LzariDecode lzari_decode(ByteSource &in, ByteSink &out) {
    uint32_t length = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int c = in.get();
        if (c < 0) {
            out.finish();
            return LzariDecode::NoHeader;
        }
        length |= static_cast<uint32_t>(c) << shift;
    }
    bool complete = true;
    if (length != 0) {
        auto coder = std::make_unique<Decoder>(in);
        complete = coder->decode(length, out);
    }
    out.finish();
    return complete ? LzariDecode::Ok : LzariDecode::Stopped;
}

} // namespace brindle::compress
