// Reads an Interleaved 2 of 5 symbol from the bars and spaces along one line of an image.
#pragma once

#include <string>
#include <vector>

namespace example {

// Widths of alternating dark and light runs, the first dark, as found along a line.
struct Runs {
    std::vector<int> widths;
    std::vector<int> starts; // pixel position of each run along the line
};

// Splits a line of grey pixels at the mid-level between its darkest and lightest pixel; a line
// without contrast gives no runs.
Runs runsOf(const unsigned char* pixels, int count, int step);

// The digits of the first symbol in the runs (at least minDigits of them), with the positions of
// its first and last pixel along the line; false when there is none.
bool readSymbol(const Runs& runs, int minDigits, std::string& digits, int& first, int& last);

} // namespace example
