#pragma once

#include "Decoder.h"

#include <utility>
#include <vector>

namespace kvdecode {

// EAN/UPC, Code 128, Code 39, Interleaved 2 of 5 and QR Code through ZBar, on an 8-bit grey copy.
// ZBar reports no ECI, so the character set of 8-bit text is guessed from the bytes. [Decoder]
// keys: Formats (EAN13, EAN8, UPCA, UPCE, Code128, Code39, I25, QRCode), MaxSymbols, TryHarder
// (scan every row and column instead of every second), TryInverted (also read light-on-dark
// symbols), EanAddOn (read 2- and 5-digit add-ons after EAN/UPC symbols; on when absent).
class ZBarDecoder : public Decoder {
public:
    ZBarDecoder();

    void configure(SettingsReader& reader) override;
    void decode(const ZyrImage& image, SymbolSink& sink) override;

private:
    std::vector<int> symbolTypes_; // zbar_symbol_type_t values enabled
    int maxSymbols_ = 16;
    bool tryHarder_ = true;
    bool tryInverted_ = false;
    bool addOns_ = true;
};

} // namespace kvdecode
