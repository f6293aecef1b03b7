#include "capture/RasterOps.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace zyr {
namespace {

uint8_t clampByte(double v) {
    return uint8_t(v < 0 ? 0 : v > 255 ? 255 : v + 0.5);
}

// Bilinear sample of channel c at (x, y); outside the raster gives fill.
double sample(const Raster& in, double x, double y, int c, uint8_t fill) {
    const int32_t x0 = int32_t(std::floor(x)), y0 = int32_t(std::floor(y));
    const double fx = x - x0, fy = y - y0;
    auto value = [&](int32_t px, int32_t py) -> double {
        if (px < 0 || py < 0 || px >= in.width() || py >= in.height())
            return fill;
        return in.at(px, py)[c];
    };
    const double top = value(x0, y0) * (1 - fx) + value(x0 + 1, y0) * fx;
    const double bottom = value(x0, y0 + 1) * (1 - fx) + value(x0 + 1, y0 + 1) * fx;
    return top * (1 - fy) + bottom * fy;
}

} // namespace

Rect clipRect(const Rect& r, int32_t width, int32_t height) {
    const int64_t left = std::max<int64_t>(r.left, 0), top = std::max<int64_t>(r.top, 0);
    const int64_t right = std::min<int64_t>(int64_t(r.left) + r.width, width);
    const int64_t bottom = std::min<int64_t>(int64_t(r.top) + r.height, height);
    if (right <= left || bottom <= top)
        return Rect{};
    return Rect{int32_t(left), int32_t(top), int32_t(right - left), int32_t(bottom - top)};
}

Raster RasterOps::crop(const Raster& in, const Rect& area) {
    Raster out(area.width, area.height, in.channels());
    for (int32_t y = 0; y < area.height; ++y)
        std::memcpy(out.row(y), in.at(area.left, area.top + y), size_t(area.width) * size_t(in.channels()));
    return out;
}

Raster RasterOps::rotate90(const Raster& in) {
    Raster out(in.height(), in.width(), in.channels());
    const int c = in.channels();
    // Output (x, y) shows input (y, H-1-x): the left column becomes the top row.
    for (int32_t y = 0; y < out.height(); ++y)
        for (int32_t x = 0; x < out.width(); ++x)
            std::memcpy(out.at(x, y), in.at(y, in.height() - 1 - x), size_t(c));
    return out;
}

Raster RasterOps::rotate180(const Raster& in) {
    return mirrorVertical(mirrorHorizontal(in));
}

Raster RasterOps::mirrorHorizontal(const Raster& in) {
    Raster out(in.width(), in.height(), in.channels());
    const int c = in.channels();
    for (int32_t y = 0; y < in.height(); ++y)
        for (int32_t x = 0; x < in.width(); ++x)
            std::memcpy(out.at(in.width() - 1 - x, y), in.at(x, y), size_t(c));
    return out;
}

Raster RasterOps::mirrorVertical(const Raster& in) {
    Raster out(in.width(), in.height(), in.channels());
    for (int32_t y = 0; y < in.height(); ++y)
        std::memcpy(out.row(in.height() - 1 - y), in.row(y), size_t(in.width()) * size_t(in.channels()));
    return out;
}

Raster RasterOps::rotate(const Raster& in, double degrees, double cx, double cy, uint8_t fill) {
    Raster out(in.width(), in.height(), in.channels());
    const double a = degrees * M_PI / 180.0, cosA = std::cos(a), sinA = std::sin(a);
    for (int32_t y = 0; y < out.height(); ++y) {
        for (int32_t x = 0; x < out.width(); ++x) {
            // Inverse mapping: the output pixel comes from the input turned back by the angle.
            const double dx = x - cx, dy = y - cy;
            const double sx = cx + dx * cosA + dy * sinA, sy = cy - dx * sinA + dy * cosA;
            uint8_t* target = out.at(x, y);
            for (int c = 0; c < in.channels(); ++c)
                target[c] = clampByte(sample(in, sx, sy, c, fill));
        }
    }
    return out;
}

