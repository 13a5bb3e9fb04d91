// LZARI as published, with our longest match of 80. The trees, the model and
// the coder follow the 1989 program step for step, since its output is the
// format; arithmetic is on 32-bit unsigned numbers as on the machines it was
// written for (the products never exceed 2^32 on valid data).
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

constexpr uint32_t Q1 = 1u << 15;
constexpr uint32_t Q2 = 2 * Q1;
constexpr uint32_t Q3 = 3 * Q1;
constexpr uint32_t Q4 = 4 * Q1;
constexpr uint32_t MAX_CUM = Q1 - 1;

// How far past the end of the input the decoder may read before it gives up.
constexpr int kMaxBytesPastEnd = 64;

class Lzari {
  public:
    Lzari() {
        start_model();
    }

    // ---- encoder -------------------------------------------------------
    void encode(ByteSource &in, ByteSink &out) {
        out_ = &out;
        init_tree();
        int s = 0, r = N - F;
        for (int i = s; i < r; i++)
            text_buf_[i] = ' ';
        int len, c;
        for (len = 0; len < F && (c = in.get()) != -1; len++)
            text_buf_[r + len] = static_cast<uint8_t>(c);
        for (int i = 1; i <= F; i++)
            insert_node(r - i);
        insert_node(r);
        do {
            if (match_length_ > len)
                match_length_ = len;
            if (match_length_ <= THRESHOLD) {
                match_length_ = 1;
                encode_char(text_buf_[r]);
            } else {
                encode_char(255 - THRESHOLD + match_length_);
                encode_position(match_position_ - 1);
            }
            const int last_match_length = match_length_;
            int i;
            for (i = 0; i < last_match_length && (c = in.get()) != -1; i++) {
                delete_node(s);
                text_buf_[s] = static_cast<uint8_t>(c);
                if (s < F - 1)
                    text_buf_[s + N] = static_cast<uint8_t>(c);
                s = (s + 1) & (N - 1);
                r = (r + 1) & (N - 1);
                insert_node(r);
            }
            while (i++ < last_match_length) {
                delete_node(s);
                s = (s + 1) & (N - 1);
                r = (r + 1) & (N - 1);
                if (--len)
                    insert_node(r);
            }
        } while (len > 0);
        encode_end();
    }

    // ---- decoder -------------------------------------------------------
    // Returns false when it stopped because the input ran out.
    bool decode(ByteSource &in, uint32_t textsize, ByteSink &out) {
        in_ = &in;
        for (int i = 0; i < M + 2; i++)
            value_ = 2 * value_ + get_bit();
        for (int i = 0; i < N - F; i++)
            text_buf_[i] = ' ';
        int r = N - F;
        uint32_t count = 0;
        while (count < textsize) {
            if (bytes_past_end_ > kMaxBytesPastEnd)
                return false;
            const int c = decode_char();
            if (c < 256) {
                out.put(static_cast<uint8_t>(c));
                text_buf_[r++] = static_cast<uint8_t>(c);
                r &= (N - 1);
                count++;
            } else {
                const int i = (r - decode_position() - 1) & (N - 1);
                const int j = c - 255 + THRESHOLD;
                // A damaged stream may claim a match beyond the length.
                for (int k = 0; k < j && count < textsize; k++) {
                    const uint8_t b = text_buf_[(i + k) & (N - 1)];
                    out.put(b);
                    text_buf_[r++] = b;
                    r &= (N - 1);
                    count++;
                }
            }
        }
        return true;
    }

  private:
    static constexpr int M = 15;

    // ---- bit input and output ------------------------------------------
    void put_bit(int bit) {
        if (bit)
            put_buffer_ |= put_mask_;
        if ((put_mask_ >>= 1) == 0) {
            out_->put(static_cast<uint8_t>(put_buffer_));
            put_buffer_ = 0;
            put_mask_ = 128;
        }
    }
    void flush_bit_buffer() {
        for (int i = 0; i < 7; i++)
            put_bit(0);
    }
    // Past the end of the input the published reader sees EOF, all bits set.
    int get_bit() {
        if ((get_mask_ >>= 1) == 0) {
            const int c = in_->get();
            if (c < 0) {
                get_buffer_ = 0xFFFFFFFFu;
                ++bytes_past_end_;
            } else {
                get_buffer_ = static_cast<uint32_t>(c);
            }
            get_mask_ = 128;
        }
        return (get_buffer_ & get_mask_) != 0;
    }

