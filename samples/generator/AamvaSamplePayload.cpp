#include "AamvaSamplePayload.h"

#include <cstdio>

namespace glyphor::samples {
namespace {

std::string digits(size_t value, int width) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*zu", width, value);
    return text;
}

} // namespace

std::string aamvaSamplePayload() {
    const std::string dl =
        "DLDAQD1234562 XYZ\nDCSSAMPLE\nDDEN\nDACALEX\nDDFN\nDADJORDAN\nDDGN\nDCAC\nDCBNONE\n"
        "DCDNONE\nDBD08312019\nDBB07041985\nDBA07042027\nDBC2\nDAU067 IN\nDAYBLU\n"
        "DAG2570 24TH STREET\nDAIANYTOWN\nDAJCA\nDAK958150000  \nDCF00/00/0000NNNAN/ANFD\n"
        "DCGUSA\nDAZBRO\nDCK12345678900000000\nDDB08312017\nDDAF\nDDD0\r";
    const std::string jurisdiction = "ZCZCAY\nZCBCORRECTIVE LENSES\r";
    const std::string iin = "636014";
    const int subfiles = 2;
    // Header: compliance indicator, separators, "ANSI ", IIN, version 10, jurisdiction version 1,
    // subfile count, then one 10-byte designator per subfile.
    const size_t headerLength = 21 + 10 * subfiles;
    std::string out = "@\n\x1e\rANSI " + iin + "10" + "01" + digits(subfiles, 2);
    out += "DL" + digits(headerLength, 4) + digits(dl.size(), 4);
    out += "ZC" + digits(headerLength + dl.size(), 4) + digits(jurisdiction.size(), 4);
    return out + dl + jurisdiction;
}

} // namespace glyphor::samples
