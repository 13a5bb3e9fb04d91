// The byte-pair coder. The compressor keeps the published coder's data
// structures (a 4096-slot open-addressed table of saturating pair counts,
// deleted pairs keeping their slot with a count of 1) because the choice of
// pair, and so the output, depends on their exact behaviour. What is faster
// here is only how the same answers are found: the most frequent pair comes
// from a histogram of the counts and one memchr instead of a scan that
// compares every slot, and the replacement pass jumps between occurrences of
// the pair's first byte with memchr.
#include "compress/byte_pair.h"

#include <array>
#include <cstring>

namespace brindle::compress {

namespace {

constexpr int kHashSize = 4096;
constexpr int kMaxChars = 200;
constexpr int kThreshold = 3;

class PairCompressor {
  public:
    // Reads one block from in[0, available); returns the bytes taken.
    size_t read_block(const uint8_t *in, size_t available, bool input_ends, bool *last) {
        // Forget the pairs of the previous block.
        for (int i = 0; i < kHashSize; ++i)
            if (count_[i] != 0)
                slot_of_[key_[i]] = 0;
        count_.fill(0);
        for (int i = 0; i <= kHashSize; ++i)
            next_free_[i] = static_cast<uint16_t>(i);
        histogram_.fill(0);
        histogram_[0] = kHashSize;
        for (int c = 0; c < 256; ++c) {
            leftcode_[c] = static_cast<uint8_t>(c);
            rightcode_[c] = 0; // doubles as the "value used in this block" mark
        }
        size_ = 0;
        int used = 0;
        size_t taken = 0;
        while (size_ < static_cast<int>(kBytePairBlockSize) && used < kMaxChars && taken < available) {
            const uint8_t c = in[taken++];
            if (size_ > 0)
                increment(lookup(buffer_[size_ - 1], c));
            buffer_[size_++] = c;
            if (!rightcode_[c]) {
                rightcode_[c] = 1;
                ++used;
            }
        }
        // The end is seen only by a read that finds no byte: a block that
        // stopped at a limit leaves that read to the next block.
        *last = taken == available && input_ends && size_ < static_cast<int>(kBytePairBlockSize) &&
                used < kMaxChars;
        return taken;
    }

    void compress_block() {
        int code = 256;
        for (;;) {
            // The next value neither used nor already standing for a pair.
            for (code--; code >= 0; code--)
                if (code == leftcode_[code] && !rightcode_[code])
                    break;
            if (code < 0)
                break;
            // The first slot holding the highest count, if it reaches 3.
            int best = 255;
            while (best >= kThreshold && histogram_[best] == 0)
                --best;
            if (best < kThreshold)
                break;
            const auto *slot = static_cast<const uint8_t *>(std::memchr(count_.data(), best, kHashSize));
            const int index = static_cast<int>(slot - count_.data());
            const uint8_t leftch = static_cast<uint8_t>(key_[index]);
            const uint8_t rightch = static_cast<uint8_t>(key_[index] >> 8);
            replace(leftch, rightch, static_cast<uint8_t>(code));
            leftcode_[code] = leftch;
            rightcode_[code] = rightch;
            // The pair is gone; its slot stays taken with a count of 1.
            const int gone = lookup(leftch, rightch);
            if (gone >= 0)
                set_count(gone, 1);
        }
    }

    void write_block(std::string &out) const {
        char table[1024];
        size_t n = 0;
        int c = 0;
        while (c < 256) {
            int len;
            if (c == leftcode_[c]) {
                // A run of values standing for themselves: one byte, 128..254.
                len = 1;
                c++;
                while (len < 127 && c < 256 && c == leftcode_[c]) {
                    len++;
                    c++;
                }
                table[n++] = static_cast<char>(len + 127);
                len = 0;
                if (c == 256)
                    break;
            } else {
                // A run of pair values, which may bridge one self-standing
                // value followed by a pair.
                len = 0;
                c++;
                while ((len < 127 && c < 256 && c != leftcode_[c]) ||
                       (len < 125 && c < 254 && c + 1 != leftcode_[c + 1])) {
                    len++;
                    c++;
                }
                table[n++] = static_cast<char>(len);
                c -= len + 1;
            }
            for (int i = 0; i <= len; i++) {
                table[n++] = static_cast<char>(leftcode_[c]);
                if (c != leftcode_[c])
                    table[n++] = static_cast<char>(rightcode_[c]);
                c++;
            }
        }
        table[n++] = static_cast<char>(size_ / 256);
        table[n++] = static_cast<char>(size_ % 256);
        out.append(table, n);
        out.append(reinterpret_cast<const char *>(buffer_.data()), static_cast<size_t>(size_));
    }

