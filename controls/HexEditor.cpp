#include "HexEditor.h"

#include <algorithm>
#include <limits>

namespace {

int32_t Clamp64(int64_t v, int32_t lo, int32_t hi) {
    return static_cast<int32_t>(std::min<int64_t>(std::max<int64_t>(v, lo), hi));
}

int HexDigitValue(uint8_t ch) {
    if (ch >= '0' && ch <= '9')
        return ch - '0';
    // Only lower-case letters are taken as digits.
    if (ch >= 'a' && ch <= 'f')
        return ch - 'a' + 10;
    return -1;
}

} // namespace

HexEditor::HexEditor() = default;

void HexEditor::SetData(const uint8_t* bytes, int32_t length) {
    if (bytes && length > 0)
        m_data.assign(bytes, bytes + length);
    else
        m_data.clear();
    m_data.shrink_to_fit();
    m_selStart = m_selEnd = -1;
    m_top = 0;
    m_caret = 0;
    m_mode = HexModeHigh;
    m_caretPoint = {0, 0};
    m_layoutDirty = true;
    m_redraw = true;
}

bool HexEditor::HasSelection() const {
    return m_selStart >= 0 && m_selEnd >= 0 && HasBuffer();
}

int32_t HexEditor::SelectionLow() const {
    return std::min(m_selStart, m_selEnd);
}

int32_t HexEditor::SelectionHigh() const {
    return std::max(m_selStart, m_selEnd);
}

bool HexEditor::UpdateLayout(int clientWidth, int clientHeight) {
    if (!m_layoutDirty && clientWidth == m_layout.ClientWidth() && clientHeight == m_layout.ClientHeight())
        return false;
    m_layout.Compute(clientWidth, clientHeight, Length());
    m_layoutDirty = false;
    // A new row width or a shorter buffer can leave top off a row start or past the data.
    const int32_t bpr = m_layout.BytesPerRow();
    const int32_t lastRowStart = std::max<int32_t>(0, m_layout.RowCount(Length()) - 1) * bpr;
    m_top = std::min(m_top - m_top % bpr, lastRowStart);
    m_redraw = true;
    return true;
}

void HexEditor::SetSelection(int32_t start, int32_t end) {
    m_caretShown = false;
    m_selStart = Clamp64(start, -1, Length());
    m_selEnd = Clamp64(end, -1, Length());
    m_redraw = true;
    PlaceCaret();
}

void HexEditor::SetSelectionStart(int32_t start) {
    m_selStart = Clamp64(start, -1, Length());
    m_redraw = true;
}

void HexEditor::SetSelectionEnd(int32_t end) {
    m_selEnd = Clamp64(end, -1, Length());
    m_redraw = true;
}

void HexEditor::ClearSelection() {
    if (m_selStart != -1 || m_selEnd != -1)
        m_redraw = true;
    m_selStart = m_selEnd = -1;
}

void HexEditor::SelectAll() {
    m_selStart = 0;
    m_selEnd = Length();
    m_caretShown = false;
    m_redraw = true;
}

void HexEditor::SetCaretFromHit(const HexHit& hit) {
    m_caret = hit.position;
    m_mode = hit.mode;
    m_caretPoint = hit.caretPoint;
}

void HexEditor::PlaceCaret() {
    m_caretPoint = m_layout.CaretPoint(m_caret, m_mode, m_top);
    m_caretShown = m_layout.InClient(m_caretPoint);
}

bool HexEditor::Insert(int32_t at, int32_t count) {
    if (m_readOnly || count <= 0)
        return false;
    if (static_cast<int64_t>(Length()) + count > std::numeric_limits<int32_t>::max())
        return false;
    at = Clamp64(at, 0, Length());
    m_data.insert(m_data.begin() + at, static_cast<size_t>(count), uint8_t{0});
    m_selStart = m_selEnd = -1;
    m_layoutDirty = true;
    m_redraw = true;
    return true;
}

bool HexEditor::InsertBytes(int32_t at, const std::vector<uint8_t>& bytes) {
    if (bytes.size() > static_cast<size_t>(std::numeric_limits<int32_t>::max()))
        return false;
    at = Clamp64(at, 0, Length());
    if (!Insert(at, static_cast<int32_t>(bytes.size())))
        return false;
    std::copy(bytes.begin(), bytes.end(), m_data.begin() + at);
    return true;
}

bool HexEditor::DeleteRange(int32_t from, int32_t to) {
    if (m_readOnly)
        return false;
    const int32_t lo = Clamp64(std::min(from, to), 0, Length());
    const int32_t hi = Clamp64(std::max(from, to), 0, Length());
    m_data.erase(m_data.begin() + lo, m_data.begin() + hi);
    m_selStart = m_selEnd = -1;
    m_caret = std::min(m_caret, Length());
    m_layoutDirty = true;
    m_redraw = true;
    PlaceCaret();
    return true;
}

bool HexEditor::Paste(const std::vector<uint8_t>& bytes) {
    if (m_readOnly)
        return false;
    const int32_t caret = m_caret;
    int32_t at = 0;
    if (HasSelection()) {
        at = SelectionLow();
        DeleteRange(SelectionLow(), SelectionHigh());
    } else {
        at = m_caret + (m_mode == HexModeLow ? 1 : 0);
    }
    const bool inserted = InsertBytes(at, bytes);
    m_caret = std::min(caret, Length());
    PlaceCaret();
    m_redraw = true;
    return inserted;
}

