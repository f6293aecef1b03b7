#pragma once

#include "HexEditor.h"

// Caret keys of the hex view. Moves optionally extend the selection: without extension the
// selection is cleared first; with it a selection starts at the caret and its end follows it.
class HexNavigator {
public:
    enum class Move { Left, Right, Up, Down, PageUp, PageDown, Home, End, BufferStart, BufferEnd };

    static void Apply(HexEditor& editor, Move move, bool extend);

    // Switches between the hex column (high nibble) and the character column.
    static void Tab(HexEditor& editor);

private:
    static void Step(HexEditor& editor, Move move);
};
