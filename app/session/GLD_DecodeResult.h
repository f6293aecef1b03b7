// One plug-in's outcome on one image, waiting in the pending result queue to become a row.
#pragma once

#include "GLD_DecodeData.h"

#include <cstdint>
#include <string>

struct GLD_DecodeResult {
    int32_t ImageNumber = 0;        // the session's image number when the run started
    int32_t Side = 0;               // 0 one-sided, 1 left side, any other value right side
    std::string PluginName;         // display name of the plug-in
    std::string Time;               // "%dms" of the decode time
    std::string Results;            // last symbol's text, "%d bytes (eci=%d)", or "[NO DATA]"
    int32_t ResultsEci = 0;         // character set of a text Results: an ECI, 0 for ISO-8859-1
    GLD_DecodeData* Data = nullptr; // owned by the decode data list, not by this record
    int32_t DecodeCode = 0;         // what ZyrReader_ImagePluginDecode returned (ZyrReaderError)
};
