#include "SymbolRules.h"

#include <algorithm>
#include <cstdio>

namespace plugincheck {
namespace {

bool knownDataType(int32_t type) {
    return type == ZYR_DATA_ASCII || type == ZYR_DATA_TEXT8 || type == ZYR_DATA_BINARY ||
           type == ZYR_DATA_STRING || type == ZYR_DATA_ECI_BYTES;
}

bool textType(int32_t type) {
    return type == ZYR_DATA_ASCII || type == ZYR_DATA_TEXT8 || type == ZYR_DATA_STRING;
}

} // namespace

std::vector<std::string> symbolProblems(const SymbolCopy& symbol, int width, int height) {
    std::vector<std::string> problems;
    if (symbol.symbology < ZYR_SYM_UNKNOWN || symbol.symbology > ZYR_SYM_DATABAR_EXPANDED)
        problems.push_back("unknown symbology " + std::to_string(symbol.symbology));
    if (!knownDataType(symbol.dataType))
        problems.push_back("unknown data type " + std::to_string(symbol.dataType));
    if (symbol.length != int32_t(symbol.bytes.size()) || !symbol.terminated)
        problems.push_back("data length " + std::to_string(symbol.length) + " does not match its bytes");
    if (symbol.eci < 0 || symbol.eci > 999999)
        problems.push_back("ECI " + std::to_string(symbol.eci) + " out of range");
    else if ((symbol.dataType == ZYR_DATA_ECI_BYTES) != (symbol.eci != ZYR_ECI_NONE))
        problems.push_back("data type " + std::to_string(symbol.dataType) + " with ECI " + std::to_string(symbol.eci));
    if (textType(symbol.dataType) && symbol.bytes.find('\0') != std::string::npos)
        problems.push_back("text data type " + std::to_string(symbol.dataType) + " with a NUL byte");
    if (symbol.dataType == ZYR_DATA_ASCII &&
        std::any_of(symbol.bytes.begin(), symbol.bytes.end(), [](char c) { return (unsigned char)c > 0x7F; }))
        problems.push_back("ASCII data type with bytes above 0x7F");
    bool inside = true, onePoint = true;
    for (const ZyrPoint& p : symbol.corners) {
        inside = inside && p.X >= 0 && p.Y >= 0 && p.X <= width && p.Y <= height;
        onePoint = onePoint && p.X == symbol.corners[0].X && p.Y == symbol.corners[0].Y;
    }
    if (!inside) {
        char text[160];
        std::snprintf(text, sizeof text, "corners (%d,%d) (%d,%d) (%d,%d) (%d,%d) outside the %dx%d image",
                      symbol.corners[0].X, symbol.corners[0].Y, symbol.corners[1].X, symbol.corners[1].Y,
                      symbol.corners[2].X, symbol.corners[2].Y, symbol.corners[3].X, symbol.corners[3].Y, width,
                      height);
        problems.push_back(text);
    } else if (onePoint) {
        problems.push_back("all four corners in one point");
    }
    return problems;
}

std::vector<std::string> contentProblems(const CheckImage& image, const std::vector<SymbolCopy>& symbols,
                                         int& eciUnreported) {
    std::vector<std::string> problems;
    std::vector<bool> seen(image.expected.size(), false);
    for (const SymbolCopy& symbol : symbols) {
        const auto holds = [&](const ExpectedSymbol& e) { return e.bytes == symbol.bytes; };
        auto match = std::find_if(image.expected.begin(), image.expected.end(), holds);
        if (match == image.expected.end()) {
            problems.push_back("read \"" + printable(symbol.bytes) + "\", which the image does not hold");
            continue;
        }
        // An image may hold several copies of one symbol: each copy may be reported once.
        while (match != image.expected.end() && seen[size_t(match - image.expected.begin())])
            match = std::find_if(std::next(match), image.expected.end(), holds);
        if (match == image.expected.end()) {
            problems.push_back("\"" + printable(symbol.bytes) + "\" reported twice");
            continue;
        }
        seen[size_t(match - image.expected.begin())] = true;
        if (symbol.eci == ZYR_ECI_NONE && match->eci != ZYR_ECI_NONE)
            ++eciUnreported;
        else if (symbol.eci != match->eci)
            problems.push_back("\"" + printable(symbol.bytes) + "\" with ECI " + std::to_string(symbol.eci) +
                               ", the symbol carries " + std::to_string(match->eci));
    }
    return problems;
}

std::string printable(const std::string& bytes) {
    std::string text;
    for (size_t i = 0; i < bytes.size() && i < 40; ++i) {
        const unsigned char c = (unsigned char)bytes[i];
        if (c >= 0x20 && c < 0x7F && c != '\\' && c != '"') {
            text += char(c);
        } else {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\x%02X", c);
            text += hex;
        }
    }
    if (bytes.size() > 40)
        text += "...";
    return text;
}

} // namespace plugincheck
