// JPEG through libjpeg-turbo. Errors, and the warnings that mean damaged or truncated data,
// come back as ZyrReaderError codes; the library never prints or exits.
#ifndef ZYR_IMAGECODEC_JPEG_DECODER_H
#define ZYR_IMAGECODEC_JPEG_DECODER_H

#include "imagecodec/ImageInfo.h"
#include "imagecodec/PixelLayout.h"

#include <cstddef>
#include <cstdint>

namespace zyr {

class JpegDecoder {
public:
    static bool hasSignature(const uint8_t* data, size_t size);

    // Reads the markers up to the first scan only.
    static int32_t readInfo(const uint8_t* data, size_t size, ImageInfo& info);

    // Decodes into `rows` (info.height pointers, top-down), each at least width pixels of `layout`.
    // CMYK and YCCK images are converted to RGB.
    static int32_t decode(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows);
};

} // namespace zyr

#endif
