#include "CHexEdit.h"
#include "HexClipboard.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include <map>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <vector>

namespace {

using Range = std::pair<int32_t, int32_t>;

// The view inside an active window. Rows are fixed at eight bytes; pixel positions come from the
// view's own layout, so any fixed-pitch font works.
class HexViewTest : public testing::Test {
protected:
    void SetUp() override {
        window = std::make_unique<QWidget>();
        edit = new CHexEdit(window.get());
        edit->setGeometry(0, 0, 480, 200);
        window->resize(500, 240);
        HexLayout::Options options;
        options.autoBytesPerRow = false;
        options.bytesPerRow = 8;
        edit->SetLayoutOptions(options);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window.get()));
        window->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
        edit->setFocus();
        QGuiApplication::clipboard()->clear();
    }

    void Load(std::vector<uint8_t> data, bool readOnly = false) {
        edit->SetReadOnly(readOnly);
        edit->SetData(data.data(), static_cast<int32_t>(data.size()));
        QApplication::processEvents();
    }
    static std::vector<uint8_t> Counting(int n) {
        std::vector<uint8_t> v(static_cast<size_t>(n));
        std::iota(v.begin(), v.end(), uint8_t{0});
        return v;
    }

    const HexLayout& L() const { return edit->Editor().Layout(); }
    QWidget* Client() const { return edit->viewport(); }
    int32_t Top() const { return edit->Editor().Top(); }
    int32_t Caret() const { return edit->Editor().CaretPosition(); }
    Range Selection() const { return {edit->Editor().SelectionStart(), edit->Editor().SelectionEnd()}; }

    // A point in a byte's cell: 'h' its hex pair, 'g' the gap after it, 'c' its character, 'a' the address.
    QPoint At(int offset, char column = 'h') const {
        const int cw = L().CharWidth(), col = offset % 8;
        const int x = column == 'c' ? L().CharColumnX() + col * cw
                      : column == 'a' ? cw
                                      : L().HexColumnX() + (3 * col + (column == 'g' ? 2 : 0)) * cw;
        return QRect(x, offset / 8 * L().LineHeight(), column == 'h' ? 2 * cw : cw, L().LineHeight()).center();
    }

    void Click(QPoint p, Qt::KeyboardModifiers mods = {}) { QTest::mouseClick(Client(), Qt::LeftButton, mods, p); }
    void Key(Qt::Key key, Qt::KeyboardModifiers mods = {}) { QTest::keyClick(edit, key, mods); }

    static void SetClip(const std::optional<std::string>& binary, const std::optional<std::string>& text) {
        auto* m = new QMimeData;
        if (binary)
            m->setData(QString::fromLatin1(HexClipboard::kBinaryMime), QByteArray::fromStdString(*binary));
        if (text)
            m->setData(QString::fromLatin1(HexClipboard::kTextMime), QByteArray::fromStdString(*text));
        QGuiApplication::clipboard()->setMimeData(m);
    }

    // Opens the context menu, records its entries (text, enabled), optionally runs one.
    std::vector<std::pair<QString, bool>> OpenMenu(QContextMenuEvent::Reason reason, QString choose = {}) {
        std::vector<std::pair<QString, bool>> entries;
        QTimer::singleShot(0, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            QAction* chosen = nullptr;
            for (QAction* a : menu->actions()) {
                entries.emplace_back(a->text(), a->isEnabled());
                chosen = a->text() == choose ? a : chosen;
            }
            if (chosen)
                chosen->trigger();
            menu->close();
        });
        const QPoint local(30, 10);
        QContextMenuEvent event(reason, local, Client()->mapToGlobal(local));
        QApplication::sendEvent(reason == QContextMenuEvent::Keyboard ? static_cast<QWidget*>(edit) : Client(), &event);
        return entries;
    }

    std::unique_ptr<QWidget> window;
    CHexEdit* edit = nullptr;
};

