#include "capture/DocumentFinder.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zyr {
namespace {

// A grey copy of the area, taken every `step` pixels, so large snapshots stay cheap to search.
struct Sampled {
    int32_t width = 0, height = 0, step = 1;
    std::vector<uint8_t> grey;
    uint8_t at(int32_t x, int32_t y) const { return grey[size_t(y) * size_t(width) + size_t(x)]; }
};

Sampled sampleArea(const Raster& raster, const Rect& area) {
    Sampled s;
    s.step = std::max<int32_t>(1, std::max(area.width, area.height) / 700);
    s.width = (area.width + s.step - 1) / s.step;
    s.height = (area.height + s.step - 1) / s.step;
    s.grey.resize(size_t(s.width) * size_t(s.height));
    for (int32_t y = 0; y < s.height; ++y)
        for (int32_t x = 0; x < s.width; ++x)
            s.grey[size_t(y) * size_t(s.width) + size_t(x)] =
                raster.grey(area.left + x * s.step, area.top + y * s.step);
    return s;
}

double otsu(const std::vector<uint8_t>& grey) {
    uint64_t histogram[256] = {};
    for (uint8_t v : grey)
        ++histogram[v];
    const double total = double(grey.size());
    double sumAll = 0;
    for (int i = 0; i < 256; ++i)
        sumAll += double(i) * double(histogram[i]);
    double weightBelow = 0, sumBelow = 0, best = -1, threshold = 128;
    for (int t = 0; t < 256; ++t) {
        weightBelow += double(histogram[t]);
        sumBelow += double(t) * double(histogram[t]);
        const double weightAbove = total - weightBelow;
        if (weightBelow == 0 || weightAbove == 0)
            continue;
        const double meanBelow = sumBelow / weightBelow, meanAbove = (sumAll - sumBelow) / weightAbove;
        const double between = weightBelow * weightAbove * (meanBelow - meanAbove) * (meanBelow - meanAbove);
        if (between > best) {
            best = between;
            threshold = t + 0.5;
        }
    }
    return threshold;
}

// Flood fill over cells where `inside` holds and the label is still 0; returns the cell count.
template <class Inside>
int64_t fill(const Sampled& s, std::vector<int32_t>& labels, int32_t label, int32_t x, int32_t y,
             Inside inside, std::vector<std::pair<int32_t, int32_t>>& stack) {
    int64_t count = 0;
    stack.clear();
    stack.emplace_back(x, y);
    labels[size_t(y) * size_t(s.width) + size_t(x)] = label;
    while (!stack.empty()) {
        const auto [cx, cy] = stack.back();
        stack.pop_back();
        ++count;
        const int32_t next[4][2] = {{cx - 1, cy}, {cx + 1, cy}, {cx, cy - 1}, {cx, cy + 1}};
        for (const auto& n : next) {
            if (n[0] < 0 || n[1] < 0 || n[0] >= s.width || n[1] >= s.height)
                continue;
            int32_t& l = labels[size_t(n[1]) * size_t(s.width) + size_t(n[0])];
            if (l == 0 && inside(n[0], n[1])) {
                l = label;
                stack.emplace_back(n[0], n[1]);
            }
        }
    }
    return count;
}

} // namespace

uint8_t DocumentFinder::platenLevel(const Raster& raster, const Rect& area) {
    std::vector<uint8_t> border;
    for (int32_t x = area.left; x < area.right(); ++x) {
        border.push_back(raster.grey(x, area.top));
        border.push_back(raster.grey(x, area.bottom() - 1));
    }
    for (int32_t y = area.top; y < area.bottom(); ++y) {
        border.push_back(raster.grey(area.left, y));
        border.push_back(raster.grey(area.right() - 1, y));
    }
    if (border.empty())
        return 0;
    std::nth_element(border.begin(), border.begin() + border.size() / 2, border.end());
    return border[border.size() / 2];
}

FoundDocument DocumentFinder::find(const Raster& raster, const Rect& wanted, double threshold,
                                   int64_t minimumArea) {
    FoundDocument result;
    const Rect area = clipRect(wanted, raster.width(), raster.height());
    if (area.empty())
        return result;
    result.platen = platenLevel(raster, area);
    const Sampled s = sampleArea(raster, area);
    const double t = threshold > 0 ? threshold : otsu(s.grey);
    const bool lightDocuments = result.platen < t;
    auto isPlaten = [&](int32_t x, int32_t y) { return lightDocuments ? s.at(x, y) <= t : s.at(x, y) >= t; };

    // Label 1: platen reached from the border. Then every other piece gets its own label.
    std::vector<int32_t> labels(s.grey.size(), 0);
    std::vector<std::pair<int32_t, int32_t>> stack;
    auto fillPlatenFrom = [&](int32_t x, int32_t y) {
        if (labels[size_t(y) * size_t(s.width) + size_t(x)] == 0 && isPlaten(x, y))
            fill(s, labels, 1, x, y, isPlaten, stack);
    };
    for (int32_t x = 0; x < s.width; ++x) {
        fillPlatenFrom(x, 0);
        fillPlatenFrom(x, s.height - 1);
    }
    for (int32_t y = 0; y < s.height; ++y) {
        fillPlatenFrom(0, y);
        fillPlatenFrom(s.width - 1, y);
    }
    auto notPlaten = [&](int32_t, int32_t) { return true; }; // label 0 means not yet reached
    int32_t bestLabel = 0, nextLabel = 2;
    int64_t bestCount = 0;
    for (int32_t y = 0; y < s.height; ++y)
        for (int32_t x = 0; x < s.width; ++x)
            if (labels[size_t(y) * size_t(s.width) + size_t(x)] == 0) {
                const int64_t count = fill(s, labels, nextLabel, x, y, notPlaten, stack);
                if (count > bestCount) {
                    bestCount = count;
                    bestLabel = nextLabel;
                }
                ++nextLabel;
            }
    if (bestLabel == 0 || bestCount * s.step * s.step < std::max<int64_t>(minimumArea, 1))
        return result;

    // Bounds and second moments of the chosen piece.
    int32_t minX = s.width, minY = s.height, maxX = -1, maxY = -1;
    double sumX = 0, sumY = 0, sumXX = 0, sumYY = 0, sumXY = 0;
    for (int32_t y = 0; y < s.height; ++y)
        for (int32_t x = 0; x < s.width; ++x)
            if (labels[size_t(y) * size_t(s.width) + size_t(x)] == bestLabel) {
                minX = std::min(minX, x), maxX = std::max(maxX, x);
                minY = std::min(minY, y), maxY = std::max(maxY, y);
                sumX += x, sumY += y, sumXX += double(x) * x, sumYY += double(y) * y, sumXY += double(x) * y;
            }
    const double n = double(bestCount), meanX = sumX / n, meanY = sumY / n;
    const double mu20 = sumXX / n - meanX * meanX, mu02 = sumYY / n - meanY * meanY,
                 mu11 = sumXY / n - meanX * meanY;
    double angle = 0.5 * std::atan2(2 * mu11, mu20 - mu02) * 180.0 / M_PI; // y grows downwards: clockwise
    if (angle > 45)
        angle -= 90;
    else if (angle < -45)
        angle += 90;
    result.angle = std::fabs(angle) < 0.5 ? 0 : angle;
    result.box = clipRect(Rect{area.left + minX * s.step, area.top + minY * s.step,
                               (maxX - minX + 1) * s.step, (maxY - minY + 1) * s.step},
                          raster.width(), raster.height());
    result.found = !result.box.empty();
    return result;
}

} // namespace zyr
