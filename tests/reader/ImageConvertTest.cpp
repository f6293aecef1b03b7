#include "ImageFixtures.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>
#include <png.h>
#include <zlib.h>

#include <algorithm>
#include <functional>
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

// Converts to BMP as a client does: asks the size, is refused one byte short of it, then converts
// into a buffer of exactly that size and into a larger one, as the picture view does.
int32_t convertToBmp(const std::vector<uint8_t>& bytes, std::vector<uint8_t>& bmp) {
    auto convert = [&](uint8_t* out, uint32_t& size) {
        return ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()), out, &size);
    };
    uint32_t needed = 0;
    if (const int32_t result = convert(nullptr, needed))
        return result;
    bmp.assign(needed + 1000, 0xCD);
    uint32_t size = needed - 1;
    EXPECT_EQ(convert(bmp.data(), size), ZYR_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(size, needed) << "a refused conversion reports the size it needs";
    size = needed;
    EXPECT_EQ(convert(bmp.data(), size), ZYR_OK) << "exact capacity is enough";
    size = uint32_t(bmp.size());
    const int32_t result = convert(bmp.data(), size);
    EXPECT_EQ(size, needed) << "size query and conversion disagree";
    bmp.resize(size);
    return result;
}

Source png(Pattern pattern, int w, int h, int colourType, int depth, bool interlaced = false, int levels = 256) {
    const Picture picture = makePicture(w, h, pattern, levels);
    return {encodePng(picture, colourType, depth, interlaced), flattenedOverWhite(picture),
            (colourType & PNG_COLOR_MASK_COLOR) == 0};
}

Source jpeg(Pattern pattern, int w, int h, bool greyImage) {
    const std::vector<uint8_t> bytes = encodeJpeg(makePicture(w, h, pattern), greyImage);
    return {bytes, decodeJpegReference(bytes), greyImage};
}

Source bmp(Pattern pattern, int w, int h, BmpOptions options, bool greyOutput, int levels = 256) {
    const Picture picture = makePicture(w, h, pattern, levels);
    return {encodeBmp(picture, options), flattenedOverWhite(storedInBmp(picture, options)), greyOutput};
}

BmpOptions bits(int bpp, bool topDown = false, bool rle = false, int headerSize = 40, bool omitLastPadding = false) {
    BmpOptions o;
    o.bitsPerPixel = bpp, o.topDown = topDown, o.rle = rle, o.headerSize = headerSize;
    o.omitLastPadding = omitLastPadding;
    return o;
}
BmpOptions masked(BmpOptions o, uint32_t r, uint32_t g, uint32_t b, uint32_t a = 0) {
    o.bitfields = true;
    o.masks[0] = r, o.masks[1] = g, o.masks[2] = b, o.masks[3] = a;
    return o;
}

constexpr int kGrey = PNG_COLOR_TYPE_GRAY, kRgb = PNG_COLOR_TYPE_RGB, kRgba = PNG_COLOR_TYPE_RGB_ALPHA,
              kPalette = PNG_COLOR_TYPE_PALETTE;
using P = Pattern;

