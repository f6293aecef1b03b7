#include "imagecodec/BmpWriter.h"

#include "imagecodec/RowConverter.h"

#include <cstring>

namespace zyr {
namespace {

constexpr uint32_t kHeadersSize = 14 + 40;
constexpr uint32_t kGreyPaletteSize = 256 * 4;
constexpr int32_t kPixelsPerMetre = 2835; // 72 dpi

void put16(uint8_t* p, uint16_t v) {
    p[0] = static_cast<uint8_t>(v);
    p[1] = static_cast<uint8_t>(v >> 8);
}
void put32(uint8_t* p, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        p[i] = static_cast<uint8_t>(v >> (8 * i));
}

} // namespace

uint32_t BmpWriter::rowStride(int32_t width, bool grey) {
    return static_cast<uint32_t>((uint64_t(width) * (grey ? 1 : 3) + 3) & ~uint64_t(3));
}

uint64_t BmpWriter::fileSize(int32_t width, int32_t height, bool grey) {
    if (width <= 0 || height <= 0)
        return 0;
    const uint64_t size = kHeadersSize + (grey ? kGreyPaletteSize : 0) +
                          ((uint64_t(width) * (grey ? 1 : 3) + 3) & ~uint64_t(3)) * uint64_t(height);
    return size > 0xFFFFFFFFu ? 0 : size;
}

void BmpWriter::layOut(uint8_t* file, int32_t width, int32_t height, bool grey, uint8_t** rows) {
    const uint32_t size = static_cast<uint32_t>(fileSize(width, height, grey));
    const uint32_t offset = kHeadersSize + (grey ? kGreyPaletteSize : 0);
    const uint32_t stride = rowStride(width, grey);
    std::memset(file, 0, offset);
    file[0] = 'B';
    file[1] = 'M';
    put32(file + 2, size);
    put32(file + 10, offset);
    uint8_t* info = file + 14;
    put32(info, 40);
    put32(info + 4, static_cast<uint32_t>(width));
    put32(info + 8, static_cast<uint32_t>(height)); // positive: bottom-up
    put16(info + 12, 1);
    put16(info + 14, grey ? 8 : 24);
    put32(info + 20, size - offset);
    put32(info + 24, kPixelsPerMetre);
    put32(info + 28, kPixelsPerMetre);
    put32(info + 32, grey ? 256 : 0);
    if (grey) {
        uint8_t* palette = file + kHeadersSize;
        for (int i = 0; i < 256; ++i)
            palette[4 * i] = palette[4 * i + 1] = palette[4 * i + 2] = static_cast<uint8_t>(i);
    }
    const uint32_t used = static_cast<uint32_t>(width) * (grey ? 1 : 3);
    for (int32_t y = 0; y < height; ++y) {
        uint8_t* row = file + offset + size_t(height - 1 - y) * stride;
        std::memset(row + used, 0, stride - used);
        rows[y] = row;
    }
}

std::vector<uint8_t> BmpWriter::encode(int32_t width, int32_t height, PixelLayout layout,
                                       const uint8_t* pixels, int32_t stride) {
    const bool grey = layout == PixelLayout::Grey8;
    const uint64_t size = fileSize(width, height, grey);
    if (size == 0)
        return {};
    std::vector<uint8_t> file(size);
    std::vector<uint8_t*> rows(static_cast<size_t>(height));
    layOut(file.data(), width, height, grey, rows.data());
    for (int32_t y = 0; y < height; ++y)
        RowConverter::convert(layout, pixels + size_t(y) * stride,
                              grey ? PixelLayout::Grey8 : PixelLayout::BGR, rows[y], width);
    return file;
}

} // namespace zyr
