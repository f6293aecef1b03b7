// What makes a decoded symbol well-formed, and whether it is one an image is known to hold.
#pragma once

#include "CheckImage.h"
#include "DecodeRun.h"

#include <string>
#include <vector>

namespace plugincheck {

// The ways a symbol breaks the interface on an image of that size, one short text each (empty
// when it is well-formed): unknown symbology or data type, ECI that does not match the data type,
// text types holding bytes they cannot hold, corners outside the image or all in one point.
std::vector<std::string> symbolProblems(const SymbolCopy& symbol, int width, int height);

// The ways the symbols read from an image with known contents differ from them: bytes the image
// does not hold, a symbol reported twice, an ECI other than the one it carries. Symbols not read are
// no fault, nor is an ECI left unreported (not every decoder library sees it): those are counted in
// eciUnreported.
std::vector<std::string> contentProblems(const CheckImage& image, const std::vector<SymbolCopy>& symbols,
                                         int& eciUnreported);

// Bytes for a message: printable ASCII as is, anything else as \xNN, cut after 40 bytes.
std::string printable(const std::string& bytes);

} // namespace plugincheck
