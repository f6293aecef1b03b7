#pragma once

#include <ZXing/BitMatrix.h>

#include <string>

namespace glyphor::samples {

// Symbols zxing-cpp's writer does not make.

// A linear symbol's one-row matrix with a 2- or 5-digit add-on after it, 9 modules apart; the
// main symbol's own right quiet zone is replaced. Throws std::invalid_argument for other add-ons.
ZXing::BitMatrix withAddOn(const ZXing::BitMatrix& main, const std::string& digits);

// A square ECC 200 DataMatrix (10x10 to 26x26) holding the given data codewords as they are, so
// that a symbol can carry several ECI designators. Throws std::invalid_argument when too long.
ZXing::BitMatrix dataMatrixFromCodewords(const std::string& codewords);

// Data codewords (ASCII encodation) for byte segments each under its own ECI designator (< 127).
std::string dataMatrixEciCodewords(const std::vector<std::pair<int, std::string>>& segments);

} // namespace glyphor::samples
