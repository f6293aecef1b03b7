// What one plug-in produced on one image: the results row as the window shows it, the row's
// decode data, and each symbol on its own.
#pragma once

#include "ResultStore.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct BatchSymbol {
    int32_t symbology = 0; // ZyrSymbology
    int32_t dataType = 0;  // ZyrDataType
    int32_t eci = 0;       // ZYR_ECI_NONE when the symbol carries none
    std::string bytes;     // exactly the symbol's DataLength bytes
    std::optional<std::string> text; // as UTF-8 by its type and ECI; nothing for binary data
};

struct BatchRow {
    ResultRow row;                    // File name, Plugin, Img Process, Time, Results
    std::string data;                 // the row's decode data: every symbol's bytes, as saved
    int32_t symbology = 0;            // of the last symbol (the decode data's own field)
    std::vector<BatchSymbol> symbols; // in arrival order
};

// The texts of a row's symbols joined by line feeds (symbols without one left out); nothing when
// no symbol has a text.
inline std::optional<std::string> RowText(const BatchRow& row) {
    std::optional<std::string> joined;
    for (const BatchSymbol& symbol : row.symbols) {
        if (symbol.text) {
            joined = joined ? *joined + "\n" + *symbol.text : *symbol.text;
        }
    }
    return joined;
}
