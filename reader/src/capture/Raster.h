// A working image of the capture area: grey (1 channel) or colour (3 channels, R G B), rows
// packed top-down. Snapshots and processed images are built as rasters and handed out as
// library images only at the end.
#ifndef ZYR_CAPTURE_RASTER_H
#define ZYR_CAPTURE_RASTER_H

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/RawImage.h"

#include <cstdint>
#include <vector>

namespace zyr {

class Raster {
public:
    Raster() = default;
    Raster(int32_t width, int32_t height, int channels, uint8_t fill = 0);

    // Grey and RGB views are taken as they are; BGRA loses its alpha. False for a bad view.
    static bool fromView(const ZyrImage& view, Raster& out);
    static bool fromRaw(const RawImage& raw, Raster& out);

    // A library image (freed by ZyrReader_DestroyCachedObject); null when memory runs out.
    ZyrImage* toLibraryImage() const;

    int32_t width() const { return width_; }
    int32_t height() const { return height_; }
    int channels() const { return channels_; }
    bool empty() const { return width_ <= 0 || height_ <= 0; }

    uint8_t* row(int32_t y) { return pixels_.data() + size_t(y) * size_t(width_) * size_t(channels_); }
    const uint8_t* row(int32_t y) const {
        return pixels_.data() + size_t(y) * size_t(width_) * size_t(channels_);
    }
    uint8_t* at(int32_t x, int32_t y) { return row(y) + size_t(x) * size_t(channels_); }
    const uint8_t* at(int32_t x, int32_t y) const { return row(y) + size_t(x) * size_t(channels_); }

    // Luminance of one pixel (the value itself for grey).
    uint8_t grey(int32_t x, int32_t y) const;
    Raster toGrey() const;
    Raster toColour() const;

    std::vector<uint8_t>& pixels() { return pixels_; }
    const std::vector<uint8_t>& pixels() const { return pixels_; }

private:
    int32_t width_ = 0;
    int32_t height_ = 0;
    int channels_ = 1;
    std::vector<uint8_t> pixels_;
};

} // namespace zyr

#endif
