// Image files become the pixels the plug-ins get: grey stays one byte, colour is R, G, B in that
// order whatever the file stores (BMP keeps B, G, R), and unreadable files give a reason.
#include "ImageFileLoader.h"
#include "ImageFiles.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <tuple>

namespace {

using glyphor::samples::RasterImage;

std::string TempPath(const std::string& name) { return testing::TempDir() + "loader-" + name; }

// 3 x 2 pixels, every byte different, so that a swapped channel or row shows.
RasterImage Pattern(int channels) {
    RasterImage image;
    image.width = 3;
    image.height = 2;
    image.channels = channels;
    for (int i = 0; i < 6 * channels; ++i)
        image.pixels.push_back(uint8_t(10 + 37 * i));
    return image;
}

struct LoadCase {
    const char* file;
    int channels;
    std::function<bool(const std::string&, const RasterImage&)> write;
    int32_t format;
};

TEST(ImageFileLoader, GivesTheFilesPixelsGreyOrRgb) {
    const LoadCase cases[] = {
        {"grey.png", 1, glyphor::samples::writePng, ZYR_PIXEL_GREY8},
        {"colour.png", 3, glyphor::samples::writePng, ZYR_PIXEL_RGB24},
        {"colour.bmp", 3, glyphor::samples::writeBmp, ZYR_PIXEL_RGB24},
    };
    for (const LoadCase& c : cases) {
        const RasterImage written = Pattern(c.channels);
        const std::string path = TempPath(c.file);
        ASSERT_TRUE(c.write(path, written)) << c.file;
        std::string error;
        const std::shared_ptr<const ZyrImage> image = ImageFileLoader::Load(path, error);
        ASSERT_NE(image, nullptr) << c.file << ": " << error;
        ASSERT_EQ(std::make_tuple(image->Width, image->Height, image->PixelFormat, image->Stride),
                  std::make_tuple(3, 2, c.format, 3 * c.channels)) << c.file;
        EXPECT_EQ(std::vector<uint8_t>(image->Pixels, image->Pixels + 6 * c.channels), written.pixels) << c.file;
        std::remove(path.c_str());
    }
}

TEST(ImageFileLoader, UnreadableFilesGiveAReason) {
    std::ofstream(TempPath("empty.png")).close();
    std::ofstream(TempPath("junk.png"), std::ios::binary) << "not an image at all";
    const std::pair<std::string, std::string> cases[] = {{TempPath("missing.png"), "No such file or directory"},
                                                         {TempPath("empty.png"), "empty file"},
                                                         {testing::TempDir(), "Is a directory"},
                                                         {TempPath("junk.png"), ""}}; // the codec's own words
    for (const auto& [path, reason] : cases) {
        std::string error;
        EXPECT_EQ(ImageFileLoader::Load(path, error), nullptr) << path;
        EXPECT_TRUE(reason.empty() ? !error.empty() : error == reason) << path << ": " << error;
    }
    std::remove(TempPath("empty.png").c_str());
    std::remove(TempPath("junk.png").c_str());
}

} // namespace
