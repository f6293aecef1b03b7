// Reading the BMP bytes the reader library converts images to: layouts it writes, and damaged
// headers that must fail cleanly.
#include "BmpImage.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace {

void Put16(std::vector<uint8_t>& b, size_t at, uint32_t v) {
    b[at] = uint8_t(v);
    b[at + 1] = uint8_t(v >> 8);
}
void Put32(std::vector<uint8_t>& b, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i) {
        b[at + size_t(i)] = uint8_t(v >> (8 * i));
    }
}

// A BMP file; rows are given top-down as the bytes each file row holds (padding included) and
// laid out bottom-up unless topDown. palette: B, G, R, 0 entries for 8-bit files.
std::vector<uint8_t> MakeBmp(int32_t width, int32_t height, uint16_t bits,
                             const std::vector<std::vector<uint8_t>>& rows,
                             const std::vector<uint8_t>& palette = {}, bool topDown = false) {
    const size_t offset = 54 + palette.size();
    size_t size = offset;
    for (const auto& row : rows) {
        size += row.size();
    }
    std::vector<uint8_t> b(size, 0);
    b[0] = 'B';
    b[1] = 'M';
    Put32(b, 2, uint32_t(size));
    Put32(b, 10, uint32_t(offset));
    Put32(b, 14, 40);
    Put32(b, 18, uint32_t(width));
    Put32(b, 22, uint32_t(topDown ? -height : height));
    Put16(b, 26, 1);
    Put16(b, 28, bits);
    Put32(b, 46, uint32_t(palette.size() / 4));
    std::copy(palette.begin(), palette.end(), b.begin() + 54);
    size_t at = offset;
    for (size_t r = 0; r < rows.size(); ++r) {
        const auto& row = rows[topDown ? r : rows.size() - 1 - r];
        std::copy(row.begin(), row.end(), b.begin() + long(at));
        at += row.size();
    }
    return b;
}

std::vector<uint8_t> GreyPalette() {
    std::vector<uint8_t> p;
    for (int i = 0; i < 256; ++i) {
        p.insert(p.end(), {uint8_t(i), uint8_t(i), uint8_t(i), 0});
    }
    return p;
}

std::vector<uint8_t> Pixels(const ZyrImage& image) {
    std::vector<uint8_t> out;
    const int bytesPerPixel = image.PixelFormat == ZYR_PIXEL_GREY8 ? 1 : 3;
    for (int y = 0; y < image.Height; ++y) {
        const uint8_t* row = image.Pixels + size_t(y) * size_t(image.Stride);
        out.insert(out.end(), row, row + image.Width * bytesPerPixel);
    }
    return out;
}

TEST(BmpImage, ReadsTheLayoutsTheLibraryWrites) {
    struct Case {
        const char* name;
        std::vector<uint8_t> file;
        int32_t width, height, format;
        std::vector<uint8_t> pixels; // top-down, packed
    };
    const Case cases[] = {
        {"grey, bottom-up, padded rows",
         MakeBmp(3, 2, 8, {{10, 20, 30, 0}, {40, 50, 60, 0}}, GreyPalette()),
         3,
         2,
         ZYR_PIXEL_GREY8,
         {10, 20, 30, 40, 50, 60}},
        {"grey, top-down",
         MakeBmp(2, 2, 8, {{1, 2, 0, 0}, {3, 4, 0, 0}}, GreyPalette(), true),
         2,
         2,
         ZYR_PIXEL_GREY8,
         {1, 2, 3, 4}},
        {"24-bit BGR becomes RGB",
         MakeBmp(1, 2, 24, {{1, 2, 3, 0}, {4, 5, 6, 0}}),
         1,
         2,
         ZYR_PIXEL_RGB24,
         {3, 2, 1, 6, 5, 4}},
        {"colour palette becomes RGB",
         MakeBmp(2, 1, 8, {{1, 0, 0, 0}}, {0, 0, 0, 0, 30, 20, 10, 0}),
         2,
         1,
         ZYR_PIXEL_RGB24,
         {10, 20, 30, 0, 0, 0}},
        {"grey palette with a reordered scale",
         MakeBmp(2, 1, 8, {{0, 1, 0, 0}}, {9, 9, 9, 0, 7, 7, 7, 0}),
         2,
         1,
         ZYR_PIXEL_GREY8,
         {9, 7}},
    };
    for (const Case& c : cases) {
        BmpImage image;
        std::string error;
        ASSERT_TRUE(image.Decode(c.file.data(), c.file.size(), error)) << c.name << ": " << error;
        EXPECT_EQ(image.View().Width, c.width) << c.name;
        EXPECT_EQ(image.View().Height, c.height) << c.name;
        EXPECT_EQ(image.View().PixelFormat, c.format) << c.name;
        EXPECT_EQ(Pixels(image.View()), c.pixels) << c.name;
    }
}

