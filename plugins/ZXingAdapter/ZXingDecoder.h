#pragma once

#include "Decoder.h"

#include <ZXing/DecodeHints.h>
#include <ZXing/Result.h>

namespace kvdecode {

// A decoder over zxing-cpp, limited to the formats a plug-in offers. [Decoder] keys: Formats
// (zxing format names; must lie within the plug-in's), TryHarder, TryRotate, TryDownscale,
// Binarizer (LocalAverage, GlobalHistogram, FixedThreshold, BoolCast), MaxSymbols (1..255),
// DownscaleThreshold, DownscaleFactor (2..4), MinLineCount, IsPure, EanAddOn (read 2- and 5-digit
// add-ons, on when absent), MixedEciAsUtf8 (content that switches character sets part-way comes as
// UTF-8 with ECI 26; off: its bytes with the first ECI).
class ZXingDecoder : public Decoder {
public:
    ZXingDecoder(ZXing::BarcodeFormats offered, ZXing::BarcodeFormats defaults);

    void configure(SettingsReader& reader) override;
    void decode(const ZyrImage& image, SymbolSink& sink) override;

    const ZXing::DecodeHints& hints() const { return hints_; }

protected:
    // Every result zxing-cpp finds with the configured hints.
    virtual ZXing::Results read(const ZyrImage& image) const;

private:
    ZXing::BarcodeFormats offered_;
    ZXing::DecodeHints hints_;
    bool mixedAsUtf8_ = true;
};

} // namespace kvdecode
