#include "EciText.h"

#include "ZyrReaderLowLevelAPI.h"

#include <cerrno>
#include <iconv.h>

namespace EciText {

const char* CharsetName(int32_t eci) {
    static const char* const kIsoParts[] = {"ISO-8859-2", "ISO-8859-3", "ISO-8859-4",  "ISO-8859-5",
                                            "ISO-8859-6", "ISO-8859-7", "ISO-8859-8",  "ISO-8859-9",
                                            "ISO-8859-10", "ISO-8859-11"};
    static const char* const kIsoLate[] = {"ISO-8859-13", "ISO-8859-14", "ISO-8859-15", "ISO-8859-16"};
    static const char* const kWindows[] = {"CP1250", "CP1251", "CP1252", "CP1256"};
    if (eci >= 4 && eci <= 13) {
        return kIsoParts[eci - 4];
    }
    if (eci >= 15 && eci <= 18) {
        return kIsoLate[eci - 15];
    }
    if (eci >= 21 && eci <= 24) {
        return kWindows[eci - 21];
    }
    switch (eci) {
    case 0:
    case 2:
        return "CP437";
    case 1:
    case 3:
        return "ISO-8859-1";
    case 20:
        return "CP932"; // Shift_JIS with ASCII in the low half, as symbols use it
    case 25:
        return "UTF-16BE";
    case 26:
        return "UTF-8";
    case 27:
    case 170:
        return "ASCII";
    case 28:
        return "BIG5";
    case 29:
    case 32:
        return "GB18030";
    case 30:
        return "EUC-KR";
    case 31:
        return "GBK";
    default:
        return nullptr;
    }
}

std::optional<std::string> ToUtf8(const std::string& bytes, int32_t eci) {
    const char* name = CharsetName(eci);
    if (!name) {
        return std::nullopt;
    }
    iconv_t converter = iconv_open("UTF-8", name);
    if (converter == reinterpret_cast<iconv_t>(-1)) {
        return std::nullopt;
    }
    std::string out(bytes.size() * 4 + 16, '\0');
    char* in = const_cast<char*>(bytes.data());
    size_t inLeft = bytes.size();
    char* next = &out[0];
    size_t outLeft = out.size();
    const size_t result = iconv(converter, &in, &inLeft, &next, &outLeft);
    iconv_close(converter);
    if (result == static_cast<size_t>(-1) || inLeft != 0) {
        return std::nullopt;
    }
    out.resize(out.size() - outLeft);
    return out;
}

std::optional<std::string> SymbolText(int32_t dataType, int32_t eci, const std::string& bytes) {
    switch (dataType) {
    case ZYR_DATA_ASCII:
        return bytes;
    case ZYR_DATA_TEXT8:
        return ToUtf8(bytes, ZYR_ECI_ISO8859_1);
    case ZYR_DATA_ECI_BYTES:
        return ToUtf8(bytes, eci);
    default:
        return std::nullopt;
    }
}

} // namespace EciText
