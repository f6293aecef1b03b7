// What an encoded image's header says about it.
#ifndef ZYR_IMAGECODEC_IMAGE_INFO_H
#define ZYR_IMAGECODEC_IMAGE_INFO_H

#include <cstdint>

namespace zyr {

enum class ImageFileType : uint8_t { Unknown, Png, Jpeg, Bmp };

struct ImageInfo {
    ImageFileType type = ImageFileType::Unknown;
    int32_t width = 0;
    int32_t height = 0;
    bool colour = false; // false: every pixel is grey (a grey palette counts as grey for BMP)
    bool alpha = false;  // the image carries transparency
};

// Images larger than this are refused as unsupported rather than risking huge allocations.
constexpr int32_t kMaxImageDimension = 32768;
constexpr int64_t kMaxImagePixels = int64_t(1) << 27;

} // namespace zyr

#endif
