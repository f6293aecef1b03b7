// What one plug-in produced on one image: the results row as the window shows it, the row's
// decode data, and each symbol on its own.
#pragma once

#include "ResultStore.h"

#include <cstdint>
#include <string>
#include <vector>

struct BatchSymbol {
    int32_t symbology = 0; // ZyrSymbology
    int32_t dataType = 0;  // ZyrDataType
    int32_t eci = 0;       // ZYR_ECI_NONE when the symbol carries none
    std::string bytes;     // exactly the symbol's DataLength bytes
};

struct BatchRow {
    ResultRow row;                    // File name, Plugin, Img Process, Time, Results
    std::string data;                 // the row's decode data: every symbol's bytes, as saved
    int32_t symbology = 0;            // of the last symbol (the decode data's own field)
    std::vector<BatchSymbol> symbols; // in arrival order
};
