#include "HexNavigator.h"

#include <algorithm>

namespace {

// Home and End land on the high nibble in the hex column; other columns keep their mode.
int LineJumpMode(int mode) {
    return IsHexMode(mode) ? HexModeHigh : mode;
}

} // namespace

void HexNavigator::Apply(HexEditor& editor, Move move, bool extend) {
    if (!extend) {
        editor.ClearSelection();
    } else if (editor.SelectionStart() < 0 || editor.SelectionEnd() < 0) {
        editor.SetSelectionStart(editor.CaretPosition());
        editor.SetSelectionEnd(editor.CaretPosition());
    }
    Step(editor, move);
    if (extend)
        editor.SetSelectionEnd(editor.CaretPosition());
}

void HexNavigator::Tab(HexEditor& editor) {
    editor.SetCaretMode(IsHexMode(editor.CaretMode()) ? HexModeCharacter : HexModeHigh);
    editor.PlaceCaret();
    // The selection is painted in the column the caret is in.
    editor.RequestRedraw();
}

void HexNavigator::Step(HexEditor& editor, Move move) {
    const HexLayout& layout = editor.Layout();
    const int32_t bpr = layout.BytesPerRow();
    const int32_t length = editor.Length();
    const int32_t caret = editor.CaretPosition();
    const int32_t rowStart = caret - caret % bpr;
    const int64_t page = static_cast<int64_t>(std::max<int32_t>(1, layout.VisibleRows())) * bpr;

    switch (move) {
    case Move::Left:
        editor.MoveCaret(-1, 0);
        break;
    case Move::Right:
        editor.MoveCaret(1, 0);
        break;
    case Move::Up:
        editor.MoveCaret(0, -1);
        break;
    case Move::Down:
        editor.MoveCaret(0, 1);
        break;
    case Move::PageUp: {
        // The view moves a page; the caret moves a page too, staying in its column at the start.
        editor.ScrollPageUp();
        const int64_t target = caret - page >= 0 ? caret - page : caret % bpr;
        editor.JumpCaret(static_cast<int32_t>(target), editor.CaretMode());
        break;
    }
    case Move::PageDown: {
        editor.ScrollPageDown();
        int64_t target = caret + page;
        if (target >= length) {
            const int64_t lastRowStart = static_cast<int64_t>(std::max(0, layout.RowCount(length) - 1)) * bpr;
            target = std::min<int64_t>(lastRowStart + caret % bpr, std::max(0, length - 1));
        }
        editor.JumpCaret(static_cast<int32_t>(target), editor.CaretMode());
        break;
    }
    case Move::Home:
        editor.JumpCaret(rowStart, LineJumpMode(editor.CaretMode()));
        break;
    case Move::End:
        editor.JumpCaret(std::min(rowStart + bpr - 1, std::max(0, length - 1)),
                         LineJumpMode(editor.CaretMode()));
        break;
    case Move::BufferStart:
        editor.JumpCaret(0, LineJumpMode(editor.CaretMode()));
        break;
    case Move::BufferEnd:
        editor.JumpCaret(std::max(0, length - 1), LineJumpMode(editor.CaretMode()));
        break;
    }
}