bool HexEditor::InsertAtCaret() {
    int32_t count = 1;
    if (HasSelection())
        count = std::max(1, SelectionHigh() - SelectionLow());
    if (!Insert(m_caret, count))
        return false;
    PlaceCaret();
    return true;
}

bool HexEditor::DeleteAtCaret() {
    if (HasSelection())
        return DeleteRange(SelectionLow(), SelectionHigh());
    if (m_caret >= Length())
        return false;
    return DeleteRange(m_caret, m_caret + 1);
}

bool HexEditor::Backspace() {
    if (m_readOnly || m_caret <= 0)
        return false;
    m_caret = std::min(m_caret, Length()) - 1;
    DeleteRange(m_caret, m_caret + 1);
    PlaceCaret();
    return true;
}

void HexEditor::TypeCharacter(uint8_t ch) {
    m_redraw = true;
    if (m_readOnly)
        return;
    ClearSelection();
    if (m_mode == HexModeAddress || m_caret >= Length())
        return;
    uint8_t& byte = m_data[static_cast<size_t>(m_caret)];
    if (m_mode == HexModeCharacter) {
        byte = ch;
    } else {
        const int digit = HexDigitValue(ch);
        if (digit < 0)
            return;
        if (m_mode == HexModeHigh)
            byte = static_cast<uint8_t>((byte & 0x0F) | (digit << 4));
        else
            byte = static_cast<uint8_t>((byte & 0xF0) | digit);
    }
    MoveCaret(1, 0);
}

void HexEditor::MoveCaret(int dx, int dy) {
    const int64_t bpr = m_layout.BytesPerRow();
    int64_t caret = m_caret;
    const int64_t step = bpr * dy + dx;
    switch (m_mode) {
    case HexModeCharacter:
        caret += step;
        break;
    case HexModeHigh:
        if (dx != 0) {
            m_mode = HexModeLow;
            if (dx < 0)
                caret -= 1;
        }
        caret += bpr * dy;
        break;
    case HexModeLow:
        if (dx != 0) {
            m_mode = HexModeHigh;
            if (dx > 0)
                caret += 1;
        }
        caret += bpr * dy;
        break;
    default:
        break; // the address column does not move
    }
    if (caret < 0)
        caret = 0;
    if (caret >= Length())
        caret -= step;
    m_caret = Clamp64(caret, 0, Length());

    // Scroll one row when the caret left the visible rows; the caret is already where it goes.
    m_moving = true;
    const int64_t visibleBytes = static_cast<int64_t>(m_layout.VisibleRows()) * bpr;
    if (m_caret < m_top) {
        if (m_top > 0)
            ScrollTo(m_top - bpr);
    } else if (m_caret >= m_top + visibleBytes) {
        if (CanScrollDown())
            ScrollTo(m_top + bpr);
    }
    m_moving = false;
    PlaceCaret();
}

void HexEditor::JumpCaret(int32_t position, int mode) {
    m_caret = Clamp64(position, 0, Length());
    m_mode = mode;
    const int64_t bpr = m_layout.BytesPerRow();
    const int64_t visibleBytes = std::max<int64_t>(1, m_layout.VisibleRows()) * bpr;
    const int64_t rowStart = m_caret - m_caret % bpr;
    m_moving = true;
    if (rowStart < m_top)
        ScrollTo(rowStart);
    else if (rowStart >= m_top + visibleBytes)
        ScrollTo(std::min<int64_t>(rowStart - visibleBytes + bpr, m_layout.LastPageTop(Length())));
    m_moving = false;
    PlaceCaret();
}

bool HexEditor::CanScrollDown() const {
    const int64_t visibleBytes = static_cast<int64_t>(m_layout.VisibleRows()) * m_layout.BytesPerRow();
    return m_top < Length() - visibleBytes;
}

void HexEditor::ScrollLineUp() {
    if (m_top > 0)
        ScrollTo(static_cast<int64_t>(m_top) - m_layout.BytesPerRow());
}

void HexEditor::ScrollLineDown() {
    if (CanScrollDown())
        ScrollTo(static_cast<int64_t>(m_top) + m_layout.BytesPerRow());
}

void HexEditor::ScrollPageUp() {
    const int64_t page = static_cast<int64_t>(m_layout.VisibleRows()) * m_layout.BytesPerRow();
    ScrollTo(std::max<int64_t>(0, m_top - page));
}

void HexEditor::ScrollPageDown() {
    const int64_t page = static_cast<int64_t>(m_layout.VisibleRows()) * m_layout.BytesPerRow();
    const int64_t last = m_layout.LastPageTop(Length());
    if (m_top < last)
        ScrollTo(std::min<int64_t>(m_top + page, last));
}

void HexEditor::ScrollToRow(int32_t row) {
    const int64_t last = m_layout.LastPageTop(Length());
    ScrollTo(
        std::min<int64_t>(std::max<int64_t>(0, static_cast<int64_t>(row) * m_layout.BytesPerRow()), last));
}

bool HexEditor::ScrollTo(int64_t newTop) {
    newTop = std::max<int64_t>(0, newTop);
    if (newTop == m_top)
        return false;
    const int64_t delta = newTop - m_top;
    m_top = static_cast<int32_t>(newTop);
    m_redraw = true;
    if (!m_moving)
        ShiftCaret(delta);
    PlaceCaret();
    return true;
}

void HexEditor::ShiftCaret(int64_t delta) {
    m_caret = Clamp64(m_caret + delta, 0, Length());
}

bool HexEditor::TakeRedraw() {
    const bool redraw = m_redraw;
    m_redraw = false;
    return redraw;
}
