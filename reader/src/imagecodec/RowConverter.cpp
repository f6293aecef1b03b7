#include "imagecodec/RowConverter.h"

#include <cstring>

namespace zyr {
namespace {

struct Rgba {
    uint8_t r, g, b, a;
};

inline Rgba load(PixelLayout layout, const uint8_t* p) {
    switch (layout) {
    case PixelLayout::Grey8:
        return {p[0], p[0], p[0], 255};
    case PixelLayout::GreyAlpha:
        return {p[0], p[0], p[0], p[1]};
    case PixelLayout::RGB:
        return {p[0], p[1], p[2], 255};
    case PixelLayout::RGBA:
        return {p[0], p[1], p[2], p[3]};
    case PixelLayout::BGR:
        return {p[2], p[1], p[0], 255};
    case PixelLayout::BGRA:
        return {p[2], p[1], p[0], p[3]};
    }
    return {0, 0, 0, 255};
}

inline void store(PixelLayout layout, bool sourceIsGrey, Rgba c, uint8_t* p) {
    if (!hasAlpha(layout) && c.a != 255) {
        c.r = RowConverter::overWhite(c.r, c.a);
        c.g = RowConverter::overWhite(c.g, c.a);
        c.b = RowConverter::overWhite(c.b, c.a);
    }
    switch (layout) {
    case PixelLayout::Grey8:
        p[0] = sourceIsGrey ? c.r : RowConverter::luma(c.r, c.g, c.b);
        break;
    case PixelLayout::GreyAlpha:
        p[0] = sourceIsGrey ? c.r : RowConverter::luma(c.r, c.g, c.b);
        p[1] = c.a;
        break;
    case PixelLayout::RGB:
        p[0] = c.r, p[1] = c.g, p[2] = c.b;
        break;
    case PixelLayout::RGBA:
        p[0] = c.r, p[1] = c.g, p[2] = c.b, p[3] = c.a;
        break;
    case PixelLayout::BGR:
        p[0] = c.b, p[1] = c.g, p[2] = c.r;
        break;
    case PixelLayout::BGRA:
        p[0] = c.b, p[1] = c.g, p[2] = c.r, p[3] = c.a;
        break;
    }
}

} // namespace

void RowConverter::convert(PixelLayout from, const uint8_t* source, PixelLayout to, uint8_t* target,
                           int32_t width) {
    if (width <= 0)
        return;
    const int inBytes = bytesPerPixel(from);
    const int outBytes = bytesPerPixel(to);
    if (from == to) {
        std::memmove(target, source, static_cast<size_t>(width) * inBytes);
        return;
    }
    // BMP rows to RGB and back: a swap, the one conversion every 24-bit BMP takes.
    if ((from == PixelLayout::BGR && to == PixelLayout::RGB) ||
        (from == PixelLayout::RGB && to == PixelLayout::BGR)) {
        for (int32_t x = 0; x < width; ++x, source += 3, target += 3) {
            const uint8_t first = source[0];
            target[1] = source[1];
            target[0] = source[2];
            target[2] = first;
        }
        return;
    }
    const bool grey = from == PixelLayout::Grey8 || from == PixelLayout::GreyAlpha;
    for (int32_t x = 0; x < width; ++x)
        store(to, grey, load(from, source + x * inBytes), target + x * outBytes);
}

} // namespace zyr
