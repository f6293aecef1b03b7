#include "BmpImage.h"

#include <cstring>

namespace {

constexpr size_t kFileHeaderSize = 14;
constexpr size_t kInfoHeaderSize = 40;

uint32_t Read16(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8;
}
uint32_t Read32(const uint8_t* p) {
    return uint32_t(p[0]) | uint32_t(p[1]) << 8 | uint32_t(p[2]) << 16 | uint32_t(p[3]) << 24;
}

struct Palette {
    uint8_t rgb[256][3] = {};
    bool grey = true;
};

} // namespace

bool BmpImage::Decode(const uint8_t* bytes, size_t length, std::string& error) {
    m_pixels.clear();
    m_view = ZyrImage{};
    if (!bytes || length < kFileHeaderSize + kInfoHeaderSize || bytes[0] != 'B' || bytes[1] != 'M') {
        error = "not a BMP file";
        return false;
    }
    const uint8_t* info = bytes + kFileHeaderSize;
    const uint32_t infoSize = Read32(info);
    const int32_t width = static_cast<int32_t>(Read32(info + 4));
    const int32_t rawHeight = static_cast<int32_t>(Read32(info + 8));
    const uint32_t bitsPerPixel = Read16(info + 14);
    const uint32_t compression = Read32(info + 16);
    const uint32_t coloursUsed = Read32(info + 32);
    const uint32_t pixelOffset = Read32(bytes + 10);
    if (infoSize < kInfoHeaderSize || kFileHeaderSize + uint64_t(infoSize) > length) {
        error = "damaged BMP header";
        return false;
    }
    if ((bitsPerPixel != 8 && bitsPerPixel != 24) || compression != 0) {
        error = "unsupported BMP layout";
        return false;
    }
    const bool bottomUp = rawHeight > 0;
    const int64_t height = bottomUp ? int64_t(rawHeight) : -int64_t(rawHeight);
    if (width <= 0 || height <= 0 || uint64_t(width) * uint64_t(height) > kMaxPixels) {
        error = "BMP size out of range";
        return false;
    }
    const uint64_t stride = (uint64_t(width) * bitsPerPixel + 31) / 32 * 4;
    if (pixelOffset > length || stride * uint64_t(height) > length - pixelOffset) {
        error = "BMP pixels cut short";
        return false;
    }

    Palette palette;
    if (bitsPerPixel == 8) {
        const uint32_t count = coloursUsed == 0 ? 256 : coloursUsed;
        const uint64_t paletteStart = kFileHeaderSize + uint64_t(infoSize);
        if (count > 256 || paletteStart + uint64_t(count) * 4 > pixelOffset) {
            error = "damaged BMP palette";
            return false;
        }
        for (uint32_t i = 0; i < count; ++i) {
            const uint8_t* entry = bytes + paletteStart + size_t(i) * 4; // B, G, R, reserved
            palette.rgb[i][0] = entry[2];
            palette.rgb[i][1] = entry[1];
            palette.rgb[i][2] = entry[0];
            palette.grey = palette.grey && entry[0] == entry[1] && entry[1] == entry[2];
        }
    }

    const bool grey = bitsPerPixel == 8 && palette.grey;
    const size_t outStride = size_t(width) * (grey ? 1 : 3);
    m_pixels.resize(outStride * size_t(height));
    for (int64_t y = 0; y < height; ++y) {
        const uint8_t* in = bytes + pixelOffset + stride * uint64_t(bottomUp ? height - 1 - y : y);
        uint8_t* out = m_pixels.data() + outStride * size_t(y);
        if (grey) {
            for (int32_t x = 0; x < width; ++x) {
                out[x] = palette.rgb[in[x]][0];
            }
        } else if (bitsPerPixel == 8) {
            for (int32_t x = 0; x < width; ++x) {
                std::memcpy(out + 3 * x, palette.rgb[in[x]], 3);
            }
        } else {
            for (int32_t x = 0; x < width; ++x) {
                out[3 * x] = in[3 * x + 2];
                out[3 * x + 1] = in[3 * x + 1];
                out[3 * x + 2] = in[3 * x];
            }
        }
    }
    m_view.Width = width;
    m_view.Height = static_cast<int32_t>(height);
    m_view.Stride = static_cast<int32_t>(outStride);
    m_view.PixelFormat = grey ? ZYR_PIXEL_GREY8 : ZYR_PIXEL_RGB24;
    m_view.Pixels = m_pixels.data();
    return true;
}
