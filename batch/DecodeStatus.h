// How a decode ended, in the outputs. A plug-in whose process crashed or ran past its time limit
// is reported as such, not as an image without symbols.
#pragma once

#include "ResultText.h"

#include <cstdint>
#include <string>

class DecodeStatus {
public:
    // "ok" (symbols or none), "crashed", "timed out", or "failed" for any other error the decode
    // returned.
    static const char* Name(const DecodeOutcome& outcome);
    // The row's results text, with "[CRASHED]" or "[TIMED OUT]" in place of "[NO DATA]".
    static std::string ResultsText(const ResultRow& row);
    // ResultsText as UTF-8: read in the character set of the row's text (ISO-8859-1 unless an ECI
    // names another), as the window shows it.
    static std::string ResultsUtf8(const ResultRow& row);
};
