// Images the library hands out: a ZyrImage whose pixels the library owns, registered with the
// object registry so the client frees it with ZyrReader_DestroyCachedObject.
#ifndef ZYR_CORE_LIBRARY_IMAGE_H
#define ZYR_CORE_LIBRARY_IMAGE_H

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/PixelLayout.h"
#include "imagecodec/RawImage.h"

#include <cstddef>
#include <string>

namespace zyr {

class LibraryImage {
public:
    // A new image with zeroed pixels; null for a bad size or format, or when memory runs out.
    static ZyrImage* create(int32_t width, int32_t height, ZyrPixelFormat format);
    // Takes over decoded pixels (Grey8, RGB or BGRA layouts; others are converted).
    static ZyrImage* adopt(RawImage&& raw);
    // A library-owned copy of any image view.
    static ZyrImage* copy(const ZyrImage& view);

    // Encoded PNG/JPEG/BMP bytes or file into a library image (*image set only on success).
    static int32_t decode(const uint8_t* data, size_t size, ZyrImage** image);
    static int32_t decodeFile(const std::string& path, ZyrImage** image);

    // Writes any image view as a PNG file.
    static int32_t writePng(const ZyrImage& image, const std::string& path);

    // Checks a view's fields (size, stride, format, pixels) before it is read.
    static bool isValidView(const ZyrImage* image);
    static PixelLayout layoutOf(ZyrPixelFormat format);
};

} // namespace zyr

#endif
