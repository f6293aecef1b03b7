#include "imagecodec/BmpDecoder.h"

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/RowConverter.h"

#include <cstring>

namespace zyr {
namespace {

enum : uint32_t { BiRgb = 0, BiRle8 = 1, BiRle4 = 2, BiBitfields = 3, BiAlphaBitfields = 6 };
constexpr size_t kFileHeaderSize = 14;

uint16_t u16(const uint8_t* p) {
    return static_cast<uint16_t>(p[0] | p[1] << 8);
}
uint32_t u32(const uint8_t* p) {
    return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24;
}

// Extracts one colour component under a mask and scales it to 8 bits.
class MaskChannel {
public:
    explicit MaskChannel(uint32_t mask) : mask_(mask) {
        if (mask == 0)
            return;
        while (((mask >> shift_) & 1u) == 0)
            ++shift_;
        uint32_t bits = mask >> shift_;
        while ((bits & 1u) != 0) {
            ++width_;
            bits >>= 1;
        }
        max_ = width_ >= 32 ? 0xFFFFFFFFu : (1u << width_) - 1;
    }
    uint8_t operator()(uint32_t pixel, uint8_t absent) const {
        if (mask_ == 0)
            return absent;
        const uint32_t value = (pixel & mask_) >> shift_ & max_;
        if (width_ >= 8)
            return static_cast<uint8_t>(value >> (width_ - 8));
        return static_cast<uint8_t>((value * 255 + max_ / 2) / max_);
    }

private:
    uint32_t mask_;
    int shift_ = 0;
    int width_ = 0;
    uint32_t max_ = 0;
};

} // namespace

bool BmpDecoder::hasSignature(const uint8_t* data, size_t size) {
    return size >= 2 && data[0] == 'B' && data[1] == 'M';
}

int32_t BmpDecoder::parse(const uint8_t* data, size_t size, Header& h) {
    if (size < kFileHeaderSize + 4)
        return ZYR_ERR_CORRUPT_IMAGE;
    const uint32_t dataOffset = u32(data + 10);
    const uint32_t dibSize = u32(data + 14);
    if (dibSize < 12 || dibSize > size - kFileHeaderSize)
        return ZYR_ERR_CORRUPT_IMAGE;
    const uint8_t* dib = data + kFileHeaderSize;
    int64_t height = 0;
    uint32_t coloursUsed = 0;
    size_t paletteEntrySize = 4;
    if (dibSize == 12) { // OS/2 core header: 16-bit sizes, 3-byte palette entries
        h.width = u16(dib + 4);
        height = u16(dib + 6);
        h.bitCount = u16(dib + 10);
        h.compression = BiRgb;
        paletteEntrySize = 3;
    } else if (dibSize >= 40) {
        h.width = static_cast<int32_t>(u32(dib + 4));
        height = static_cast<int32_t>(u32(dib + 8));
        h.bitCount = u16(dib + 14);
        h.compression = u32(dib + 16);
        coloursUsed = u32(dib + 32);
    } else {
        return ZYR_ERR_UNSUPPORTED_IMAGE;
    }
    h.topDown = height < 0;
    if (height < 0)
        height = -height;
    if (h.width <= 0 || height == 0)
        return ZYR_ERR_CORRUPT_IMAGE;
    if (h.width > kMaxImageDimension || height > kMaxImageDimension ||
        int64_t(h.width) * height > kMaxImagePixels)
        return ZYR_ERR_UNSUPPORTED_IMAGE;
    h.height = static_cast<int32_t>(height);

    size_t tableOffset = kFileHeaderSize + dibSize; // palette or masks follow the header
    switch (h.compression) {
    case BiRgb:
        if (h.bitCount != 1 && h.bitCount != 4 && h.bitCount != 8 && h.bitCount != 16 && h.bitCount != 24 &&
            h.bitCount != 32)
            return ZYR_ERR_UNSUPPORTED_IMAGE;
        if (h.bitCount == 16) {
            h.masks[0] = 0x7C00, h.masks[1] = 0x03E0, h.masks[2] = 0x001F;
        } else if (h.bitCount == 32) {
            h.masks[0] = 0xFF0000, h.masks[1] = 0xFF00, h.masks[2] = 0xFF;
        }
        break;
    case BiRle8:
    case BiRle4:
        if (h.bitCount != (h.compression == BiRle8 ? 8 : 4))
            return ZYR_ERR_CORRUPT_IMAGE;
        if (h.topDown)
            return ZYR_ERR_CORRUPT_IMAGE; // run-length data is always stored bottom-up
        break;
    case BiBitfields:
    case BiAlphaBitfields: {
        if (h.bitCount != 16 && h.bitCount != 32)
            return ZYR_ERR_CORRUPT_IMAGE;
        const size_t maskCount = h.compression == BiAlphaBitfields ? 4 : 3;
        size_t maskOffset = kFileHeaderSize + 40;
        if (dibSize == 40)
            tableOffset += maskCount * 4; // masks stored after a plain info header
        else if (dibSize < 40 + maskCount * 4)
            return ZYR_ERR_CORRUPT_IMAGE;
        const size_t available = dibSize >= 56 ? 4 : maskCount;
        if (maskOffset + available * 4 > size)
            return ZYR_ERR_CORRUPT_IMAGE;
        for (size_t i = 0; i < available; ++i)
            h.masks[i] = u32(data + maskOffset + 4 * i);
        h.alpha = h.masks[3] != 0;
        break;
    }
    default:
        return ZYR_ERR_UNSUPPORTED_IMAGE; // embedded JPEG/PNG, OS/2 Huffman, ...
    }

    if (h.bitCount <= 8) {
        const uint32_t maximum = 1u << h.bitCount;
        const uint32_t count = coloursUsed == 0 || coloursUsed > maximum ? maximum : coloursUsed;
        if (tableOffset + size_t(count) * paletteEntrySize > size)
            return ZYR_ERR_CORRUPT_IMAGE;
        h.palette.resize(count);
        h.greyPalette = true;
        for (uint32_t i = 0; i < count; ++i) {
            const uint8_t* entry = data + tableOffset + size_t(i) * paletteEntrySize;
            h.palette[i] = {entry[0], entry[1], entry[2]};
            h.greyPalette = h.greyPalette && entry[0] == entry[1] && entry[1] == entry[2];
        }
    }

    h.rowStride = ((size_t(h.width) * h.bitCount + 31) / 32) * 4;
    h.dataOffset = dataOffset;
    if (h.dataOffset >= size)
        return ZYR_ERR_CORRUPT_IMAGE;
    if (h.compression != BiRle8 && h.compression != BiRle4) {
        // The last row may lack its padding; everything before it must be there.
        const size_t lastRow = (size_t(h.width) * h.bitCount + 7) / 8;
        if (h.rowStride * (size_t(h.height) - 1) + lastRow > size - h.dataOffset)
            return ZYR_ERR_CORRUPT_IMAGE;
    }
    return ZYR_OK;
}

int32_t BmpDecoder::readInfo(const uint8_t* data, size_t size, ImageInfo& info) {
    Header header;
    if (const int32_t result = parse(data, size, header))
        return result;
    info.type = ImageFileType::Bmp;
    info.width = header.width;
    info.height = header.height;
    info.colour = !(header.bitCount <= 8 && header.greyPalette);
    info.alpha = header.alpha;
    return ZYR_OK;
}

// Expands RLE4/RLE8 data into one palette index per byte, rows bottom-up; skipped pixels stay 0.
int32_t BmpDecoder::expandRle(const Header& h, const uint8_t* data, size_t size,
                              std::vector<uint8_t>& indices) {
    const bool rle4 = h.compression == BiRle4;
    const size_t width = size_t(h.width);
    const size_t height = size_t(h.height);
    indices.assign(width * height, 0);
    size_t x = 0;
    size_t y = 0;
    size_t pos = h.dataOffset;
    auto put = [&](uint8_t index) {
        if (x < width && y < height)
            indices[y * width + x] = index;
        ++x;
    };
    while (y < height) {
        if (size - pos < 2)
            return y + 1 >= height ? ZYR_OK : ZYR_ERR_CORRUPT_IMAGE; // ends without its end marker
        const uint8_t count = data[pos];
        const uint8_t value = data[pos + 1];
        pos += 2;
        if (count > 0) {
            for (unsigned i = 0; i < count; ++i)
                put(rle4 ? static_cast<uint8_t>(i % 2 == 0 ? value >> 4 : value & 0x0F) : value);
            continue;
        }
        switch (value) {
        case 0: // end of line
            x = 0;
            ++y;
            break;
        case 1: // end of bitmap
            return ZYR_OK;
        case 2: // move right and up
            if (size - pos < 2)
                return ZYR_ERR_CORRUPT_IMAGE;
            x += data[pos];
            y += data[pos + 1];
            pos += 2;
            break;
        default: { // literal pixels, padded to an even byte count
            const size_t bytes = rle4 ? (value + 1u) / 2 : value;
            const size_t padded = (bytes + 1) & ~size_t(1);
            if (size - pos < bytes)
                return ZYR_ERR_CORRUPT_IMAGE;
            for (unsigned i = 0; i < value; ++i) {
                const uint8_t byte = data[pos + (rle4 ? i / 2 : i)];
                put(rle4 ? static_cast<uint8_t>(i % 2 == 0 ? byte >> 4 : byte & 0x0F) : byte);
            }
            pos += padded < size - pos ? padded : size - pos;
            break;
        }
        }
    }
    return ZYR_OK;
}

int32_t BmpDecoder::decode(const uint8_t* data, size_t size, PixelLayout layout, uint8_t* const* rows) {
    Header h;
    if (const int32_t result = parse(data, size, h))
        return result;

    std::vector<uint8_t> indices;
    const uint8_t* pixels = data + h.dataOffset;
    size_t stride = h.rowStride;
    uint16_t bitCount = h.bitCount;
    if (h.compression == BiRle8 || h.compression == BiRle4) {
        if (const int32_t result = expandRle(h, data, size, indices))
            return result;
        pixels = indices.data();
        stride = size_t(h.width);
        bitCount = 8;
    }

    const size_t width = size_t(h.width);
    const int outBytes = bytesPerPixel(layout);
    // Palette images: every index's output pixel is worked out once.
    std::vector<uint8_t> lookup;
    if (bitCount <= 8) {
        lookup.resize(256 * size_t(outBytes));
        for (size_t i = 0; i < 256; ++i) {
            const Colour c = i < h.palette.size() ? h.palette[i] : Colour{0, 0, 0};
            const uint8_t bgra[4] = {c.b, c.g, c.r, 255};
            RowConverter::convert(PixelLayout::BGRA, bgra, layout, lookup.data() + i * size_t(outBytes), 1);
        }
    }
    const MaskChannel red(h.masks[0]), green(h.masks[1]), blue(h.masks[2]), alpha(h.masks[3]);
    std::vector<uint8_t> bgra(width * 4);
    for (int32_t y = 0; y < h.height; ++y) {
        const int32_t sourceY = h.topDown ? y : h.height - 1 - y;
        const uint8_t* source = pixels + size_t(sourceY) * stride;
        uint8_t* target = rows[y];
        if (bitCount <= 8) {
            const unsigned perByte = 8u / bitCount;
            const unsigned mask = (1u << bitCount) - 1;
            for (size_t x = 0; x < width; ++x) {
                const unsigned shift = 8u - bitCount * (1u + x % perByte);
                const unsigned index = (source[x / perByte] >> shift) & mask;
                std::memcpy(target + x * size_t(outBytes), lookup.data() + index * size_t(outBytes),
                            size_t(outBytes));
            }
            continue;
        }
        if (bitCount == 24) {
            if (layout == PixelLayout::BGR)
                std::memcpy(target, source, width * 3);
            else
                RowConverter::convert(PixelLayout::BGR, source, layout, target, h.width);
            continue;
        }
        for (size_t x = 0; x < width; ++x) {
            uint8_t* out = bgra.data() + 4 * x;
            const uint32_t pixel = bitCount == 16 ? u16(source + 2 * x) : u32(source + 4 * x);
            out[0] = blue(pixel, 0), out[1] = green(pixel, 0), out[2] = red(pixel, 0),
            out[3] = alpha(pixel, 255);
        }
        RowConverter::convert(PixelLayout::BGRA, bgra.data(), layout, target, h.width);
    }
    return ZYR_OK;
}

} // namespace zyr
