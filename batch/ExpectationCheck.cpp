#include "ExpectationCheck.h"

#include "EciText.h"
#include "ZyrReaderLowLevelAPI.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

// True when expected[position..] is the unused symbols joined by "\n" in some order.
bool Matches(const std::string& expected, size_t position, const std::vector<DecodedSymbol>& symbols,
             std::vector<bool>& used, size_t remaining) {
    if (remaining == 0) {
        return position == expected.size();
    }
    for (size_t i = 0; i < symbols.size(); ++i) {
        const std::string& bytes = symbols[i].bytes;
        if (used[i] || expected.compare(position, bytes.size(), bytes) != 0) {
            continue;
        }
        const size_t end = position + bytes.size();
        const bool last = remaining == 1;
        if (last ? end != expected.size() : (end >= expected.size() || expected[end] != '\n')) {
            continue;
        }
        used[i] = true;
        if (Matches(expected, last ? end : end + 1, symbols, used, remaining - 1)) {
            return true;
        }
        used[i] = false;
    }
    return false;
}

bool MatchesAnyOrder(const std::string& expected, const std::vector<DecodedSymbol>& symbols) {
    std::vector<bool> used(symbols.size(), false);
    return Matches(expected, 0, symbols, used, symbols.size());
}

// True when bytes stand in text at "at" from a line's start to a line's end.
bool IsWholeLinesAt(const std::string& text, const std::string& bytes, size_t at) {
    const size_t end = at + bytes.size();
    return (at == 0 || text[at - 1] == '\n') &&
           (end == text.size() || text[end] == '\n' || text.compare(end, 2, "\r\n") == 0);
}

// True when symbols[index..] can each be placed on whole lines of text that no other symbol
// already covers: every symbol read is one the image holds, none twice.
bool PlacesOnDistinctLines(const std::string& text, const std::vector<DecodedSymbol>& symbols, size_t index,
                           std::vector<std::pair<size_t, size_t>>& taken) {
    if (index == symbols.size()) {
        return true;
    }
    const std::string& bytes = symbols[index].bytes;
    if (bytes.empty()) {
        return false;
    }
    for (size_t at = text.find(bytes); at != std::string::npos; at = text.find(bytes, at + 1)) {
        const size_t end = at + bytes.size();
        const bool overlaps =
            std::any_of(taken.begin(), taken.end(), [&](const std::pair<size_t, size_t>& span) {
                return at < span.second && span.first < end;
            });
        if (overlaps || !IsWholeLinesAt(text, bytes, at)) {
            continue;
        }
        taken.emplace_back(at, end);
        if (PlacesOnDistinctLines(text, symbols, index + 1, taken)) {
            return true;
        }
        taken.pop_back();
    }
    return false;
}

std::string WithoutFinalLineEnd(const std::string& text) {
    if (text.size() >= 2 && text.compare(text.size() - 2, 2, "\r\n") == 0) {
        return text.substr(0, text.size() - 2);
    }
    if (!text.empty() && text.back() == '\n') {
        return text.substr(0, text.size() - 1);
    }
    return text;
}

Verdict JudgeBytes(const std::string& expected, const std::vector<DecodedSymbol>& symbols) {
    const std::string trimmed = WithoutFinalLineEnd(expected);
    if (symbols.empty()) {
        return trimmed.empty() ? Verdict::Pass : Verdict::Miss;
    }
    if (MatchesAnyOrder(expected, symbols) || (trimmed != expected && MatchesAnyOrder(trimmed, symbols))) {
        return Verdict::Pass;
    }
    std::vector<std::pair<size_t, size_t>> taken;
    return PlacesOnDistinctLines(expected, symbols, 0, taken) ? Verdict::Miss : Verdict::Misread;
}

} // namespace

std::string ExpectationCheck::ExpectedPath(const std::string& imagePath) {
    return std::filesystem::path(imagePath).replace_extension(".txt").string();
}

std::optional<std::string> ExpectationCheck::ReadExpected(const std::string& imagePath) {
    std::ifstream in(ExpectedPath(imagePath), std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (in.bad()) {
        return std::nullopt;
    }
    return bytes.str();
}

Verdict ExpectationCheck::Judge(const std::optional<std::string>& expected,
                                const std::vector<DecodedSymbol>& symbols) {
    if (!expected) {
        return Verdict::Unchecked;
    }
    const Verdict byBytes = JudgeBytes(*expected, symbols);
    if (byBytes == Verdict::Pass || !EciText::ToUtf8(*expected, ZYR_ECI_UTF8)) {
        return byBytes;
    }
    // The file holds text: symbols in other character sets match by their text.
    std::vector<DecodedSymbol> asText = symbols;
    for (DecodedSymbol& symbol : asText) {
        if (const std::optional<std::string> text = SymbolUtf8(symbol)) {
            symbol.bytes = *text;
        }
    }
    return JudgeBytes(*expected, asText) == Verdict::Pass ? Verdict::Pass : byBytes;
}


const char* ExpectationCheck::Name(Verdict verdict) {
    switch (verdict) {
    case Verdict::Pass:
        return "pass";
    case Verdict::Misread:
        return "misread";
    case Verdict::Miss:
        return "miss";
    case Verdict::Unchecked:
        return "unchecked";
    }
    return "";
}
