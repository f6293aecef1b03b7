#pragma once

#include "HexLayout.h"

#include <cstdint>
#include <vector>

// State and behaviour of the hex view without any widget: the owned buffer, the first visible
// byte, caret and selection, scrolling and editing. The widget feeds it events and paints it.
class HexEditor {
public:
    HexEditor();

    // Replaces the buffer with a copy of length bytes (no buffer for length <= 0 or no data),
    // clears the selection and puts the caret at offset 0 on a high nibble.
    void SetData(const uint8_t* bytes, int32_t length);

    const std::vector<uint8_t>& Data() const { return m_data; }
    int32_t Length() const { return static_cast<int32_t>(m_data.size()); }
    bool HasBuffer() const { return !m_data.empty(); }

    void SetReadOnly(bool readOnly) { m_readOnly = readOnly; }
    bool IsReadOnly() const { return m_readOnly; }

    // Offset of the first byte of the first visible row; a multiple of bytes per row.
    int32_t Top() const { return m_top; }
    int32_t CaretPosition() const { return m_caret; }
    int CaretMode() const { return m_mode; }
    // -1 means none; the end may lie before the start.
    int32_t SelectionStart() const { return m_selStart; }
    int32_t SelectionEnd() const { return m_selEnd; }
    bool HasSelection() const;
    // Smaller and larger end of the selection (undefined without one).
    int32_t SelectionLow() const;
    int32_t SelectionHigh() const;

    // Caret point in client pixels and whether the caret is to be shown there.
    HexPoint CaretPoint() const { return m_caretPoint; }
    bool CaretShown() const { return m_caretShown; }

    HexLayout& Layout() { return m_layout; }
    const HexLayout& Layout() const { return m_layout; }
    void MarkLayoutDirty() { m_layoutDirty = true; }
    bool LayoutDirty() const { return m_layoutDirty; }
    // Recomputes the layout when it is dirty or the client size changed; keeps top on a row
    // start within the buffer. Returns true when it recomputed.
    bool UpdateLayout(int clientWidth, int clientHeight);

    // Stores a selection (each end clamped to -1..length) and re-places the caret.
    void SetSelection(int32_t start, int32_t end);
    void SetSelectionStart(int32_t start);
    void SetSelectionEnd(int32_t end);
    void ClearSelection();
    void SelectAll();

    // Puts the caret on a hit of the hit test, at the hit's caret point.
    void SetCaretFromHit(const HexHit& hit);
    void SetCaretMode(int mode) { m_mode = mode; }
    // Caret point from position and mode; shown only inside the client area.
    void PlaceCaret();
    void HideCaret() { m_caretShown = false; }
    // Shows the caret at its current point when that lies inside the client area.
    void ShowCaret() { m_caretShown = m_layout.InClient(m_caretPoint); }

    // Editing; all return false and do nothing on a read-only control.
    bool Insert(int32_t at, int32_t count);
    bool InsertBytes(int32_t at, const std::vector<uint8_t>& bytes);
    bool DeleteRange(int32_t from, int32_t to);
    // Replaces the selection (or inserts at the caret) with bytes; the caret offset stays.
    bool Paste(const std::vector<uint8_t>& bytes);
    // Insert key: zero bytes at the caret, as many as the selection is long, at least one.
    bool InsertAtCaret();
    // Delete key: the selection, else the byte at the caret.
    bool DeleteAtCaret();
    bool Backspace();
    // A typed character; hex modes accept only 0-9 and a-f.
    void TypeCharacter(uint8_t ch);

    // One caret step by (dx, dy) with the nibble rules, scrolling one row when the caret leaves
    // the visible rows.
    void MoveCaret(int dx, int dy);
    // Places the caret at an offset and mode, scrolling so that its row is visible.
    void JumpCaret(int32_t position, int mode);

    // Scrolling. The caret follows top by the same number of bytes.
    void ScrollLineUp();
    void ScrollLineDown();
    void ScrollPageUp();
    void ScrollPageDown();
    void ScrollToRow(int32_t row);
    bool CanScrollDown() const;

    // Set whenever something visible changed; the widget clears it when it repaints.
    void RequestRedraw() { m_redraw = true; }
    bool TakeRedraw();

private:
    bool ScrollTo(int64_t newTop);
    void ShiftCaret(int64_t delta);

    std::vector<uint8_t> m_data;
    bool m_readOnly = false;
    int32_t m_top = 0;
    int32_t m_caret = 0;
    int m_mode = HexModeAddress;
    int32_t m_selStart = -1;
    int32_t m_selEnd = -1;
    bool m_moving = false; // a caret move is scrolling: do not shift the caret again
    HexLayout m_layout;
    bool m_layoutDirty = true;
    HexPoint m_caretPoint;
    bool m_caretShown = false;
    bool m_redraw = false;
};
