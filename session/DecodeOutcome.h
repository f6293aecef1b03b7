// One plug-in's outcome on one image as values: what it read, how long it took and how it ended.
// The session fills it; views turn it into text (ResultRowTexts, the batch's writers).
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

struct DecodedSymbol {
    int32_t symbology = 0;  // ZyrSymbology
    int32_t orientation = 0;
    int32_t dataType = 0;   // ZyrDataType
    int32_t eci = 0;        // ZYR_ECI_NONE when the symbol carries none
    std::string bytes;      // exactly the symbol's DataLength bytes
    std::array<ZyrPoint, 4> corners{}; // top-left, top-right, bottom-right, bottom-left

    static DecodedSymbol From(const ZyrSymbolResult& symbol);
};

enum class OutcomeStatus {
    Read,     // at least one byte arrived
    NoData,   // the plug-in finished and reported nothing
    Crashed,  // its process died during the call
    TimedOut, // it ran past its time limit
    Failed    // the call returned another error (see code)
};

struct DecodeOutcome {
    int32_t imageNumber = 0; // the session's image number when the run started
    int32_t side = 0;        // 0 one-sided, 1 left side, any other value right side
    std::string file;        // name of the image file on show when it was decoded
    std::string plugin;      // display name of the plug-in
    std::chrono::nanoseconds imageProcess{0}; // the last capture's image-process time
    std::chrono::nanoseconds decode{0};       // the plug-in call alone
    int32_t code = ZYR_OK;   // what ZyrReader_ImagePluginDecode returned (ZyrReaderError)
    std::vector<DecodedSymbol> symbols; // in arrival order

    OutcomeStatus Status() const;
    bool HasBytes() const;
};
