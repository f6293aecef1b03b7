#pragma once

#include "ImageFiles.h"

#include <cstdint>

namespace glyphor::samples {

// A card side lying on the reader's darker platen: the grey card raster turned clockwise by
// angle about its centre, moved by (offsetX, offsetY) from the platen's centre, on a platen of
// the given size with a little sensor noise (deterministic for the seed).
RasterImage onPlaten(const RasterImage& card, int width, int height, uint8_t platen, double angle,
                     int offsetX, int offsetY, uint32_t seed);

} // namespace glyphor::samples
