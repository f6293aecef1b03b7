// PNG through libpng. Every libpng failure (bad signature, CRC, truncated data, oversized image)
// comes back as a ZyrReaderError code.
#ifndef ZYR_IMAGECODEC_PNG_DECODER_H
#define ZYR_IMAGECODEC_PNG_DECODER_H

#include "imagecodec/ImageInfo.h"
#include "imagecodec/PixelLayout.h"

#include <cstddef>
#include <cstdint>

namespace zyr {

class PngDecoder {
public:
    static bool hasSignature(const uint8_t* data, size_t size);

    // Reads the chunks before the image data only.
    static int32_t readInfo(const uint8_t* data, size_t size, ImageInfo& info);

    // Decodes into `rows` (info.height pointers, top-down), each at least width pixels of `layout`.
    // 16-bit samples keep their high byte; palettes and low bit depths are expanded.
    static int32_t decode(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows);
};

} // namespace zyr

#endif
