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

} // namespace kvdecode
