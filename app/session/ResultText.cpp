#include "ResultText.h"

namespace {

const char* const kControlNames[32] = {"NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "BEL",
                                       "BS",  "HT",  "LF",  "VT",  "FF",  "CR",  "SO",  "SI",
                                       "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB",
                                       "CAN", "EM",  "SUB", "ESC", "FS",  "GS",  "RS",  "US"};

} // namespace

std::string ResultRowText(const std::string& bytes, RowBytes encoding) {
    static const char kHex[] = "0123456789ABCDEF";
    std::string shown;
    shown.reserve(bytes.size());
    for (const char byte : bytes) {
        const auto c = static_cast<unsigned char>(byte);
        if (c < 0x20) {
            shown.append("<").append(kControlNames[c]).append(">");
        } else if (c == 0x7F) {
            shown.append("<DEL>");
        } else if (encoding == RowBytes::Latin1 && c >= 0x80 && c < 0xA0) {
            shown.append({'<', kHex[c >> 4], kHex[c & 0x0F], '>'});
        } else {
            shown.push_back(byte);
        }
    }
    return shown;
}
