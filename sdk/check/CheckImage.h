// The images a plug-in is checked on: generated samples with their known contents, the user's
// image files, or odd images made here (tiny, strips, blank, noise, padded rows, other pixel formats).
#pragma once

#include <ZyrReaderLowLevelAPI.h>

#include <cstdint>
#include <string>
#include <vector>

namespace plugincheck {

// A symbol an image is known to hold.
struct ExpectedSymbol {
    std::string bytes;
    int32_t eci = ZYR_ECI_NONE;
};

class CheckImage {
public:
    CheckImage(std::string name, int width, int height, int32_t format, int stride);

    const std::string& name() const { return name_; }
    const ZyrImage* view() const { return &view_; }
    uint8_t* row(int y) { return pixels_.data() + size_t(y) * size_t(view_.Stride); }

    // Contents are known only for generated samples.
    bool known = false;
    std::vector<ExpectedSymbol> expected;

private:
    std::string name_;
    std::vector<uint8_t> pixels_;
    ZyrImage view_{};
};

// Generated samples, drawn in memory: every one, or a selection of one plain image per format and
// the multi-symbol, empty, ECI, binary, licence and colour images. False (and error) on a failure.
bool generatedSamples(bool all, std::vector<CheckImage>& images, std::string& error);
// Image files read through the reader library; false (and error naming the file) when one is unreadable.
bool imageFiles(const std::vector<std::string>& paths, std::vector<CheckImage>& images, std::string& error);

// A copy of a grey or RGB image in another layout: grey rows padded to a wider stride, RGB24 or BGRA32.
CheckImage padded(const CheckImage& source);
CheckImage asRgb(const CheckImage& source);
CheckImage asBgra(const CheckImage& source);

// Images a decoder must survive: tiny, one-pixel strips, noise, every pixel format, rows with padding.
std::vector<CheckImage> badImages();
// Images without a symbol: uniform white, black and grey in each pixel format.
std::vector<CheckImage> emptyImages();

} // namespace plugincheck
