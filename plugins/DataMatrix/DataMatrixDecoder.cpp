#include "DataMatrixDecoder.h"

#include "GreyImage.h"
#include "SymbolCandidates.h"

#include <dmtx.h>

#include <time.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace kvdecode {
namespace {

struct ImageDeleter {
    void operator()(DmtxImage* p) const { dmtxImageDestroy(&p); }
};
struct DecodeDeleter {
    void operator()(DmtxDecode* p) const { dmtxDecodeDestroy(&p); }
};
struct RegionDeleter {
    void operator()(DmtxRegion* p) const { dmtxRegionDestroy(&p); }
};
struct MessageDeleter {
    void operator()(DmtxMessage* p) const { dmtxMessageDestroy(&p); }
};

// libdmtx asserts on images this small; no symbol fits them anyway.
constexpr int kMinSearchSide = 12;
// Candidates looked at per image, best first.
constexpr size_t kMaxCandidates = 200;

// libdmtx counts rows from the bottom of the image; corners go out in top-down pixels.
ZyrPoint cornerAt(DmtxRegion* region, double u, double v, int height) {
    DmtxVector2 fitted{u, v};
    DmtxVector2 raw{};
    dmtxMatrix3VMultiply(&raw, &fitted, region->fit2raw);
    return ZyrPoint{static_cast<int32_t>(std::lround(raw.X)),
                    static_cast<int32_t>(std::lround(height - 1 - raw.Y))};
}

// Processor time of this thread. The limits count it rather than wall time, so that a busy
// machine does not make the plug-in give up on symbols it reads on an idle one.
double cpuMs() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1000.0 + double(now.tv_nsec) / 1e6;
}

// libdmtx takes a wall-clock deadline; it is given slices this long and resumes its scan after each.
constexpr long kSliceMs = 5;

} // namespace

struct DataMatrixDecoder::Area {
    int x0, y0, x1, y1;
    bool covers(int x, int y) const { return x >= x0 && x < x1 && y >= y0 && y < y1; }
};

void DataMatrixDecoder::configure(SettingsReader& r) {
    const std::string s = "Decoder";
    for (const std::string& name : r.list(s, "Formats", {"DataMatrix"}))
        if (name != "DataMatrix")
            r.fail("[Decoder] Formats: this plug-in reads only DataMatrix, not " + name);
    timeLimitMs_ = static_cast<int>(r.integer(s, "TimeLimitMs", timeLimitMs_, 1, 600000));
    wholeImageMs_ = static_cast<int>(r.integer(s, "WholeImageMs", wholeImageMs_, 0, 600000));
    maxSymbols_ = static_cast<int>(r.integer(s, "MaxSymbols", maxSymbols_, 1, 255));
    shrink_ = static_cast<int>(r.integer(s, "Shrink", shrink_, 1, 8));
    edgeMin_ = static_cast<int>(r.integer(s, "EdgeMin", edgeMin_, 0, 10000));
    edgeMax_ = static_cast<int>(r.integer(s, "EdgeMax", edgeMax_, 0, 10000));
    scanGap_ = static_cast<int>(r.integer(s, "ScanGap", scanGap_, 1, 64));
    squareDeviation_ = static_cast<int>(r.integer(s, "SquareDeviation", squareDeviation_, 0, 90));
    edgeThreshold_ = static_cast<int>(r.integer(s, "EdgeThreshold", edgeThreshold_, 1, 100));
}

void DataMatrixDecoder::decode(const ZyrImage& image, SymbolSink& sink) {
    if (image.Width < kMinSearchSide || image.Height < kMinSearchSide)
        return;
    const double end = cpuMs() + timeLimitMs_;
    const GreyImage grey(image);
    std::vector<Area> found;
    int count = 0;
    // Full resolution, but only where the finder sees something like a symbol.
    for (const Candidate& c :
         findSymbolCandidates(grey.data(), grey.width(), grey.height(), kMaxCandidates)) {
        if (count >= maxSymbols_ || sink.stopped() || cpuMs() >= end)
            return;
        const int cx = (c.x0 + c.x1) / 2, cy = (c.y0 + c.y1) / 2;
        if (std::any_of(found.begin(), found.end(), [&](const Area& a) { return a.covers(cx, cy); }))
            continue;
        // The quiet zone and the parts of a turned symbol the blob missed.
        const int margin = std::max(8, std::max(c.x1 - c.x0, c.y1 - c.y0) / 4);
        const Area area{std::max(0, c.x0 - margin), std::max(0, c.y0 - margin),
                        std::min(grey.width(), c.x1 + margin), std::min(grey.height(), c.y1 + margin)};
        // Most symbols read within a few ms of their area's search; print can keep libdmtx busy
        // for a hundred. So the search gets time by the area's size, and more where the runs
        // look much like modules (print rarely has two dark runs per row and column).
        const double size = double(area.x1 - area.x0) * double(area.y1 - area.y0);
        const double areaMs =
            std::min(30.0, std::clamp(2.0 + size / 2000.0, 3.0, 30.0) * (c.score >= 2.2 ? 3 : 1));
        search(grey, area, 1, std::min(end, cpuMs() + areaMs), count + 1, sink, found,
               count); // a blob is one symbol
    }
    // What the finder may miss (a symbol touching print, faint modules): the whole image, briefly.
    if (count == 0 && wholeImageMs_ > 0 && !sink.stopped())
        search(grey, Area{0, 0, grey.width(), grey.height()}, shrink_, std::min(end, cpuMs() + wholeImageMs_),
               maxSymbols_, sink, found, count);
}

