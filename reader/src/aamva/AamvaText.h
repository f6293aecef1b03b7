// Small text helpers shared by the AAMVA readers. Card data is single-byte text.
#ifndef ZYR_AAMVA_TEXT_H
#define ZYR_AAMVA_TEXT_H

#include <string>
#include <string_view>

namespace zyr {

class AamvaText {
public:
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    static bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
    static bool isAlnum(char c) { return isDigit(c) || isUpper(c) || (c >= 'a' && c <= 'z'); }
    static char toUpper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

    // Spaces, tabs and NULs at either end removed (cards pad fixed-width fields).
    static std::string_view trim(std::string_view text);

    static bool allDigits(std::string_view text);

    // Number from a run of digits; false when text is empty, holds anything else, or overflows.
    static bool toNumber(std::string_view text, long& value);

    // Case-insensitive comparison with an upper-case ASCII word.
    static bool equalsUpper(std::string_view text, std::string_view upperWord);

    // Blank, "NONE", "unavl" or "unavail": the card says there is no value.
    static bool isPlaceholder(std::string_view text);

    // Words separated by single spaces, skipping empty ones.
    static void appendWord(std::string& out, std::string_view word);
};

} // namespace zyr

#endif
