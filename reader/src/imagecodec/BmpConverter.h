// Turns PNG, JPEG or BMP bytes into BMP file bytes: 8-bit grey when the source is grey, else
// 24-bit colour. Alpha is composited over white, since BMP readers disagree on 32-bit alpha.
#ifndef ZYR_IMAGECODEC_BMP_CONVERTER_H
#define ZYR_IMAGECODEC_BMP_CONVERTER_H

#include <cstddef>
#include <cstdint>

namespace zyr {

class BmpConverter {
public:
    // Size of the BMP file, from the source's header alone.
    static int32_t requiredSize(const uint8_t* data, size_t size, uint32_t& bmpSize);

    // Writes the BMP into output (capacity bytes). ZYR_ERR_BUFFER_TOO_SMALL leaves output untouched
    // and sets written to the size needed.
    static int32_t convert(const uint8_t* data, size_t size, uint8_t* output, uint32_t capacity,
                           uint32_t& written);
};

} // namespace zyr

#endif
