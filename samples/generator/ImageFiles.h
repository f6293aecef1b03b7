#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace glyphor::samples {

// Pixels to write: 1 channel (grey) or 3 (R, G, B), rows packed top-down.
struct RasterImage {
    int width = 0;
    int height = 0;
    int channels = 1;
    std::vector<uint8_t> pixels;
};

// Each returns false when the file cannot be written.
bool writePng(const std::string& path, const RasterImage& image);
bool writeJpeg(const std::string& path, const RasterImage& image, int quality);
bool writeBmp(const std::string& path, const RasterImage& image); // 24-bit, bottom-up rows

} // namespace glyphor::samples

namespace glyphor::samples {

// Reads back a PNG, JPEG or 24-bit BMP as written above (chosen by the file's first bytes); grey
// files give one channel, colour files three. False when the file is missing or not one of those.
bool readImageFile(const std::string& path, RasterImage& image);

} // namespace glyphor::samples