TEST_F(HexViewTest, DraggingSelectsAndScrollsPastEitherEdge) {
    Load(Counting(256));
    QTest::mousePress(Client(), Qt::LeftButton, {}, At(9));
    QTest::mouseMove(Client(), At(20));
    EXPECT_EQ(Selection(), Range(9, 21)) << "hex drag ends one past the byte under the pointer";
    EXPECT_FALSE(edit->IsCaretVisible());
    const QPoint below(At(0).x(), Client()->height() + 5), above(At(0).x(), -5);
    QTest::mouseMove(Client(), below);
    QTest::mouseMove(Client(), below + QPoint(0, 1));
    EXPECT_EQ(Top(), 16) << "one row per move below the client";
    EXPECT_EQ(Selection().second, Caret() + 1);
    EXPECT_GE(Caret(), 16 + 8 * (L().VisibleRows() - 1));
    QTest::mouseMove(Client(), above);
    EXPECT_EQ(std::make_pair(Top(), Selection()), std::make_pair(8, Range(9, 9))) << "back on the first row, high nibble of byte 8";
    QTest::mouseRelease(Client(), Qt::LeftButton, {}, above);
    QTest::mouseMove(Client(), below);
    EXPECT_EQ(Top(), 8) << "moves without the button do nothing";
}

