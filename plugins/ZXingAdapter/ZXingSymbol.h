#pragma once

#include <ZXing/BarcodeFormat.h>
#include <ZXing/ByteArray.h>
#include <ZXing/CharacterSet.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ZXing {
class Result;
}

namespace kvdecode {

// The ZyrSymbology of a zxing format (ZYR_SYM_UNKNOWN for None or a combination).
int32_t symbologyOf(ZXing::BarcodeFormat format);

// The ECI designators in zxing's ECI-protocol rendering of a symbol's content ("]Xm" prefix,
// "\nnnnnn" designators, doubled backslashes), in order. highBytesBefore: bytes above 0x7F stand
// before the first designator (they are in the symbology's default character set).
struct EciDesignators {
    std::vector<int32_t> values;
    bool highBytesBefore = false;
};
EciDesignators eciDesignators(const ZXing::ByteArray& bytesEci);

// The first designator, ZYR_ECI_NONE when there is none or it is malformed.
int32_t firstEci(const ZXing::ByteArray& bytesEci);

// The ECI number of a character set, ZYR_ECI_NONE for one without a text meaning.
int32_t eciOfCharacterSet(ZXing::CharacterSet charset);

// What a plug-in hands on for a result: the symbol's bytes with its ECI, or zxing's guess at the
// character set of bytes without one. Content that switches between character sets comes as
// UTF-8 text with ECI 26 when mixedAsUtf8, else as bytes with the first ECI.
struct SymbolPayload {
    std::string bytes;
    int32_t eci = 0;
};
SymbolPayload payloadOf(const ZXing::Result& result, bool mixedAsUtf8);

} // namespace kvdecode
