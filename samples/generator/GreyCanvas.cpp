#include "GreyCanvas.h"

#include <ZXing/BitMatrix.h>

#include <algorithm>
#include <cmath>

namespace glyphor::samples {
namespace {

// A small fixed generator, so images are the same on every machine and every run.
class Lcg {
public:
    explicit Lcg(uint32_t seed) : state_(seed * 2654435761u + 1) {}
    uint32_t next() {
        state_ = state_ * 1664525u + 1013904223u;
        return state_ >> 8;
    }
    int range(int lo, int hi) { return lo + int(next() % uint32_t(hi - lo + 1)); }

private:
    uint32_t state_;
};

} // namespace

GreyCanvas::GreyCanvas(int width, int height, uint8_t background)
    : width_(width), height_(height), pixels_(size_t(width) * size_t(height), background) {}

void GreyCanvas::addCardTexture(uint32_t seed) {
    Lcg rng(seed);
    // Lines of "print": short runs of mid-grey dashes, like small text seen from afar.
    for (int line = 0; line < height_ / 40; ++line) {
        int y = rng.range(0, height_ - 6);
        int x = rng.range(0, width_ / 2);
        int end = std::min(width_ - 1, x + rng.range(width_ / 8, width_ / 2));
        while (x < end) {
            int run = rng.range(3, 14);
            for (int yy = y; yy < y + 5; ++yy)
                for (int xx = x; xx < std::min(end, x + run); ++xx)
                    pixels_[size_t(yy) * size_t(width_) + size_t(xx)] = uint8_t(rng.range(150, 190));
            x += run + rng.range(2, 8);
        }
    }
}

void GreyCanvas::drawSymbol(const ZXing::BitMatrix& matrix, double moduleWidth, double moduleHeight,
                            double cx, double cy, double angleDegrees, uint8_t dark, uint8_t light) {
    const double w = matrix.width() * moduleWidth;
    const double h = matrix.height() * moduleHeight;
    const double a = angleDegrees * M_PI / 180.0;
    const double c = std::cos(a), s = std::sin(a);
    const double reach = std::sqrt(w * w + h * h) / 2 + 2;
    const int x0 = std::max(0, int(cx - reach)), x1 = std::min(width_ - 1, int(cx + reach));
    const int y0 = std::max(0, int(cy - reach)), y1 = std::min(height_ - 1, int(cy + reach));
    // Each pixel is the average of 4x4 samples, so turned edges are smooth like a scan's.
    constexpr int kSub = 4;
    for (int y = y0; y <= y1; ++y) {
        for (int x = x0; x <= x1; ++x) {
            int inside = 0, darkSamples = 0;
            for (int sy = 0; sy < kSub; ++sy) {
                for (int sx = 0; sx < kSub; ++sx) {
                    double dx = x + (sx + 0.5) / kSub - cx, dy = y + (sy + 0.5) / kSub - cy;
                    // Turn back into the symbol's own frame.
                    double u = c * dx + s * dy + w / 2, v = -s * dx + c * dy + h / 2;
                    if (u < 0 || v < 0 || u >= w || v >= h)
                        continue;
                    ++inside;
                    if (matrix.get(int(u / moduleWidth), int(v / moduleHeight)))
                        ++darkSamples;
                }
            }
            if (inside == 0)
                continue;
            uint8_t& p = pixels_[size_t(y) * size_t(width_) + size_t(x)];
            int symbol = (darkSamples * dark + (inside - darkSamples) * light) / inside;
            p = uint8_t((symbol * inside + p * (kSub * kSub - inside)) / (kSub * kSub));
        }
    }
}

void GreyCanvas::blur(int radius) {
    if (radius <= 0)
        return;
    std::vector<uint8_t> out(pixels_.size());
    const auto pass = [&](const std::vector<uint8_t>& in, std::vector<uint8_t>& to, bool across) {
        const int lines = across ? height_ : width_, length = across ? width_ : height_;
        for (int line = 0; line < lines; ++line) {
            const auto index = [&](int i) {
                return across ? size_t(line) * size_t(width_) + size_t(i) : size_t(i) * size_t(width_) + size_t(line);
            };
            for (int i = 0; i < length; ++i) {
                int sum = 0;
                for (int k = -radius; k <= radius; ++k)
                    sum += in[index(std::clamp(i + k, 0, length - 1))];
                to[index(i)] = uint8_t(sum / (2 * radius + 1));
            }
        }
    };
    pass(pixels_, out, true);
    pass(out, pixels_, false);
}

void GreyCanvas::addNoise(int amplitude, uint32_t seed) {
    Lcg rng(seed);
    for (uint8_t& p : pixels_)
        p = uint8_t(std::clamp(int(p) + rng.range(-amplitude, amplitude), 0, 255));
}

} // namespace glyphor::samples
