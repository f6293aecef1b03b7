#include "capture/Raster.h"

#include "core/LibraryImage.h"
#include "imagecodec/ImageInfo.h"
#include "imagecodec/RowConverter.h"

#include <cstring>
#include <new>

namespace zyr {

Raster::Raster(int32_t width, int32_t height, int channels, uint8_t fill)
    : width_(width), height_(height), channels_(channels),
      pixels_(size_t(width > 0 ? width : 0) * size_t(height > 0 ? height : 0) * size_t(channels), fill) {}

bool Raster::fromView(const ZyrImage& view, Raster& out) {
    if (!LibraryImage::isValidView(&view) || int64_t(view.Width) * view.Height > kMaxImagePixels)
        return false;
    const int channels = view.PixelFormat == ZYR_PIXEL_GREY8 ? 1 : 3;
    try {
        out = Raster(view.Width, view.Height, channels);
    } catch (const std::bad_alloc&) {
        return false;
    }
    for (int32_t y = 0; y < view.Height; ++y) {
        const uint8_t* source = view.Pixels + size_t(y) * size_t(view.Stride);
        uint8_t* target = out.row(y);
        if (view.PixelFormat != ZYR_PIXEL_BGRA32) {
            std::memcpy(target, source, size_t(view.Width) * size_t(channels));
            continue;
        }
        for (int32_t x = 0; x < view.Width; ++x, source += 4, target += 3) {
            target[0] = source[2];
            target[1] = source[1];
            target[2] = source[0];
        }
    }
    return true;
}

bool Raster::fromRaw(const RawImage& raw, Raster& out) {
    if (raw.width <= 0 || raw.height <= 0)
        return false;
    const bool grey = raw.layout == PixelLayout::Grey8 || raw.layout == PixelLayout::GreyAlpha;
    const PixelLayout target = grey ? PixelLayout::Grey8 : PixelLayout::RGB;
    try {
        out = Raster(raw.width, raw.height, grey ? 1 : 3);
    } catch (const std::bad_alloc&) {
        return false;
    }
    for (int32_t y = 0; y < raw.height; ++y)
        RowConverter::convert(raw.layout, raw.row(y), target, out.row(y), raw.width);
    return true;
}

ZyrImage* Raster::toLibraryImage() const {
    if (empty())
        return nullptr;
    ZyrImage* image =
        LibraryImage::create(width_, height_, channels_ == 1 ? ZYR_PIXEL_GREY8 : ZYR_PIXEL_RGB24);
    if (image == nullptr)
        return nullptr;
    for (int32_t y = 0; y < height_; ++y)
        std::memcpy(image->Pixels + size_t(y) * size_t(image->Stride), row(y),
                    size_t(width_) * size_t(channels_));
    return image;
}

uint8_t Raster::grey(int32_t x, int32_t y) const {
    const uint8_t* p = at(x, y);
    return channels_ == 1 ? p[0] : RowConverter::luma(p[0], p[1], p[2]);
}

Raster Raster::toGrey() const {
    if (channels_ == 1)
        return *this;
    Raster out(width_, height_, 1);
    for (int32_t y = 0; y < height_; ++y) {
        const uint8_t* source = row(y);
        uint8_t* target = out.row(y);
        for (int32_t x = 0; x < width_; ++x, source += 3)
            target[x] = RowConverter::luma(source[0], source[1], source[2]);
    }
    return out;
}

Raster Raster::toColour() const {
    if (channels_ == 3)
        return *this;
    Raster out(width_, height_, 3);
    const size_t count = size_t(width_) * size_t(height_);
    for (size_t i = 0; i < count; ++i)
        out.pixels_[3 * i] = out.pixels_[3 * i + 1] = out.pixels_[3 * i + 2] = pixels_[i];
    return out;
}

} // namespace zyr
