// Geometric and tonal operations on rasters, used by snapshot derivation and post-processing.
// Each returns a new raster and leaves its input alone.
#ifndef ZYR_CAPTURE_RASTER_OPS_H
#define ZYR_CAPTURE_RASTER_OPS_H

#include "capture/Raster.h"

namespace zyr {

struct Rect {
    int32_t left = 0;
    int32_t top = 0;
    int32_t width = 0;
    int32_t height = 0;

    bool empty() const { return width <= 0 || height <= 0; }
    int32_t right() const { return left + width; }  // one past the last column
    int32_t bottom() const { return top + height; } // one past the last row
};

// The part of r inside a width x height image (empty when they do not meet).
Rect clipRect(const Rect& r, int32_t width, int32_t height);

class RasterOps {
public:
    static Raster crop(const Raster& in, const Rect& area); // area must lie inside the raster
    static Raster rotate90(const Raster& in);               // clockwise
    static Raster rotate180(const Raster& in);
    static Raster mirrorHorizontal(const Raster& in); // left and right swap
    static Raster mirrorVertical(const Raster& in);   // top and bottom swap

    // Turns the picture clockwise by degrees about (cx, cy), same size, bilinear; corners that
    // come from outside take fill (grey level, or each colour channel).
    static Raster rotate(const Raster& in, double degrees, double cx, double cy, uint8_t fill);

    // Resamples by factor (bilinear, area-averaged when shrinking); at least 1 x 1.
    static Raster scale(const Raster& in, double factor);

    // Stretches the levels between the 1st and 99th percentile to the full range.
    static Raster normalise(const Raster& in);
    // Mean over a (2r+1) square; r < 1 leaves the picture as it is.
    static Raster denoise(const Raster& in, int radius);
    // Unsharp mask with the four direct neighbours.
    static Raster sharpen(const Raster& in);
    // Each channel v becomes v * factor[c] (clamped); grey input is made colour first.
    static Raster tint(const Raster& in, const double factor[3]);
};

} // namespace zyr

#endif
