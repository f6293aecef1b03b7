#include "CHexEdit.h"

#include "HexClipboard.h"
#include "HexContextMenu.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace {

constexpr int kCaretWidth = 2;

} // namespace

CHexEdit::CHexEdit(QWidget* parent)
    : QAbstractScrollArea(parent), m_font(DefaultFont()), m_painter(m_font), m_keys(m_editor),
      m_mouse(m_editor) {
    const QFontMetrics metrics(m_font);
    m_editor.Layout().SetCellSize(metrics.horizontalAdvance(QLatin1Char('0')), metrics.height());
    m_mouse.SetDragDistance(QApplication::startDragDistance());

    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The paint covers the whole client area; nothing needs erasing first.
    viewport()->setAutoFillBackground(false);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setCursor(Qt::IBeamCursor);
    verticalScrollBar()->setEnabled(false);
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, &CHexEdit::OnScrollAction);
}

CHexEdit::~CHexEdit() = default;

QFont CHexEdit::DefaultFont() {
    QFont font = QFontDatabase::families().contains(QStringLiteral("Courier New"))
                     ? QFont(QStringLiteral("Courier New"))
                     : QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(12);
    return font;
}

void CHexEdit::SetData(const uint8_t* bytes, int32_t length) {
    m_editor.SetData(bytes, length);
    Refresh();
}

void CHexEdit::SetSelection(int32_t start, int32_t end) {
    EnsureLayout();
    m_editor.SetSelection(start, end);
    m_editor.TakeRedraw();
    viewport()->repaint();
    Refresh();
}

void CHexEdit::DeleteRange(int32_t from, int32_t to) {
    m_editor.DeleteRange(from, to);
    Refresh();
}

void CHexEdit::Insert(int32_t at, int32_t count) {
    m_editor.Insert(at, count);
    Refresh();
}

void CHexEdit::SetReadOnly(bool readOnly) {
    m_editor.SetReadOnly(readOnly);
    m_editor.RequestRedraw();
    Refresh();
}

void CHexEdit::SetLayoutOptions(const HexLayout::Options& options) {
    m_editor.Layout().SetOptions(options);
    m_editor.MarkLayoutDirty();
    Refresh();
}

bool CHexEdit::IsCaretVisible() const {
    return m_caretExists && m_editor.CaretShown() && m_editor.Layout().InClient(m_editor.CaretPoint());
}

void CHexEdit::Copy() {
    HexClipboard::Copy(m_editor);
}

void CHexEdit::Cut() {
    HexClipboard::Cut(m_editor);
    Refresh();
}

void CHexEdit::Paste() {
    HexClipboard::Paste(m_editor);
    Refresh();
}

void CHexEdit::Clear() {
    HexClipboard::Clear(m_editor);
    Refresh();
}

void CHexEdit::SelectAll() {
    m_editor.SelectAll();
    Refresh();
}

bool CHexEdit::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        // Tab switches columns here instead of moving the focus.
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab || key->key() == Qt::Key_Backtab) {
            keyPressEvent(key);
            return true;
        }
    } else if (event->type() == QEvent::ShortcutOverride) {
        // Keys the control uses reach it before any shortcut of the window.
        auto* key = static_cast<QKeyEvent*>(event);
        const Qt::KeyboardModifiers mods = key->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
        const bool ctrlKey = key->key() == Qt::Key_C || key->key() == Qt::Key_V || key->key() == Qt::Key_X ||
                             key->key() == Qt::Key_Z || key->key() == Qt::Key_Home ||
                             key->key() == Qt::Key_End;
        if (mods == Qt::NoModifier || (mods == Qt::ControlModifier && ctrlKey)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void CHexEdit::paintEvent(QPaintEvent*) {
    EnsureLayout();
    m_editor.TakeRedraw();
    QPainter painter(viewport());
    m_painter.Paint(painter, m_editor, palette(), m_editor.IsReadOnly());
    if (IsCaretVisible() && m_blinkOn) {
        painter.setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        painter.fillRect(CaretRect(), Qt::white);
    }
}

void CHexEdit::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    Refresh();
}

void CHexEdit::keyPressEvent(QKeyEvent* event) {
    EnsureLayout();
    m_keys.KeyPress(*event);
    // The control wants every key, so nothing reaches the dialog's default button.
    event->accept();
    Refresh();
}

void CHexEdit::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setFocus(Qt::MouseFocusReason);
    EnsureLayout();
    const QPoint pos = event->position().toPoint();
    m_mouse.Press(pos.x(), pos.y(), event->modifiers() & Qt::ShiftModifier);
    Refresh();
}