    // ---- LZSS trees ----------------------------------------------------
    // Node i < N is the string at ring position i; rson[N + 1 + c] is the
    // root of the tree of strings starting with byte c.
    void init_tree() {
        for (int i = N + 1; i <= N + 256; i++)
            son_[1][i] = NIL;
        for (int i = 0; i < N; i++)
            dad_[i] = NIL;
    }

    // Inserts the string at r, finding the longest match (nearest position
    // among equals); a match of the full F replaces the older node.
    void insert_node(int r) {
        int cmp = 1;
        const uint8_t *key = &text_buf_[r];
        int p = N + 1 + key[0];
        son_[1][r] = son_[0][r] = NIL;
        match_length_ = 0;
        for (;;) {
            // Two branches rather than an indexed side: the prediction lets
            // the descent run ahead of the comparison.
            if (cmp >= 0) {
                if (son_[1][p] == NIL) {
                    son_[1][p] = static_cast<uint16_t>(r);
                    dad_[r] = static_cast<uint16_t>(p);
                    return;
                }
                p = son_[1][p];
            } else {
                if (son_[0][p] == NIL) {
                    son_[0][p] = static_cast<uint16_t>(r);
                    dad_[r] = static_cast<uint16_t>(p);
                    return;
                }
                p = son_[0][p];
            }
            const int i = compare(key, &text_buf_[p], &cmp);
            if (i > THRESHOLD) {
                if (i > match_length_) {
                    match_position_ = (r - p) & (N - 1);
                    if ((match_length_ = i) >= F)
                        break;
                } else if (i == match_length_) {
                    const int temp = (r - p) & (N - 1);
                    if (temp < match_position_)
                        match_position_ = temp;
                }
            }
        }
        dad_[r] = dad_[p];
        son_[0][r] = son_[0][p];
        son_[1][r] = son_[1][p];
        dad_[son_[0][p]] = r;
        dad_[son_[1][p]] = r;
        if (son_[1][dad_[p]] == p)
            son_[1][dad_[p]] = r;
        else
            son_[0][dad_[p]] = r;
        dad_[p] = NIL;
    }

