// Entry to the decoders: recognises PNG, JPEG and BMP by their first bytes.
#ifndef ZYR_IMAGECODEC_IMAGE_DECODER_H
#define ZYR_IMAGECODEC_IMAGE_DECODER_H

#include "imagecodec/ImageInfo.h"
#include "imagecodec/PixelLayout.h"
#include "imagecodec/RawImage.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace zyr {

class ImageDecoder {
public:
    static ImageFileType identify(const uint8_t* data, size_t size);

    // Header only. ZYR_ERR_UNSUPPORTED_IMAGE for bytes of no known format.
    static int32_t readInfo(const uint8_t* data, size_t size, ImageInfo& info);

    // Pixels into caller rows (info.height pointers, top-down, width pixels of `layout` each).
    static int32_t decodeRows(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows);

    // Whole image in its natural layout: Grey8 for grey, RGB for colour, BGRA when it has alpha.
    static int32_t decode(const uint8_t* data, size_t size, RawImage& image);
    // Same into a chosen layout.
    static int32_t decode(const uint8_t* data, size_t size, PixelLayout layout, RawImage& image);
    // ZYR_ERR_FILE when the file cannot be read.
    static int32_t decodeFile(const std::string& path, RawImage& image);
};

} // namespace zyr

#endif
