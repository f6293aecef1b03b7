/* Sizes of the ZyrPixelFormat values and the one rule for turning colour into grey (Rec. 601
 * luma, rounded), shared by the reader library, the plug-in kit and the views so that the same
 * image gives the same grey everywhere. */
#ifndef ZYR_PIXEL_FORMAT_H
#define ZYR_PIXEL_FORMAT_H

#include <stdint.h>

#include "ZyrReaderLowLevelAPI.h"

/* Bytes of one pixel, 0 for a value that is not a ZyrPixelFormat. */
static inline int32_t ZyrPixel_BytesPerPixel(int32_t pixelFormat) {
    switch (pixelFormat) {
    case ZYR_PIXEL_GREY8:
        return 1;
    case ZYR_PIXEL_RGB24:
        return 3;
    case ZYR_PIXEL_BGRA32:
        return 4;
    default:
        return 0;
    }
}

/* round((299 r + 587 g + 114 b) / 1000), in fixed point: equal for every input (checked over all
 * 2^24 colours) and without the division, which keeps the per-pixel loops of the plug-ins fast. */
static inline uint8_t ZyrPixel_Grey(uint8_t r, uint8_t g, uint8_t b) {
    return (uint8_t)((156763u * r + 307757u * g + 59769u * b + 262152u) >> 19);
}

#endif
