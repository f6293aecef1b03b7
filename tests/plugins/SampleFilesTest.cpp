// The generated samples folder: every image is there and readable at its size, its .txt holds the
// symbols' exact bytes (or text), and the samples' reader settings lead the library to the plug-ins.
#include "ImageFiles.h"
#include "PluginTestSupport.h"
#include "SampleCatalogue.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>

using namespace glyphor::samples;

namespace {

std::string samplesDir() {
    return GLYPHOR_SAMPLES_DIR;
}

std::string realPath(const std::string& path) {
    char resolved[PATH_MAX];
    return realpath(path.c_str(), resolved) ? std::string(resolved) : std::string();
}

TEST(SampleFiles, EveryImageAndItsExpectedContentsAreWritten) {
    for (const Sample& sample : sampleCatalogue()) {
        RasterImage image;
        ASSERT_TRUE(readImageFile(samplesDir() + "/" + fileNameOf(sample), image)) << sample.name;
        EXPECT_EQ(image.width, sample.width) << sample.name;
        EXPECT_EQ(image.height, sample.height) << sample.name;
        EXPECT_EQ(image.channels, sample.colour || sample.type == FileType::Bmp ? 3 : 1) << sample.name;

        std::ifstream in(samplesDir() + "/" + sample.name + ".txt", std::ios::binary);
        ASSERT_TRUE(in) << sample.name;
        const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        std::string expected;
        for (size_t i = 0; i < sample.symbols.size(); ++i)
            expected += (i ? "\n" : "") +
                        (sample.symbols[i].text.empty() ? sample.symbols[i].payload : sample.symbols[i].text);
        EXPECT_EQ(text, expected) << sample.name;
    }
}

TEST(SampleFiles, NamesAreUniqueAndEveryVariantIsPresent) {
    std::map<std::string, int> names, variants;
    for (const Sample& sample : sampleCatalogue()) {
        ++names[sample.name];
        ++variants[sample.variant];
    }
    for (const auto& [name, count] : names)
        EXPECT_EQ(count, 1) << name;
    for (const char* variant : {"plain", "rotated", "scaled", "noisy", "low-contrast", "document", "multi",
                                "empty", "eci", "binary", "aamva", "charset", "addon"})
        EXPECT_GT(variants[variant], 0) << variant;
}

TEST(SampleFiles, ReaderSettingsPointAtThePluginFolder) {
    ZyrReaderSettings settings{};
    ASSERT_EQ(ZyrReader_LL_LoadSettingsFromIniFile(&settings, (samplesDir() + "/ZyrReader.ini").c_str()),
              ZYR_OK);
    const std::string plugins = realPath(GLYPHOR_PLUGIN_DIR);
    ASSERT_FALSE(plugins.empty());
    EXPECT_EQ(realPath(settings.PluginFolder), plugins);
    EXPECT_EQ(realPath(settings.PluginSettingsFolder), plugins);
    std::string folder = settings.PluginFolder;
    if (!folder.empty() && folder.back() != '/')
        folder += '/';
    uint64_t handle = 0;
    EXPECT_EQ(ZyrReader_ImagePluginLoad((folder + "KVDECODE_QRCode.so").c_str(),
                                        (folder + "#KVDECODE_QRCode.ini").c_str(), &handle,
                                        settings.CameraDevice),
              ZYR_OK);
    ZyrReader_DestroyCachedData();
}

} // namespace
