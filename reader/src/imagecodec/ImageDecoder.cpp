#include "imagecodec/ImageDecoder.h"

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/BmpDecoder.h"
#include "imagecodec/JpegDecoder.h"
#include "imagecodec/PngDecoder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <vector>

namespace zyr {

ImageFileType ImageDecoder::identify(const uint8_t* data, size_t size) {
    if (data == nullptr)
        return ImageFileType::Unknown;
    if (PngDecoder::hasSignature(data, size))
        return ImageFileType::Png;
    if (JpegDecoder::hasSignature(data, size))
        return ImageFileType::Jpeg;
    if (BmpDecoder::hasSignature(data, size))
        return ImageFileType::Bmp;
    return ImageFileType::Unknown;
}

int32_t ImageDecoder::readInfo(const uint8_t* data, size_t size, ImageInfo& info) {
    switch (identify(data, size)) {
    case ImageFileType::Png:
        return PngDecoder::readInfo(data, size, info);
    case ImageFileType::Jpeg:
        return JpegDecoder::readInfo(data, size, info);
    case ImageFileType::Bmp:
        return BmpDecoder::readInfo(data, size, info);
    case ImageFileType::Unknown:
        break;
    }
    return ZYR_ERR_UNSUPPORTED_IMAGE;
}

int32_t ImageDecoder::decodeRows(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows) {
    switch (identify(data, size)) {
    case ImageFileType::Png:
        return PngDecoder::decode(data, size, layout, rows);
    case ImageFileType::Jpeg:
        return JpegDecoder::decode(data, size, layout, rows);
    case ImageFileType::Bmp:
        return BmpDecoder::decode(data, size, layout, rows);
    case ImageFileType::Unknown:
        break;
    }
    return ZYR_ERR_UNSUPPORTED_IMAGE;
}

int32_t ImageDecoder::decode(const uint8_t* data, size_t size, RawImage& image) {
    ImageInfo info;
    if (const int32_t result = readInfo(data, size, info))
        return result;
    const PixelLayout layout = info.alpha    ? PixelLayout::BGRA
                               : info.colour ? PixelLayout::RGB
                                             : PixelLayout::Grey8;
    return decode(data, size, layout, image);
}

int32_t ImageDecoder::decode(const uint8_t* data, size_t size, PixelLayout layout, RawImage& image) {
    ImageInfo info;
    if (const int32_t result = readInfo(data, size, info))
        return result;
    RawImage decoded;
    decoded.width = info.width;
    decoded.height = info.height;
    decoded.layout = layout;
    decoded.stride = info.width * bytesPerPixel(layout);
    std::vector<uint8_t*> rows;
    try {
        decoded.pixels.resize(size_t(decoded.stride) * size_t(info.height));
        rows.resize(size_t(info.height));
    } catch (const std::bad_alloc&) {
        return ZYR_ERR_OUT_OF_MEMORY;
    }
    for (int32_t y = 0; y < info.height; ++y)
        rows[size_t(y)] = decoded.row(y);
    if (const int32_t result = decodeRows(data, size, layout, rows.data()))
        return result;
    image = std::move(decoded);
    return ZYR_OK;
}

int32_t ImageDecoder::decodeFile(const std::string& path, RawImage& image) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return ZYR_ERR_FILE;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return ZYR_ERR_FILE;
    std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (file.bad())
        return ZYR_ERR_FILE;
    return decode(bytes.data(), bytes.size(), image);
}

} // namespace zyr
