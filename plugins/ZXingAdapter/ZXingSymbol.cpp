#include "ZXingSymbol.h"

#include <ZyrReaderLowLevelAPI.h>

#include <cctype>

namespace kvdecode {

int32_t symbologyOf(ZXing::BarcodeFormat format) {
    using F = ZXing::BarcodeFormat;
    switch (format) {
    case F::PDF417:
        return ZYR_SYM_PDF417;
    case F::QRCode:
        return ZYR_SYM_QRCODE;
    case F::MicroQRCode:
        return ZYR_SYM_MICRO_QRCODE;
    case F::DataMatrix:
        return ZYR_SYM_DATAMATRIX;
    case F::Aztec:
        return ZYR_SYM_AZTEC;
    case F::MaxiCode:
        return ZYR_SYM_MAXICODE;
    case F::Code128:
        return ZYR_SYM_CODE128;
    case F::Code39:
        return ZYR_SYM_CODE39;
    case F::Code93:
        return ZYR_SYM_CODE93;
    case F::Codabar:
        return ZYR_SYM_CODABAR;
    case F::ITF:
        return ZYR_SYM_ITF;
    case F::EAN13:
        return ZYR_SYM_EAN13;
    case F::EAN8:
        return ZYR_SYM_EAN8;
    case F::UPCA:
        return ZYR_SYM_UPCA;
    case F::UPCE:
        return ZYR_SYM_UPCE;
    case F::DataBar:
        return ZYR_SYM_DATABAR;
    case F::DataBarExpanded:
        return ZYR_SYM_DATABAR_EXPANDED;
    default:
        return ZYR_SYM_UNKNOWN;
    }
}

int32_t firstEci(const ZXing::ByteArray& bytesEci) {
    size_t i = (bytesEci.size() >= 3 && bytesEci[0] == ']') ? 3 : 0;
    while (i < bytesEci.size()) {
        if (bytesEci[i] != '\\') {
            ++i;
            continue;
        }
        if (i + 1 < bytesEci.size() && bytesEci[i + 1] == '\\') {
            i += 2;
            continue;
        }
        if (i + 7 > bytesEci.size())
            return ZYR_ECI_NONE;
        int32_t value = 0;
        for (size_t k = i + 1; k < i + 7; ++k) {
            if (!std::isdigit(bytesEci[k]))
                return ZYR_ECI_NONE;
            value = value * 10 + (bytesEci[k] - '0');
        }
        return value;
    }
    return ZYR_ECI_NONE;
}

} // namespace kvdecode
