#include "AamvaNameReader.h"

#include "AamvaText.h"

#include <vector>

namespace zyr {
namespace {

std::string_view clean(std::string_view value) {
    value = AamvaText::trim(value);
    return AamvaText::isPlaceholder(value) ? std::string_view() : value;
}

// One name, without the commas some cards leave after it ("SAMPLE,").
std::string_view part(std::string_view value) {
    value = clean(value);
    while (!value.empty() && (value.back() == ',' || value.back() == ' '))
        value.remove_suffix(1);
    return value;
}

bool endsInComma(std::string_view value) {
    value = AamvaText::trim(value);
    return !value.empty() && value.back() == ',';
}

std::vector<std::string_view> splitOn(std::string_view text, std::string_view separators) {
    std::vector<std::string_view> parts;
    std::size_t from = 0;
    while (true) {
        const std::size_t at = text.find_first_of(separators, from);
        parts.push_back(
            part(text.substr(from, at == std::string_view::npos ? std::string_view::npos : at - from)));
        if (at == std::string_view::npos)
            return parts;
        from = at + 1;
    }
}

std::string joinWords(const std::vector<std::string_view>& words, std::size_t from, std::size_t to) {
    std::string out;
    for (std::size_t i = from; i < to && i < words.size(); ++i)
        AamvaText::appendWord(out, words[i]);
    return out;
}

void fillIfEmpty(std::string& field, std::string_view value) {
    if (field.empty())
        field = std::string(value);
}

} // namespace

bool AamvaNameReader::isSuffix(std::string_view word) {
    static const char* const kSuffixes[] = {"JR",  "JR.", "SR",  "SR.", "1ST",  "2ND", "3RD",
                                            "4TH", "5TH", "6TH", "7TH", "8TH",  "9TH", "II",
                                            "III", "IV",  "VI",  "VII", "VIII", "IX"};
    for (const char* suffix : kSuffixes)
        if (AamvaText::equalsUpper(word, suffix))
            return true;
    return false;
}

// "LAST,FIRST,MIDDLE,SUFFIX" ($ or @ also separate), or "FIRST MIDDLE LAST [SUFFIX]" with spaces.
void AamvaNameReader::splitFullName(std::string_view full, AamvaName& name) {
    std::string surname, forename, middle, suffix;
    if (full.find_first_of(",$@") != std::string_view::npos) {
        std::vector<std::string_view> parts = splitOn(full, ",$@");
        surname = std::string(parts[0]);
        if (parts.size() >= 2) {
            // "SMITH, MARY JONES": the middle name rides with the first.
            std::vector<std::string_view> firstWords = splitOn(parts[1], " ");
            forename = std::string(firstWords[0]);
            middle = joinWords(firstWords, 1, firstWords.size());
        }
        std::size_t middleEnd = parts.size();
        if (parts.size() >= 4 && isSuffix(parts.back())) {
            suffix = std::string(parts.back());
            --middleEnd;
        }
        for (std::size_t i = 2; i < middleEnd; ++i)
            AamvaText::appendWord(middle, parts[i]);
    } else {
        std::vector<std::string_view> words;
        for (std::string_view w : splitOn(full, " "))
            if (!w.empty())
                words.push_back(w);
        if (words.size() >= 3 && isSuffix(words.back())) {
            suffix = std::string(words.back());
            words.pop_back();
        }
        if (!words.empty()) {
            surname = std::string(words.back());
            if (words.size() >= 2)
                forename = std::string(words.front());
            middle = joinWords(words, 1, words.size() - 1);
        }
    }
    fillIfEmpty(name.surname, surname);
    if (name.forename.empty()) {
        name.forename = forename;
        fillIfEmpty(name.middle, middle);
    }
    fillIfEmpty(name.suffix, suffix);
}

// "FIRST,MIDDLE[,MIDDLE]" or, without commas, "FIRST MIDDLE"; trailing commas are dropped. Fills
// only the parts the separate name elements left empty.
void AamvaNameReader::splitGivenNames(std::string_view given, AamvaName& name) {
    std::vector<std::string_view> parts;
    if (given.find(',') != std::string_view::npos) {
        parts = splitOn(given, ",");
    } else {
        const std::size_t space = given.find(' ');
        parts.push_back(part(given.substr(0, space)));
        if (space != std::string_view::npos)
            parts.push_back(part(given.substr(space + 1)));
    }
    if (name.forename.empty())
        name.forename = std::string(parts[0]);
    if (name.middle.empty())
        name.middle = joinWords(parts, 1, parts.size());
}

AamvaName AamvaNameReader::read(const AamvaNameElements& e, AamvaRepairs* repairs) {
    AamvaName name;
    const std::string_view family = !clean(e.dcs).empty() ? e.dcs : e.dab;
    name.surname = std::string(part(family));
    name.forename = std::string(part(e.dac));
    name.middle = joinWords(splitOn(clean(e.dad), ","), 0, 64);
    name.suffix = std::string(!part(e.dcu).empty() ? part(e.dcu) : part(e.dae));
    if (repairs != nullptr)
        for (std::string_view value : {family, e.dac, e.dad, e.dcu, e.dae})
            if (endsInComma(value) && clean(value).size() > 1)
                repairs->note("trailing comma after the name \"%.*s\" dropped",
                              static_cast<int>(part(value).size()), part(value).data());
    if ((name.forename.empty() || name.middle.empty()) && !clean(e.dct).empty())
        splitGivenNames(clean(e.dct), name);
    // "LAST,FIRST,MIDDLE" in the family name element; or "FIRST MIDDLE LAST" when the card has no
    // other name element at all (a family name of several words comes with a first name).
    const bool noOtherName =
        AamvaText::trim(e.dac).empty() && AamvaText::trim(e.dct).empty() && AamvaText::trim(e.daa).empty();
    if (name.forename.empty() && (name.surname.find(',') != std::string::npos ||
                                  (noOtherName && name.surname.find(' ') != std::string::npos))) {
        const std::string full = name.surname;
        name.surname.clear();
        splitFullName(full, name);
        if (repairs != nullptr)
            repairs->note("full name taken apart from the family name element");
    }
    if ((name.surname.empty() || name.forename.empty()) && !clean(e.daa).empty())
        splitFullName(clean(e.daa), name);

    AamvaText::appendWord(name.given, name.forename);
    AamvaText::appendWord(name.given, name.middle);
    if (!clean(e.daa).empty()) {
        name.full = std::string(clean(e.daa));
    } else {
        name.full = name.given;
        AamvaText::appendWord(name.full, name.surname);
        AamvaText::appendWord(name.full, name.suffix);
    }
    return name;
}

} // namespace zyr
