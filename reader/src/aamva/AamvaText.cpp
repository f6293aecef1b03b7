#include "AamvaText.h"

namespace zyr {

std::string_view AamvaText::trim(std::string_view text) {
    auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\0'; };
    while (!text.empty() && blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && blank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool AamvaText::allDigits(std::string_view text) {
    if (text.empty())
        return false;
    for (char c : text)
        if (!isDigit(c))
            return false;
    return true;
}

bool AamvaText::toNumber(std::string_view text, long& value) {
    if (!allDigits(text) || text.size() > 9)
        return false;
    value = 0;
    for (char c : text)
        value = value * 10 + (c - '0');
    return true;
}

bool AamvaText::equalsUpper(std::string_view text, std::string_view upperWord) {
    if (text.size() != upperWord.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (toUpper(text[i]) != upperWord[i])
            return false;
    return true;
}

bool AamvaText::isPlaceholder(std::string_view text) {
    text = trim(text);
    return text.empty() || equalsUpper(text, "NONE") || equalsUpper(text, "UNAVL") ||
           equalsUpper(text, "UNAVAIL");
}

void AamvaText::appendWord(std::string& out, std::string_view word) {
    word = trim(word);
    if (word.empty())
        return;
    if (!out.empty())
        out += ' ';
    out.append(word);
}

} // namespace zyr