void DataMatrixDecoder::search(const GreyImage& grey, const Area& area, int shrink, double end, int upTo,
                               SymbolSink& sink, std::vector<Area>& found, int& count) const {
    const int w = area.x1 - area.x0, h = area.y1 - area.y0;
    if (w < kMinSearchSide * shrink || h < kMinSearchSide * shrink)
        return;
    std::vector<uint8_t> pixels(size_t(w) * size_t(h));
    for (int y = 0; y < h; ++y)
        std::copy_n(grey.data() + size_t(area.y0 + y) * size_t(grey.width()) + size_t(area.x0), size_t(w),
                    pixels.data() + size_t(y) * size_t(w));
    std::unique_ptr<DmtxImage, ImageDeleter> img(dmtxImageCreate(pixels.data(), w, h, DmtxPack8bppK));
    if (!img)
        throw std::bad_alloc();
    std::unique_ptr<DmtxDecode, DecodeDeleter> dec(dmtxDecodeCreate(img.get(), shrink));
    if (!dec)
        throw std::bad_alloc();
    if (edgeMin_ > 0)
        dmtxDecodeSetProp(dec.get(), DmtxPropEdgeMin, edgeMin_);
    if (edgeMax_ > 0)
        dmtxDecodeSetProp(dec.get(), DmtxPropEdgeMax, edgeMax_);
    dmtxDecodeSetProp(dec.get(), DmtxPropScanGap, scanGap_);
    dmtxDecodeSetProp(dec.get(), DmtxPropSquareDevn, squareDeviation_);
    dmtxDecodeSetProp(dec.get(), DmtxPropEdgeThresh, edgeThreshold_);

    while (count < std::min(upTo, maxSymbols_)) {
        const double left = end - cpuMs();
        if (left <= 0)
            return;
        DmtxTime slice = dmtxTimeAdd(dmtxTimeNow(), std::clamp(long(left) + 1, 1L, kSliceMs));
        std::unique_ptr<DmtxRegion, RegionDeleter> region(dmtxRegionFindNext(dec.get(), &slice));
        if (!region) {
            if (dmtxTimeExceeded(slice))
                continue; // the slice is over, the scan is not
            return;       // every place scanned
        }
        std::unique_ptr<DmtxMessage, MessageDeleter> message(
            dmtxDecodeMatrixRegion(dec.get(), region.get(), DmtxUndefined));
        if (!message)
            continue;
        // The fitted unit square has its origin at the finder's corner, the symbol's bottom-left.
        ZyrPoint corners[4] = {cornerAt(region.get(), 0, 1, h), cornerAt(region.get(), 1, 1, h),
                               cornerAt(region.get(), 1, 0, h), cornerAt(region.get(), 0, 0, h)};
        Area symbol{grey.width(), grey.height(), 0, 0};
        for (ZyrPoint& p : corners) {
            p.X += area.x0, p.Y += area.y0;
            symbol = {std::min(symbol.x0, p.X), std::min(symbol.y0, p.Y), std::max(symbol.x1, p.X + 1),
                      std::max(symbol.y1, p.Y + 1)};
        }
        const int cx = (symbol.x0 + symbol.x1) / 2, cy = (symbol.y0 + symbol.y1) / 2;
        if (std::any_of(found.begin(), found.end(), [&](const Area& a) { return a.covers(cx, cy); }))
            continue; // met again in an overlapping area
        found.push_back(symbol);
        ++count;
        if (!sink.emit(ZYR_SYM_DATAMATRIX, message->output, size_t(message->outputIdx), ZYR_ECI_NONE,
                       corners))
            return;
    }
}

} // namespace kvdecode
