#include "GreyImage.h"

#include <ZyrPixelFormat.h>

#include <cstring>

namespace kvdecode {
namespace {

// Big enough for a full page at 1200 dpi, small enough that no size product overflows.
constexpr int64_t kMaxPixels = int64_t(1) << 28;
constexpr int kMaxSide = 1 << 16;

} // namespace

bool validImage(const ZyrImage* image, std::string& error) {
    if (!image || !image->Pixels) {
        error = "no image";
        return false;
    }
    int bpp = ZyrPixel_BytesPerPixel(image->PixelFormat);
    if (bpp == 0) {
        error = "unknown pixel format " + std::to_string(image->PixelFormat);
        return false;
    }
    if (image->Width <= 0 || image->Height <= 0 || image->Width > kMaxSide || image->Height > kMaxSide ||
        int64_t(image->Width) * image->Height > kMaxPixels) {
        error = "bad image size";
        return false;
    }
    if (image->Stride < int64_t(image->Width) * bpp) {
        error = "row stride shorter than a row";
        return false;
    }
    return true;
}

GreyImage::GreyImage(const ZyrImage& image)
    : width_(image.Width), height_(image.Height), pixels_(size_t(image.Width) * size_t(image.Height)) {
    for (int y = 0; y < height_; ++y) {
        const uint8_t* in = image.Pixels + size_t(y) * size_t(image.Stride);
        uint8_t* out = pixels_.data() + size_t(y) * size_t(width_);
        switch (image.PixelFormat) {
        case ZYR_PIXEL_GREY8:
            std::memcpy(out, in, size_t(width_));
            break;
        case ZYR_PIXEL_RGB24:
            for (int x = 0; x < width_; ++x, in += 3)
                out[x] = ZyrPixel_Grey(in[0], in[1], in[2]);
            break;
        default: // BGRA
            for (int x = 0; x < width_; ++x, in += 4)
                out[x] = ZyrPixel_Grey(in[2], in[1], in[0]);
            break;
        }
    }
}

} // namespace kvdecode
