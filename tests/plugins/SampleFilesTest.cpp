// The generated samples folder: every image is there and readable at its size, its .txt holds the
// symbols' exact bytes (or text).
#include "ImageFiles.h"
#include "PluginTestSupport.h"
#include "SampleCatalogue.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

using namespace glyphor::samples;

namespace {

std::string samplesDir() { return GLYPHOR_SAMPLES_DIR; }

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

} // namespace
