#include "HexLayout.h"

#include <algorithm>

namespace {

// Division rounding towards minus infinity, so offsets above the first visible byte land on
// negative rows instead of row 0.
int64_t FloorDiv(int64_t a, int64_t b) {
    int64_t q = a / b;
    if ((a % b != 0) && ((a < 0) != (b < 0)))
        --q;
    return q;
}

int32_t ClampTo(int64_t v, int32_t lo, int32_t hi) {
    return static_cast<int32_t>(std::min<int64_t>(std::max<int64_t>(v, lo), hi));
}

} // namespace

HexLayout::HexLayout() = default;

void HexLayout::SetOptions(const Options& options) {
    m_options = options;
    m_options.bytesPerRow = std::max<int32_t>(1, options.bytesPerRow);
}

void HexLayout::SetCellSize(int charWidth, int lineHeight) {
    m_charWidth = std::max(1, charWidth);
    m_lineHeight = std::max(1, lineHeight);
}

void HexLayout::Compute(int clientWidth, int clientHeight, int32_t length) {
    m_clientWidth = std::max(0, clientWidth);
    m_clientHeight = std::max(0, clientHeight);
    length = std::max<int32_t>(0, length);
    const int addressChars = m_options.wideAddress ? 8 : 4;

    if (m_options.autoBytesPerRow) {
        int available = m_clientWidth - 10;
        // Ten cells for the wide address, six for the narrow one: one more than either column takes.
        if (m_options.showAddress)
            available -= 2 * (m_options.wideAddress ? 5 : 3) * m_charWidth;
        // A byte takes three cells in the hex column and one in the character column.
        const int perByte = m_options.showHex ? 4 * m_charWidth : m_charWidth;
        // Too narrow for a single byte still shows one per row rather than none.
        m_bytesPerRow = std::max(1, available / perByte);
    } else {
        m_bytesPerRow = m_options.bytesPerRow;
    }

    m_hexX = m_options.showAddress ? (addressChars + 1) * m_charWidth : 0;
    m_charX = m_options.showHex ? m_hexX + m_bytesPerRow * 3 * m_charWidth : m_hexX;

    m_visibleRows = m_clientHeight / m_lineHeight;
    m_partialLastRow = false;
    if (static_cast<int64_t>(m_visibleRows) * m_bytesPerRow > length) {
        // Rounds half a row up, then adds the partial row; this can exceed a plain ceiling.
        m_visibleRows =
            static_cast<int32_t>((static_cast<int64_t>(length) + m_bytesPerRow / 2) / m_bytesPerRow);
        if (length % m_bytesPerRow != 0) {
            ++m_visibleRows;
            m_partialLastRow = true;
        }
    }
}

int HexLayout::WholeLinesHeight() const {
    return m_clientHeight / m_lineHeight * m_lineHeight;
}

int32_t HexLayout::RowCount(int32_t length) const {
    if (length <= 0)
        return 0;
    return static_cast<int32_t>((static_cast<int64_t>(length) + m_bytesPerRow - 1) / m_bytesPerRow);
}

int32_t HexLayout::LastPageTop(int32_t length) const {
    const int64_t rows = static_cast<int64_t>(RowCount(length)) - m_visibleRows;
    return rows > 0 ? static_cast<int32_t>(rows * m_bytesPerRow) : 0;
}

std::optional<HexHit> HexLayout::HitTest(int x, int y, int32_t top, int32_t length) const {
    if (y < 0)
        return std::nullopt;
    const int row = y / m_lineHeight;
    if (row > m_visibleRows)
        return std::nullopt;
    const int64_t rowStart = static_cast<int64_t>(top) + static_cast<int64_t>(row) * m_bytesPerRow;
    if (rowStart > length)
        return std::nullopt;

    // Left of the client (while dragging) counts as the first column.
    int c = std::max(0, x) / m_charWidth;
    const int rowY = row * m_lineHeight;
    HexHit hit;

    if (m_options.showAddress && c <= (m_options.wideAddress ? 8 : 4)) {
        hit.position = static_cast<int32_t>(rowStart);
        hit.mode = HexModeAddress;
        hit.caretPoint = {c * m_charWidth, rowY};
        return hit;
    }
    const int hexStart = m_hexX / m_charWidth;
    if (m_options.showHex && c < hexStart + 3 * m_bytesPerRow) {
        // Cells are taken in absolute columns: with the wide address the hex column starts on a
        // multiple of three, so a byte's first two cells give its high nibble, the third its low.
        if (c % 3 != 0)
            c -= 1;
        const int64_t pos = rowStart + (c - hexStart) / 3;
        hit.position = ClampTo(pos, 0, length);
        hit.mode = HexModeHigh + ((c / 3 + c) % 2 != 0 ? 1 : 0);
        hit.caretPoint = {c * m_charWidth, rowY};
        return hit;
    }
    if (m_options.showCharacters) {
        const int charStart = m_charX / m_charWidth;
        if (c > charStart + m_bytesPerRow)
            return std::nullopt;
        hit.position = ClampTo(rowStart + std::max(0, c - charStart), 0, length);
        hit.mode = HexModeCharacter;
        hit.caretPoint = {c * m_charWidth, rowY};
        return hit;
    }
    return std::nullopt;
}

HexPoint HexLayout::CaretPoint(int32_t position, int mode, int32_t top) const {
    const int64_t offset = static_cast<int64_t>(position) - top;
    const int64_t row = FloorDiv(offset, m_bytesPerRow);
    const int64_t index = offset - row * m_bytesPerRow;
    int64_t x = 0;
    switch (mode) {
    case HexModeCharacter:
        x = m_charX + index * m_charWidth;
        break;
    case HexModeHigh:
        x = m_hexX + 3 * index * m_charWidth;
        break;
    case HexModeLow:
        x = m_hexX + (3 * index + 1) * m_charWidth;
        break;
    default:
        x = 0;
        break;
    }
    const int64_t y = row * m_lineHeight;
    // Far-off rows are clamped; they only need to stay outside the client.
    return {ClampTo(x, -1, INT32_MAX / 2), ClampTo(y, -1, INT32_MAX / 2)};
}

bool HexLayout::InClient(const HexPoint& p) const {
    return p.x >= 0 && p.y >= 0 && p.x < m_clientWidth && p.y < m_clientHeight;
}

HexScrollInfo HexLayout::ScrollInfo(int32_t top, int32_t length) const {
    HexScrollInfo info;
    info.lastRow = std::max<int32_t>(0, RowCount(length) - 1);
    info.page = m_visibleRows;
    info.position = top / m_bytesPerRow;
    info.enabled = info.lastRow > m_visibleRows;
    return info;
}
