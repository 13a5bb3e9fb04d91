// The keyed ciphers that take the whole key string: DIAMOND and DIAMOND2
// (block size and rounds from a mode, the block layout of the other block
// ciphers) and RUBY (8-byte cipher feedback, output as long as the input).
#include "crypto/block_framing.h"
#include "crypto/cipher_feedback.h"
#include "crypto/diamond.h"
#include "crypto/diamond_cipher.h"
#include "crypto/diamond2.h"
#include "crypto/ruby.h"
#include "frame/frame.h"

#include <memory>

using namespace brindle::frame;
using namespace brindle::crypto;

namespace {

// The key string must hold at least this many bytes.
constexpr std::size_t kMinKey = 5;
// Key too short; key setup refused (rounds beyond the cipher's limit).
constexpr int32_t kShortKey = -1;
constexpr int32_t kKeySetupFailed = -2;

std::span<const uint8_t> bytes_of(const StrArg &s) {
    return {reinterpret_cast<const uint8_t *>(s.data()), s.size()};
}

using MakeKey = std::unique_ptr<DiamondKey> (*)(std::span<const uint8_t>, unsigned, std::size_t);

struct DiamondFamily {
    MakeKey make;
    unsigned (*rounds)(int mode) noexcept;
};
constexpr DiamondFamily kDiamond{make_diamond_key, diamond_mode_rounds};
constexpr DiamondFamily kDiamond2{make_diamond2_key, diamond2_mode_rounds};

// Nullptr when the key setup refuses the mode's rounds.
std::unique_ptr<DiamondCipher> diamond_cipher(const DiamondFamily &family, const StrArg &key, int mode) {
    auto k = family.make(bytes_of(key), family.rounds(mode), diamond_mode_block(mode));
    return k ? std::make_unique<DiamondCipher>(std::move(k)) : nullptr;
}

// "" for an empty text, a short key, a refused key setup or a damaged
// enciphered text.
BSTR diamond_string(const DiamondFamily &family, bool decrypt, BSTR *Txt, BSTR *Key, int16_t Mode) {
    return guarded_string([&]() -> BSTR {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg key = StrArg::by_ref(Key);
        if (text.empty() || key.size() < kMinKey)
            return empty_string();
        const std::size_t block = diamond_mode_block(Mode);
        const auto in = bytes_of(text);
        if (decrypt) {
            const auto size = deciphered_size(in, block);
            if (!size || *size == 0)
                return empty_string();
            const auto cipher = diamond_cipher(family, key, Mode);
            if (!cipher)
                return empty_string();
            StringResult result(*size);
            decipher_bytes(*cipher, in, nullptr, reinterpret_cast<uint8_t *>(result.data()));
            return result.take();
        }
        const auto cipher = diamond_cipher(family, key, Mode);
        if (!cipher)
            return empty_string();
        StringResult result(enciphered_size(in.size(), block));
        encipher_bytes(*cipher, in, nullptr, reinterpret_cast<uint8_t *>(result.data()));
        return result.take();
    });
}

int32_t diamond_file(const DiamondFamily &family, bool decrypt, BSTR SourceFile, BSTR TargetFile, BSTR *Key,
                     int16_t Mode) {
    return guarded(int32_t{kFileNoBuffer}, [&]() -> int32_t {
        const StrArg key = StrArg::by_ref(Key);
        if (key.size() < kMinKey)
            return kShortKey;
        const auto cipher = diamond_cipher(family, key, Mode);
        if (!cipher)
            return kKeySetupFailed;
        const auto source = StrArg::by_val(SourceFile).text();
        const auto target = StrArg::by_val(TargetFile).text();
        return decrypt ? decipher_file(*cipher, source, target, nullptr)
                       : encipher_file(*cipher, source, target, nullptr);
    });
}

BSTR ruby_string(bool decrypt, BSTR *Txt, BSTR *Key) {
    return guarded_string([&]() -> BSTR {
        const StrArg text = StrArg::by_ref(Txt);
        const StrArg key = StrArg::by_ref(Key);
        if (text.empty() || key.size() < kMinKey)
            return empty_string();
        const RubyKey cipher(bytes_of(key));
        FeedbackStream stream(cipher);
        StringResult result(text.size());
        auto *out = reinterpret_cast<uint8_t *>(result.data());
        if (decrypt)
            stream.decrypt(bytes_of(text).data(), out, text.size());
        else
            stream.encrypt(bytes_of(text).data(), out, text.size());
        return result.take();
    });
}

int32_t ruby_file(bool decrypt, BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return guarded(int32_t{kFileNoBuffer}, [&]() -> int32_t {
        const StrArg key = StrArg::by_ref(Key);
        if (key.size() < kMinKey)
            return kShortKey;
        const RubyKey cipher(bytes_of(key));
        return feedback_file(cipher, decrypt, StrArg::by_val(SourceFile).text(), StrArg::by_val(TargetFile).text());
    });
}

} // namespace

// DIAMOND: Johnson's Diamond or Diamond Lite, block and rounds by mode.
BRINDLE_EXPORT(BSTR) cDIAMONDencrypt(BSTR *Txt, BSTR *Key, int16_t Mode) {
    return diamond_string(kDiamond, false, Txt, Key, Mode);
}
BRINDLE_EXPORT(BSTR) cDIAMONDdecrypt(BSTR *Txt, BSTR *Key, int16_t Mode) {
    return diamond_string(kDiamond, true, Txt, Key, Mode);
}
BRINDLE_EXPORT(int32_t) cDIAMONDencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key, int16_t Mode) {
    return diamond_file(kDiamond, false, SourceFile, TargetFile, Key, Mode);
}
BRINDLE_EXPORT(int32_t) cDIAMONDdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key, int16_t Mode) {
    return diamond_file(kDiamond, true, SourceFile, TargetFile, Key, Mode);
}

// DIAMOND2: Diamond2 or Diamond2 Lite, block and rounds by mode.
BRINDLE_EXPORT(BSTR) cDIAMOND2encrypt(BSTR *Txt, BSTR *Key, int16_t Mode) {
    return diamond_string(kDiamond2, false, Txt, Key, Mode);
}
BRINDLE_EXPORT(BSTR) cDIAMOND2decrypt(BSTR *Txt, BSTR *Key, int16_t Mode) {
    return diamond_string(kDiamond2, true, Txt, Key, Mode);
}
BRINDLE_EXPORT(int32_t) cDIAMOND2encryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key, int16_t Mode) {
    return diamond_file(kDiamond2, false, SourceFile, TargetFile, Key, Mode);
}
BRINDLE_EXPORT(int32_t) cDIAMOND2decryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key, int16_t Mode) {
    return diamond_file(kDiamond2, true, SourceFile, TargetFile, Key, Mode);
}

// RUBY: 64-bit cipher feedback from a zero register.
BRINDLE_EXPORT(BSTR) cRUBYencrypt(BSTR *Txt, BSTR *Key) { return ruby_string(false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cRUBYdecrypt(BSTR *Txt, BSTR *Key) { return ruby_string(true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cRUBYencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return ruby_file(false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cRUBYdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return ruby_file(true, SourceFile, TargetFile, Key);
}
