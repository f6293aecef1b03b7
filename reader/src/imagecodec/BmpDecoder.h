// BMP files of every common kind: 1/4/8-bit palettes (also RLE4/RLE8), 16, 24 and 32-bit,
// BI_BITFIELDS masks, OS/2 and Windows headers up to V5, bottom-up and top-down rows.
// A 32-bit BI_RGB file's fourth byte is unused padding; alpha is read only from an alpha mask.
#ifndef ZYR_IMAGECODEC_BMP_DECODER_H
#define ZYR_IMAGECODEC_BMP_DECODER_H

#include "imagecodec/ImageInfo.h"
#include "imagecodec/PixelLayout.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zyr {

class BmpDecoder {
public:
    static bool hasSignature(const uint8_t* data, size_t size);

    // Reads the headers and the palette only.
    static int32_t readInfo(const uint8_t* data, size_t size, ImageInfo& info);

    // Decodes into `rows` (info.height pointers, top-down), each at least width pixels of `layout`.
    // Palette indices past the palette's end give black.
    static int32_t decode(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows);

private:
    struct Colour {
        uint8_t b, g, r;
    };
    struct Header {
        int32_t width = 0;
        int32_t height = 0;
        bool topDown = false;
        uint16_t bitCount = 0;
        uint32_t compression = 0;
        uint32_t masks[4] = {0, 0, 0, 0}; // red, green, blue, alpha
        std::vector<Colour> palette;
        bool greyPalette = false;
        bool alpha = false;
        size_t dataOffset = 0;
        size_t rowStride = 0;
    };

    static int32_t parse(const uint8_t* data, size_t size, Header& header);
    static int32_t expandRle(const Header& header, const uint8_t* data, size_t size,
                             std::vector<uint8_t>& indices);
};

} // namespace zyr

#endif
