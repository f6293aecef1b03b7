#pragma once

#include "HexEditor.h"

// Mouse input of the hex view, in client coordinates. A press without Shift waits to see whether
// the pointer moves past the drag distance (a drag selects) or is released (a click clears the
// selection); a Shift-press selects at once and a drag before the release extends it.
class HexMouseController {
public:
    explicit HexMouseController(HexEditor& editor) : m_editor(editor) {}

    // dragDistance: pixels the pointer must move with the button down before a drag starts.
    void SetDragDistance(int pixels) { m_dragDistance = pixels; }

    void Press(int x, int y, bool shift);
    // leftDown: the left button is held during the move.
    void Move(int x, int y, bool leftDown);
    void Release();
    // delta > 0 turns away from the user (up), < 0 towards (down); one row either way.
    void Wheel(int delta);

    bool Selecting() const { return m_selecting; }

private:
    void HitAndMove(int x, int y);

    HexEditor& m_editor;
    int m_dragDistance = 4;
    bool m_pending = false;   // pressed, neither dragged nor released yet
    bool m_selecting = false; // a selection follows the pointer until the release
    int m_pressX = 0;
    int m_pressY = 0;
};
