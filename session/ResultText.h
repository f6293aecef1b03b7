// How a results row shows an outcome. Times read "%dms" (whole milliseconds, cut off), a row
// without bytes "[NO DATA]". Bytes are shown as the ISO-8859-1 characters of their codes; the
// control codes have no glyph in common fonts and would break the row or vanish, so each is
// spelled out in angle brackets: its ASCII name for C0 codes and DEL ("<LF>", "<RS>", "<DEL>"),
// its two hex digits for the C1 codes 0x80 to 0x9F ("<85>") when the bytes are ISO-8859-1 (in
// UTF-8 those bytes belong to multi-byte characters and stay as they are).
#pragma once

#include "DecodeOutcome.h"

#include <chrono>
#include <string>

// What a results row shows, in column order, with the outcome it shows.
struct ResultRow {
    std::string fileName; // name of the image file on show
    std::string pluginName;
    std::string imageProcess; // "%dms" of the last image-process time
    std::string time;         // "%dms" of the decode time
    std::string results; // with "Side Left: " / "Side Right: " in front for two-sided images
    int32_t resultsEci = 0; // the character set results is in (an ECI; 0 and 3: ISO-8859-1)
    DecodeOutcome outcome;
};

ResultRow ResultRowOf(DecodeOutcome outcome);

// "%dms" of whole milliseconds.
std::string MillisecondsText(std::chrono::nanoseconds time);

// The last symbol's text: text types as zero-terminated text, others "%d bytes (eci=%d)".
std::string SymbolText(const DecodedSymbol& symbol);

// What a row shows for a plug-in that read no byte.
constexpr const char* kNoDataText = "[NO DATA]";

enum class RowBytes { Latin1, Utf8 };

std::string ResultRowText(const std::string& bytes, RowBytes encoding = RowBytes::Latin1);
