#include "HexKeyController.h"

#include "HexClipboard.h"
#include "HexNavigator.h"

#include <QKeyEvent>

namespace {

constexpr uint8_t kCtrlC = 0x03;
constexpr uint8_t kCtrlV = 0x16;
constexpr uint8_t kCtrlX = 0x18;
constexpr uint8_t kCtrlZ = 0x1A;
constexpr uint8_t kBackspace = 0x08;
constexpr uint8_t kTab = 0x09;

} // namespace

void HexKeyController::KeyPress(const QKeyEvent& event) {
    KeyDown(event);
    if (auto ch = CharacterOf(event))
        Character(*ch);
}

void HexKeyController::KeyDown(const QKeyEvent& event) {
    const bool shift = event.modifiers() & Qt::ShiftModifier;
    const bool ctrl = event.modifiers() & Qt::ControlModifier;
    using Move = HexNavigator::Move;
    switch (event.key()) {
    case Qt::Key_Left:
        HexNavigator::Apply(m_editor, Move::Left, shift);
        break;
    case Qt::Key_Right:
        HexNavigator::Apply(m_editor, Move::Right, shift);
        break;
    case Qt::Key_Up:
        HexNavigator::Apply(m_editor, Move::Up, shift);
        break;
    case Qt::Key_Down:
        HexNavigator::Apply(m_editor, Move::Down, shift);
        break;
    case Qt::Key_PageUp:
        HexNavigator::Apply(m_editor, Move::PageUp, shift);
        break;
    case Qt::Key_PageDown:
        HexNavigator::Apply(m_editor, Move::PageDown, shift);
        break;
    case Qt::Key_Home:
        HexNavigator::Apply(m_editor, ctrl ? Move::BufferStart : Move::Home, shift);
        break;
    case Qt::Key_End:
        HexNavigator::Apply(m_editor, ctrl ? Move::BufferEnd : Move::End, shift);
        break;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        HexNavigator::Tab(m_editor);
        break;
    case Qt::Key_Insert:
        m_editor.InsertAtCaret();
        break;
    case Qt::Key_Delete:
        m_editor.DeleteAtCaret();
        break;
    default:
        break;
    }
}

std::optional<uint8_t> HexKeyController::CharacterOf(const QKeyEvent& event) {
    const Qt::KeyboardModifiers mods = event.modifiers();
    if (mods & Qt::AltModifier)
        return std::nullopt;
    const int key = event.key();
    if ((mods & Qt::ControlModifier) && key >= Qt::Key_A && key <= Qt::Key_Z)
        return static_cast<uint8_t>(key - Qt::Key_A + 1);
    switch (key) {
    case Qt::Key_Backspace:
        return kBackspace;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        return kTab;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return uint8_t{0x0D};
    case Qt::Key_Escape:
        return uint8_t{0x1B};
    case Qt::Key_Delete:
        return std::nullopt;
    default:
        break;
    }
    const QString text = event.text();
    if (text.isEmpty())
        return std::nullopt;
    const char16_t unit = text.at(0).unicode();
    // Keys that only edit or move may still carry a control code as text; they type nothing.
    if (unit < 0x20 || unit == 0x7F)
        return std::nullopt;
    return static_cast<uint8_t>(unit & 0xFF);
}

void HexKeyController::Character(uint8_t ch) {
    if (m_editor.IsReadOnly() || !m_editor.HasBuffer() || ch == kTab)
        return;
    switch (ch) {
    case kCtrlC:
        HexClipboard::Copy(m_editor);
        break;
    case kCtrlV:
        HexClipboard::Paste(m_editor);
        break;
    case kCtrlX:
        HexClipboard::Cut(m_editor);
        break;
    case kCtrlZ:
        break;
    case kBackspace:
        m_editor.Backspace();
        break;
    default:
        m_editor.TypeCharacter(ch);
        break;
    }
    m_editor.RequestRedraw();
}
