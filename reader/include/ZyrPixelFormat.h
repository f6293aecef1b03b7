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

static inline uint8_t ZyrPixel_Grey(uint8_t r, uint8_t g, uint8_t b) {
    return (uint8_t)((299u * r + 587u * g + 114u * b + 500u) / 1000u);
}

#endif
