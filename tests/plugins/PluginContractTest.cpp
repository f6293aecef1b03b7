// What every decoder plug-in owes the test bench, checked through the public reader calls.
#include "PluginTestSupport.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

using namespace plugintest;

namespace {

struct PluginCase {
    const char* name;
    const char* image; // the one required image
    const char* light;
    uint32_t lightMask;
    const char* ownSample; // a plain sample of a format it reads
    const char* ownPayload;
    const char* twoSample; // an image with two symbols it reads
};

const PluginCase kPlugins[] = {
    {"ZXing", "VISIBLE_DOC", "IMAGE_VISIBLE", ZYR_LIGHT_VISIBLE, "aztec-plain", "GLYPHOR AZTEC SAMPLE",
     "mixed-formats"},
    {"Pdf417", "VISIBLE_DOC", "IMAGE_VISIBLE", ZYR_LIGHT_VISIBLE, "pdf417-plain",
     "GLYPHOR PDF417 SAMPLE 0001", "two-pdf417"},
    {"QRCode", "VISIBLE_DOC", "IMAGE_VISIBLE", ZYR_LIGHT_VISIBLE, "qrcode-plain", "GLYPHOR QR SAMPLE 42",
     "two-qrcode"},
    {"DataMatrix", "IR_DOC", "IMAGE_IR", ZYR_LIGHT_IR, "datamatrix-plain", "GLYPHOR DM 1234567890",
     "two-datamatrix"},
    {"ZBar", "VISIBLE_DOC", "IMAGE_VISIBLE", ZYR_LIGHT_VISIBLE, "code128-plain", "GLY-128-0042",
     "two-code128"},
};

class PluginContract : public ::testing::TestWithParam<PluginCase> {
protected:
    void SetUp() override { handle_ = loadPlugin(GetParam().name); }
    void TearDown() override { ZyrReader_DestroyCachedData(); }

    // Decodes the plug-in's own sample and keeps the symbol results without releasing them.
    std::vector<const ZyrSymbolResult*> decodeKeeping(const ZyrImage* image) {
        std::vector<const ZyrSymbolResult*> kept;
        auto keep = [](void* context, int32_t, int32_t, int32_t, const ZyrSymbolResult* symbol) {
            static_cast<std::vector<const ZyrSymbolResult*>*>(context)->push_back(symbol);
        };
        EXPECT_EQ(ZyrReader_ImagePluginDecode(true, handle_, image, "", 1, "", keep, &kept, 0, 0, 0), ZYR_OK);
        return kept;
    }
    uint64_t handle_ = 0;
};

TEST_P(PluginContract, ReportsItsRequiredImageAndItsSettingsThenEnds) {
    char buffer[1024];
    std::memset(buffer, 'x', sizeof buffer);
    ASSERT_EQ(ZyrReader_ImagePluginGetRequiredImages(handle_, "", buffer, sizeof buffer), ZYR_OK);
    EXPECT_STREQ(buffer, GetParam().image);

    char tiny[4];
    EXPECT_EQ(ZyrReader_ImagePluginGetRequiredImages(handle_, "", tiny, sizeof tiny),
              ZYR_ERR_BUFFER_TOO_SMALL);
    EXPECT_EQ(tiny[0], '\0');

    ZyrImageSettings settings;
    std::memset(&settings, 0xAB, sizeof settings);
    ASSERT_EQ(ZyrReader_ImagePluginGetImageSettings(handle_, &settings, 0), ZYR_OK);
    EXPECT_EQ(std::string(settings.ImageName) + " " + settings.LightName, std::string(GetParam().image) + " " + GetParam().light);
    EXPECT_EQ(std::make_tuple(uint32_t{settings.LightMask}, uint32_t{settings.Camera.CaptureResolution}, int{settings.Greyscale}),
              std::make_tuple(GetParam().lightMask, 300u, 1));

    ZyrImageSettings past = settings;
    EXPECT_NE(ZyrReader_ImagePluginGetImageSettings(handle_, &past, 1), ZYR_OK);
    EXPECT_NE(ZyrReader_ImagePluginGetImageSettings(handle_, &past, -1), ZYR_OK);
    EXPECT_EQ(std::memcmp(&past, &settings, sizeof past), 0) << "a refused index must leave the record alone";
}

TEST_P(PluginContract, DecodesOneTwoOrNoSymbolsWithTheExactBytesInOrder) {
    std::vector<SeenSymbol> seen = decodeSample(handle_, GetParam().ownSample);
    ASSERT_EQ(seen.size(), 1u);
    const SeenSymbol& s = seen[0];
    EXPECT_EQ(std::make_tuple(s.data, s.dataType, s.eci, s.zeroAfterData, s.index, s.count, s.tag, s.releaseResult),
              std::make_tuple(std::string(GetParam().ownPayload), int32_t{ZYR_DATA_ASCII}, int32_t{ZYR_ECI_NONE}, true, 0, 1, 7, int32_t{ZYR_OK}));
    EXPECT_TRUE(decodeSample(handle_, "no-symbol").empty());
    seen = decodeSample(handle_, GetParam().twoSample);
    ASSERT_EQ(seen.size(), 2u);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(std::make_tuple(seen[size_t(i)].index, seen[size_t(i)].count, seen[size_t(i)].releaseResult), std::make_tuple(i, 2, int32_t{ZYR_OK}));
    EXPECT_NE(seen[0].data, seen[1].data);
}

TEST_P(PluginContract, FindsNothingOnImagesTooSmallForASymbol) {
    // Blank or noisy, grey or colour: sizes some decoder libraries assert on.
    for (const auto& [width, height] : {std::pair{1, 1}, {2, 2}, {3, 17}, {17, 3}, {11, 11}, {16, 16}}) {
        for (const int32_t format : {ZYR_PIXEL_GREY8, ZYR_PIXEL_RGB24}) {
            const int32_t stride = width * (format == ZYR_PIXEL_GREY8 ? 1 : 3);
            std::vector<uint8_t> pixels(size_t(stride) * size_t(height));
            for (size_t i = 0; i < pixels.size(); ++i)
                pixels[i] = uint8_t(i * 97 % 251);
            const ZyrImage image{width, height, stride, format, pixels.data()};
            const Decoded decoded = decode(handle_, &image);
            EXPECT_EQ(std::make_pair(decoded.result, decoded.symbols.size()), std::make_pair(int32_t{ZYR_OK}, size_t{0}))
                << width << "x" << height << " format " << format;
        }
    }
}

TEST_P(PluginContract, SymbolsAreReleasedOnceAndTheRestEndWithDestroyCachedData) {
    ImageFile file(samplePath(GetParam().ownSample));
    std::vector<const ZyrSymbolResult*> kept = decodeKeeping(file.image());
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(kept[0]), ZYR_OK);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(kept[0]), ZYR_ERR_UNKNOWN_HANDLE);
    kept = decodeKeeping(file.image());
    ASSERT_EQ(kept.size(), 1u);
    ASSERT_EQ(ZyrReader_DestroyCachedData(), ZYR_OK);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(kept[0]), ZYR_ERR_UNKNOWN_HANDLE);
    EXPECT_EQ(decode(handle_, file.image()).result, ZYR_ERR_UNKNOWN_HANDLE);
    EXPECT_FALSE(isLoaded(pluginPath(GetParam().name)));
}

