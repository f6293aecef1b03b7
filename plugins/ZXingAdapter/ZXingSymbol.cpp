#include "ZXingSymbol.h"

#include <ZyrReaderLowLevelAPI.h>

#include <ZXing/Content.h>
#include <ZXing/Result.h>

#include <algorithm>
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

EciDesignators eciDesignators(const ZXing::ByteArray& bytesEci) {
    EciDesignators found;
    size_t i = (bytesEci.size() >= 3 && bytesEci[0] == ']') ? 3 : 0;
    while (i < bytesEci.size()) {
        if (bytesEci[i] != '\\') {
            if (found.values.empty() && bytesEci[i] >= 0x80)
                found.highBytesBefore = true;
            ++i;
            continue;
        }
        if (i + 1 < bytesEci.size() && bytesEci[i + 1] == '\\') {
            i += 2;
            continue;
        }
        if (i + 7 > bytesEci.size())
            return found;
        int32_t value = 0;
        for (size_t k = i + 1; k < i + 7; ++k) {
            if (!std::isdigit(bytesEci[k]))
                return found;
            value = value * 10 + (bytesEci[k] - '0');
        }
        found.values.push_back(value);
        i += 7;
    }
    return found;
}

int32_t firstEci(const ZXing::ByteArray& bytesEci) {
    EciDesignators found = eciDesignators(bytesEci);
    return found.values.empty() ? ZYR_ECI_NONE : found.values.front();
}

int32_t eciOfCharacterSet(ZXing::CharacterSet charset) {
    using C = ZXing::CharacterSet;
    switch (charset) {
    case C::Cp437:
        return 2;
    case C::ISO8859_1:
        return ZYR_ECI_ISO8859_1;
    case C::ISO8859_2:
    case C::ISO8859_3:
    case C::ISO8859_4:
    case C::ISO8859_5:
    case C::ISO8859_6:
    case C::ISO8859_7:
    case C::ISO8859_8:
    case C::ISO8859_9:
    case C::ISO8859_10:
    case C::ISO8859_11:
        return 4 + int32_t(charset) - int32_t(C::ISO8859_2);
    case C::ISO8859_13:
    case C::ISO8859_14:
    case C::ISO8859_15:
    case C::ISO8859_16:
        return 15 + int32_t(charset) - int32_t(C::ISO8859_13);
    case C::Shift_JIS:
        return ZYR_ECI_SHIFT_JIS;
    case C::Cp1250:
    case C::Cp1251:
    case C::Cp1252:
    case C::Cp1256:
        return 21 + int32_t(charset) - int32_t(C::Cp1250);
    case C::UnicodeBig:
        return 25;
    case C::UTF8:
        return ZYR_ECI_UTF8;
    case C::ASCII:
        return 27;
    case C::Big5:
        return 28;
    case C::GB2312:
    case C::GB18030:
        return 29;
    case C::EUC_KR:
        return 30;
    default:
        return ZYR_ECI_NONE;
    }
}

namespace {

// ECI designators of character sets (as opposed to binary, reserved or unassigned ones).
bool isTextEci(int32_t eci) {
    return (eci >= 0 && eci <= 32 && eci != 14 && eci != 19) || eci == 170;
}

} // namespace

SymbolPayload payloadOf(const ZXing::Result& result, bool mixedAsUtf8) {
    const ZXing::ByteArray& bytes = result.bytes();
    SymbolPayload payload{std::string(bytes.begin(), bytes.end()), ZYR_ECI_NONE};
    if (result.hasECI()) {
        const EciDesignators found = eciDesignators(result.bytesECI());
        if (found.values.empty())
            return payload;
        payload.eci = found.values.front();
        const bool mixed = found.highBytesBefore ||
                           std::any_of(found.values.begin(), found.values.end(),
                                       [&](int32_t eci) { return eci != found.values.front(); });
        if (mixed && mixedAsUtf8 && std::all_of(found.values.begin(), found.values.end(), isTextEci)) {
            payload.bytes = result.text();
            payload.eci = ZYR_ECI_UTF8;
        }
        return payload;
    }
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](uint8_t b) { return b < 0x80; });
    if (ascii || result.contentType() == ZXing::ContentType::Binary)
        return payload;
    // No designator: report the character set zxing itself reads the bytes in.
    ZXing::Content content(ZXing::ByteArray(bytes), {});
    payload.eci = eciOfCharacterSet(content.guessEncoding());
    return payload;
}

} // namespace kvdecode
