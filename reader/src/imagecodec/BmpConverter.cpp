#include "imagecodec/BmpConverter.h"

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/BmpWriter.h"
#include "imagecodec/ImageDecoder.h"

#include <new>
#include <vector>

namespace zyr {
namespace {

int32_t plan(const uint8_t* data, size_t size, ImageInfo& info, uint32_t& bmpSize) {
    if (const int32_t result = ImageDecoder::readInfo(data, size, info))
        return result;
    const uint64_t bytes = BmpWriter::fileSize(info.width, info.height, !info.colour);
    if (bytes == 0)
        return ZYR_ERR_UNSUPPORTED_IMAGE;
    bmpSize = static_cast<uint32_t>(bytes);
    return ZYR_OK;
}

} // namespace

int32_t BmpConverter::requiredSize(const uint8_t* data, size_t size, uint32_t& bmpSize) {
    ImageInfo info;
    return plan(data, size, info, bmpSize);
}

int32_t BmpConverter::convert(const uint8_t* data, size_t size, uint8_t* output, uint32_t capacity,
                              uint32_t& written) {
    ImageInfo info;
    uint32_t needed = 0;
    if (const int32_t result = plan(data, size, info, needed))
        return result;
    if (capacity < needed) {
        written = needed;
        return ZYR_ERR_BUFFER_TOO_SMALL;
    }
    const bool grey = !info.colour;
    std::vector<uint8_t*> rows;
    try {
        rows.resize(size_t(info.height));
    } catch (const std::bad_alloc&) {
        return ZYR_ERR_OUT_OF_MEMORY;
    }
    BmpWriter::layOut(output, info.width, info.height, grey, rows.data());
    // Decoded straight into the file's rows: no intermediate image.
    if (const int32_t result =
            ImageDecoder::decodeRows(data, size, grey ? PixelLayout::Grey8 : PixelLayout::BGR, rows.data()))
        return result;
    written = needed;
    return ZYR_OK;
}

} // namespace zyr
