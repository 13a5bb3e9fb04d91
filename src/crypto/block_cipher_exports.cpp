// The block ciphers for strings and files: Rijndael, MARS, RC6, Serpent,
// Twofish, CAST-256, DES and IDEA by their own exports, and the AES candidates by a numeric code in ECB and in the
// 15-byte CBC.
#include "crypto/block_framing.h"
#include "crypto/cipher_table.h"
#include "frame/frame.h"

#include <optional>

using namespace brindle::frame;
using namespace brindle::crypto;

namespace {

// Key too short for the cipher; IV of 1 to 15 bytes (file forms).
constexpr int32_t kShortKey = -1;
constexpr int32_t kShortIv = -3;

std::span<const uint8_t> bytes_of(const StrArg &s) {
    return {reinterpret_cast<const uint8_t *>(s.data()), s.size()};
}

// The string forms: `row` null (a code naming no cipher) gives "", as do an
// empty text, a short key, an IV of 1 to 15 bytes (`IV` null: ECB) and a
// damaged enciphered text.
BSTR string_form(const CipherRow *row, bool decrypt, BSTR *Txt, BSTR *Key, BSTR *IV = nullptr) {
    return guarded_string([&]() -> BSTR {
        const StrArg text = StrArg::by_ref(Txt);
        if (row == nullptr || text.empty())
            return empty_string();
        const StrArg key = StrArg::by_ref(Key);
        if (key.size() < row->key_bytes)
            return empty_string();
        std::optional<ChainIv> iv;
        if (IV != nullptr && !(iv = chain_iv(StrArg::by_ref(IV).bytes())))
            return empty_string();
        const ChainIv *chain = iv ? &*iv : nullptr;
        const auto in = bytes_of(text);
        if (decrypt) {
            const auto size = deciphered_size(in, row->block_bytes);
            if (!size || *size == 0)
                return empty_string();
            const auto cipher = row->make(bytes_of(key));
            StringResult result(*size);
            decipher_bytes(*cipher, in, chain, reinterpret_cast<uint8_t *>(result.data()));
            return result.take();
        }
        const auto cipher = row->make(bytes_of(key));
        StringResult result(enciphered_size(in.size(), row->block_bytes));
        encipher_bytes(*cipher, in, chain, reinterpret_cast<uint8_t *>(result.data()));
        return result.take();
    });
}

// The file forms: 0 for a code naming no cipher, -1 short key, -3 IV of 1
// to 15 bytes, then the codes of block_framing.h.
int32_t file_form(const CipherRow *row, bool decrypt, BSTR SourceFile, BSTR TargetFile, BSTR *Key,
                  BSTR *IV = nullptr) {
    return guarded(int32_t{kFileNoBuffer}, [&]() -> int32_t {
        if (row == nullptr)
            return 0;
        const StrArg key = StrArg::by_ref(Key);
        if (key.size() < row->key_bytes)
            return kShortKey;
        std::optional<ChainIv> iv;
        if (IV != nullptr && !(iv = chain_iv(StrArg::by_ref(IV).bytes())))
            return kShortIv;
        const ChainIv *chain = iv ? &*iv : nullptr;
        const auto cipher = row->make(bytes_of(key));
        const auto source = StrArg::by_val(SourceFile).text();
        const auto target = StrArg::by_val(TargetFile).text();
        return decrypt ? decipher_file(*cipher, source, target, chain) : encipher_file(*cipher, source, target, chain);
    });
}

const CipherRow *rijndael() { return cipher_row(CipherId::rijndael); }
const CipherRow *des() { return cipher_row(CipherId::des); }
const CipherRow *idea() { return cipher_row(CipherId::idea); }
const CipherRow *mars() { return cipher_row(CipherId::mars); }
const CipherRow *rc6() { return cipher_row(CipherId::rc6); }
const CipherRow *cast256() { return cipher_row(CipherId::cast256); }
const CipherRow *serpent() { return cipher_row(CipherId::serpent); }
const CipherRow *twofish() { return cipher_row(CipherId::twofish); }

} // namespace