Raster RasterOps::scale(const Raster& in, double factor) {
    const int32_t width = std::max<int32_t>(1, int32_t(std::lround(in.width() * factor)));
    const int32_t height = std::max<int32_t>(1, int32_t(std::lround(in.height() * factor)));
    Raster out(width, height, in.channels());
    const double stepX = double(in.width()) / width, stepY = double(in.height()) / height;
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            uint8_t* target = out.at(x, y);
            if (stepX <= 1 && stepY <= 1) {
                for (int c = 0; c < in.channels(); ++c)
                    target[c] = clampByte(sample(in, (x + 0.5) * stepX - 0.5, (y + 0.5) * stepY - 0.5, c, 0));
                continue;
            }
            // Shrinking: average the source block so fine print does not alias.
            const int32_t x0 = int32_t(x * stepX), x1 = std::max(x0 + 1, int32_t((x + 1) * stepX));
            const int32_t y0 = int32_t(y * stepY), y1 = std::max(y0 + 1, int32_t((y + 1) * stepY));
            for (int c = 0; c < in.channels(); ++c) {
                uint64_t sum = 0, count = 0;
                for (int32_t sy = y0; sy < std::min(y1, in.height()); ++sy)
                    for (int32_t sx = x0; sx < std::min(x1, in.width()); ++sx, ++count)
                        sum += in.at(sx, sy)[c];
                target[c] = uint8_t(count ? (sum + count / 2) / count : 0);
            }
        }
    }
    return out;
}

Raster RasterOps::normalise(const Raster& in) {
    uint64_t histogram[256] = {};
    for (uint8_t v : in.pixels())
        ++histogram[v];
    const uint64_t total = in.pixels().size(), cut = total / 100;
    int low = 0, high = 255;
    for (uint64_t seen = 0; low < 255 && (seen += histogram[low]) <= cut;)
        ++low;
    for (uint64_t seen = 0; high > 0 && (seen += histogram[high]) <= cut;)
        --high;
    Raster out = in;
    if (high <= low)
        return out;
    for (uint8_t& v : out.pixels())
        v = clampByte((double(v) - low) * 255.0 / (high - low));
    return out;
}

Raster RasterOps::denoise(const Raster& in, int radius) {
    if (radius < 1)
        return in;
    radius = std::min(radius, 16);
    Raster out(in.width(), in.height(), in.channels());
    for (int32_t y = 0; y < in.height(); ++y) {
        for (int32_t x = 0; x < in.width(); ++x) {
            const int32_t x0 = std::max(0, x - radius), x1 = std::min(in.width() - 1, x + radius);
            const int32_t y0 = std::max(0, y - radius), y1 = std::min(in.height() - 1, y + radius);
            const uint32_t count = uint32_t((x1 - x0 + 1) * (y1 - y0 + 1));
            for (int c = 0; c < in.channels(); ++c) {
                uint32_t sum = 0;
                for (int32_t sy = y0; sy <= y1; ++sy)
                    for (int32_t sx = x0; sx <= x1; ++sx)
                        sum += in.at(sx, sy)[c];
                out.at(x, y)[c] = uint8_t((sum + count / 2) / count);
            }
        }
    }
    return out;
}

Raster RasterOps::sharpen(const Raster& in) {
    Raster out = in;
    for (int32_t y = 1; y + 1 < in.height(); ++y)
        for (int32_t x = 1; x + 1 < in.width(); ++x)
            for (int c = 0; c < in.channels(); ++c) {
                const int centre = in.at(x, y)[c];
                const int around =
                    in.at(x - 1, y)[c] + in.at(x + 1, y)[c] + in.at(x, y - 1)[c] + in.at(x, y + 1)[c];
                out.at(x, y)[c] = clampByte(centre + (4 * centre - around) / 2.0);
            }
    return out;
}

Raster RasterOps::tint(const Raster& in, const double factor[3]) {
    Raster out = in.toColour();
    for (size_t i = 0; i < out.pixels().size(); ++i)
        out.pixels()[i] = clampByte(out.pixels()[i] * factor[i % 3]);
    return out;
}

} // namespace zyr
