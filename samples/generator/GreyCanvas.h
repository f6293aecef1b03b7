#pragma once

#include <cstdint>
#include <vector>

namespace ZXing {
class BitMatrix;
}

namespace glyphor::samples {

// An 8-bit grey picture that symbols are drawn onto; everything is deterministic for a seed.
class GreyCanvas {
public:
    GreyCanvas(int width, int height, uint8_t background);

    // Draws a light card-like texture (faint print lines and blocks) so decoders meet clutter.
    void addCardTexture(uint32_t seed);
    // Draws a symbol's module matrix centred at (cx, cy), each module moduleWidth x moduleHeight
    // pixels, turned clockwise by angleDegrees, dark modules in dark and the quiet zone in light.
    void drawSymbol(const ZXing::BitMatrix& matrix, double moduleWidth, double moduleHeight, double cx,
                    double cy, double angleDegrees, uint8_t dark, uint8_t light);
    // Box blur over (2 * radius + 1) pixels, across then down, as a slightly soft print or lens.
    void blur(int radius);
    // Adds uniform noise of up to +-amplitude grey levels.
    void addNoise(int amplitude, uint32_t seed);

    int width() const { return width_; }
    int height() const { return height_; }
    const std::vector<uint8_t>& pixels() const { return pixels_; }

private:
    int width_;
    int height_;
    std::vector<uint8_t> pixels_;
};

} // namespace glyphor::samples
