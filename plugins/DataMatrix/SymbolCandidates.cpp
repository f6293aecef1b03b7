#include "SymbolCandidates.h"

#include <algorithm>

namespace kvdecode {
namespace {

constexpr int kBlock = 16;                   // pixels per side of a block whose mean is taken
constexpr int kDarker = 18;                  // grey levels below the neighbourhood's mean that count as dark
constexpr int kPrintRange = 100;             // darkest to lightest grey where print or a symbol is
constexpr double kMaxDensityRatio = 2.2;     // dark runs per pixel across against down: 1 to 1.7 for Data
                                             // Matrix, 3 and more for PDF417, over 2.3 for photographs
constexpr int64_t kHalveAbove = 1300 * 1000; // larger images are looked at in half resolution
constexpr int kMinSide = 8;                  // a 10x10 symbol with modules of 1.6 pixels (or 0.8 halved)

struct Blob {
    int x0, y0, x1, y1;
    int64_t pixels = 0;
    int64_t runs = 0;
};

struct Run {
    int x0, x1; // x1 exclusive
    int blob;
};

class Blobs {
public:
    int make(int x0, int x1, int y) {
        parent_.push_back(int(parent_.size()));
        blobs_.push_back({x0, y, x1, y + 1, 0, 0});
        return int(parent_.size()) - 1;
    }
    int root(int i) {
        while (parent_[size_t(i)] != i) {
            parent_[size_t(i)] = parent_[size_t(parent_[size_t(i)])];
            i = parent_[size_t(i)];
        }
        return i;
    }
    int join(int a, int b) {
        a = root(a), b = root(b);
        if (a == b)
            return a;
        Blob &keep = blobs_[size_t(a)], &gone = blobs_[size_t(b)];
        keep.x0 = std::min(keep.x0, gone.x0), keep.y0 = std::min(keep.y0, gone.y0);
        keep.x1 = std::max(keep.x1, gone.x1), keep.y1 = std::max(keep.y1, gone.y1);
        keep.pixels += gone.pixels, keep.runs += gone.runs;
        parent_[size_t(b)] = a;
        return a;
    }
    void add(int i, const Run& run, int y) {
        Blob& b = blobs_[size_t(i)];
        b.x0 = std::min(b.x0, run.x0), b.x1 = std::max(b.x1, run.x1);
        b.y1 = std::max(b.y1, y + 1);
        b.pixels += run.x1 - run.x0;
        ++b.runs;
    }
    size_t size() const { return blobs_.size(); }
    bool isRoot(size_t i) const { return parent_[i] == int(i); }
    const Blob& at(size_t i) const { return blobs_[i]; }

private:
    std::vector<int> parent_;
    std::vector<Blob> blobs_;
};

// The darkness limit of each block, from it and its eight neighbours: where they hold print or a
// symbol (a wide range of greys), halfway between their darkest and lightest pixel, so that faint
// print next to a symbol stays light and modules that touch only at a corner still join; elsewhere
// kDarker below their mean.
std::vector<int> blockLimits(const uint8_t* img, int w, int h, int bw, int bh) {
    std::vector<int64_t> sum(size_t(bw) * size_t(bh), 0);
    std::vector<int> count(sum.size(), 0);
    std::vector<uint8_t> darkest(sum.size(), 255), lightest(sum.size(), 0);
    for (int y = 0; y < h; ++y) {
        const uint8_t* row = img + size_t(y) * size_t(w);
        for (int x = 0; x < w; ++x) {
            const size_t b = size_t(y / kBlock) * size_t(bw) + size_t(x / kBlock);
            sum[b] += row[x];
            darkest[b] = std::min(darkest[b], row[x]);
            lightest[b] = std::max(lightest[b], row[x]);
        }
    }
    for (int by = 0; by < bh; ++by)
        for (int bx = 0; bx < bw; ++bx)
            count[size_t(by) * size_t(bw) + size_t(bx)] = (std::min(h, (by + 1) * kBlock) - by * kBlock) *
                                                          (std::min(w, (bx + 1) * kBlock) - bx * kBlock);
    std::vector<int> limit(sum.size());
    for (int by = 0; by < bh; ++by) {
        for (int bx = 0; bx < bw; ++bx) {
            int64_t s = 0, n = 0;
            int low = 255, high = 0;
            for (int dy = std::max(0, by - 1); dy <= std::min(bh - 1, by + 1); ++dy)
                for (int dx = std::max(0, bx - 1); dx <= std::min(bw - 1, bx + 1); ++dx) {
                    s += sum[size_t(dy) * size_t(bw) + size_t(dx)];
                    n += count[size_t(dy) * size_t(bw) + size_t(dx)];
                    low = std::min<int>(low, darkest[size_t(dy) * size_t(bw) + size_t(dx)]);
                    high = std::max<int>(high, lightest[size_t(dy) * size_t(bw) + size_t(dx)]);
                }
            const int mean = int(s / n);
            limit[size_t(by) * size_t(bw) + size_t(bx)] =
                high - low >= kPrintRange ? (low + high) / 2 : mean - kDarker;
        }
    }
    return limit;
}

} // namespace

std::vector<Candidate> findSymbolCandidates(const uint8_t* grey, int width, int height, size_t maxCount) {
    const int scale = int64_t(width) * height > kHalveAbove ? 2 : 1;
    const int w = width / scale, h = height / scale;
    if (w < kMinSide || h < kMinSide)
        return {};
    // Halving or a 3x3 box blur: single noisy pixels must not join into blobs.
    std::vector<uint8_t> smooth(size_t(w) * size_t(h));
    if (scale == 2) {
        for (int y = 0; y < h; ++y) {
            const uint8_t* a = grey + size_t(2 * y) * size_t(width);
            const uint8_t* b = a + width;
            for (int x = 0; x < w; ++x)
                smooth[size_t(y) * size_t(w) + size_t(x)] =
                    uint8_t((a[2 * x] + a[2 * x + 1] + b[2 * x] + b[2 * x + 1] + 2) / 4);
        }
    } else {
        std::vector<uint16_t> across(size_t(w) * size_t(h));
        for (int y = 0; y < h; ++y) {
            const uint8_t* row = grey + size_t(y) * size_t(w);
            uint16_t* out = across.data() + size_t(y) * size_t(w);
            for (int x = 0; x < w; ++x)
                out[x] = uint16_t(row[std::max(0, x - 1)] + row[x] + row[std::min(w - 1, x + 1)]);
        }
        for (int y = 0; y < h; ++y) {
            const uint16_t* up = across.data() + size_t(std::max(0, y - 1)) * size_t(w);
            const uint16_t* mid = across.data() + size_t(y) * size_t(w);
            const uint16_t* down = across.data() + size_t(std::min(h - 1, y + 1)) * size_t(w);
            for (int x = 0; x < w; ++x)
                smooth[size_t(y) * size_t(w) + size_t(x)] = uint8_t((up[x] + mid[x] + down[x] + 4) / 9);
        }
    }
    const uint8_t* img = smooth.data();
    const int bw = (w + kBlock - 1) / kBlock, bh = (h + kBlock - 1) / kBlock;
    const std::vector<int> limit = blockLimits(img, w, h, bw, bh);

    Blobs blobs;
    std::vector<Run> previous, current;
    for (int y = 0; y < h; ++y) {
        const uint8_t* row = img + size_t(y) * size_t(w);
        const int* rowLimit = limit.data() + size_t(y / kBlock) * size_t(bw);
        current.clear();
        for (int x = 0; x < w;) {
            if (row[x] >= rowLimit[x / kBlock]) {
                ++x;
                continue;
            }
            const int start = x;
            while (x < w && row[x] < rowLimit[x / kBlock])
                ++x;
            current.push_back({start, x, -1});
        }
        size_t p = 0;
        for (Run& run : current) {
            // Runs of the row above that touch this one, diagonals included.
            while (p < previous.size() && previous[p].x1 < run.x0)
                ++p;
            for (size_t q = p; q < previous.size() && previous[q].x0 <= run.x1; ++q)
                run.blob =
                    run.blob < 0 ? blobs.root(previous[q].blob) : blobs.join(run.blob, previous[q].blob);
            if (run.blob < 0)
                run.blob = blobs.make(run.x0, run.x1, y);
            blobs.add(blobs.root(run.blob), run, y);
        }
        previous.swap(current);
    }

    std::vector<Candidate> found;
    for (size_t i = 0; i < blobs.size(); ++i) {
        if (!blobs.isRoot(i))
            continue;
        const Blob& b = blobs.at(i);
        const int bwid = b.x1 - b.x0, bhei = b.y1 - b.y0;
        const int lo = std::min(bwid, bhei), hi = std::max(bwid, bhei);
        if (lo < kMinSide || hi > 4 * lo) // rectangular symbols reach 16 x 48 modules
            continue;
        const double fill = double(b.pixels) / (double(bwid) * double(bhei));
        const double runsPerRow = double(b.runs) / double(bhei);
        if (fill < 0.12 || fill > 0.85 || runsPerRow < 1.5)
            continue;
        // Modules make dark runs as dense down the columns as along the rows (PDF417's bars are
        // much denser across than its rows are down, and the strokes of print run mostly one
        // way). Counted over every dark pixel in the box, so that a blob in pieces counts whole.
        int64_t rowRuns = 0, columnRuns = 0;
        const auto dark = [&](int x, int y) {
            return img[size_t(y) * size_t(w) + size_t(x)] <
                   limit[size_t(y / kBlock) * size_t(bw) + size_t(x / kBlock)];
        };
        for (int y = b.y0; y < b.y1; ++y)
            for (int x = b.x0; x < b.x1; ++x)
                rowRuns += dark(x, y) && (x == b.x0 || !dark(x - 1, y));
        for (int x = b.x0; x < b.x1; ++x)
            for (int y = b.y0; y < b.y1; ++y)
                columnRuns += dark(x, y) && (y == b.y0 || !dark(x, y - 1));
        const double runsPerColumn = double(columnRuns) / double(bwid);
        const double across = double(rowRuns) / double(bhei) / double(bwid),
                     down = runsPerColumn / double(bhei);
        if (runsPerColumn < 1.5 || std::max(across, down) > kMaxDensityRatio * std::min(across, down))
            continue;
        found.push_back({b.x0 * scale, b.y0 * scale, std::min(width, b.x1 * scale),
                         std::min(height, b.y1 * scale),
                         std::min(double(rowRuns) / double(bhei), runsPerColumn)});
    }
    std::stable_sort(found.begin(), found.end(),
                     [](const Candidate& a, const Candidate& b) { return a.score > b.score; });
    if (found.size() > maxCount)
        found.resize(maxCount);
    return found;
}

} // namespace kvdecode