TEST_F(HexViewTest, ShiftClickExtendsFromCaretAndPlainClickClears) {
    Load(Counting(32));
    Click(At(2));
    Click(At(13), Qt::ShiftModifier);
    EXPECT_EQ(Selection(), Range(2, 14));
    EXPECT_FALSE(edit->IsCaretVisible()) << "no caret over a selection";
    Click(At(13, 'c'), Qt::ShiftModifier);
    EXPECT_EQ(Selection(), Range(13, 13)) << "the new start is the caret";
    Click(At(4));
    EXPECT_EQ(std::make_pair(Selection(), edit->IsCaretVisible()), std::make_pair(Range(-1, -1), true));
    // A Shift-press starts a selection that a drag with the button held goes on extending.
    QTest::mousePress(Client(), Qt::LeftButton, Qt::ShiftModifier, At(9));
    EXPECT_EQ(Selection(), Range(4, 10));
    QTest::mouseMove(Client(), At(17));
    EXPECT_EQ(Selection(), Range(4, 18));
    QTest::mouseRelease(Client(), Qt::LeftButton, Qt::ShiftModifier, At(17));
    QTest::mouseMove(Client(), At(20));
    EXPECT_EQ(Selection(), Range(4, 18)) << "released: moves no longer extend";
}
// Keys after a click on a cell: hex entry, Insert/Delete/Backspace, the clipboard keys, read-only.
// Tokens: Ins, Del, Bs, Tab, ^C/^V/^X, S-Right, S-Down; any other token is typed as text.
TEST_F(HexViewTest, KeySequencesEditTheBuffer) {
    struct Case {
        const char* name;
        std::vector<uint8_t> data;
        bool readOnly;
        char column; // h/g: high/low nibble, c: character, a: address
        int offset;
        Range selection;
        std::optional<std::string> binary, text; // clipboard before
        const char* keys;
        std::vector<uint8_t> expected;
        int32_t caret; // -1: not checked
        std::optional<std::string> clipAfter;
    };
    const std::vector<uint8_t> four{0x10, 0x20, 0x30, 0x40}, ones(4, 0x11), five{0, 1, 2, 3, 4};
    const std::string bin("\xB0\x00\xB1", 3), ab("\xAA\xBB", 2);
    const Range none(-1, -1);
    const Case cases[] = {
        {"InsertKey", four, false, 'h', 1, none, {}, {}, "Ins", {0x10, 0, 0x20, 0x30, 0x40}, 1, {}},
        {"InsertKeySelectionLength", Counting(6), false, 'h', 1, {5, 2}, {}, {}, "Ins", {0, 0, 0, 0, 1, 2, 3, 4, 5}, -1, {}},
        {"DeleteKeyByte", four, false, 'h', 1, none, {}, {}, "Del", {0x10, 0x30, 0x40}, 1, {}},
        {"Backspace", four, false, 'h', 1, none, {}, {}, "Bs", {0x20, 0x30, 0x40}, 0, {}},
        {"HexLowerCaseOnly", ones, false, 'h', 0, {0, 2}, {}, {}, "aFb9", {0xAB, 0x91, 0x11, 0x11}, 1, {}},
        {"LowNibbleFirst", ones, false, 'g', 0, none, {}, {}, "07", {0x10, 0x71, 0x11, 0x11}, 1, {}},
        {"TabToCharacters", ones, false, 'h', 0, none, {}, {}, "Tab Z", {'Z', 0x11, 0x11, 0x11}, 1, {}},
        {"CharacterAnyByte", ones, false, 'c', 1, none, {}, {}, "A!", {0x11, 'A', '!', 0x11}, 3, {}},
        {"AddressIgnoresTyping", ones, false, 'a', 0, none, {}, {}, "ab", ones, 0, {}},
        {"PasteBinaryFirst", {1, 2, 3}, false, 'h', 1, none, bin, "tx", "^V", {1, 0xB0, 0, 0xB1, 2, 3}, 1, {}},
        {"PasteTextOnly", {1, 2, 3}, false, 'h', 1, none, {}, "tx", "^V", {1, 't', 'x', 2, 3}, 1, {}},
        {"PasteLowNibbleOneFurther", five, false, 'g', 2, none, ab, {}, "^V", {0, 1, 2, 0xAA, 0xBB, 3, 4}, 2, {}},
        {"PasteReplacesReversedSelection", five, false, 'h', 1, {4, 1}, ab, {}, "^V", {0, 0xAA, 0xBB, 4}, 1, {}},
        {"CharacterCutIsExclusive", Counting(8), false, 'c', 3, none, {}, {}, "S-Right S-Right ^X", {0, 1, 2, 5, 6, 7}, -1,
         std::string("\x03\x04", 2)},
        {"HexCopyIsInclusive", Counting(16), false, 'h', 0, none, {}, {}, "S-Right S-Right S-Right S-Right S-Down ^C",
         Counting(16), -1, std::string(reinterpret_cast<const char*>(Counting(11).data()), 11)},
        {"ReadOnlyIgnoresEditingKeys", Counting(6), true, 'h', 1, {1, 3}, std::string("\x77"), {}, "Ins Del Bs a 5 ^V ^X",
         Counting(6), -1, std::string("\x77")}};
    const std::map<QString, std::pair<Qt::Key, Qt::KeyboardModifiers>> named = {
        {"Ins", {Qt::Key_Insert, {}}}, {"Del", {Qt::Key_Delete, {}}}, {"Bs", {Qt::Key_Backspace, {}}},
        {"Tab", {Qt::Key_Tab, {}}}, {"^C", {Qt::Key_C, Qt::ControlModifier}}, {"^V", {Qt::Key_V, Qt::ControlModifier}},
        {"^X", {Qt::Key_X, Qt::ControlModifier}}, {"S-Right", {Qt::Key_Right, Qt::ShiftModifier}},
        {"S-Down", {Qt::Key_Down, Qt::ShiftModifier}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        QGuiApplication::clipboard()->clear();
        Load(c.data, c.readOnly);
        Click(At(c.offset, c.column));
        if (c.selection != none)
            edit->SetSelection(c.selection.first, c.selection.second);
        if (c.binary || c.text)
            SetClip(c.binary, c.text);
        for (const QString& token : QString::fromLatin1(c.keys).split(QLatin1Char(' '))) {
            const auto key = named.find(token);
            if (key != named.end())
                Key(key->second.first, key->second.second);
            else
                QTest::keyClicks(edit, token);
        }
        EXPECT_EQ(edit->Editor().Data(), c.expected);
        if (c.caret >= 0) {
            EXPECT_EQ(Caret(), c.caret);
        }
        if (c.clipAfter) {
            const QMimeData* m = QGuiApplication::clipboard()->mimeData();
            EXPECT_EQ(m ? m->data(QString::fromLatin1(HexClipboard::kBinaryMime)) : QByteArray(),
                      QByteArray::fromStdString(*c.clipAfter));
        }
    }
    // The commands behind the menu refuse a read-only buffer too.
    edit->SelectAll();
    edit->Cut();
    edit->Clear();
    edit->Paste();
    EXPECT_EQ(edit->Editor().Data(), Counting(6));
}

TEST_F(HexViewTest, MenuGreysEntriesByStateAndRunsCommands) {
    struct Case {
        const char* name;
        bool readOnly, data, select, clipboard;
        std::vector<bool> enabled; // Clear, Cut, Copy, Paste, Select All
    };
    const Case cases[] = {{"ReadOnlyWithSelection", true, true, true, true, {false, false, true, false, true}},
                          {"EditableWithSelection", false, true, true, true, {true, true, true, true, true}},
                          {"EditableEmptyClipboard", false, true, true, false, {true, true, true, false, true}},
                          {"EmptyBuffer", false, false, false, true, {false, false, false, true, true}}};
    for (const Case& c : cases) {
        QGuiApplication::clipboard()->clear();
        Load(c.data ? Counting(10) : std::vector<uint8_t>{}, c.readOnly);
        if (c.select)
            edit->SetSelection(2, 5);
        if (c.clipboard)
            SetClip({}, "x");
        const std::vector<bool>& e = c.enabled;
        EXPECT_EQ(OpenMenu(QContextMenuEvent::Mouse),
                  (std::vector<std::pair<QString, bool>>{{"Clear", e[0]}, {"Cut", e[1]}, {"Copy", e[2]}, {"Paste", e[3]}, {"Select All", e[4]}}))
            << c.name;
    }
    Load(Counting(10));
    ASSERT_EQ(OpenMenu(QContextMenuEvent::Keyboard, QStringLiteral("Select All")).size(), 5u);
    EXPECT_EQ(std::make_pair(Selection(), edit->IsCaretVisible()), std::make_pair(Range(0, 10), false));
    OpenMenu(QContextMenuEvent::Mouse, QStringLiteral("Clear"));
    EXPECT_EQ(edit->Editor().Length(), 0);
}

// Keys, the wheel (one row per message whatever the turn) and the bar move top; the bar follows.
TEST_F(HexViewTest, KeysWheelAndScrollBarMoveTopAndTheBarFollows) {
    Load(Counting(800));
    QScrollBar* bar = edit->verticalScrollBar();
    const int rows = L().VisibleRows();
    ASSERT_GT(rows, 2);
    EXPECT_EQ(std::make_tuple(bar->isEnabled(), bar->maximum(), bar->pageStep()), std::make_tuple(true, 100 - rows, rows));
    std::vector<int32_t> tops;
    for (int delta : {120, -360, -15, 120, 120, 120}) {
        const QPointF pos(20, 20);
        QWheelEvent event(pos, Client()->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Client(), &event);
        tops.push_back(Top());
    }
    EXPECT_EQ(tops, (std::vector<int32_t>{0, 8, 16, 8, 0, 0}));
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(std::make_pair(Top(), Caret()), std::make_pair(rows * 8, rows * 8)) << "the caret follows top";
    bar->setSliderPosition(40);
    EXPECT_EQ(Top(), 320);
    Key(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(std::make_tuple(Caret(), Top(), bar->value()), std::make_tuple(0, 0, 0));
    Load(Counting(9));
    EXPECT_FALSE(bar->isEnabled());
}

} // namespace
