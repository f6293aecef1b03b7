// Decoded bytes as UTF-8 text, read in the character set their ECI designator names.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace EciText {

// The converter's name of the character set an ECI designator names, or nullptr.
const char* CharsetName(int32_t eci);

// bytes read in that character set as UTF-8; nothing when the ECI names no character set or the
// bytes are not valid text in it.
std::optional<std::string> ToUtf8(const std::string& bytes, int32_t eci);

// A symbol's text as UTF-8 by its data type: ASCII as it is, 8-bit text as ISO-8859-1, bytes with
// an ECI in that ECI's character set; nothing for binary data and other types.
std::optional<std::string> SymbolText(int32_t dataType, int32_t eci, const std::string& bytes);

} // namespace EciText
