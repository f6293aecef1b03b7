#pragma once

#include "Decoder.h"
#include "RetryPass.h"

#include <ZXing/DecodeHints.h>
#include <ZXing/Result.h>

#include <vector>

namespace kvdecode {

// A decoder over zxing-cpp, limited to the formats a plug-in offers. [Decoder] keys: Formats
// (zxing format names; must lie within the plug-in's), TryHarder, TryRotate, TryDownscale,
// Binarizer (LocalAverage, GlobalHistogram, FixedThreshold, BoolCast), MaxSymbols (1..255),
// DownscaleThreshold, DownscaleFactor (2..4), MinLineCount, IsPure, EanAddOn (read 2- and 5-digit
// add-ons, on when absent), MixedEciAsUtf8 (content that switches character sets part-way comes as
// UTF-8 with ECI 26; off: its bytes with the first ECI), Retry (reads tried in order while nothing
// has been found: binarizer names, each with an optional @degrees to turn the image first and
// +Downscale), RetryFormats (the formats those reads look for; default all of the plug-in's).
class ZXingDecoder : public Decoder {
public:
    ZXingDecoder(ZXing::BarcodeFormats offered, ZXing::BarcodeFormats defaults);

    void configure(SettingsReader& reader) override;
    void decode(const ZyrImage& image, SymbolSink& sink) override;

    const ZXing::DecodeHints& hints() const { return hints_; }

private:
    // Every result zxing-cpp finds with the configured hints.
    ZXing::Results read(const ZyrImage& image) const;
    // The retry reads, up to the first that finds something.
    ZXing::Results retry(const ZyrImage& image) const;

    ZXing::BarcodeFormats offered_;
    ZXing::DecodeHints hints_;
    bool mixedAsUtf8_ = true;
    std::vector<RetryPass> retries_;
    ZXing::BarcodeFormats retryFormats_;
};

} // namespace kvdecode
