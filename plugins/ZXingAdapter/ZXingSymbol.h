#pragma once

#include <ZXing/BarcodeFormat.h>
#include <ZXing/ByteArray.h>

#include <cstdint>

namespace kvdecode {

// The ZyrSymbology of a zxing format (ZYR_SYM_UNKNOWN for None or a combination).
int32_t symbologyOf(ZXing::BarcodeFormat format);

// The first ECI designator in zxing's ECI-protocol rendering of a symbol's content
// ("]Xm" prefix, "\nnnnnn" designators, doubled backslashes), ZYR_ECI_NONE when there is none.
int32_t firstEci(const ZXing::ByteArray& bytesEci);

} // namespace kvdecode
