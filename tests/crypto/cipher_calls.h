// Calls of the block-cipher exports as a client makes them: strings in, a
// string or a Long out, the BSTRs made and freed here.
#pragma once

#include "support/ole_helpers.h"

#include <cstdint>
#include <string>

namespace brindle::test {

using StringFn = BSTR(BRINDLE_CALL *)(BSTR *, BSTR *);
using FileFn = int32_t(BRINDLE_CALL *)(BSTR, BSTR, BSTR *);

// A string form: f(Txt, Key).
inline std::string call(StringFn f, const std::string &text, const std::string &key) {
    Bstr t(text), k(key);
    return str(f(t.ref(), k.ref()));
}

// The ECB dispatcher: f(Code, Txt, Key).
inline std::string code_call(BSTR(BRINDLE_CALL *f)(int16_t, BSTR *, BSTR *), int16_t code, const std::string &text,
                             const std::string &key) {
    Bstr t(text), k(key);
    return str(f(code, t.ref(), k.ref()));
}

// The 15-byte CBC dispatcher, either way.
inline std::string cbc(bool decrypt, int16_t code, const std::string &text, const std::string &key,
                       const std::string &iv) {
    Bstr t(text), k(key), v(iv);
    return str((decrypt ? cAES2RNDdecryptCBC : cAES2RNDencryptCBC)(code, t.ref(), k.ref(), v.ref()));
}

// A file form: f(SourceFile, TargetFile, Key).
inline int32_t file_call(FileFn f, const std::string &source, const std::string &target, const std::string &key) {
    Bstr s(source), t(target), k(key);
    return f(s.val(), t.val(), k.ref());
}

} // namespace brindle::test
