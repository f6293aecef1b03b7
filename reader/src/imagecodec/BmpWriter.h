// Writes BMP files: 8-bit grey with a 256-entry grey palette, or 24-bit colour; bottom-up rows
// with a plain 40-byte info header, which every BMP reader accepts.
#ifndef ZYR_IMAGECODEC_BMP_WRITER_H
#define ZYR_IMAGECODEC_BMP_WRITER_H

#include "imagecodec/PixelLayout.h"

#include <cstdint>
#include <vector>

namespace zyr {

class BmpWriter {
public:
    // File size in bytes for the image; 0 when it would not fit a BMP (4 GiB).
    static uint64_t fileSize(int32_t width, int32_t height, bool grey);
    static uint32_t rowStride(int32_t width, bool grey);

    // Writes headers and palette to the start of `file` (which holds fileSize() bytes) and fills
    // `rows` with pointers to the pixel rows in top-down order (Grey8 or BGR), padding zeroed.
    static void layOut(uint8_t* file, int32_t width, int32_t height, bool grey, uint8_t** rows);

    // Whole file from pixel rows (Grey8, or any colour layout, which is written as BGR).
    static std::vector<uint8_t> encode(int32_t width, int32_t height, PixelLayout layout,
                                       const uint8_t* pixels, int32_t stride);
};

} // namespace zyr

#endif
