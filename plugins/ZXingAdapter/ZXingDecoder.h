#pragma once

#include "Decoder.h"

#include <ZXing/DecodeHints.h>

namespace kvdecode {

// A decoder over zxing-cpp, limited to the formats a plug-in offers. [Decoder] keys: Formats
// (zxing format names; must lie within the plug-in's), TryHarder, TryRotate, TryDownscale,
// Binarizer (LocalAverage, GlobalHistogram, FixedThreshold, BoolCast), MaxSymbols (1..255),
// DownscaleThreshold, DownscaleFactor (2..4), MinLineCount, IsPure.
class ZXingDecoder : public Decoder {
public:
    ZXingDecoder(ZXing::BarcodeFormats offered, ZXing::BarcodeFormats defaults);

    void configure(SettingsReader& reader) override;
    void decode(const ZyrImage& image, SymbolSink& sink) override;

    const ZXing::DecodeHints& hints() const { return hints_; }

private:
    ZXing::BarcodeFormats offered_;
    ZXing::DecodeHints hints_;
};

} // namespace kvdecode
