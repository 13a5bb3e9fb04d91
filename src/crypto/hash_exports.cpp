// The MD5 digest of a string, each 32-bit word of it with its bytes in
// reverse order (the digest's words read as big-endian numbers, as the
// library has always returned them).
#include "crypto/md5.h"
#include "crypto/secure_wipe.h"
#include "frame/frame.h"

#include <string>

using namespace brindle::frame;

namespace {

// Longer texts were never digested: the work buffer held 32,766 bytes.
constexpr std::size_t kLongestText = 32766;

} // namespace

// The 16 digest bytes, words reversed; "" for an empty or too long text.
BRINDLE_EXPORT(BSTR) cHashMD5(BSTR *Txt) {
    return guarded_string([&]() -> BSTR {
        const StrArg text = StrArg::by_ref(Txt);
        if (text.empty() || text.size() > kLongestText)
            return empty_string();
        auto digest = brindle::crypto::md5(
            {reinterpret_cast<const uint8_t *>(text.data()), text.size()});
        std::string out(16, '\0');
        for (std::size_t i = 0; i < 16; ++i)
            out[i] = static_cast<char>(digest[(i & ~std::size_t{3}) + 3 - (i & 3)]);
        brindle::crypto::secure_wipe(digest.data(), digest.size());
        BSTR result = new_string(out);
        brindle::crypto::secure_wipe(out.data(), out.size());
        return result;
    });
}
