#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// What a copy puts on the clipboard: the raw bytes and their text form.
struct HexClipboardPayload {
    std::vector<uint8_t> binary; // the bytes, unchanged
    std::string text;            // printable characters, or hex digits with a space per byte
};

// Builds the clipboard blocks of a copy. In the character column the bytes run from the
// selection start up to but excluding its end; in any other column from the smaller to the larger
// end inclusive, with the text taken for as many bytes counted from the selection start. Both
// ranges stop at the end of the buffer. No selection gives nothing.
class HexClipboardFormat {
public:
    static std::optional<HexClipboardPayload>
    MakeCopy(const std::vector<uint8_t>& data, int32_t selectionStart, int32_t selectionEnd, int caretMode);

    // Bytes shown as themselves in the character column and in copied text; others become '.'.
    static bool IsPrintable(uint8_t byte) { return byte >= 0x20 && byte < 0x7F; }
};
