#pragma once

#include "HexEditor.h"
#include "HexKeyController.h"
#include "HexLayout.h"
#include "HexMouseController.h"
#include "HexPainter.h"

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QFont>

#include <cstdint>

// Hex view of a byte buffer: address, hex and character columns, caret, mouse and keyboard
// selection, clipboard and a context menu. Read-only it is a viewer; otherwise bytes can be typed,
// inserted, deleted and pasted. The viewport is the client area; all pixel figures refer to it.
class CHexEdit : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit CHexEdit(QWidget* parent = nullptr);
    ~CHexEdit() override;

    // Shows a copy of the bytes; the caret goes to offset 0, high nibble, and the selection goes.
    void SetData(const uint8_t* bytes, int32_t length);
    // Selects start..end (end may lie before start; -1 for none) and repaints at once.
    void SetSelection(int32_t start, int32_t end);
    // Removes bytes from..to (excluding to); only when editable.
    void DeleteRange(int32_t from, int32_t to);
    // Opens count zero bytes at at; only when editable.
    void Insert(int32_t at, int32_t count);

    void SetReadOnly(bool readOnly);
    bool IsReadOnly() const { return m_editor.IsReadOnly(); }

    void SetLayoutOptions(const HexLayout::Options& options);

    // The view's state: buffer, caret, selection, top and layout.
    const HexEditor& Editor() const { return m_editor; }
    // Caret drawn: the control has the focus and the caret point lies in the client area.
    bool IsCaretVisible() const;

    // "Courier New" when installed, else the system's fixed-pitch font; 12 pixels high.
    static QFont DefaultFont();

public slots:
    void Copy();
    void Cut();
    void Paste();
    void Clear();
    void SelectAll();
    // Accepted and ignored.
    void Undo() {}

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;

private:
    // After any input: layout, scroll bar, repaint and caret brought up to date.
    void Refresh();
    void EnsureLayout();
    void SyncScrollBar();
    void UpdateCaret();
    QRect CaretRect() const;
    void OnScrollAction(int action);

    QFont m_font;
    HexEditor m_editor;
    HexPainter m_painter;
    HexKeyController m_keys;
    HexMouseController m_mouse;
    QBasicTimer m_blink;
    bool m_caretExists = false; // created on focus in, destroyed on focus out
    bool m_blinkOn = true;
    QRect m_caretRect; // where the caret was last drawn
};
