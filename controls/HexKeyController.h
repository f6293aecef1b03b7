#pragma once

#include "HexEditor.h"

#include <optional>

class QKeyEvent;

// Keyboard input of the hex view: caret and editing keys first, then the character the key
// types, if any (control characters included, as Ctrl+letter gives them).
class HexKeyController {
public:
    explicit HexKeyController(HexEditor& editor) : m_editor(editor) {}

    void KeyPress(const QKeyEvent& event);

    // Character input: Ctrl+C, Ctrl+V, Ctrl+X, Ctrl+Z, Backspace and typed bytes.
    // Ignored on a read-only control, without a buffer, and for Tab.
    void Character(uint8_t ch);

    // The character a key press types, or nothing for keys that only move or edit.
    static std::optional<uint8_t> CharacterOf(const QKeyEvent& event);

private:
    void KeyDown(const QKeyEvent& event);

    HexEditor& m_editor;
};
