// What one plug-in produced on one image: the results row as the window shows it (with the
// outcome it shows) and the row's decode data, as saved.
#pragma once

#include "ResultText.h"

#include "EciText.h"

#include <optional>
#include <string>

struct BatchRow {
    ResultRow row;    // File name, Plugin, Img Process, Time, Results, and the outcome
    std::string data; // the row's decode data: every symbol's bytes, as saved

    const DecodeOutcome& outcome() const { return row.outcome; }
};

// A symbol's text as UTF-8 by its type and ECI; nothing for binary data.
inline std::optional<std::string> SymbolUtf8(const DecodedSymbol& symbol) {
    return EciText::SymbolText(symbol.dataType, symbol.eci, symbol.bytes);
}

// The texts of a row's symbols joined by line feeds (symbols without one left out); nothing when
// no symbol has a text.
inline std::optional<std::string> RowText(const BatchRow& row) {
    std::optional<std::string> joined;
    for (const DecodedSymbol& symbol : row.outcome().symbols) {
        if (const std::optional<std::string> text = SymbolUtf8(symbol)) {
            joined = joined ? *joined + "\n" + *text : *text;
        }
    }
    return joined;
}
