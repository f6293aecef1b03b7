#include "SymbolMask.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <vector>

namespace kvdecode {

Box boxOf(const ZXing::Position& p) {
    Box b{INT_MAX, INT_MAX, INT_MIN, INT_MIN};
    for (const ZXing::PointI& c : p) {
        b.left = std::min(b.left, c.x);
        b.right = std::max(b.right, c.x);
        b.top = std::min(b.top, c.y);
        b.bottom = std::max(b.bottom, c.y);
    }
    return b;
}

namespace {

// Bar edges along one scan line of a grey image, counted with the dark and light levels of the
// line zxing read, so that noise on a plain card does not count.
class EdgeCounter {
public:
    EdgeCounter(const GreyImage& grey, bool rows) : grey_(grey), rows_(rows) {}

    void learn(int line, int from, int to) {
        std::vector<uint8_t> values;
        for (int i = from; i <= to; ++i)
            values.push_back(at(line, i));
        std::sort(values.begin(), values.end());
        const int dark = values[values.size() / 4], light = values[values.size() * 3 / 4];
        threshold_ = (dark + light) / 2;
        band_ = std::max(8, (light - dark) / 4);
    }

    int edges(int line, int from, int to) const {
        int count = 0, state = 0;
        for (int i = from; i <= to; ++i) {
            const int v = at(line, i);
            const int next = v < threshold_ - band_ ? -1 : v > threshold_ + band_ ? 1 : state;
            if (state != 0 && next != state)
                ++count;
            state = next;
        }
        return count;
    }

private:
    uint8_t at(int line, int i) const {
        const int x = rows_ ? i : line, y = rows_ ? line : i;
        return grey_.data()[size_t(y) * size_t(grey_.width()) + size_t(x)];
    }

    const GreyImage& grey_;
    bool rows_;
    int threshold_ = 128;
    int band_ = 32;
};

} // namespace

// The box a linear symbol covers: zxing gives the lines it read, so the box grows across the bars
// while the scan lines still cross about as many bar edges.
Box symbolBox(const GreyImage& grey, const ZXing::Position& p) {
    const Box read = boxOf(p);
    const bool rows = std::abs(p.topRight().x - p.topLeft().x) >= std::abs(p.topRight().y - p.topLeft().y);
    const int lines = rows ? grey.height() : grey.width();
    const int extent = rows ? grey.width() : grey.height();
    const int length = rows ? read.right - read.left : read.bottom - read.top;
    const int margin = std::max(8, length / 10);
    const int from = std::max(0, (rows ? read.left : read.top) - margin);
    const int to = std::min(extent - 1, (rows ? read.right : read.bottom) + margin);
    int first = std::clamp(rows ? read.top : read.left, 0, lines - 1);
    int last = std::clamp(rows ? read.bottom : read.right, 0, lines - 1);
    EdgeCounter counter(grey, rows);
    const int middle = (first + last) / 2;
    counter.learn(middle, std::max(0, rows ? read.left : read.top), std::min(extent - 1, rows ? read.right : read.bottom));
    const int wanted = std::max(4, counter.edges(middle, from, to) / 2);
    while (first > 0 && counter.edges(first - 1, from, to) >= wanted)
        --first;
    while (last < lines - 1 && counter.edges(last + 1, from, to) >= wanted)
        ++last;
    first = std::max(0, first - margin);
    last = std::min(lines - 1, last + margin);
    return rows ? Box{from, first, to, last} : Box{first, from, last, to};
}

void paintLight(GreyImage& grey, const Box& b) {
    for (int y = b.top; y <= b.bottom; ++y)
        std::fill_n(grey.data() + size_t(y) * size_t(grey.width()) + size_t(b.left), b.right - b.left + 1,
                    uint8_t(255));
}

} // namespace kvdecode