void CHexEdit::mouseMoveEvent(QMouseEvent* event) {
    EnsureLayout();
    const QPoint pos = event->position().toPoint();
    m_mouse.Move(pos.x(), pos.y(), event->buttons() & Qt::LeftButton);
    Refresh();
}

void CHexEdit::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        m_mouse.Release();
        Refresh();
    }
}

void CHexEdit::mouseDoubleClickEvent(QMouseEvent* event) {
    // No double-click action: the second click is an ordinary press.
    mousePressEvent(event);
}

void CHexEdit::wheelEvent(QWheelEvent* event) {
    EnsureLayout();
    m_mouse.Wheel(event->angleDelta().y());
    event->accept();
    Refresh();
}

void CHexEdit::contextMenuEvent(QContextMenuEvent* event) {
    const auto rules = HexContextMenu::Evaluate(m_editor.IsReadOnly(), m_editor.HasSelection(),
                                                HexClipboard::HasPasteData());
    HexContextMenu::Commands commands;
    commands.clear = [this] { Clear(); };
    commands.cut = [this] { Cut(); };
    commands.copy = [this] { Copy(); };
    commands.paste = [this] { Paste(); };
    commands.selectAll = [this] { SelectAll(); };
    auto menu = HexContextMenu::Build(this, rules, commands);
    const QPoint at =
        event->reason() == QContextMenuEvent::Keyboard ? mapToGlobal(QPoint(5, 5)) : event->globalPos();
    menu->exec(at);
    event->accept();
}

void CHexEdit::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    EnsureLayout();
    m_caretExists = true;
    m_editor.ShowCaret();
    Refresh();
}

void CHexEdit::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    m_caretExists = false;
    Refresh();
}

void CHexEdit::timerEvent(QTimerEvent* event) {
    if (event->timerId() != m_blink.timerId()) {
        QAbstractScrollArea::timerEvent(event);
        return;
    }
    m_blinkOn = !m_blinkOn;
    viewport()->update(m_caretRect);
}

void CHexEdit::scrollContentsBy(int, int) {
    // Scrolling is driven by the view's own state; see OnScrollAction.
}

void CHexEdit::Refresh() {
    EnsureLayout();
    SyncScrollBar();
    if (m_editor.TakeRedraw())
        viewport()->update();
    UpdateCaret();
}

void CHexEdit::EnsureLayout() {
    if (m_editor.UpdateLayout(viewport()->width(), viewport()->height())) {
        SyncScrollBar();
        viewport()->update();
    }
}

void CHexEdit::SyncScrollBar() {
    const HexScrollInfo info = m_editor.Layout().ScrollInfo(m_editor.Top(), m_editor.Length());
    QScrollBar* bar = verticalScrollBar();
    const QSignalBlocker blocker(bar);
    bar->setSingleStep(1);
    bar->setPageStep(std::max(1, info.page));
    bar->setRange(0, info.enabled ? std::max(0, info.lastRow + 1 - info.page) : 0);
    bar->setValue(info.position);
    bar->setEnabled(info.enabled);
}

QRect CHexEdit::CaretRect() const {
    const HexPoint p = m_editor.CaretPoint();
    return QRect(p.x, p.y, kCaretWidth, m_editor.Layout().LineHeight());
}

void CHexEdit::UpdateCaret() {
    const QRect rect = IsCaretVisible() ? CaretRect() : QRect();
    if (rect == m_caretRect)
        return;
    viewport()->update(m_caretRect);
    viewport()->update(rect);
    m_caretRect = rect;
    // A moved caret shows at once and blinks from there.
    m_blinkOn = true;
    const int flash = QApplication::cursorFlashTime();
    if (rect.isNull() || flash <= 0)
        m_blink.stop();
    else
        m_blink.start(flash / 2, this);
}

void CHexEdit::OnScrollAction(int action) {
    EnsureLayout();
    QScrollBar* bar = verticalScrollBar();
    switch (action) {
    case QAbstractSlider::SliderSingleStepSub:
        m_editor.ScrollLineUp();
        break;
    case QAbstractSlider::SliderSingleStepAdd:
        m_editor.ScrollLineDown();
        break;
    case QAbstractSlider::SliderPageStepSub:
        m_editor.ScrollPageUp();
        break;
    case QAbstractSlider::SliderPageStepAdd:
        m_editor.ScrollPageDown();
        break;
    case QAbstractSlider::SliderMove:
        m_editor.ScrollToRow(bar->sliderPosition());
        break;
    default:
        break;
    }
    // The bar shows where top ended up, whatever the bar would have done by itself.
    bar->setSliderPosition(m_editor.Top() / m_editor.Layout().BytesPerRow());
    Refresh();
}
