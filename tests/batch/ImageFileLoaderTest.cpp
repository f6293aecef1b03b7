// Image files become the pixels the plug-ins get: grey stays one byte, colour is R, G, B in that
// order whatever the file stores (BMP keeps B, G, R), and unreadable files give a reason.
#include "ImageFileLoader.h"
#include "ImageFiles.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace {

using glyphor::samples::RasterImage;

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
    TempFolder folder;
    for (const LoadCase& c : cases) {
        const RasterImage written = Pattern(c.channels);
        const std::string path = folder.file(c.file);
        ASSERT_TRUE(c.write(path, written)) << c.file;
        std::string error;
        const std::shared_ptr<const ZyrImage> image = ImageFileLoader::Load(path, error);
        ASSERT_NE(image, nullptr) << c.file << ": " << error;
        ASSERT_EQ(std::make_tuple(image->Width, image->Height, image->PixelFormat, image->Stride),
                  std::make_tuple(3, 2, c.format, 3 * c.channels)) << c.file;
        EXPECT_EQ(std::vector<uint8_t>(image->Pixels, image->Pixels + 6 * c.channels), written.pixels) << c.file;
    }
}

TEST(ImageFileLoader, UnreadableFilesGiveAReason) {
    TempFolder folder; // junk: the reason is the codec's own words
    const std::pair<std::string, std::string> cases[] = {{folder.file("missing.png"), "No such file or directory"},
                                                         {folder.write("empty.png", ""), "empty file"},
                                                         {folder.path(), "Is a directory"},
                                                         {folder.write("junk.png", "not an image"), ""}};
    for (const auto& [path, reason] : cases) {
        std::string error;
        EXPECT_EQ(ImageFileLoader::Load(path, error), nullptr) << path;
        EXPECT_TRUE(reason.empty() ? !error.empty() : error == reason) << path << ": " << error;
    }
}

} // namespace
