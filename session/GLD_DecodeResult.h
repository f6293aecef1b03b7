// One plug-in's outcome on one image, waiting in the pending result queue to become a row.
#pragma once

#include "DecodeOutcome.h"
#include "GLD_DecodeData.h"

struct GLD_DecodeResult {
    DecodeOutcome Outcome;          // image number, side, plug-in, decode time, code and symbols
    GLD_DecodeData* Data = nullptr; // owned by the decode data list, not by this record
};