    // The length of the common prefix of two strings of F bytes that agree in
    // their first byte (F when they agree throughout), and in *cmp the
    // difference of the first bytes that differ (0 when none do). Eight
    // bytes are compared at a time; all reads stay inside the F bytes.
    static int compare(const uint8_t *key, const uint8_t *other, int *cmp) {
        int i = 1;
        if constexpr (std::endian::native == std::endian::little) {
            for (; i + 8 <= F; i += 8) {
                uint64_t a, b;
                std::memcpy(&a, key + i, 8);
                std::memcpy(&b, other + i, 8);
                if (a != b) {
                    const int shift = std::countr_zero(a ^ b) & ~7;
                    *cmp = static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF);
                    return i + shift / 8;
                }
            }
        }
        for (; i < F; i++)
            if ((*cmp = key[i] - other[i]) != 0)
                return i;
        *cmp = 0;
        return F;
    }

    void delete_node(int p) {
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
                dad_[son_[0][p]] = q;
            }
            son_[1][q] = son_[1][p];
            dad_[son_[1][p]] = q;
        }
        dad_[q] = dad_[p];
        if (son_[1][dad_[p]] == p)
            son_[1][dad_[p]] = q;
        else
            son_[0][dad_[p]] = q;
        dad_[p] = NIL;
    }

    // ---- model ---------------------------------------------------------
    // Symbols are kept sorted by frequency, symbol 1 the most frequent;
    // sym_cum[s] is the total frequency of the symbols above s.
    void start_model() {
        sym_cum_[N_CHAR] = 0;
        for (int sym = N_CHAR; sym >= 1; sym--) {
            const int ch = sym - 1;
            char_to_sym_[ch] = sym;
            sym_to_char_[sym] = ch;
            sym_freq_[sym] = 1;
            sym_cum_[sym - 1] = sym_cum_[sym] + sym_freq_[sym];
        }
        sym_freq_[0] = 0; // sentinel, differs from sym_freq[1]
        fill_position_model(position_cum_);
    }

    // Positions have a fixed model, built from the top: near positions are
    // the more likely.
    static void fill_position_model(std::array<uint32_t, N + 1> &position_cum) {
        position_cum[N] = 0;
        for (int i = N; i >= 1; i--)
            position_cum[i - 1] = position_cum[i] + 10000 / (i + 200);
    }

    void update_model(int sym) {
        if (sym_cum_[0] >= MAX_CUM) {
            uint32_t c = 0;
            for (int i = N_CHAR; i > 0; i--) {
                sym_cum_[i] = c;
                c += (sym_freq_[i] = (sym_freq_[i] + 1) >> 1);
            }
            sym_cum_[0] = c;
        }
        int i;
        for (i = sym; sym_freq_[i] == sym_freq_[i - 1]; i--) {
        }
        if (i < sym) {
            const int ch_i = sym_to_char_[i], ch_sym = sym_to_char_[sym];
            sym_to_char_[i] = ch_sym;
            sym_to_char_[sym] = ch_i;
            char_to_sym_[ch_i] = sym;
            char_to_sym_[ch_sym] = i;
        }
        sym_freq_[i]++;
        for (int k = 0; k < i; k++)
            sym_cum_[k]++;
    }

    // ---- arithmetic coder ----------------------------------------------
    void output(int bit) {
        put_bit(bit);
        for (; shifts_ > 0; shifts_--)
            put_bit(!bit);
    }

    void narrow_and_send(uint32_t upper, uint32_t lower, uint32_t total) {
        const uint32_t range = high_ - low_;
        high_ = low_ + (range * upper) / total;
        low_ += (range * lower) / total;
        for (;;) {
            if (high_ <= Q2) {
                output(0);
            } else if (low_ >= Q2) {
                output(1);
                low_ -= Q2;
                high_ -= Q2;
            } else if (low_ >= Q1 && high_ <= Q3) {
                shifts_++;
                low_ -= Q1;
                high_ -= Q1;
            } else {
                break;
            }
            low_ += low_;
            high_ += high_;
        }
    }

    void encode_char(int ch) {
        const int sym = char_to_sym_[ch];
        narrow_and_send(sym_cum_[sym - 1], sym_cum_[sym], sym_cum_[0]);
        update_model(sym);
    }

    void encode_position(int position) {
        narrow_and_send(position_cum_[position], position_cum_[position + 1], position_cum_[0]);
    }

    void encode_end() {
        shifts_++;
        output(low_ < Q1 ? 0 : 1);
        flush_bit_buffer();
    }

    // 1 if x >= sym_cum[1]; N_CHAR if sym_cum[N_CHAR] > x; otherwise the i
    // with sym_cum[i - 1] > x >= sym_cum[i].
    int binary_search_sym(uint32_t x) const {
        // Symbols are ranked by frequency: the answer is most often among
        // the first few, and the search has one answer however it is found.
        for (int k = 1; k <= 8; ++k)
            if (sym_cum_[k] <= x)
                return k;
        int i = 9, j = N_CHAR;
        while (i < j) {
            const int k = (i + j) / 2;
            if (sym_cum_[k] > x)
                i = k + 1;
            else
                j = k;
        }
        return i;
    }

    int binary_search_pos(uint32_t x) const {
        // The position model never changes: look the answer up.
        const PositionTable &table = position_table();
        if (x < table.size())
            return table[x];
        return search_pos(position_cum_, x);
    }

    using PositionTable = std::vector<uint16_t>;

    // 0 if x >= position_cum[1]; N - 1 if position_cum[N] > x; otherwise the
    // i with position_cum[i] > x >= position_cum[i + 1].
    static int search_pos(const std::array<uint32_t, N + 1> &position_cum, uint32_t x) {
        int i = 1, j = N;
        while (i < j) {
            const int k = (i + j) / 2;
            if (position_cum[k] > x)
                i = k + 1;
            else
                j = k;
        }
        return i - 1;
    }

    // The answer of search_pos for every x below position_cum[0].
    static const PositionTable &position_table() {
        static const PositionTable table = [] {
            std::array<uint32_t, N + 1> cum;
            fill_position_model(cum);
            PositionTable t(cum[0]);
            for (uint32_t x = 0; x < t.size(); ++x)
                t[x] = static_cast<uint16_t>(search_pos(cum, x));
            return t;
        }();
        return table;
    }

    void narrow_and_receive(uint32_t upper, uint32_t lower, uint32_t total, uint32_t range) {
        high_ = low_ + (range * upper) / total;
        low_ += (range * lower) / total;
        for (;;) {
            if (low_ >= Q2) {
                value_ -= Q2;
                low_ -= Q2;
                high_ -= Q2;
            } else if (low_ >= Q1 && high_ <= Q3) {
                value_ -= Q1;
                low_ -= Q1;
                high_ -= Q1;
            } else if (high_ > Q2) {
                break;
            }
            low_ += low_;
            high_ += high_;
            value_ = 2 * value_ + static_cast<uint32_t>(get_bit());
        }
    }

    int decode_char() {
        const uint32_t range = high_ - low_;
        const int sym = binary_search_sym(((value_ - low_ + 1) * sym_cum_[0] - 1) / range);
        narrow_and_receive(sym_cum_[sym - 1], sym_cum_[sym], sym_cum_[0], range);
        const int ch = sym_to_char_[sym];
        update_model(sym);
        return ch;
    }

    int decode_position() {
        const uint32_t range = high_ - low_;
        const int position = binary_search_pos(((value_ - low_ + 1) * position_cum_[0] - 1) / range);
        narrow_and_receive(position_cum_[position], position_cum_[position + 1], position_cum_[0], range);
        return position;
    }

    // Ring buffer with F - 1 extra bytes mirroring its start, so that string
    // comparisons need no wrap-around. Zero beyond the input, as a fresh
    // process's memory is.
    std::array<uint8_t, N + F - 1> text_buf_{};
    int match_position_ = 0, match_length_ = 0;
    // son_[0] are the left, son_[1] the right children. 16-bit links keep
    // the trees within the first-level cache.
    uint16_t son_[2][N + 257] = {};
    std::array<uint16_t, N + 1> dad_{};

    uint32_t low_ = 0, high_ = Q4, value_ = 0;
    int shifts_ = 0;
    std::array<int, N_CHAR> char_to_sym_{};
    std::array<int, N_CHAR + 1> sym_to_char_{};
    std::array<uint32_t, N_CHAR + 1> sym_freq_{}, sym_cum_{};
    std::array<uint32_t, N + 1> position_cum_{};

    ByteSink *out_ = nullptr;
    unsigned put_buffer_ = 0, put_mask_ = 128;
    ByteSource *in_ = nullptr;
    uint32_t get_buffer_ = 0, get_mask_ = 0;
    int bytes_past_end_ = 0;
};

} // namespace

bool lzari_encode(ByteSource &in, uint32_t length, ByteSink &out) {
    for (int shift = 0; shift < 32; shift += 8)
        out.put(static_cast<uint8_t>(length >> shift));
    if (length != 0) {
        // A fresh coder per call: no state survives from the previous one.
        auto coder = std::make_unique<Lzari>();
        coder->encode(in, out);
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
        auto coder = std::make_unique<Lzari>();
        complete = coder->decode(in, length, out);
    }
    out.finish();
    return complete ? LzariDecode::Ok : LzariDecode::Stopped;
}

} // namespace brindle::compress
