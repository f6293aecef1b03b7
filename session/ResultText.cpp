#include "ResultText.h"

#include <cstdio>
#include <cstring>

namespace {

const char* const kControlNames[32] = {"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL",
                                       "BS",  "HT",  "LF",  "VT",  "FF",  "CR",  "SO",  "SI",
                                       "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB",
                                       "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};

} // namespace

std::string ResultRowText(const std::string& bytes, RowBytes encoding) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string shown;
    shown.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        if (c < 0x20) {
            shown.append("<").append(kControlNames[c]).append(">");
        } else if (c == 0x7F) {
            shown.append("<DEL>");
        } else if (encoding == RowBytes::Latin1 && c >= 0x80 && c < 0xA0) {
            shown.append({'<', kHex[c >> 4], kHex[c & 0x0F], '>'});
        } else {
            shown.push_back(byte);
        }
    }
    return shown;
}

std::string MillisecondsText(std::chrono::nanoseconds time) {
    char text[32];
    std::snprintf(text, sizeof text, "%dms",
                  static_cast<int32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(time).count()));
    return text;
}

std::string SymbolText(const DecodedSymbol& symbol) {
    const bool text = symbol.dataType == ZYR_DATA_ASCII || symbol.dataType == ZYR_DATA_TEXT8 ||
                      (symbol.dataType == ZYR_DATA_ECI_BYTES &&
                       (symbol.eci == ZYR_ECI_ISO8859_1 || symbol.eci == ZYR_ECI_SHIFT_JIS));
    if (text) {
        // Read as zero-terminated text, but never past the symbol's bytes.
        return std::string(symbol.bytes.c_str(), strnlen(symbol.bytes.c_str(), symbol.bytes.size()));
    }
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%d bytes (eci=%d)", static_cast<int32_t>(symbol.bytes.size()), symbol.eci);
    return buffer;
}

ResultRow ResultRowOf(DecodeOutcome outcome) {
    ResultRow row;
    row.fileName = outcome.file;
    row.pluginName = outcome.plugin;
    row.imageProcess = MillisecondsText(outcome.imageProcess);
    row.time = MillisecondsText(outcome.decode);
    if (outcome.side != 0) {
        row.results = outcome.side == 1 ? "Side Left: " : "Side Right: ";
    }
    row.results += outcome.HasBytes() ? SymbolText(outcome.symbols.back()) : kNoDataText;
    if (!outcome.symbols.empty() && outcome.symbols.back().dataType == ZYR_DATA_ECI_BYTES) {
        row.resultsEci = outcome.symbols.back().eci;
    }
    row.outcome = std::move(outcome);
    return row;
}
