// The permission-list matcher against a plain transcription of its rules
// (patterns cut with find_first_of, compared by folded copies). Layout of an
// input: one byte giving the address's length, the address, then the list.
#include "fuzz_target.h"
#include "system/permit_list.h"

#include <string>
#include <string_view>

namespace {

std::string folded(std::string_view s) {
    std::string out(s);
    for (char &c : out)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c + 32);
    return out;
}

bool reference(std::string_view address, std::string_view list) {
    const size_t first = address.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return false;
    address = address.substr(first, address.find_last_not_of(" \t") - first + 1);
    const std::string a = folded(address);
    size_t at = 0;
    while ((at = list.find_first_not_of(" \t,", at)) != std::string_view::npos) {
        const size_t end = list.find_first_of(" \t,", at);
        std::string p = folded(list.substr(at, end == std::string_view::npos ? std::string_view::npos : end - at));
        at = end == std::string_view::npos ? list.size() : end;
        const bool deny = p[0] == '!';
        if (deny)
            p.erase(0, 1);
        const size_t star = p.find('*');
        const bool hit = star == std::string::npos ? p == a : a.compare(0, star, p, 0, star) == 0 && a.size() >= star;
        if (hit)
            return !deny;
    }
    return false;
}

} // namespace

BRINDLE_FUZZ_TARGET(permit_list) {
    if (size < 1)
        return 0;
    const size_t alen = data[0] < size - 1 ? data[0] : size - 1;
    const std::string_view address(reinterpret_cast<const char *>(data) + 1, alen);
    const std::string_view list(reinterpret_cast<const char *>(data) + 1 + alen, size - 1 - alen);
    const bool got = brindle::system::address_permitted(address, list);
    FUZZ_CHECK(got == reference(address, list));
    // "*" admits every address that is not blank; "!*" denies every one.
    const bool blank = address.find_first_not_of(" \t") == std::string_view::npos;
    FUZZ_CHECK(brindle::system::address_permitted(address, "*") == !blank);
    FUZZ_CHECK(!brindle::system::address_permitted(address, "!* *"));
    return 0;
}
