// Converts one row of pixels between layouts. Alpha that the target cannot hold is composited
// over white (transparent areas of a barcode image are its light background); colour turned
// into grey uses the Rec. 601 luma weights.
#ifndef ZYR_IMAGECODEC_ROW_CONVERTER_H
#define ZYR_IMAGECODEC_ROW_CONVERTER_H

#include "imagecodec/PixelLayout.h"

#include "ZyrPixelFormat.h"

#include <cstdint>

namespace zyr {

class RowConverter {
public:
    static void convert(PixelLayout from, const uint8_t* source, PixelLayout to, uint8_t* target,
                        int32_t width);

    // A colour component c with opacity a, composited over white.
    static uint8_t overWhite(uint8_t c, uint8_t a) {
        return static_cast<uint8_t>((c * a + 255 * (255 - a) + 127) / 255);
    }
    static uint8_t luma(uint8_t r, uint8_t g, uint8_t b) {
        return ZyrPixel_Grey(r, g, b);
    }
};

} // namespace zyr

#endif
