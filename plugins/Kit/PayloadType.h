#pragma once

#include <cstddef>
#include <cstdint>

namespace kvdecode {

// The data type reported for a payload: ZYR_DATA_ECI_BYTES when the symbol carries an ECI;
// otherwise ASCII text when every byte is printable 7-bit or one of the separators that text
// symbols carry (tab, CR, LF, FS, GS, RS, EOT); 8-bit text when bytes above 0x9F join those;
// binary for anything else (NUL, other control bytes, the C1 range).
int32_t payloadType(const uint8_t* data, size_t length, int32_t eci);

// For a decoder that reports no character set: the ECI of the set 8-bit text most likely is in.
// UTF-8 (26) when the bytes are valid UTF-8, Shift_JIS (20) when they hold double-byte Shift_JIS
// characters, ISO-8859-1 (3) when no C1 control byte appears; ZYR_ECI_NONE for 7-bit text and for
// binary data (control bytes other than text separators).
int32_t guessTextEci(const uint8_t* data, size_t length);

} // namespace kvdecode
