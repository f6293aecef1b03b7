#include "HexMouseController.h"

#include <cstdlib>

void HexMouseController::Press(int x, int y, bool shift) {
    m_pending = false;
    m_selecting = false;
    if (!m_editor.HasBuffer())
        return;
    m_editor.HideCaret();
    if (shift)
        m_editor.SetSelectionStart(m_editor.CaretPosition());
    if (auto hit = m_editor.Layout().HitTest(x, y, m_editor.Top(), m_editor.Length())) {
        m_editor.SetCaretFromHit(*hit);
        if (shift) {
            m_editor.SetSelectionEnd(m_editor.CaretPosition() + (IsHexMode(m_editor.CaretMode()) ? 1 : 0));
            m_editor.RequestRedraw();
        }
    }
    if (shift) {
        // The Shift-click made a selection; dragging with the button held goes on extending it.
        m_selecting = true;
    } else {
        m_pending = true;
        m_pressX = x;
        m_pressY = y;
    }
    if (!m_editor.HasSelection())
        m_editor.ShowCaret();
}

void HexMouseController::Move(int x, int y, bool leftDown) {
    if (!leftDown || !m_editor.HasBuffer())
        return;
    if (m_pending) {
        if (std::abs(x - m_pressX) < m_dragDistance && std::abs(y - m_pressY) < m_dragDistance)
            return;
        // The pointer left the drag area: a selection starts at the caret.
        m_pending = false;
        m_selecting = true;
        m_editor.SetSelectionStart(m_editor.CaretPosition());
        m_editor.SetSelectionEnd(m_editor.CaretPosition());
    }
    if (!m_selecting)
        return;
    const HexLayout& layout = m_editor.Layout();
    if (y < 0) {
        m_editor.ScrollLineUp();
        y = 0;
    } else if (y >= layout.ClientHeight()) {
        m_editor.ScrollLineDown();
        y = layout.ClientHeight() - 1;
    }
    HitAndMove(x, y);
}

void HexMouseController::HitAndMove(int x, int y) {
    if (auto hit = m_editor.Layout().HitTest(x, y, m_editor.Top(), m_editor.Length()))
        m_editor.SetCaretFromHit(*hit);
    const int32_t end = m_editor.CaretPosition() + (IsHexMode(m_editor.CaretMode()) ? 1 : 0);
    m_editor.HideCaret();
    if (end != m_editor.SelectionEnd())
        m_editor.SetSelectionEnd(end);
}

void HexMouseController::Release() {
    if (m_pending) {
        // A click without a drag: no selection.
        m_editor.ClearSelection();
        m_editor.ShowCaret();
    }
    m_pending = false;
    m_selecting = false;
}

void HexMouseController::Wheel(int delta) {
    if (!m_editor.HasBuffer() || delta == 0)
        return;
    if (delta > 0)
        m_editor.ScrollLineUp();
    else
        m_editor.ScrollLineDown();
}