  private:
    // The slot of pair (a, b), as the published coder's linear probing from
    // slot ((b AND 127) << 5) XOR a finds it: where the pair is, or else the
    // first empty slot from there on, which then takes the pair. Slots never
    // become empty again within a block, so a pair keeps its slot and the
    // probing can be answered from a map of pairs to slots and a
    // "next empty slot" forest. -1 when all 4096 slots hold other pairs; the
    // published coder would search forever there, we leave that pair
    // uncounted (a block of more than 4096 distinct pairs).
    int lookup(uint8_t a, uint8_t b) {
        const uint16_t key = static_cast<uint16_t>(a | (b << 8));
        if (const int at = slot_of_[key])
            return at - 1;
        const int home = (a ^ (b << 5)) & (kHashSize - 1);
        int index = next_free(home);
        if (index == kHashSize)
            index = next_free(0);
        if (index == kHashSize)
            return -1;
        key_[index] = key;
        return index;
    }

    // The first empty slot at or after i (kHashSize when there is none).
    int next_free(int i) {
        int root = i;
        while (next_free_[root] != root)
            root = next_free_[root];
        while (next_free_[i] != root) {
            const int up = next_free_[i];
            next_free_[i] = static_cast<uint16_t>(root);
            i = up;
        }
        return root;
    }

    void set_count(int index, int value) {
        if (count_[index] == 0) {
            // The slot is taken from now on.
            slot_of_[key_[index]] = static_cast<uint16_t>(index + 1);
            next_free_[index] = static_cast<uint16_t>(index + 1);
        }
        --histogram_[count_[index]];
        count_[index] = static_cast<uint8_t>(value);
        ++histogram_[value];
    }
    void increment(int index) {
        if (index >= 0 && count_[index] < 255)
            set_count(index, count_[index] + 1);
    }
    // A neighbouring pair's count never falls below 1 here.
    void decrement(int index) {
        if (index >= 0 && count_[index] > 1)
            set_count(index, count_[index] - 1);
    }

    // Replaces every occurrence of (leftch, rightch), left to right and
    // without overlap, by `code`, moving the neighbours' counts.
    void replace(uint8_t leftch, uint8_t rightch, uint8_t code) {
        uint8_t *buf = buffer_.data();
        const int oldsize = size_ - 1;
        int w = 0, r = 0;
        while (r < oldsize) {
            const void *hit = std::memchr(buf + r, leftch, static_cast<size_t>(oldsize - r));
            const int q = hit ? static_cast<int>(static_cast<const uint8_t *>(hit) - buf) : oldsize;
            if (q > r) {
                if (w != r)
                    std::memmove(buf + w, buf + r, static_cast<size_t>(q - r));
                w += q - r;
                r = q;
            }
            if (r >= oldsize)
                break;
            if (buf[r + 1] == rightch) {
                if (r > 0) {
                    decrement(lookup(buf[w - 1], leftch));
                    increment(lookup(buf[w - 1], code));
                }
                if (r < oldsize - 1) {
                    decrement(lookup(rightch, buf[r + 2]));
                    increment(lookup(code, buf[r + 2]));
                }
                buf[w++] = code;
                r += 2;
                size_--;
            } else {
                buf[w++] = buf[r++];
            }
        }
        if (r == oldsize)
            buf[w] = buf[r];
    }

