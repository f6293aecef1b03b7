#include "PayloadType.h"

#include <ZyrReaderLowLevelAPI.h>

namespace kvdecode {

int32_t payloadType(const uint8_t* data, size_t length, int32_t eci) {
    if (eci != ZYR_ECI_NONE)
        return ZYR_DATA_ECI_BYTES;
    bool eightBit = false;
    for (size_t i = 0; i < length; ++i) {
        uint8_t b = data[i];
        if (b >= 0x20 && b < 0x7F)
            continue;
        if (b == '\t' || b == '\r' || b == '\n' || b == 0x04 || b == 0x1C || b == 0x1D || b == 0x1E)
            continue;
        if (b >= 0xA0) {
            eightBit = true;
            continue;
        }
        return ZYR_DATA_BINARY;
    }
    return eightBit ? ZYR_DATA_TEXT8 : ZYR_DATA_ASCII;
}

namespace {

bool isTextByte(uint8_t b) {
    return b >= 0x20 || b == '\t' || b == '\r' || b == '\n' || b == 0x04 || b == 0x1C || b == 0x1D || b == 0x1E;
}

bool validUtf8(const uint8_t* data, size_t length) {
    for (size_t i = 0; i < length;) {
        const uint8_t lead = data[i];
        const size_t extra = lead < 0x80 ? 0 : lead >= 0xC2 && lead <= 0xDF ? 1 : lead >= 0xE0 && lead <= 0xEF ? 2
                                           : lead >= 0xF0 && lead <= 0xF4 ? 3 : 4;
        if (extra == 4 || (extra > 0 && i + extra >= length))
            return false;
        for (size_t k = 1; k <= extra; ++k)
            if ((data[i + k] & 0xC0) != 0x80)
                return false;
        i += extra + 1;
    }
    return true;
}

// Valid Shift_JIS holding at least one double-byte character.
bool doubleByteShiftJis(const uint8_t* data, size_t length) {
    bool doubleByte = false;
    for (size_t i = 0; i < length; ++i) {
        const uint8_t b = data[i];
        if (b < 0x80 || (b >= 0xA1 && b <= 0xDF))
            continue;
        if (!((b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xEF)) || i + 1 >= length)
            return false;
        const uint8_t trail = data[++i];
        if (trail < 0x40 || trail == 0x7F || trail > 0xFC)
            return false;
        doubleByte = true;
    }
    return doubleByte;
}

} // namespace

int32_t guessTextEci(const uint8_t* data, size_t length) {
    bool high = false, c1 = false;
    for (size_t i = 0; i < length; ++i) {
        if (!isTextByte(data[i]) || data[i] == 0x7F)
            return ZYR_ECI_NONE;
        high = high || data[i] >= 0x80;
        c1 = c1 || (data[i] >= 0x80 && data[i] < 0xA0);
    }
    if (!high)
        return ZYR_ECI_NONE;
    if (validUtf8(data, length))
        return ZYR_ECI_UTF8;
    if (doubleByteShiftJis(data, length))
        return ZYR_ECI_SHIFT_JIS;
    return c1 ? ZYR_ECI_NONE : ZYR_ECI_ISO8859_1;
}

} // namespace kvdecode
