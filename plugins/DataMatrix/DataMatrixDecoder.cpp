#include "DataMatrixDecoder.h"

#include "GreyImage.h"

#include <dmtx.h>

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

// libdmtx counts rows from the bottom of the image; corners go out in top-down pixels.
ZyrPoint cornerAt(DmtxRegion* region, double u, double v, int height) {
    DmtxVector2 fitted{u, v};
    DmtxVector2 raw{};
    dmtxMatrix3VMultiply(&raw, &fitted, region->fit2raw);
    return ZyrPoint{static_cast<int32_t>(std::lround(raw.X)),
                    static_cast<int32_t>(std::lround(height - 1 - raw.Y))};
}

} // namespace

void DataMatrixDecoder::configure(SettingsReader& r) {
    const std::string s = "Decoder";
    for (const std::string& name : r.list(s, "Formats", {"DataMatrix"}))
        if (name != "DataMatrix")
            r.fail("[Decoder] Formats: this plug-in reads only DataMatrix, not " + name);
    timeLimitMs_ = static_cast<int>(r.integer(s, "TimeLimitMs", timeLimitMs_, 1, 600000));
    maxSymbols_ = static_cast<int>(r.integer(s, "MaxSymbols", maxSymbols_, 1, 255));
    shrink_ = static_cast<int>(r.integer(s, "Shrink", shrink_, 1, 8));
    edgeMin_ = static_cast<int>(r.integer(s, "EdgeMin", edgeMin_, 0, 10000));
    edgeMax_ = static_cast<int>(r.integer(s, "EdgeMax", edgeMax_, 0, 10000));
    scanGap_ = static_cast<int>(r.integer(s, "ScanGap", scanGap_, 1, 64));
    squareDeviation_ = static_cast<int>(r.integer(s, "SquareDeviation", squareDeviation_, 0, 90));
    edgeThreshold_ = static_cast<int>(r.integer(s, "EdgeThreshold", edgeThreshold_, 1, 100));
}

void DataMatrixDecoder::decode(const ZyrImage& image, SymbolSink& sink) {
    // The smallest symbol is 10 modules square; libdmtx asserts on images of a pixel or two.
    if (image.Width < 10 || image.Height < 10)
        return;
    GreyImage grey(image);
    std::unique_ptr<DmtxImage, ImageDeleter> img(
        dmtxImageCreate(grey.data(), grey.width(), grey.height(), DmtxPack8bppK));
    if (!img)
        throw std::bad_alloc();
    std::unique_ptr<DmtxDecode, DecodeDeleter> dec(dmtxDecodeCreate(img.get(), shrink_));
    if (!dec)
        throw std::bad_alloc();
    if (edgeMin_ > 0)
        dmtxDecodeSetProp(dec.get(), DmtxPropEdgeMin, edgeMin_);
    if (edgeMax_ > 0)
        dmtxDecodeSetProp(dec.get(), DmtxPropEdgeMax, edgeMax_);
    dmtxDecodeSetProp(dec.get(), DmtxPropScanGap, scanGap_);
    dmtxDecodeSetProp(dec.get(), DmtxPropSquareDevn, squareDeviation_);
    dmtxDecodeSetProp(dec.get(), DmtxPropEdgeThresh, edgeThreshold_);

    DmtxTime deadline = dmtxTimeAdd(dmtxTimeNow(), timeLimitMs_);
    for (int found = 0; found < maxSymbols_;) {
        std::unique_ptr<DmtxRegion, RegionDeleter> region(dmtxRegionFindNext(dec.get(), &deadline));
        if (!region)
            break; // no further candidate, or the time is up
        std::unique_ptr<DmtxMessage, MessageDeleter> message(
            dmtxDecodeMatrixRegion(dec.get(), region.get(), DmtxUndefined));
        if (!message)
            continue;
        const int h = grey.height();
        // The fitted unit square has its origin at the finder's corner, the symbol's bottom-left.
        ZyrPoint corners[4] = {cornerAt(region.get(), 0, 1, h), cornerAt(region.get(), 1, 1, h),
                               cornerAt(region.get(), 1, 0, h), cornerAt(region.get(), 0, 0, h)};
        ++found;
        if (!sink.emit(ZYR_SYM_DATAMATRIX, message->output, size_t(message->outputIdx), ZYR_ECI_NONE,
                       corners))
            break;
    }
}

} // namespace kvdecode