    std::array<uint8_t, kBytePairBlockSize + 1> buffer_{};
    std::array<uint8_t, 256> leftcode_{}, rightcode_{};
    std::array<uint16_t, kHashSize> key_{}; // left byte | right byte << 8
    std::array<uint8_t, kHashSize> count_{};
    std::array<int, 256> histogram_{};      // slots per count value
    std::array<uint16_t, 65536> slot_of_{}; // taken slot + 1 of each pair, 0 for none
    std::array<uint16_t, kHashSize + 1> next_free_{}; // forest: root = next empty slot
    int size_ = 0;
};

} // namespace

size_t byte_pair_compress_block(const uint8_t *in, size_t available, bool input_ends, std::string &out,
                                bool *last) {
    // About 27 KB of state: on the heap, not on a VB caller's stack.
    thread_local PairCompressor coder;
    const size_t taken = coder.read_block(in, available, input_ends, last);
    coder.compress_block();
    coder.write_block(out);
    return taken;
}

std::string byte_pair_compress(std::string_view data) {
    std::string out;
    out.reserve(data.size() + data.size() / 64 + 16);
    const auto *p = reinterpret_cast<const uint8_t *>(data.data());
    size_t left = data.size();
    bool last = false;
    while (!last) {
        const size_t taken = byte_pair_compress_block(p, left, true, out, &last);
        p += taken;
        left -= taken;
    }
    return out;
}

namespace {

// The expander. A block's pair table is settled once, before its packed
// bytes are read: every pair value gets its expanded length and, when that
// is at most kShort bytes, its expansion as a pattern. Each packed byte is
// then one bound check and one 16-byte move of its pattern (the bytes past
// its length are overwritten next or never used), which is what makes the
// loop fast; longer values are expanded from their halves the first time
// and copied from that first occurrence afterwards.
constexpr size_t kShort = 16;
// The room a block needs at its output: the block and the slack of one move.
constexpr size_t kExpandRoom = kBytePairBlockSize + kShort;

constexpr uint16_t kUnknown = 0;                      // a pair not settled yet
constexpr uint16_t kVisiting = UINT16_MAX;            // on the walk settling it
constexpr uint16_t kTooLong = kBytePairBlockSize + 1; // more than a block, or endless
constexpr uint16_t kNotYet = UINT16_MAX;              // no first occurrence yet

class BlockExpander {
  public:
    // Expands the block at in[0, available) into dst, which has kExpandRoom
    // bytes; sets *written and *consumed on success.
    BlockStatus expand(const uint8_t *in, size_t available, char *dst, size_t *written, size_t *consumed) {
        // Every value stands for itself until the table says otherwise.
        for (int v = 0; v < 256; ++v) {
            left_[v] = static_cast<uint8_t>(v);
            length_[v] = 1;
            pattern_[v][0] = static_cast<uint8_t>(v);
        }
        size_t p = 0;
        int pairs = 0;
        if (p >= available)
            return BlockStatus::Truncated;
        int count = in[p++];
        int c = 0;
        for (;;) {
            if (count > 127) {
                c += count - 127; // a run of values standing for themselves
                count = 0;
            }
            if (c > 256)
                return BlockStatus::Corrupt;
            if (c == 256)
                break;
            for (int i = 0; i <= count; ++i, ++c) {
                if (c > 255)
                    return BlockStatus::Corrupt;
                if (p >= available)
                    return BlockStatus::Truncated;
                left_[c] = in[p++];
                if (c != left_[c]) {
                    if (p >= available)
                        return BlockStatus::Truncated;
                    right_[c] = in[p++];
                    length_[c] = kUnknown;
                    pairs_[pairs++] = static_cast<uint8_t>(c);
                }
            }
            if (c == 256)
                break;
            if (p >= available)
                return BlockStatus::Truncated;
            count = in[p++];
        }
        if (available - p < 2)
            return BlockStatus::Truncated;
        const size_t size = static_cast<size_t>(in[p]) * 256 + in[p + 1];
        p += 2;
        if (available - p < size)
            return BlockStatus::Truncated;

        // The coder hands out pair values from 255 down, so from the highest
        // pair down both halves are nearly always settled already; any other
        // order takes the walk.
        for (int k = pairs - 1; k >= 0; --k) {
            const uint8_t v = pairs_[k];
            if (length_[v] != kUnknown)
                continue; // settled by an earlier walk
            if (length_[left_[v]] != kUnknown && length_[right_[v]] != kUnknown)
                settle(v);
            else
                walk(v);
        }

        const uint8_t *packed = in + p;
        size_t w = 0;
        for (size_t i = 0; i < size; ++i) {
            const uint8_t v = packed[i];
            const size_t len = length_[v];
            // Also refuses the values that are too long or endless (kTooLong).
            if (len > kBytePairBlockSize - w)
                return BlockStatus::Corrupt;
            if (len <= kShort) {
                std::memcpy(dst + w, pattern_[v], kShort); // w + 16 <= kExpandRoom
                w += len;
            } else {
                w = expand_long(v, dst, w);
            }
        }
        *written = w;
        *consumed = p + size;
        return BlockStatus::Ok;
    }

