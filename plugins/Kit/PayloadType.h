#pragma once

#include <cstddef>
#include <cstdint>

namespace kvdecode {

// The data type reported for a payload: ZYR_DATA_ECI_BYTES when the symbol carries an ECI;
// otherwise ASCII text when every byte is printable 7-bit or one of the separators that text
// symbols carry (tab, CR, LF, FS, GS, RS, EOT); 8-bit text when bytes above 0x9F join those;
// binary for anything else (NUL, other control bytes, the C1 range).
int32_t payloadType(const uint8_t* data, size_t length, int32_t eci);

} // namespace kvdecode