TEST(BmpImage, RejectsDamagedFiles) {
    const std::vector<uint8_t> good = MakeBmp(2, 2, 24, {{1, 2, 3, 4, 5, 6, 0, 0}, {1, 2, 3, 4, 5, 6, 0, 0}});
    struct Case {
        const char* name;
        std::function<void(std::vector<uint8_t>&)> damage;
        const char* error;
    };
    const Case cases[] = {
        {"not BM", [](auto& b) { b[0] = 'P'; }, "not a BMP file"},
        {"header cut", [](auto& b) { b.resize(40); }, "not a BMP file"},
        {"info header too small", [](auto& b) { Put32(b, 14, 12); }, "damaged BMP header"},
        {"info header past the end", [](auto& b) { Put32(b, 14, 4000); }, "damaged BMP header"},
        {"16 bits per pixel", [](auto& b) { Put16(b, 28, 16); }, "unsupported BMP layout"},
        {"run-length compressed", [](auto& b) { Put32(b, 30, 1); }, "unsupported BMP layout"},
        {"zero width", [](auto& b) { Put32(b, 18, 0); }, "BMP size out of range"},
        {"negative width", [](auto& b) { Put32(b, 18, uint32_t(-2)); }, "BMP size out of range"},
        {"zero height", [](auto& b) { Put32(b, 22, 0); }, "BMP size out of range"},
        {"gigantic", [](auto& b) { Put32(b, 18, 100000), Put32(b, 22, 100000); }, "BMP size out of range"},
        {"pixels cut short", [](auto& b) { b.pop_back(); }, "BMP pixels cut short"},
        {"pixel offset past the end", [](auto& b) { Put32(b, 10, 100000); }, "BMP pixels cut short"},
    };
    for (const Case& c : cases) {
        std::vector<uint8_t> file = good;
        c.damage(file);
        BmpImage image;
        std::string error;
        EXPECT_FALSE(image.Decode(file.data(), file.size(), error)) << c.name;
        EXPECT_EQ(error, c.error) << c.name;
        EXPECT_EQ(image.View().Pixels, nullptr) << c.name;
    }
}

TEST(BmpImage, RejectsPalettesThatDoNotFit) {
    std::vector<uint8_t> tooMany = MakeBmp(1, 1, 8, {{0, 0, 0, 0}}, GreyPalette());
    Put32(tooMany, 46, 257);
    std::vector<uint8_t> overlapsPixels = MakeBmp(1, 1, 8, {{0, 0, 0, 0}}, {1, 1, 1, 0});
    Put32(overlapsPixels, 46, 2);
    for (auto* file : {&tooMany, &overlapsPixels}) {
        BmpImage image;
        std::string error;
        EXPECT_FALSE(image.Decode(file->data(), file->size(), error));
        EXPECT_EQ(error, "damaged BMP palette");
    }
}

TEST(BmpImage, AFailedDecodeEmptiesAnEarlierImage) {
    const std::vector<uint8_t> good = MakeBmp(1, 1, 8, {{5, 0, 0, 0}}, GreyPalette());
    BmpImage image;
    std::string error;
    ASSERT_TRUE(image.Decode(good.data(), good.size(), error));
    EXPECT_FALSE(image.Decode(good.data(), 10, error));
    EXPECT_EQ(image.View().Width, 0);
    EXPECT_EQ(image.View().Pixels, nullptr);
}

} // namespace
