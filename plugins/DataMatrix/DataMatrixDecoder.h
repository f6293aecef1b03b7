#pragma once

#include "Decoder.h"

namespace kvdecode {

// Data Matrix through libdmtx on an 8-bit grey copy (faster than colour). libdmtx can search an
// image without a symbol for seconds, so each image has a time limit. [Decoder] keys: Formats
// (DataMatrix only), TimeLimitMs, MaxSymbols, Shrink (1 = full resolution; 2 halves the search
// work and misses small symbols), EdgeMin and EdgeMax (module edge lengths in pixels, 0 = any),
// ScanGap, SquareDeviation (degrees), EdgeThreshold (1..100).
class DataMatrixDecoder : public Decoder {
public:
    void configure(SettingsReader& reader) override;
    void decode(const ZyrImage& image, SymbolSink& sink) override;

    const char* defaultImage() const override { return "IR_DOC"; }
    const char* defaultLight() const override { return "IMAGE_IR"; }

private:
    int timeLimitMs_ = 1000;
    int maxSymbols_ = 16;
    int shrink_ = 1;
    int edgeMin_ = 0;
    int edgeMax_ = 0;
    int scanGap_ = 2;
    int squareDeviation_ = 40;
    int edgeThreshold_ = 10;
};

} // namespace kvdecode
