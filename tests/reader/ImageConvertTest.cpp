#include "ImageFixtures.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

#include <cmath>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

using namespace fixtures;

namespace {

struct Source {
    std::vector<uint8_t> bytes;
    Picture expected; // what the BMP must show, alpha already composited
    bool grey = false;
};

struct ConvertCase {
    const char* name;
    std::function<Source()> make;
};

int32_t queryBmpSize(const std::vector<uint8_t>& bytes, uint32_t& size) {
    size = 0;
    return ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()), nullptr, &size);
}

int32_t convertToBmp(const std::vector<uint8_t>& bytes, std::vector<uint8_t>& bmp) {
    uint32_t size = 0;
    if (const int32_t result = queryBmpSize(bytes, size))
        return result;
    bmp.assign(size + 1000, 0xCD); // over-allocated, as the picture view does
    uint32_t written = uint32_t(bmp.size());
    const int32_t result = ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()),
                                                        bmp.data(), &written);
    if (result == ZYR_OK) {
        EXPECT_EQ(written, size) << "size query and conversion disagree";
        bmp.resize(written);
    }
    return result;
}

Source png(Pattern pattern, int w, int h, int colourType, int depth, bool interlaced = false,
           int levels = 256) {
    Source s;
    const Picture picture = makePicture(w, h, pattern, levels);
    s.bytes = encodePng(picture, colourType, depth, interlaced);
    s.expected = flattenedOverWhite(picture);
    s.grey = (colourType & PNG_COLOR_MASK_COLOR) == 0;
    return s;
}

Source jpeg(Pattern pattern, int w, int h, bool greyImage, bool progressive = false) {
    Source s;
    s.bytes = encodeJpeg(makePicture(w, h, pattern), greyImage, 90, progressive);
    s.expected = decodeJpegReference(s.bytes);
    s.grey = greyImage;
    return s;
}

// What a channel stored in `bits` bits reads back as.
uint8_t quantised(uint8_t v, int bits) {
    const int top = (1 << bits) - 1;
    return uint8_t(std::lround(std::lround(v * top / 255.0) * 255.0 / top));
}

int bitsOf(uint32_t mask) {
    int n = 0;
    for (; mask != 0; mask >>= 1)
        n += int(mask & 1);
    return n;
}

Source bmp(Pattern pattern, int w, int h, BmpOptions options, bool greyOutput, int levels = 256) {
    Source s;
    Picture picture = makePicture(w, h, pattern, levels);
    s.bytes = encodeBmp(picture, options);
    if (options.bitsPerPixel == 16 || options.bitsPerPixel == 32) {
        uint32_t masks[4];
        bmpMasks(options, masks);
        for (Rgba& c : picture.pixels) {
            c.r = quantised(c.r, bitsOf(masks[0]));
            c.g = quantised(c.g, bitsOf(masks[1]));
            c.b = quantised(c.b, bitsOf(masks[2]));
            c.a = masks[3] != 0 ? quantised(c.a, bitsOf(masks[3])) : 255;
        }
    }
    s.expected = flattenedOverWhite(picture);
    s.grey = greyOutput;
    return s;
}

BmpOptions bits(int bpp, bool topDown = false, bool rle = false, int headerSize = 40) {
    BmpOptions o;
    o.bitsPerPixel = bpp, o.topDown = topDown, o.rle = rle, o.headerSize = headerSize;
    return o;
}
BmpOptions masked(BmpOptions o, uint32_t r, uint32_t g, uint32_t b, uint32_t a = 0) {
    o.bitfields = true;
    o.masks[0] = r, o.masks[1] = g, o.masks[2] = b, o.masks[3] = a;
    return o;
}
BmpOptions lastRowUnpadded(BmpOptions o) {
    o.omitLastPadding = true;
    return o;
}

