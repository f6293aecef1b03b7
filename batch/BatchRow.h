// What one plug-in produced on one image: the results row as the window shows it (with the
// outcome it shows) and the row's decode data, as saved.
#pragma once

#include "ResultText.h"

#include <string>

struct BatchRow {
    ResultRow row;    // File name, Plugin, Img Process, Time, Results, and the outcome
    std::string data; // the row's decode data: every symbol's bytes, as saved

    const DecodeOutcome& outcome() const { return row.outcome; }
};