  private:
    // Gives pair v its length from its settled halves, and its pattern when
    // it is short (the first half is then at most 15 bytes, so both 16-byte
    // moves stay in the 32-byte row).
    void settle(uint8_t v) {
        const uint8_t a = left_[v], b = right_[v];
        const uint32_t sum = uint32_t{length_[a]} + length_[b];
        length_[v] = static_cast<uint16_t>(sum > kTooLong ? kTooLong : sum);
        if (sum <= kShort) {
            std::memcpy(pattern_[v], pattern_[a], kShort);
            std::memcpy(pattern_[v] + length_[a], pattern_[b], kShort);
        } else {
            first_at_[v] = kNotYet;
        }
    }

    // Settles v and the unsettled values below it, children first. A value
    // met again while it is on the walk refers to itself: everything on the
    // walk reaches that cycle and never ends, so all of it is kTooLong and
    // the block is refused only if one of them is used. Each value is on
    // the walk at most once, so 256 entries suffice.
    void walk(uint8_t v) {
        int depth = 0;
        stack_[depth++] = v;
        length_[v] = kVisiting;
        while (depth > 0) {
            const uint8_t x = stack_[depth - 1];
            const uint8_t a = left_[x], b = right_[x];
            if (length_[a] == kUnknown || length_[b] == kUnknown) {
                const uint8_t next = length_[a] == kUnknown ? a : b;
                length_[next] = kVisiting;
                stack_[depth++] = next;
            } else if (length_[a] == kVisiting || length_[b] == kVisiting) {
                while (depth > 0)
                    length_[stack_[--depth]] = kTooLong;
            } else {
                settle(x);
                --depth;
            }
        }
    }

    // Writes value v, longer than kShort and known to fit, at dst + w and
    // returns the new end. A long value seen before in this block is copied
    // from there (it lies wholly before w: a value never contains itself);
    // else it is split into its halves, down to patterns.
    size_t expand_long(uint8_t v, char *dst, size_t w) {
        // A walk holds at most one pending right half per level of the
        // value's tree, and the tree is at most 256 levels deep.
        int depth = 0;
        stack_[depth++] = v;
        while (depth > 0) {
            const uint8_t x = stack_[--depth];
            const size_t len = length_[x];
            if (len <= kShort) {
                std::memcpy(dst + w, pattern_[x], kShort);
                w += len;
            } else if (first_at_[x] != kNotYet) {
                std::memcpy(dst + w, dst + first_at_[x], len);
                w += len;
            } else {
                first_at_[x] = static_cast<uint16_t>(w);
                stack_[depth++] = right_[x];
                stack_[depth++] = left_[x];
            }
        }
        return w;
    }

    uint8_t left_[256], right_[256];
    uint16_t length_[256];
    uint8_t pattern_[256][2 * kShort];
    uint16_t first_at_[256];
    uint8_t pairs_[256]; // the pair values in table order
    uint8_t stack_[2 * 256 + 2];
};

} // namespace

BlockStatus byte_pair_expand_block(const uint8_t *in, size_t available, std::string &out, size_t *consumed) {
    // Straight into the caller's string, cut back to what the block gave.
    const size_t start = out.size();
    out.resize(start + kExpandRoom);
    BlockExpander expander;
    size_t written = 0;
    const BlockStatus status = expander.expand(in, available, out.data() + start, &written, consumed);
    out.resize(start + written);
    return status;
}

bool byte_pair_expand(std::string_view blocks, std::string &out) {
    // The string grows in steps of many blocks (zero-filled once, while the
    // step is still in cache) and is cut back to the bytes written at the end.
    constexpr size_t kStep = 64 * 1024;
    const auto *p = reinterpret_cast<const uint8_t *>(blocks.data());
    size_t left = blocks.size();
    size_t end = out.size();
    BlockExpander expander;
    bool ok = true;
    while (left > 0) {
        if (out.size() - end < kExpandRoom)
            out.resize(end + kStep);
        size_t written = 0, used = 0;
        if (expander.expand(p, left, out.data() + end, &written, &used) != BlockStatus::Ok) {
            ok = false;
            break;
        }
        end += written;
        p += used;
        left -= used;
    }
    out.resize(end);
    return ok;
}

} // namespace brindle::compress