const ConvertCase convertCases[] = {
    // PNG: every colour type and depth, odd widths, interlacing, palettes with transparency.
    {"png_grey8_odd_width", [] { return png(Pattern::Grey, 13, 7, PNG_COLOR_TYPE_GRAY, 8); }},
    {"png_grey16", [] { return png(Pattern::Grey, 5, 3, PNG_COLOR_TYPE_GRAY, 16); }},
    {"png_grey1", [] { return png(Pattern::Levels, 9, 4, PNG_COLOR_TYPE_GRAY, 1, false, 2); }},
    {"png_grey2", [] { return png(Pattern::Levels, 7, 3, PNG_COLOR_TYPE_GRAY, 2, false, 4); }},
    {"png_grey4", [] { return png(Pattern::Levels, 11, 5, PNG_COLOR_TYPE_GRAY, 4, false, 16); }},
    {"png_grey_alpha", [] { return png(Pattern::GreyAlpha, 15, 6, PNG_COLOR_TYPE_GRAY_ALPHA, 8); }},
    {"png_rgb8", [] { return png(Pattern::Colour, 13, 7, PNG_COLOR_TYPE_RGB, 8); }},
    {"png_rgb16", [] { return png(Pattern::Colour, 6, 5, PNG_COLOR_TYPE_RGB, 16); }},
    {"png_rgba8", [] { return png(Pattern::ColourAlpha, 17, 9, PNG_COLOR_TYPE_RGB_ALPHA, 8); }},
    {"png_rgba16", [] { return png(Pattern::ColourAlpha, 5, 5, PNG_COLOR_TYPE_RGB_ALPHA, 16); }},
    {"png_palette8", [] { return png(Pattern::Colour, 7, 5, PNG_COLOR_TYPE_PALETTE, 8); }},
    {"png_palette_transparent", [] { return png(Pattern::ColourAlpha, 5, 4, PNG_COLOR_TYPE_PALETTE, 8); }},
    {"png_palette4_grey_levels",
     [] { return png(Pattern::Levels, 9, 3, PNG_COLOR_TYPE_PALETTE, 4, false, 16); }},
    {"png_interlaced_rgb", [] { return png(Pattern::Colour, 17, 11, PNG_COLOR_TYPE_RGB, 8, true); }},
    {"png_interlaced_grey", [] { return png(Pattern::Grey, 9, 9, PNG_COLOR_TYPE_GRAY, 8, true); }},
    {"png_interlaced_rgba",
     [] { return png(Pattern::ColourAlpha, 10, 7, PNG_COLOR_TYPE_RGB_ALPHA, 8, true); }},
    {"png_one_pixel", [] { return png(Pattern::Grey, 1, 1, PNG_COLOR_TYPE_GRAY, 8); }},
    // JPEG: compared with libjpeg's own decode of the same bytes.
    {"jpeg_colour_odd_width", [] { return jpeg(Pattern::Colour, 13, 7, false); }},
    {"jpeg_grey_odd_width", [] { return jpeg(Pattern::Grey, 13, 7, true); }},
    {"jpeg_progressive", [] { return jpeg(Pattern::Colour, 31, 17, false, true); }},
    {"jpeg_one_pixel", [] { return jpeg(Pattern::Colour, 1, 1, false); }},
    {"jpeg_several_blocks", [] { return jpeg(Pattern::Colour, 257, 3, false); }},
    // BMP: bit depths, palettes, masks, header kinds, row orders, run-length data.
    {"bmp24_bottom_up", [] { return bmp(Pattern::Colour, 13, 7, bits(24), false); }},
    {"bmp24_top_down", [] { return bmp(Pattern::Colour, 13, 7, bits(24, true), false); }},
    {"bmp24_last_row_unpadded", [] { return bmp(Pattern::Colour, 5, 3, lastRowUnpadded(bits(24)), false); }},
    {"bmp8_grey_palette", [] { return bmp(Pattern::Grey, 11, 6, bits(8), true); }},
    {"bmp8_grey_palette_top_down", [] { return bmp(Pattern::Grey, 11, 6, bits(8, true), true); }},
    {"bmp8_colour_palette", [] { return bmp(Pattern::Colour, 7, 5, bits(8), false); }},
    {"bmp4_grey_levels", [] { return bmp(Pattern::Levels, 9, 4, bits(4), true, 16); }},
    {"bmp1_two_levels", [] { return bmp(Pattern::Levels, 19, 3, bits(1), true, 2); }},
    {"bmp16_555", [] { return bmp(Pattern::Colour, 7, 4, bits(16), false); }},
    {"bmp16_565_bitfields",
     [] { return bmp(Pattern::Colour, 7, 4, masked(bits(16), 0xF800, 0x07E0, 0x1F), false); }},
    {"bmp32_unused_fourth_byte", [] { return bmp(Pattern::Colour, 6, 5, bits(32), false); }},
    {"bmp32_alpha_mask_v4",
     [] {
         return bmp(Pattern::ColourAlpha, 6, 5,
                    masked(bits(32, false, false, 108), 0xFF0000, 0xFF00, 0xFF, 0xFF000000), false);
     }},
    {"bmp32_bitfields_v5_top_down",
     [] {
         return bmp(Pattern::Colour, 6, 5, masked(bits(32, true, false, 124), 0xFF, 0xFF00, 0xFF0000), false);
     }},
    {"bmp_os2_core_header", [] { return bmp(Pattern::Colour, 7, 5, bits(8, false, false, 12), false); }},
    {"bmp_rle8", [] { return bmp(Pattern::Colour, 9, 6, bits(8, false, true), false); }},
    {"bmp_rle4", [] { return bmp(Pattern::Levels, 11, 6, bits(4, false, true), true, 16); }},
};