const ConvertCase convertCases[] = {
    // PNG: every colour type and depth, odd widths, interlacing, palettes with transparency.
    {"png_grey8_odd_width", [] { return png(P::Grey, 13, 7, kGrey, 8); }},
    {"png_grey1", [] { return png(P::Levels, 9, 4, kGrey, 1, false, 2); }},
    {"png_grey_alpha", [] { return png(P::GreyAlpha, 15, 6, PNG_COLOR_TYPE_GRAY_ALPHA, 8); }},
    {"png_rgb8", [] { return png(P::Colour, 13, 7, kRgb, 8); }},
    {"png_rgba8", [] { return png(P::ColourAlpha, 17, 9, kRgba, 8); }},
    {"png_rgba16", [] { return png(P::ColourAlpha, 5, 5, kRgba, 16); }},
    {"png_palette_transparent", [] { return png(P::ColourAlpha, 5, 4, kPalette, 8); }},
    {"png_palette4_grey_levels", [] { return png(P::Levels, 9, 3, kPalette, 4, false, 16); }},
    {"png_interlaced_rgb", [] { return png(P::Colour, 17, 11, kRgb, 8, true); }},
    {"png_one_pixel", [] { return png(P::Grey, 1, 1, kGrey, 8); }},
    // JPEG: compared with libjpeg's own decode of the same bytes.
    {"jpeg_colour_odd_width", [] { return jpeg(P::Colour, 13, 7, false); }},
    {"jpeg_grey_odd_width", [] { return jpeg(P::Grey, 13, 7, true); }},
    // BMP: bit depths, palettes, masks, header kinds, row orders, run-length data.
    {"bmp24_bottom_up", [] { return bmp(P::Colour, 13, 7, bits(24), false); }},
    {"bmp24_top_down", [] { return bmp(P::Colour, 13, 7, bits(24, true), false); }},
    {"bmp24_last_row_unpadded", [] { return bmp(P::Colour, 5, 3, bits(24, false, false, 40, true), false); }},
    {"bmp8_grey_palette", [] { return bmp(P::Grey, 11, 6, bits(8), true); }},
    {"bmp8_colour_palette", [] { return bmp(P::Colour, 7, 5, bits(8), false); }},
    {"bmp4_grey_levels", [] { return bmp(P::Levels, 9, 4, bits(4), true, 16); }},
    {"bmp1_two_levels", [] { return bmp(P::Levels, 19, 3, bits(1), true, 2); }},
    {"bmp16_555", [] { return bmp(P::Colour, 7, 4, bits(16), false); }},
    {"bmp16_565_bitfields", [] { return bmp(P::Colour, 7, 4, masked(bits(16), 0xF800, 0x07E0, 0x1F), false); }},
    {"bmp32_unused_fourth_byte", [] { return bmp(P::Colour, 6, 5, bits(32), false); }},
    {"bmp32_alpha_mask_v4",
     [] { return bmp(P::ColourAlpha, 6, 5, masked(bits(32, false, false, 108), 0xFF0000, 0xFF00, 0xFF, 0xFF000000), false); }},
    {"bmp32_bitfields_v5_top_down",
     [] { return bmp(P::Colour, 6, 5, masked(bits(32, true, false, 124), 0xFF, 0xFF00, 0xFF0000), false); }},
    {"bmp_os2_core_header", [] { return bmp(P::Colour, 7, 5, bits(8, false, false, 12), false); }},
    {"bmp_rle8", [] { return bmp(P::Colour, 9, 6, bits(8, false, true), false); }},
    {"bmp_rle4", [] { return bmp(P::Levels, 11, 6, bits(4, false, true), true, 16); }},
};

class ImageConvert : public ::testing::TestWithParam<ConvertCase> {};

TEST_P(ImageConvert, BmpShowsTheSourcePixels) {
    const Source source = GetParam().make();
    ASSERT_FALSE(source.bytes.empty()) << "fixture failed to encode";
    std::vector<uint8_t> bmpBytes;
    ASSERT_EQ(convertToBmp(source.bytes, bmpBytes), ZYR_OK);
    BmpOptions output = bits(source.grey ? 8 : 24); // bottom-up rows, grey levels or colour
    output.greyPalette = source.grey;
    const std::vector<uint8_t> expected = encodeBmp(source.expected, output);
    const auto diff = std::mismatch(expected.begin(), expected.end(), bmpBytes.begin(), bmpBytes.end());
    EXPECT_TRUE(bmpBytes == expected) << "first difference at byte " << diff.first - expected.begin() << " of "
                                      << expected.size() << " (" << bmpBytes.size() << " written)";
}

INSTANTIATE_TEST_SUITE_P(Formats, ImageConvert, ::testing::ValuesIn(convertCases),
                         [](const ::testing::TestParamInfo<ConvertCase>& info) { return info.param.name; });

// ---- Damaged input ----

size_t findMarker(const std::vector<uint8_t>& bytes, const std::string& marker) {
    const auto at = std::search(bytes.begin(), bytes.end(), marker.begin(), marker.end(),
                                [](uint8_t b, char m) { return b == uint8_t(m); });
    EXPECT_NE(at, bytes.end()) << "marker not found in the fixture";
    return size_t(at - bytes.begin());
}

std::vector<uint8_t> goodPng() {
    return encodePng(makePicture(40, 30, Pattern::Colour), PNG_COLOR_TYPE_RGB, 8);
}
std::vector<uint8_t> goodJpeg() {
    return encodeJpeg(makePicture(64, 48, Pattern::Colour), false);
}
std::vector<uint8_t> goodBmp() {
    return encodeBmp(makePicture(9, 8, Pattern::Colour), bits(24));
}
const std::vector<uint8_t>& rle8Bmp() {
    static const auto bytes = encodeBmp(makePicture(9, 6, Pattern::Colour), bits(8, false, true));
    return bytes;
}