// Rijndael (128-bit block, 256-bit key), ECB.
BRINDLE_EXPORT(BSTR) cRIJNDAELencrypt(BSTR *Txt, BSTR *Key) { return string_form(rijndael(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cRIJNDAELdecrypt(BSTR *Txt, BSTR *Key) { return string_form(rijndael(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cRIJNDAELencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(rijndael(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cRIJNDAELdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(rijndael(), true, SourceFile, TargetFile, Key);
}

// The AES candidates by code (modulo 20), ECB.
BRINDLE_EXPORT(BSTR) cAES2RNDencrypt(int16_t Code, BSTR *Txt, BSTR *Key) {
    return string_form(aes_candidate(Code), false, Txt, Key);
}
BRINDLE_EXPORT(BSTR) cAES2RNDdecrypt(int16_t Code, BSTR *Txt, BSTR *Key) {
    return string_form(aes_candidate(Code), true, Txt, Key);
}
BRINDLE_EXPORT(int32_t) cAES2RNDencryptFile(int16_t Code, BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(aes_candidate(Code), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cAES2RNDdecryptFile(int16_t Code, BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(aes_candidate(Code), true, SourceFile, TargetFile, Key);
}

// The AES candidates by code (modulo 20), 15-byte CBC.
BRINDLE_EXPORT(BSTR) cAES2RNDencryptCBC(int16_t Code, BSTR *Txt, BSTR *Key, BSTR *IV) {
    return string_form(aes_candidate(Code), false, Txt, Key, IV);
}
BRINDLE_EXPORT(BSTR) cAES2RNDdecryptCBC(int16_t Code, BSTR *Txt, BSTR *Key, BSTR *IV) {
    return string_form(aes_candidate(Code), true, Txt, Key, IV);
}
BRINDLE_EXPORT(int32_t) cAES2RNDencryptFileCBC(int16_t Code, BSTR SourceFile, BSTR TargetFile, BSTR *Key, BSTR *IV) {
    return file_form(aes_candidate(Code), false, SourceFile, TargetFile, Key, IV);
}
BRINDLE_EXPORT(int32_t) cAES2RNDdecryptFileCBC(int16_t Code, BSTR SourceFile, BSTR TargetFile, BSTR *Key, BSTR *IV) {
    return file_form(aes_candidate(Code), true, SourceFile, TargetFile, Key, IV);
}

// Single DES, ECB.
BRINDLE_EXPORT(BSTR) cDESencrypt(BSTR *Txt, BSTR *Key) { return string_form(des(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cDESdecrypt(BSTR *Txt, BSTR *Key) { return string_form(des(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cDESencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(des(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cDESdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(des(), true, SourceFile, TargetFile, Key);
}

// IDEA, ECB.
BRINDLE_EXPORT(BSTR) cIDEAencrypt(BSTR *Txt, BSTR *Key) { return string_form(idea(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cIDEAdecrypt(BSTR *Txt, BSTR *Key) { return string_form(idea(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cIDEAencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(idea(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cIDEAdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(idea(), true, SourceFile, TargetFile, Key);
}

// MARS (256-bit key), ECB.
BRINDLE_EXPORT(BSTR) cMARSencrypt(BSTR *Txt, BSTR *Key) { return string_form(mars(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cMARSdecrypt(BSTR *Txt, BSTR *Key) { return string_form(mars(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cMARSencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(mars(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cMARSdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(mars(), true, SourceFile, TargetFile, Key);
}

// RC6-32/20/32 (256-bit key), ECB.
BRINDLE_EXPORT(BSTR) cRC6encrypt(BSTR *Txt, BSTR *Key) { return string_form(rc6(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cRC6decrypt(BSTR *Txt, BSTR *Key) { return string_form(rc6(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cRC6encryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(rc6(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cRC6decryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(rc6(), true, SourceFile, TargetFile, Key);
}

// CAST-256 (256-bit key), ECB.
BRINDLE_EXPORT(BSTR) cCAST256encrypt(BSTR *Txt, BSTR *Key) { return string_form(cast256(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cCAST256decrypt(BSTR *Txt, BSTR *Key) { return string_form(cast256(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cCAST256encryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(cast256(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cCAST256decryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(cast256(), true, SourceFile, TargetFile, Key);
}

// Serpent (128-bit block, 256-bit key), ECB.
BRINDLE_EXPORT(BSTR) cSERPENTencrypt(BSTR *Txt, BSTR *Key) { return string_form(serpent(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cSERPENTdecrypt(BSTR *Txt, BSTR *Key) { return string_form(serpent(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cSERPENTencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(serpent(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cSERPENTdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(serpent(), true, SourceFile, TargetFile, Key);
}

// Twofish (128-bit block, 256-bit key), ECB.
BRINDLE_EXPORT(BSTR) cTWOFISHencrypt(BSTR *Txt, BSTR *Key) { return string_form(twofish(), false, Txt, Key); }
BRINDLE_EXPORT(BSTR) cTWOFISHdecrypt(BSTR *Txt, BSTR *Key) { return string_form(twofish(), true, Txt, Key); }
BRINDLE_EXPORT(int32_t) cTWOFISHencryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(twofish(), false, SourceFile, TargetFile, Key);
}
BRINDLE_EXPORT(int32_t) cTWOFISHdecryptFile(BSTR SourceFile, BSTR TargetFile, BSTR *Key) {
    return file_form(twofish(), true, SourceFile, TargetFile, Key);
}