void PrintTo(const ConvertCase& c, std::ostream* out) {
    *out << c.name;
}

class ImageConvert : public ::testing::TestWithParam<ConvertCase> {};

TEST_P(ImageConvert, BmpShowsTheSourcePixels) {
    const Source source = GetParam().make();
    ASSERT_FALSE(source.bytes.empty()) << "fixture failed to encode";
    std::vector<uint8_t> bmpBytes;
    ASSERT_EQ(convertToBmp(source.bytes, bmpBytes), ZYR_OK);
    BmpFile file;
    std::string problem;
    ASSERT_TRUE(readOutputBmp(bmpBytes, file, problem)) << problem;
    EXPECT_EQ(file.bitsPerPixel, source.grey ? 8 : 24);
    EXPECT_EQ(firstDifference(source.expected, file.picture), "");
}

TEST_P(ImageConvert, ExactCapacityIsEnoughAndOneByteLessIsRefused) {
    const Source source = GetParam().make();
    uint32_t needed = 0;
    ASSERT_EQ(queryBmpSize(source.bytes, needed), ZYR_OK);
    std::vector<uint8_t> out(needed);
    uint32_t size = needed - 1;
    EXPECT_EQ(ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, source.bytes.data(), uint32_t(source.bytes.size()),
                                           out.data(), &size),
              ZYR_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(size, needed) << "a refused conversion reports the size it needs";
    size = needed;
    EXPECT_EQ(ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, source.bytes.data(), uint32_t(source.bytes.size()),
                                           out.data(), &size),
              ZYR_OK);
    EXPECT_EQ(size, needed);
}

INSTANTIATE_TEST_SUITE_P(Formats, ImageConvert, ::testing::ValuesIn(convertCases),
                         [](const ::testing::TestParamInfo<ConvertCase>& info) { return info.param.name; });

// ---- Damaged input ----

void setChunkCrc(std::vector<uint8_t>& png, size_t chunkStart) {
    const uint32_t length = uint32_t(png[chunkStart]) << 24 | uint32_t(png[chunkStart + 1]) << 16 |
                            uint32_t(png[chunkStart + 2]) << 8 | png[chunkStart + 3];
    const uint32_t crc = uint32_t(crc32(0, png.data() + chunkStart + 4, length + 4));
    for (int i = 0; i < 4; ++i)
        png[chunkStart + 8 + length + size_t(i)] = uint8_t(crc >> (24 - 8 * i));
}

size_t findMarker(const std::vector<uint8_t>& bytes, const std::string& marker) {
    for (size_t i = 0; i + marker.size() <= bytes.size(); ++i)
        if (std::equal(marker.begin(), marker.end(), bytes.begin() + long(i),
                       [](char a, uint8_t b) { return uint8_t(a) == b; }))
            return i;
    ADD_FAILURE() << "marker not found in the fixture";
    return 0;
}

