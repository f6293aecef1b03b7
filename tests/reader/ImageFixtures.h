// Test images: a picture model, independent encoders (PNG through libpng, JPEG through the samples,
// BMP written here byte by byte, since no writer makes its rarer variants), a reference JPEG
// decode; the BMP encoder also gives the exact file the library should write.
#pragma once

#include "ImageFiles.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fixtures {

struct Rgba {
    uint8_t r, g, b, a;
    bool operator==(const Rgba& o) const { return r == o.r && g == o.g && b == o.b && a == o.a; }
};

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Rgba> pixels; // top-down

    Rgba& at(int x, int y) { return pixels[size_t(y) * size_t(width) + size_t(x)]; }
    const Rgba& at(int x, int y) const { return pixels[size_t(y) * size_t(width) + size_t(x)]; }
};

enum class Pattern {
    Grey,        // r = g = b, opaque
    Colour,      // every channel varies independently, opaque
    ColourAlpha, // colour with alpha from 0 to 255
    GreyAlpha,   // grey with alpha
    Levels       // grey restricted to `levels` evenly spaced values (for low bit depths)
};

Picture makePicture(int width, int height, Pattern pattern, int levels = 256);

// The picture as an opaque client sees it: alpha composited over white, rounded to nearest.
Picture flattenedOverWhite(const Picture& picture);

// PNG. colourType/bitDepth as libpng's constants. For palette images the picture's distinct
// colours become the palette (alpha through tRNS); 16-bit samples repeat the 8-bit value in the
// high byte and put noise in the low byte.
std::vector<uint8_t> encodePng(const Picture& picture, int colourType, int bitDepth, bool interlaced = false);

// The picture for the sample image writers: grey (red channel) or RGB.
glyphor::samples::RasterImage rasterOf(const Picture& picture, bool colour);
// JPEG (grey: one component) through the sample writer, at quality 90.
std::vector<uint8_t> encodeJpeg(const Picture& picture, bool grey);
// The same bytes through libjpeg alone, as RGB (or grey repeated into r, g, b).
Picture decodeJpegReference(const std::vector<uint8_t>& jpeg);

struct BmpOptions {
    int bitsPerPixel = 24; // 1, 4, 8 (palette), 16, 24, 32
    bool topDown = false;
    bool rle = false;       // RLE8 / RLE4 for 8 / 4 bits
    int headerSize = 40;    // 12 (OS/2), 40, 108 or 124
    bool bitfields = false; // BI_BITFIELDS with the masks below (16 and 32 bits)
    uint32_t masks[4] = {0, 0, 0, 0};
    bool omitLastPadding = false;
    bool greyPalette = false; // 8 bits: the 256 grey levels as the palette, as the library writes
};
// The picture's colours must fit the format (distinct colours <= palette size, 5/6 bits, ...).
std::vector<uint8_t> encodeBmp(const Picture& picture, const BmpOptions& options);
// The picture as a 16- or 32-bit file stores it: each channel cut to its mask's bits.
Picture storedInBmp(Picture picture, const BmpOptions& options);

} // namespace fixtures

