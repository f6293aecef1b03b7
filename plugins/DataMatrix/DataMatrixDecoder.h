#pragma once

#include "Decoder.h"
#include "GreyImage.h"

#include <vector>

namespace kvdecode {

// Data Matrix through libdmtx on an 8-bit grey copy. libdmtx searches a page of print for
// seconds, so it searches only small areas around what a cheap finder takes for symbols, at full
// resolution, and the whole image only briefly when those give nothing. [Decoder] keys: Formats
// (DataMatrix only), TimeLimitMs (the whole decode), WholeImageMs (the whole-image search, 0 =
// none), MaxSymbols, Shrink (of the whole-image search: 1 = full resolution; 2 is about four
// times faster but misses small symbols), EdgeMin and EdgeMax (module edge lengths in pixels,
// 0 = any), ScanGap, SquareDeviation (degrees), EdgeThreshold (1..100).
class DataMatrixDecoder : public Decoder {
public:
    void configure(SettingsReader& reader) override;
    void decode(const ZyrImage& image, SymbolSink& sink) override;

    const char* defaultImage() const override { return "IR_DOC"; }
    const char* defaultLight() const override { return "IMAGE_IR"; }

private:
    struct Area;
    // Searches one area of the image with libdmtx until end (this thread's processor time in ms)
    // or until count reaches upTo, emitting what it reads (symbols already in found are skipped)
    // and adding their boxes to found.
    void search(const GreyImage& grey, const Area& area, int shrink, double end, int upTo, SymbolSink& sink,
                std::vector<Area>& found, int& count) const;

    int timeLimitMs_ = 1000;
    int wholeImageMs_ = 0;
    int maxSymbols_ = 16;
    int shrink_ = 1;
    int edgeMin_ = 0;
    int edgeMax_ = 0;
    int scanGap_ = 2;
    int squareDeviation_ = 40;
    int edgeThreshold_ = 10;
};

} // namespace kvdecode
