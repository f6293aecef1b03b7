// Objects the library hands out (images and others), tested against the core linked in directly
// so that the test can create them the way the library's areas do; PNG writing and row conversion.
#include "core/LibraryImage.h"
#include "TempFolder.h"
#include "ZyrReaderLowLevelAPI.h"
#include "core/ObjectRegistry.h"
#include "imagecodec/RowConverter.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <memory>
#include <vector>

using zyr::LibraryImage;
using zyr::ObjectRegistry;
using zyr::PixelLayout;
using zyr::RowConverter;

namespace {

class LibraryImages : public ::testing::Test {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
    TempFolder folder;
};

struct FormatCase {
    ZyrPixelFormat format;
    int bytes;
};

class PngRoundTrip : public LibraryImages, public ::testing::WithParamInterface<FormatCase> {};

TEST_P(PngRoundTrip, WrittenPngDecodesToTheSamePixels) {
    const FormatCase& c = GetParam();
    // A view with padding between rows, as a client's pixels may have.
    const int width = 9, height = 4, stride = width * c.bytes + 5;
    std::vector<uint8_t> pixels(size_t(stride * height), 0xEE);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width * c.bytes; ++x)
            pixels[size_t(y * stride + x)] =
                uint8_t(x * 31 + y * 17 + (c.format == ZYR_PIXEL_BGRA32 && x % 4 == 3 ? 0x80 : 0));
    const ZyrImage view{width, height, stride, c.format, pixels.data()};
    const std::string path = folder.file("round.png");
    ASSERT_EQ(LibraryImage::writePng(view, path), ZYR_OK);

    ZyrImage* decoded = nullptr;
    ASSERT_EQ(LibraryImage::decodeFile(path, &decoded), ZYR_OK);
    ASSERT_NE(decoded, nullptr);
    EXPECT_EQ(decoded->Width, width);
    EXPECT_EQ(decoded->Height, height);
    EXPECT_EQ(decoded->PixelFormat, c.format) << "grey stays grey, colour colour, alpha alpha";
    for (int y = 0; y < height; ++y)
        EXPECT_EQ(std::memcmp(decoded->Pixels + size_t(y) * size_t(decoded->Stride),
                              pixels.data() + size_t(y * stride), size_t(width * c.bytes)),
                  0)
            << "row " << y;
    EXPECT_EQ(ZyrReader_DestroyCachedObject(decoded), ZYR_OK);
}

INSTANTIATE_TEST_SUITE_P(Formats, PngRoundTrip,
                         ::testing::Values(FormatCase{ZYR_PIXEL_GREY8, 1}, FormatCase{ZYR_PIXEL_RGB24, 3},
                                           FormatCase{ZYR_PIXEL_BGRA32, 4}));

