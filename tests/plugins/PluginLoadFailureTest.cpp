// A file that cannot serve as a plug-in is refused with the code of its fault and leaves nothing
// loaded behind; a good plug-in still loads afterwards.
#include "PluginTestSupport.h"

#include <gtest/gtest.h>

using namespace plugintest;

namespace {

struct LoadFailure { const char* what; std::string library; std::string settings; int32_t expected; };

class PluginLoadFailure : public ::testing::Test {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
};

TEST_F(PluginLoadFailure, EachFaultAndNullArgumentHasItsCodeAndLeavesNothingLoaded) {
    const std::string pdf417 = pluginPath("Pdf417");
    const LoadFailure cases[] = {
        {"missing file", testing::TempDir() + "KVDECODE_Missing.so", settingsPath("Pdf417"),
         ZYR_ERR_PLUGIN_LOAD},
        {"library without the exports", fixturePath("KVDECODE_NotAPlugin.so"), settingsPath("Pdf417"),
         ZYR_ERR_PLUGIN_LOAD},
        {"other interface version", fixturePath("KVDECODE_WrongVersion.so"), settingsPath("Pdf417"),
         ZYR_ERR_PLUGIN_VERSION},
        {"missing settings file", pdf417, testing::TempDir() + "#KVDECODE_Missing.ini", ZYR_ERR_PLUGIN_OPEN},
        {"format the plug-in does not read", pdf417,
         writeFile("#bad-format.ini", "[Decoder]\nFormats=QRCode\n"), ZYR_ERR_PLUGIN_OPEN},
        {"unknown binarizer", pdf417, writeFile("#bad-bin.ini", "[Decoder]\nBinarizer=Magic\n"),
         ZYR_ERR_PLUGIN_OPEN},
        {"retry turned too far", pdf417, writeFile("#bad-retry.ini", "[Decoder]\nRetry=FixedThreshold@90\n"),
         ZYR_ERR_PLUGIN_OPEN},
        {"retry with junk after the turn", pdf417,
         writeFile("#bad-retry2.ini", "[Decoder]\nRetry=LocalAverage@1.5+Downscale,FixedThreshold@3x\n"),
         ZYR_ERR_PLUGIN_OPEN},
        {"image name too long", pdf417,
         writeFile("#bad-image.ini", "[Images]\nRequired=AN_IMAGE_NAME_FAR_TOO_LONG_FOR_THE_RECORD\n"),
         ZYR_ERR_PLUGIN_OPEN},
        {"ZBar format it lacks", pluginPath("ZBar"),
         writeFile("#bad-zbar.ini", "[Decoder]\nFormats=PDF417\n"), ZYR_ERR_PLUGIN_OPEN},
    };
    for (const LoadFailure& c : cases) {
        uint64_t handle = 12345;
        EXPECT_EQ(ZyrReader_ImagePluginLoad(c.library.c_str(), c.settings.c_str(), &handle, 0), c.expected)
            << c.what;
        EXPECT_EQ(handle, 0u) << c.what;
        EXPECT_FALSE(isLoaded(c.library)) << c.what;
    }
    uint64_t none = 0;
    EXPECT_EQ(std::make_pair(ZyrReader_ImagePluginLoad(nullptr, cases[0].settings.c_str(), &none, 0),
                             ZyrReader_ImagePluginLoad(pdf417.c_str(), cases[0].settings.c_str(), nullptr, 0)),
              std::make_pair(int32_t{ZYR_ERR_BAD_ARGUMENT}, int32_t{ZYR_ERR_BAD_ARGUMENT}));
    EXPECT_FALSE(isLoaded(pdf417));
    char names[64];
    ZyrImageSettings settings;
    EXPECT_EQ(std::make_pair(ZyrReader_ImagePluginGetRequiredImages(77, "", names, sizeof names),
                             ZyrReader_ImagePluginGetImageSettings(77, &settings, 0)),
              std::make_pair(int32_t{ZYR_ERR_UNKNOWN_HANDLE}, int32_t{ZYR_ERR_UNKNOWN_HANDLE}));
    EXPECT_EQ(ZyrReader_ImagePluginGetRequiredImages(loadPlugin("Pdf417"), "", names, sizeof names), ZYR_OK);
}

TEST_F(PluginLoadFailure, SettingsKeysShapeWhatThePluginAsksFor) {
    const std::string ini = writeFile("#two-images.ini", "[Images]\nRequired=IR_DOC,UV_DOC\n"
                                                         "[IR_DOC]\nLightName=IMAGE_IR\nOutputDpi=600\n"
                                                         "[UV_DOC]\nLightName=IMAGE_UV\nRotate180=1\n");
    uint64_t handle = 0;
    ASSERT_EQ(ZyrReader_ImagePluginLoad(pluginPath("QRCode").c_str(), ini.c_str(), &handle, 0), ZYR_OK);
    char names[64];
    ASSERT_EQ(ZyrReader_ImagePluginGetRequiredImages(handle, "", names, sizeof names), ZYR_OK);
    EXPECT_STREQ(names, "IR_DOC,UV_DOC");
    ZyrImageSettings ir, uv, none;
    ASSERT_EQ(ZyrReader_ImagePluginGetImageSettings(handle, &ir, 0), ZYR_OK);
    ASSERT_EQ(ZyrReader_ImagePluginGetImageSettings(handle, &uv, 1), ZYR_OK);
    EXPECT_NE(ZyrReader_ImagePluginGetImageSettings(handle, &none, 2), ZYR_OK);
    EXPECT_EQ(std::string(ir.ImageName) + " " + uv.LightName, "IR_DOC IMAGE_UV");
    EXPECT_EQ(std::vector<uint32_t>({ir.LightMask, ir.Camera.OutputDpi, uv.LightMask, uint32_t(uv.Rotate180), uv.Camera.OutputDpi}),
              std::vector<uint32_t>({ZYR_LIGHT_IR, 600, ZYR_LIGHT_UV, 1, 300}));
}

} // namespace
