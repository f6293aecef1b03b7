#pragma once

#include <string>

namespace glyphor::samples {

// A complete driver-licence data stream (header, DL subfile and a jurisdiction subfile) with
// correct offsets and lengths, as printed in the PDF417 on the back of a card.
std::string aamvaSamplePayload();

} // namespace glyphor::samples