TEST_F(LibraryImages, FailuresLeaveTheOutputAloneAndHandOutNothing) {
    ZyrImage sentinel{};
    ZyrImage* image = &sentinel;
    const uint8_t junk[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n', 0, 0};
    EXPECT_EQ(LibraryImage::decode(junk, sizeof junk, &image), ZYR_ERR_CORRUPT_IMAGE);
    EXPECT_EQ(LibraryImage::decodeFile(folder.file("missing.png"), &image), ZYR_ERR_FILE);
    EXPECT_EQ(LibraryImage::decodeFile(folder.path(), &image), ZYR_ERR_FILE);
    EXPECT_EQ(LibraryImage::decode(nullptr, 4, &image), ZYR_ERR_BAD_ARGUMENT);
    EXPECT_EQ(image, &sentinel);
    EXPECT_EQ(ObjectRegistry::instance().size(), 0u);
}

TEST_F(LibraryImages, CopyIsIndependentOfTheView) {
    // Rows 11 bytes apart, 9 of them pixels: the copy takes each row's pixels, not the gap.
    std::vector<uint8_t> pixels(22, 0xEE);
    std::fill_n(pixels.begin(), 9, 7), std::fill_n(pixels.begin() + 11, 9, 8);
    ZyrImage* copy = LibraryImage::copy(ZyrImage{3, 2, 11, ZYR_PIXEL_RGB24, pixels.data()});
    ASSERT_NE(copy, nullptr);
    pixels.assign(pixels.size(), 1);
    for (int y = 0; y < 2; ++y)
        EXPECT_EQ(std::vector<uint8_t>(copy->Pixels + y * copy->Stride, copy->Pixels + y * copy->Stride + 9),
                  std::vector<uint8_t>(9, uint8_t(7 + y)));
    EXPECT_EQ(ZyrReader_DestroyCachedObject(copy), ZYR_OK);
}

// ---- Objects handed out: freed once, then unknown ----

// Freed once, then unknown; what the client leaves is freed with the cached data.
TEST_F(LibraryImages, ObjectsHandedOutAreFreedOnceThenUnknown) {
    // One object of each kind, handed out the way an area of the library does.
    const std::function<const void*()> kinds[] = {
        [] { return static_cast<const void*>(LibraryImage::create(7, 3, ZYR_PIXEL_GREY8)); },
        [] { return static_cast<const void*>(ObjectRegistry::instance().adopt(std::make_unique<ZyrSymbolResult>())); },
    };
    for (const auto& make : kinds) {
        const void* first = make();
        const void* second = make();
        ASSERT_TRUE(first != nullptr && second != nullptr && first != second);
        EXPECT_EQ(ZyrReader_DestroyCachedObject(first), ZYR_OK);
        EXPECT_EQ(ZyrReader_DestroyCachedObject(first), ZYR_ERR_UNKNOWN_HANDLE) << "double free";
        EXPECT_EQ(ZyrReader_DestroyCachedData(), ZYR_OK);
        EXPECT_EQ(ObjectRegistry::instance().size(), 0u);
        EXPECT_EQ(ZyrReader_DestroyCachedObject(second), ZYR_ERR_UNKNOWN_HANDLE);
    }
}

TEST(ObjectRelease, ADeleterMayReleaseAnotherObject) {
    // A record that owns a nested object frees it from its own deleter, through the registry.
    static int inner;
    static int outer;
    int innerDeleted = 0;
    ASSERT_TRUE(ObjectRegistry::instance().add(&inner, [&] { ++innerDeleted; }));
    ASSERT_TRUE(ObjectRegistry::instance().add(&outer, [] { ObjectRegistry::instance().destroy(&inner); }));
    EXPECT_EQ(ZyrReader_DestroyCachedObject(&outer), ZYR_OK);
    EXPECT_EQ(innerDeleted, 1);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(&inner), ZYR_ERR_UNKNOWN_HANDLE);
}

// ---- Row conversion (flattening over white is shown by the conversion tests) ----

struct RowCase {
    const char* name;
    PixelLayout from;
    std::vector<uint8_t> source;
    PixelLayout to;
    std::vector<uint8_t> expected;
};

class RowConversion : public ::testing::TestWithParam<RowCase> {};

TEST_P(RowConversion, ConvertsOnePixel) {
    const RowCase& c = GetParam();
    std::vector<uint8_t> out(c.expected.size(), 0xEE);
    RowConverter::convert(c.from, c.source.data(), c.to, out.data(), 1);
    EXPECT_EQ(out, c.expected);
}

using L = PixelLayout;
INSTANTIATE_TEST_SUITE_P(
    Layouts, RowConversion,
    ::testing::Values(RowCase{"bgra_to_rgba", L::BGRA, {1, 2, 3, 4}, L::RGBA, {3, 2, 1, 4}},
                      RowCase{"grey_to_bgra", L::Grey8, {77}, L::BGRA, {77, 77, 77, 255}},
                      RowCase{"opaque_unchanged", L::BGRA, {9, 8, 7, 255}, L::BGR, {9, 8, 7}},
                      RowCase{"colour_to_grey_luma", L::RGB, {255, 0, 0}, L::Grey8, {76}},
                      RowCase{"grey_keeps_value", L::BGRA, {200, 200, 200, 255}, L::Grey8, {200}},
                      RowCase{"alpha_kept_when_target_has_it", L::GreyAlpha, {5, 6}, L::RGBA, {5, 5, 5, 6}}),
    [](const ::testing::TestParamInfo<RowCase>& info) { return info.param.name; });

} // namespace

