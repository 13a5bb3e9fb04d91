// The library's own ciphers for strings and files: the layered cipher
// (cEncrypt, cDecrypt and their file forms) and the autokey stream cipher
// (cCrypt, cFileCrypt).
#include "crypto/autokey_cipher.h"
#include "crypto/layered_cipher.h"
#include "crypto/own_cipher_files.h"
#include "frame/frame.h"

#include <cstring>

using namespace brindle::frame;
using namespace brindle::crypto;

namespace {

std::span<const uint8_t> bytes_of(const StrArg &s) {
    return {reinterpret_cast<const uint8_t *>(s.data()), s.size()};
}

// The layered cipher over a string: "" for an empty text, and for an empty
// key (whose XOR would divide by a key length of 0), as the file forms
// refuse it.
BSTR layered_string(bool decrypt, BSTR *Txt, BSTR *Key, int16_t Level) {
    return guarded_string([&]() -> BSTR {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        const StrArg key = StrArg::by_ref(Key);
        if (key.empty())
            return empty_string();
        StringResult result(text.size());
        auto *out = reinterpret_cast<uint8_t *>(result.data());
        std::memcpy(out, text.data(), text.size());
        const std::span<uint8_t> data(out, text.size());
        if (decrypt)
            layered_decrypt(data, bytes_of(key), Level);
        else
            layered_encrypt(data, bytes_of(key), Level);
        return result.take();
    });
}

int32_t layered_file(bool decrypt, BSTR SourceFile, BSTR TargetFile, BSTR *Key, int16_t Level) {
    return guarded(int32_t{kOwnNoBuffer}, [&]() -> int32_t {
        const StrArg key = StrArg::by_ref(Key);
        if (key.empty())
            return kOwnEmptyKey;
        LayeredKeyCursor cursor;
        return own_cipher_file(StrArg::by_val(SourceFile).text(), StrArg::by_val(TargetFile).text(),
                               [&](std::span<uint8_t> block) {
                                   if (decrypt)
                                       layered_decrypt(block, bytes_of(key), Level, &cursor);
                                   else
                                       layered_encrypt(block, bytes_of(key), Level, &cursor);
                               });
    });
}

// The key of the stream cipher: the caller's bytes up to the first zero,
// changed in place. A null handle is an empty key.
std::span<uint8_t> stream_key(const StrArg &key) {
    char *bytes = key.writable();
    if (bytes == nullptr)
        return {};
    return {reinterpret_cast<uint8_t *>(bytes), key.text().size()};
}

} // namespace

// The layered cipher.
BRINDLE_EXPORT(BSTR) cEncrypt(BSTR *Txt, BSTR *Key, int16_t Level) { return layered_string(false, Txt, Key, Level); }
BRINDLE_EXPORT(BSTR) cDecrypt(BSTR *Txt, BSTR *Key, int16_t Level) { return layered_string(true, Txt, Key, Level); }
BRINDLE_EXPORT(int32_t) cFileEncrypt(BSTR SourceFile, BSTR TargetFile, BSTR *Key, int16_t Level) {
    return layered_file(false, SourceFile, TargetFile, Key, Level);
}
BRINDLE_EXPORT(int32_t) cFileDecrypt(BSTR SourceFile, BSTR TargetFile, BSTR *Key, int16_t Level) {
    return layered_file(true, SourceFile, TargetFile, Key, Level);
}

// The autokey stream cipher: the caller's key bytes change.
BRINDLE_EXPORT(BSTR) cCrypt(BSTR *Txt, BSTR Key) {
    return guarded_string([&]() -> BSTR {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty())
            return empty_string();
        const StrArg key = StrArg::by_val(Key);
        const auto k = stream_key(key);
        if (k.empty())
            return same_handle(text);
        StringResult result(text.size());
        auto *out = reinterpret_cast<uint8_t *>(result.data());
        std::memcpy(out, text.data(), text.size());
        autokey_crypt(std::span<uint8_t>(out, text.size()), k);
        return result.take();
    });
}

BRINDLE_EXPORT(int32_t) cFileCrypt(BSTR SourceFile, BSTR TargetFile, BSTR Key) {
    return guarded(int32_t{kOwnNoBuffer}, [&]() -> int32_t {
        const auto k = stream_key(StrArg::by_val(Key));
        if (k.empty())
            return kOwnEmptyKey;
        // The position starts at 0 in every block; the key runs on.
        return own_cipher_file(StrArg::by_val(SourceFile).text(), StrArg::by_val(TargetFile).text(),
                               [&](std::span<uint8_t> block) { autokey_crypt(block, k); });
    });
}
