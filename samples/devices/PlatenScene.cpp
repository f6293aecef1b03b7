#include "PlatenScene.h"

#include <algorithm>
#include <cmath>

namespace glyphor::samples {

RasterImage onPlaten(const RasterImage& card, int width, int height, uint8_t platen, double angle,
                     int offsetX, int offsetY, uint32_t seed) {
    RasterImage out;
    out.width = width;
    out.height = height;
    out.channels = 1;
    out.pixels.assign(size_t(width) * size_t(height), platen);
    const double a = angle * M_PI / 180, c = std::cos(a), s = std::sin(a);
    const double cx = width / 2.0 + offsetX, cy = height / 2.0 + offsetY;
    auto cardAt = [&](int x, int y) -> double {
        const size_t i = (size_t(y) * size_t(card.width) + size_t(x)) * size_t(card.channels);
        if (card.channels == 1)
            return card.pixels[i];
        return 0.299 * card.pixels[i] + 0.587 * card.pixels[i + 1] + 0.114 * card.pixels[i + 2];
    };
    uint32_t state = seed * 2654435761u + 1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            state = state * 1664525u + 1013904223u;
            const int noise = int((state >> 8) % 7) - 3;
            // Back into the card's own frame, then bilinear between its four nearest pixels.
            const double dx = x + 0.5 - cx, dy = y + 0.5 - cy;
            const double u = dx * c + dy * s + card.width / 2.0 - 0.5,
                         v = -dx * s + dy * c + card.height / 2.0 - 0.5;
            double value = platen;
            if (u > -0.5 && v > -0.5 && u < card.width - 0.5 && v < card.height - 0.5) {
                const int x0 = std::clamp(int(std::floor(u)), 0, card.width - 1);
                const int y0 = std::clamp(int(std::floor(v)), 0, card.height - 1);
                const int x1 = std::min(x0 + 1, card.width - 1), y1 = std::min(y0 + 1, card.height - 1);
                const double fx = std::clamp(u - x0, 0.0, 1.0), fy = std::clamp(v - y0, 0.0, 1.0);
                value = (cardAt(x0, y0) * (1 - fx) + cardAt(x1, y0) * fx) * (1 - fy) +
                        (cardAt(x0, y1) * (1 - fx) + cardAt(x1, y1) * fx) * fy;
            }
            out.pixels[size_t(y) * size_t(width) + size_t(x)] =
                uint8_t(std::clamp(value + noise, 0.0, 255.0));
        }
    return out;
}

} // namespace glyphor::samples
