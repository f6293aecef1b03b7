// Encodes pixel rows as PNG (grey, RGB, or RGBA for layouts with alpha).
#ifndef ZYR_IMAGECODEC_PNG_WRITER_H
#define ZYR_IMAGECODEC_PNG_WRITER_H

#include "imagecodec/PixelLayout.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zyr {

class PngWriter {
public:
    // Rows top-down, `stride` bytes apart. Returns a ZyrReaderError code.
    static int32_t encode(int32_t width, int32_t height, PixelLayout layout, const uint8_t* pixels,
                          int32_t stride, std::vector<uint8_t>& png);
    // ZYR_ERR_FILE when the file cannot be written.
    static int32_t writeFile(const std::string& path, int32_t width, int32_t height, PixelLayout layout,
                             const uint8_t* pixels, int32_t stride);
};

} // namespace zyr

#endif
