// The bytes of every symbol one plug-in decoded on one image, in arrival order, with the two
// descriptor values of the last symbol (symbology and orientation, see ZyrSymbolResult).
#pragma once

#include "StringBuffer.h"

#include <cstdint>

struct GLD_DecodeData : public StringBuffer {
    int32_t Symbology = 0;
    int32_t Orientation = 0;
};
