#include "HexClipboardFormat.h"

#include "HexLayout.h"

#include <algorithm>

std::optional<HexClipboardPayload> HexClipboardFormat::MakeCopy(const std::vector<uint8_t>& data,
                                                                int32_t selectionStart, int32_t selectionEnd,
                                                                int caretMode) {
    if (selectionStart < 0 || selectionEnd < 0)
        return std::nullopt;
    const int64_t length = static_cast<int64_t>(data.size());
    const int64_t low = std::min<int64_t>(std::min(selectionStart, selectionEnd), length);
    const int64_t high = std::max(selectionStart, selectionEnd);
    HexClipboardPayload payload;

    if (caretMode == HexModeCharacter) {
        const int64_t end = std::min(high, length);
        payload.binary.assign(data.begin() + low, data.begin() + end);
        payload.text.reserve(payload.binary.size());
        for (uint8_t b : payload.binary)
            payload.text.push_back(IsPrintable(b) ? static_cast<char>(b) : '.');
        return payload;
    }

    // The hex column copies one byte more: its end is inclusive.
    const int64_t count = high - low + 1;
    const int64_t end = std::min(high + 1, length);
    payload.binary.assign(data.begin() + low, data.begin() + end);

    static const char digits[] = "0123456789ABCDEF";
    const int64_t textEnd = std::min<int64_t>(static_cast<int64_t>(selectionStart) + count, length);
    for (int64_t i = selectionStart; i < textEnd; ++i) {
        const uint8_t b = data[static_cast<size_t>(i)];
        payload.text.push_back(digits[b >> 4]);
        payload.text.push_back(digits[b & 0x0F]);
        payload.text.push_back(' ');
    }
    return payload;
}