TEST_P(PluginContract, RefusesImagesItCannotRead) {
    uint8_t pixels[64] = {};
    // No width, negative height, stride shorter than a row, unknown format, no pixels, RGB rows in a grey stride.
    const ZyrImage bad[] = {{0, 8, 8, ZYR_PIXEL_GREY8, pixels}, {8, -1, 8, ZYR_PIXEL_GREY8, pixels}, {8, 8, 4, ZYR_PIXEL_GREY8, pixels},
                            {8, 8, 8, 2, pixels}, {8, 8, 8, ZYR_PIXEL_GREY8, nullptr}, {8, 2, 8, ZYR_PIXEL_RGB24, pixels}};
    for (const ZyrImage& b : bad) {
        const Decoded decoded = decode(handle_, &b);
        EXPECT_EQ(std::make_pair(decoded.result, decoded.symbols.size()), std::make_pair(int32_t{ZYR_ERR_BAD_ARGUMENT}, size_t{0}))
            << b.Width << "x" << b.Height << " stride " << b.Stride;
    }
    EXPECT_EQ(decode(handle_, nullptr).result, ZYR_ERR_BAD_ARGUMENT);
    ImageFile file(samplePath(GetParam().ownSample));
    const auto ignore = [](void*, int32_t, int32_t, int32_t, const ZyrSymbolResult*) {};
    EXPECT_EQ(std::make_pair(ZyrReader_ImagePluginDecode(true, handle_, file.image(), "", 1, "", nullptr, nullptr, 0, 0, 0),
                             ZyrReader_ImagePluginDecode(true, handle_, file.image(), "NO_SUCH_IMAGE", 1, "", ignore, nullptr, 0, 0, 0)),
              std::make_pair(int32_t{ZYR_ERR_BAD_ARGUMENT}, int32_t{ZYR_ERR_BAD_ARGUMENT})) << "no callback; an image it does not ask for";
    EXPECT_EQ(decode(handle_ + 1000, file.image()).result, ZYR_ERR_UNKNOWN_HANDLE);
}

INSTANTIATE_TEST_SUITE_P(EveryPlugin, PluginContract, ::testing::ValuesIn(kPlugins),
                         [](const ::testing::TestParamInfo<PluginCase>& info) { return info.param.name; });

} // namespace
