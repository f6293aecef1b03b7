#include "SymbologyNames.h"

#include "ZyrReaderLowLevelAPI.h"

std::string SymbologyNames::Name(int32_t symbology) {
    static const char* const kNames[] = {"Unknown", "PDF417",   "QRCode",         "MicroQRCode", "DataMatrix",
                                         "Aztec",   "MaxiCode", "Code128",        "Code39",      "Code93",
                                         "Codabar", "ITF",      "EAN-13",         "EAN-8",       "UPC-A",
                                         "UPC-E",   "DataBar",  "DataBarExpanded"};
    static_assert(sizeof kNames / sizeof kNames[0] == ZYR_SYM_DATABAR_EXPANDED + 1, "one name per symbology");
    if (symbology >= 0 && symbology <= ZYR_SYM_DATABAR_EXPANDED) {
        return kNames[symbology];
    }
    return "Symbology " + std::to_string(symbology);
}
