#include "convert/morse.h"

namespace brindle::convert {

const char *morse_code_of(unsigned char c) {
    static const char *const kDigits[10] = {".....", "-....", "--...", "---..", "----.",
                                            "-----", ".----", "..---", "...--", "....-"};
    static const char *const kLetters[26] = {"-.",   ".---", ".-.-", ".--",  "-",    "--.-", "..-",
                                             "----", "--",   "-...", ".-.",  "-.--", "..",   ".-",
                                             "...",  "-..-", "..-.", "-.-",  "---",  ".",    "--.",
                                             "---.", "-..",  ".--.", ".-..", "..--"};
    if (c >= '0' && c <= '9')
        return kDigits[c - '0'];
    if (c >= 'A' && c <= 'Z')
        return kLetters[c - 'A'];
    switch (c) {
    case ',': return "..--..";
    case '-': return ".---.";
    case '.': return "-.-.-.";
    case '/': return ".--.-";
    case '?': return "--..--";
    default: return nullptr;
    }
}

std::string morse_text(std::string_view text) {
    std::string out;
    for (const char ch : text) {
        unsigned char c = static_cast<unsigned char>(ch);
        if (c >= 'a' && c <= 'z')
            c = static_cast<unsigned char>(c - 'a' + 'A');
        if (c < 32 || c > 90)
            continue;
        if (const char *code = morse_code_of(c)) {
            out += code;
            out += ' ';
        } else {
            out += '~';
        }
    }
    return out;
}

} // namespace brindle::convert
