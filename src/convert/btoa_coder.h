// The btoa text encoding, "xbtoa5" variant: four bytes become five base-85
// characters ("!" to "u"), a zero group the single "z" and a group of four
// spaces the single "y"; lines hold 77 characters and one check character;
// a trailer gives the byte count and three running checksums.
//
//   xbtoa5 78 <name> Begin
//   <77 characters><check>          (the last body line may be shorter)
//   xbtoa End N <count> <count hex> E <xor> S <sum> R <rotating sum>
//
// Files are read and written in the Windows runtime's text mode on every
// platform (runtime/text_mode.h): the encoder reads its input with CR LF
// pairs as LF and stops at a Ctrl-Z byte, and the decoder writes its output
// with every LF as CR LF, exactly as the format's classic tools do on Windows.
// Counts and checksums are 32-bit; inputs of 4 GiB and more are outside the
// format.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace brindle::convert {

// The three running checksums over the encoding characters of the body.
struct BtoaSums {
    uint32_t e = 0; // xor
    uint32_t s = 0; // sum of c + 1
    uint32_t r = 0; // rotate left by one, then add c

    void add(unsigned char c) {
        e ^= c;
        s += static_cast<uint32_t>(c) + 1u;
        r = ((r << 1) | (r >> 31)) + c;
    }
};

// The encoder, from bytes to text (line ends as '\n'), appended to `out`;
// the caller drains `out` whenever it likes.
class BtoaEncoder {
  public:
    static constexpr int kLineLength = 78; // 77 characters and the check

    explicit BtoaEncoder(std::string &out) : out_(out) {}

    void header(std::string_view name);
    void feed(const unsigned char *data, size_t size);
    // Pads and encodes a last short group, ends the last line, writes the
    // trailer.
    void finish();

  private:
    void group(uint32_t value);
    void put(char c);

    std::string &out_;
    BtoaSums sums_;
    uint64_t count_ = 0;
    unsigned char pending_[4] = {};
    size_t pending_size_ = 0;
    int line_ = 0;
};

// The name an encoded file records for its input path: the part after the
// last "\" or ":", or "-" when that is empty.
std::string btoa_name_of(std::string_view path);

// cBtoA: the size of the written file; -1 when the input cannot be opened or
// read, or the size cannot be had (or exceeds a Long); -2 when the output
// cannot be created or written, or is the input file itself.
int32_t btoa_encode_file(std::string_view input, std::string_view output);

// Decoding results.
enum BtoaStatus : int32_t {
    kBtoaOk = 0,
    kBtoaFailed = -1,         // input not opened, body damaged, output not created, an archive
    kBtoaBadHeader = -4,      // no readable "xbtoa5 <length> <name>" header
    kBtoaMismatch = -5,       // counts or checksums differ from the body
    kBtoaBadTrailer = -6,     // no readable trailer
};

// cAtoB: decodes the btoa file `input` into the file its header names,
// created in the current directory. The recorded name is used without any
// directory part (everything up to the last "\", "/" or ":" is dropped), so
// a file can never write outside the current directory; a name that is
// empty, "-", "." or ".." after that, or a line length outside 2..99, is an
// unreadable header, and so is a header line longer than the 99 characters
// a line may hold (a recorded name of more than 83 characters). A header naming the input file itself gives -1 (the
// output would destroy the input). A partial output is left as it is on
// failure.
int32_t btoa_decode_file(std::string_view input);

} // namespace brindle::convert
