// A decoded image that owns its pixels (rows top-down, `stride` bytes apart).
#ifndef ZYR_IMAGECODEC_RAW_IMAGE_H
#define ZYR_IMAGECODEC_RAW_IMAGE_H

#include "imagecodec/PixelLayout.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zyr {

struct RawImage {
    int32_t width = 0;
    int32_t height = 0;
    int32_t stride = 0;
    PixelLayout layout = PixelLayout::Grey8;
    std::vector<uint8_t> pixels;

    uint8_t* row(int32_t y) { return pixels.data() + static_cast<size_t>(y) * stride; }
    const uint8_t* row(int32_t y) const { return pixels.data() + static_cast<size_t>(y) * stride; }
};

} // namespace zyr

#endif