std::vector<uint8_t> goodPng() {
    return encodePng(makePicture(40, 30, Pattern::Colour), PNG_COLOR_TYPE_RGB, 8);
}
std::vector<uint8_t> goodJpeg(bool progressive = false) {
    return encodeJpeg(makePicture(64, 48, Pattern::Colour), false, 90, progressive);
}
std::vector<uint8_t> goodBmp(const BmpOptions& o = bits(24)) {
    return encodeBmp(makePicture(9, 8, Pattern::Colour), o);
}

std::vector<uint8_t> cut(std::vector<uint8_t> bytes, size_t keep) {
    bytes.resize(keep);
    return bytes;
}
// The bytes with the given values written from `at` on, or (xor) one byte flipped.
template <class... Values>
std::vector<uint8_t> poke(std::vector<uint8_t> bytes, size_t at, Values... values) {
    for (const int v : {values...})
        bytes.at(at++) = uint8_t(v);
    return bytes;
}
std::vector<uint8_t> flip(std::vector<uint8_t> bytes, size_t at, uint8_t mask) {
    bytes[at] ^= mask;
    return bytes;
}
// A PNG whose header was poked, with the header's CRC made right again.
std::vector<uint8_t> withHeaderCrc(std::vector<uint8_t> png) {
    setChunkCrc(png, 8);
    return png;
}
const std::vector<uint8_t>& rle8Bmp() {
    static const auto bytes = encodeBmp(makePicture(9, 6, Pattern::Colour), bits(8, false, true));
    return bytes;
}

struct DamageCase {
    const char* name;
    std::function<std::vector<uint8_t>()> make;
    int32_t queryResult;   // the header-only size query
    int32_t convertResult; // the conversion
};

constexpr int32_t kCorrupt = ZYR_ERR_CORRUPT_IMAGE;
constexpr int32_t kUnsupported = ZYR_ERR_UNSUPPORTED_IMAGE;

const DamageCase damageCases[] = {
    {"png_signature_only", [] { return cut(goodPng(), 8); }, kCorrupt, kCorrupt},
    {"png_cut_in_header", [] { return cut(goodPng(), 20); }, kCorrupt, kCorrupt},
    {"png_cut_in_image_data", [] { return cut(goodPng(), findMarker(goodPng(), "IDAT") + 40); }, ZYR_OK,
     kCorrupt},
    {"png_header_crc_wrong", [] { return flip(goodPng(), 29, 0x01); }, kCorrupt,
     kCorrupt}, // last byte of the IHDR CRC
    {"png_image_data_flipped", [] { return flip(goodPng(), findMarker(goodPng(), "IDAT") + 20, 0xFF); },
     ZYR_OK, kCorrupt},
    {"png_zero_width", [] { return withHeaderCrc(poke(goodPng(), 16, 0, 0, 0, 0)); }, kCorrupt, kCorrupt},
    {"png_huge", [] { return withHeaderCrc(poke(goodPng(), 16, 0, 0, 0x9C, 0x40, 0, 0, 0x9C, 0x40)); },
     kUnsupported, kUnsupported}, // 40000 x 40000
    {"jpeg_start_marker_only", [] { return cut(goodJpeg(), 3); }, kCorrupt, kCorrupt},
    {"jpeg_cut_in_header", [] { return cut(goodJpeg(), 100); }, kCorrupt, kCorrupt},
    {"jpeg_cut_in_scan", [] { return cut(goodJpeg(), goodJpeg().size() * 2 / 3); }, ZYR_OK, kCorrupt},
    {"jpeg_progressive_cut", [] { return cut(goodJpeg(true), goodJpeg(true).size() / 2); }, ZYR_OK, kCorrupt},
    {"jpeg_zero_height", [] { return poke(goodJpeg(), findMarker(goodJpeg(), "\xFF\xC0") + 5, 0, 0); },
     kCorrupt, kCorrupt},
    // End of image in the middle of the data.
    {"jpeg_marker_inside_scan",
     [] { return poke(goodJpeg(), findMarker(goodJpeg(), "\xFF\xDA") + 40, 0xFF, 0xD9); }, ZYR_OK, kCorrupt},
    {"bmp_file_header_only", [] { return cut(goodBmp(), 14); }, kCorrupt, kCorrupt},
    {"bmp_pixels_cut", [] { return cut(goodBmp(), goodBmp().size() - 40); }, kCorrupt, kCorrupt},
    {"bmp_header_size_past_end", [] { return poke(goodBmp(), 14, 0xFF, 0xFF, 0xFF); }, kCorrupt, kCorrupt},
    {"bmp_zero_width", [] { return poke(goodBmp(), 18, 0, 0, 0, 0); }, kCorrupt, kCorrupt},
    {"bmp_seven_bits", [] { return poke(goodBmp(), 28, 7); }, kUnsupported, kUnsupported},
    {"bmp_embedded_jpeg", [] { return poke(goodBmp(), 30, 4); }, kUnsupported, kUnsupported},
    {"bmp_pixel_offset_past_end", [] { return poke(goodBmp(), 10, 0xFF, 0xFF, 0x0F); }, kCorrupt, kCorrupt},
    {"bmp_palette_past_end",
     [] { return cut(encodeBmp(makePicture(4, 4, Pattern::Grey), bits(8)), 14 + 40 + 8); }, kCorrupt,
     kCorrupt},
    {"bmp_run_lengths_cut", [] { return cut(rle8Bmp(), rle8Bmp().size() - 30); }, ZYR_OK, kCorrupt},
    {"bmp_run_lengths_top_down", [] { return poke(rle8Bmp(), 22, 0xFA, 0xFF, 0xFF, 0xFF); }, kCorrupt,
     kCorrupt}, // height -6
    {"gif_is_not_read",
     [] { return std::vector<uint8_t>{'G', 'I', 'F', '8', '9', 'a', 1, 0, 1, 0, 0, 0, 0}; }, kUnsupported,
     kUnsupported},
    {"one_byte", [] { return std::vector<uint8_t>{0xFF}; }, kUnsupported, kUnsupported},
    {"empty", [] { return std::vector<uint8_t>{}; }, kUnsupported, kUnsupported},
};

