// Byte order of pixels in a row, as the decoders write them.
#ifndef ZYR_IMAGECODEC_PIXEL_LAYOUT_H
#define ZYR_IMAGECODEC_PIXEL_LAYOUT_H

#include <cstdint>

namespace zyr {

enum class PixelLayout : uint8_t {
    Grey8,     // one byte
    GreyAlpha, // grey, alpha
    RGB,       // R, G, B
    RGBA,      // R, G, B, A
    BGR,       // B, G, R (BMP rows)
    BGRA       // B, G, R, A (ZYR_PIXEL_BGRA32)
};

inline int bytesPerPixel(PixelLayout layout) {
    switch (layout) {
    case PixelLayout::Grey8:
        return 1;
    case PixelLayout::GreyAlpha:
        return 2;
    case PixelLayout::RGB:
    case PixelLayout::BGR:
        return 3;
    case PixelLayout::RGBA:
    case PixelLayout::BGRA:
        return 4;
    }
    return 4;
}

inline bool hasAlpha(PixelLayout layout) {
    return layout == PixelLayout::GreyAlpha || layout == PixelLayout::RGBA || layout == PixelLayout::BGRA;
}

} // namespace zyr

#endif