std::vector<uint8_t> cut(std::vector<uint8_t> bytes, size_t keep) {
    bytes.resize(keep);
    return bytes;
}
// The bytes with the given values written from `at` on.
template <class... Values> std::vector<uint8_t> poke(std::vector<uint8_t> bytes, size_t at, Values... values) {
    for (const int v : {values...})
        bytes.at(at++) = uint8_t(v);
    return bytes;
}
// A PNG whose header was poked, with the header's CRC made right again.
std::vector<uint8_t> withHeaderCrc(std::vector<uint8_t> png) {
    const uint32_t crc = uint32_t(crc32(0, png.data() + 12, 17)); // type and the 13 header bytes
    return poke(png, 29, crc >> 24, (crc >> 16) & 255, (crc >> 8) & 255, crc & 255);
}

struct DamageCase {
    const char* name;
    std::function<std::vector<uint8_t>()> make;
    int32_t queryResult;   // the header-only size query
    int32_t convertResult; // the conversion
};

constexpr int32_t kCorrupt = ZYR_ERR_CORRUPT_IMAGE, kUnsupported = ZYR_ERR_UNSUPPORTED_IMAGE, kOk = ZYR_OK;

const DamageCase damageCases[] = {
    {"png_cut_in_header", [] { return cut(goodPng(), 20); }, kCorrupt, kCorrupt},
    {"png_cut_in_image_data", [] { return cut(goodPng(), findMarker(goodPng(), "IDAT") + 40); }, kOk, kCorrupt},
    {"png_zero_width", [] { return withHeaderCrc(poke(goodPng(), 16, 0, 0, 0, 0)); }, kCorrupt, kCorrupt},
    // 40000 x 40000
    {"png_huge", [] { return withHeaderCrc(poke(goodPng(), 16, 0, 0, 0x9C, 0x40, 0, 0, 0x9C, 0x40)); },
     kUnsupported, kUnsupported},
    {"jpeg_cut_in_header", [] { return cut(goodJpeg(), 100); }, kCorrupt, kCorrupt},
    {"jpeg_cut_in_scan", [] { return cut(goodJpeg(), goodJpeg().size() * 2 / 3); }, kOk, kCorrupt},
    {"jpeg_zero_height", [] { return poke(goodJpeg(), findMarker(goodJpeg(), "\xFF\xC0") + 5, 0, 0); },
     kCorrupt, kCorrupt},
    {"bmp_pixels_cut", [] { return cut(goodBmp(), goodBmp().size() - 40); }, kCorrupt, kCorrupt},
    {"bmp_header_size_past_end", [] { return poke(goodBmp(), 14, 0xFF, 0xFF, 0xFF); }, kCorrupt, kCorrupt},
    {"bmp_zero_width", [] { return poke(goodBmp(), 18, 0, 0, 0, 0); }, kCorrupt, kCorrupt},
    {"bmp_seven_bits", [] { return poke(goodBmp(), 28, 7); }, kUnsupported, kUnsupported},
    {"bmp_embedded_jpeg", [] { return poke(goodBmp(), 30, 4); }, kUnsupported, kUnsupported},
    {"bmp_palette_past_end", [] { return cut(encodeBmp(makePicture(4, 4, P::Grey), bits(8)), 14 + 40 + 8); },
     kCorrupt, kCorrupt},
    {"bmp_run_lengths_cut", [] { return cut(rle8Bmp(), rle8Bmp().size() - 30); }, kOk, kCorrupt},
    // height -6
    {"bmp_run_lengths_top_down", [] { return poke(rle8Bmp(), 22, 0xFA, 0xFF, 0xFF, 0xFF); }, kCorrupt, kCorrupt},
    {"gif_is_not_read", [] { return std::vector<uint8_t>{'G', 'I', 'F', '8', '9', 'a', 1, 0, 1, 0, 0, 0, 0}; },
     kUnsupported, kUnsupported},
    {"empty", [] { return std::vector<uint8_t>{}; }, kUnsupported, kUnsupported},
};

class DamagedImage : public ::testing::TestWithParam<DamageCase> {};

TEST_P(DamagedImage, GivesItsErrorCode) {
    const DamageCase& c = GetParam();
    std::vector<uint8_t> bytes = c.make();
    bytes.reserve(bytes.size() + 1); // data() must be non-null even when empty
    uint32_t size = 0;
    EXPECT_EQ(ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()), nullptr, &size),
              c.queryResult);
    std::vector<uint8_t> out(size_t(4) << 20);
    size = uint32_t(out.size());
    EXPECT_EQ(ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bytes.data(), uint32_t(bytes.size()), out.data(), &size),
              c.convertResult);
}

INSTANTIATE_TEST_SUITE_P(Inputs, DamagedImage, ::testing::ValuesIn(damageCases),
                         [](const ::testing::TestParamInfo<DamageCase>& info) { return info.param.name; });

} // namespace