void PrintTo(const DamageCase& c, std::ostream* out) {
    *out << c.name;
}

class DamagedImage : public ::testing::TestWithParam<DamageCase> {};

TEST_P(DamagedImage, GivesItsErrorCode) {
    const DamageCase& c = GetParam();
    std::vector<uint8_t> bytes = c.make();
    bytes.reserve(bytes.size() + 1); // data() must be non-null even when empty
    uint32_t size = 0;
    EXPECT_EQ(
        ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()), nullptr, &size),
        c.queryResult);
    std::vector<uint8_t> out(size_t(4) << 20);
    size = uint32_t(out.size());
    EXPECT_EQ(
        ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()), out.data(), &size),
        c.convertResult);
}

INSTANTIATE_TEST_SUITE_P(Inputs, DamagedImage, ::testing::ValuesIn(damageCases),
                         [](const ::testing::TestParamInfo<DamageCase>& info) { return info.param.name; });

TEST(ImageConvertArguments, RefusesMissingPointersAndOtherFormats) {
    const std::vector<uint8_t> bytes = goodPng();
    uint32_t size = 0;
    EXPECT_EQ(ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, nullptr, 10, nullptr, &size),
              ZYR_ERR_BAD_ARGUMENT);
    EXPECT_EQ(
        ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()), nullptr, nullptr),
        ZYR_ERR_BAD_ARGUMENT);
    for (int32_t format : {0, 5, 7, -1})
        EXPECT_EQ(ZyrReader_ImageConvertFormat(format, bytes.data(), uint32_t(bytes.size()), nullptr, &size),
                  ZYR_ERR_BAD_ARGUMENT)
            << "format " << format;
}

TEST(ImageConvertArguments, LengthShorterThanTheDataIsHonoured) {
    // The converter must read only inputLength bytes, even when more follow in memory.
    const std::vector<uint8_t> bytes = goodPng();
    const uint32_t length = uint32_t(findMarker(bytes, "IDAT") + 40);
    uint32_t size = 0;
    EXPECT_EQ(ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), length, nullptr, &size), ZYR_OK);
    std::vector<uint8_t> out(size);
    EXPECT_EQ(ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), length, out.data(), &size),
              ZYR_ERR_CORRUPT_IMAGE);
}

} // namespace
