#include "CHexEdit.h"
#include "HexClipboard.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDialog>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
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

// The view inside a window next to a line edit that can take the focus away. Rows are fixed at
// eight bytes; pixel positions come from the view's own layout, so any fixed-pitch font works.
class HexViewTest : public testing::Test {
protected:
    void SetUp() override {
        window = std::make_unique<QWidget>();
        edit = new CHexEdit(window.get());
        other = new QLineEdit(window.get());
        edit->setGeometry(0, 0, 480, 200);
        other->setGeometry(0, 210, 100, 24);
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
    int Mode() const { return edit->Editor().CaretMode(); }
    Range Selection() const { return {edit->Editor().SelectionStart(), edit->Editor().SelectionEnd()}; }

    // Centre of a cell (offset from the first visible byte): cell 0/1 of the hex pair, 2 the gap after it.
    QPoint HexCell(int offset, int cell = 0) const {
        const int cw = L().CharWidth();
        return {L().HexColumnX() + (3 * (offset % 8) + cell) * cw + cw / 2, offset / 8 * L().LineHeight() + L().LineHeight() / 2};
    }
    QPoint CharCell(int offset) const {
        return {L().CharColumnX() + offset % 8 * L().CharWidth() + L().CharWidth() / 2, offset / 8 * L().LineHeight() + L().LineHeight() / 2};
    }
    QPoint AddressOfRow(int row) const { return {L().CharWidth() * 2, row * L().LineHeight() + 2}; }
    QRect HexRect(int offset, int cells = 2) const {
        return {L().HexColumnX() + 3 * (offset % 8) * L().CharWidth(), offset / 8 * L().LineHeight(), cells * L().CharWidth(), L().LineHeight()};
    }
    QRect CharRect(int offset) const {
        return {L().CharColumnX() + offset % 8 * L().CharWidth(), offset / 8 * L().LineHeight(), L().CharWidth(), L().LineHeight()};
    }

    void Click(QPoint p, Qt::KeyboardModifiers mods = {}) { QTest::mouseClick(Client(), Qt::LeftButton, mods, p); }
    void Key(Qt::Key key, Qt::KeyboardModifiers mods = {}, int times = 1) {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(edit, key, mods);
    }

    static QByteArray Clip(const char* mime) {
        const QMimeData* m = QGuiApplication::clipboard()->mimeData();
        return m ? m->data(QString::fromLatin1(mime)) : QByteArray();
    }
    static void SetClip(const std::optional<std::string>& binary, const std::optional<std::string>& text) {
        auto* m = new QMimeData;
        if (binary)
            m->setData(QString::fromLatin1(HexClipboard::kBinaryMime), QByteArray::fromStdString(*binary));
        if (text)
            m->setData(QString::fromLatin1(HexClipboard::kTextMime), QByteArray::fromStdString(*text));
        QGuiApplication::clipboard()->setMimeData(m);
    }

    QImage Render() const {
        QImage image(Client()->size(), QImage::Format_RGB32);
        Client()->render(&image);
        return image;
    }
    // Pixels in r that have colour c (equal) or not (!equal).
    static int Count(const QImage& image, const QRect& r, const QColor& c, bool equal) {
        int n = 0;
        for (int y = r.top(); y <= r.bottom(); ++y)
            for (int x = r.left(); x <= r.right(); ++x)
                n += (image.pixelColor(x, y) == c) == equal;
        return n;
    }

    // Opens the context menu, records its entries (text, enabled) and where it opened, optionally runs one.
    std::vector<std::pair<QString, bool>> OpenMenu(QContextMenuEvent::Reason reason, QPoint* openedAt = nullptr,
                                                   const QString& choose = QString()) {
        std::vector<std::pair<QString, bool>> entries;
        QTimer::singleShot(0, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu)
                return;
            if (openedAt)
                *openedAt = menu->pos();
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
    QLineEdit* other = nullptr;
};

TEST_F(HexViewTest, PaintsAddressesBytesAndBackgroundOnly) {
    QPalette palette = edit->palette();
    palette.setColor(QPalette::Button, QColor(200, 100, 50));
    palette.setColor(QPalette::Base, QColor(10, 200, 30));
    edit->setPalette(palette);
    Load({'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 'I'});
    other->setFocus(); // no caret in the picture
    ASSERT_EQ(L().VisibleRows(), 2);
    QImage image = Render();
    const QColor base(10, 200, 30);
    const int lh = L().LineHeight();
    EXPECT_GT(Count(image, QRect(0, lh, L().HexColumnX(), lh), base, false), 0) << "address of the second row";
    EXPECT_GT(Count(image, HexRect(8), base, false) * Count(image, CharRect(8), base, false), 0) << "ninth byte drawn";
    EXPECT_EQ(Count(image, HexRect(9), base, false) + Count(image, CharRect(9), base, false), 0) << "nothing after the last byte";
    EXPECT_EQ(Count(image, QRect(0, 2 * lh, image.width(), image.height() - 2 * lh), base, false), 0);

    Load(Counting(3), true);
    image = Render();
    EXPECT_EQ(image.pixelColor(image.width() - 2, image.height() - 2), QColor(200, 100, 50)) << "button face when read-only";
    Load({});
    image = Render();
    EXPECT_EQ(Count(image, image.rect(), base, false), 0) << "an empty buffer is only background";
}

TEST_F(HexViewTest, SelectionShowsInTheCaretsColumn) {
    QPalette palette = edit->palette();
    palette.setColor(QPalette::Highlight, QColor(255, 0, 0));
    edit->setPalette(palette);
    Load(Counting(16));
    edit->SetSelection(1, 3);
    other->setFocus();
    const QColor red(255, 0, 0);
    QImage image = Render();
    EXPECT_EQ(std::make_tuple(Count(image, HexRect(0, 3), red, true) > 0, Count(image, HexRect(2, 3), red, true) > 0,
                              Count(image, CharRect(1), red, true) > 0),
              std::make_tuple(false, true, false));
    edit->setFocus();
    Key(Qt::Key_Tab);
    image = Render();
    EXPECT_EQ(std::make_pair(Count(image, CharRect(1), red, true) > 0, Count(image, HexRect(1, 3), red, true) > 0),
              std::make_pair(true, false));
}

TEST_F(HexViewTest, ClickPutsCaretOnByteAndNibble) {
    const std::tuple<const char*, QPoint, int32_t, int> cases[] = {{"Address", AddressOfRow(2), 16, HexModeAddress},
                                                                   {"HexDigitHigh", HexCell(11, 0), 11, HexModeHigh},
                                                                   {"HexSecondDigitHigh", HexCell(11, 1), 11, HexModeHigh},
                                                                   {"HexSpaceLow", HexCell(11, 2), 11, HexModeLow},
                                                                   {"Character", CharCell(21), 21, HexModeCharacter}};
    for (const auto& [name, point, pos, mode] : cases) {
        Load(Counting(40));
        edit->SetSelection(0, 4);
        Click(point);
        EXPECT_EQ(std::make_tuple(Caret(), Mode(), Selection(), edit->IsCaretVisible()), std::make_tuple(pos, mode, Range(-1, -1), true))
            << name << ": a click clears the selection and shows the caret";
    }
}

TEST_F(HexViewTest, ArrowKeysWalkNibblesAndScrollWithTheBar) {
    Load(Counting(256));
    Click(HexCell(0));
    Key(Qt::Key_Right, {}, 16);
    EXPECT_EQ(std::make_pair(Caret(), Mode()), std::make_pair(8, int(HexModeHigh))) << "two nibbles a byte, onto the next row";
    const int rows = L().VisibleRows();
    ASSERT_GT(rows, 2);
    Key(Qt::Key_Down, {}, rows - 1);
    EXPECT_EQ(std::make_tuple(Top(), edit->verticalScrollBar()->value(), Caret()), std::make_tuple(8, 1, 8 * rows))
        << "leaving the last visible row scrolls one row, and the caret moves once";
    Key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(std::make_tuple(Caret(), Top(), edit->IsCaretVisible()), std::make_tuple(255, (32 - rows) * 8, true));
}

TEST_F(HexViewTest, DraggingSelectsAndScrollsPastEitherEdge) {
    Load(Counting(256));
    QTest::mousePress(Client(), Qt::LeftButton, {}, HexCell(9));
    QTest::mouseMove(Client(), HexCell(20));
    EXPECT_EQ(Selection(), Range(9, 21)) << "hex drag ends one past the byte under the pointer";
    EXPECT_FALSE(edit->IsCaretVisible());
    const QPoint below(HexCell(0).x(), Client()->height() + 5), above(HexCell(0).x(), -5);
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
    Click(HexCell(2));
    Click(HexCell(13), Qt::ShiftModifier);
    EXPECT_EQ(Selection(), Range(2, 14));
    EXPECT_FALSE(edit->IsCaretVisible()) << "no caret over a selection";
    Click(CharCell(13), Qt::ShiftModifier);
    EXPECT_EQ(Selection(), Range(13, 13)) << "the new start is the caret";
    Click(HexCell(4));
    EXPECT_EQ(Selection(), Range(-1, -1));
    EXPECT_TRUE(edit->IsCaretVisible());
    // A Shift-press starts a selection that a drag with the button held goes on extending.
    QTest::mousePress(Client(), Qt::LeftButton, Qt::ShiftModifier, HexCell(9));
    EXPECT_EQ(Selection(), Range(4, 10));
    QTest::mouseMove(Client(), HexCell(17));
    EXPECT_EQ(Selection(), Range(4, 18));
    QTest::mouseRelease(Client(), Qt::LeftButton, Qt::ShiftModifier, HexCell(17));
    QTest::mouseMove(Client(), HexCell(20));
    EXPECT_EQ(Selection(), Range(4, 18)) << "released: moves no longer extend";
}

// Keys after a click on a cell: hex entry, Insert/Delete/Backspace, the clipboard keys, read-only.
// Tokens: Ins, Del, Bs, Tab, ^C/^V/^X, S-Right, S-Down; any other token is typed as text.
TEST_F(HexViewTest, KeySequencesEditTheBuffer) {
    struct Case {
        const char* name;
        std::vector<uint8_t> data;
        bool readOnly;
        char column; // h/l: high/low nibble, c: character, a: address
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
        {"BackspaceAtStart", four, false, 'h', 0, none, {}, {}, "Bs", four, 0, {}},
        {"HexLowerCaseOnly", ones, false, 'h', 0, {0, 2}, {}, {}, "aFb9", {0xAB, 0x91, 0x11, 0x11}, 1, {}},
        {"HexUpperCaseRefused", ones, false, 'h', 0, none, {}, {}, "ABF", ones, 0, {}},
        {"LowNibbleFirst", ones, false, 'l', 0, none, {}, {}, "07", {0x10, 0x71, 0x11, 0x11}, 1, {}},
        {"TabToCharacters", ones, false, 'h', 0, none, {}, {}, "Tab Z", {'Z', 0x11, 0x11, 0x11}, 1, {}},
        {"CharacterAnyByte", ones, false, 'c', 1, none, {}, {}, "A!", {0x11, 'A', '!', 0x11}, 3, {}},
        {"AddressIgnoresTyping", ones, false, 'a', 0, none, {}, {}, "ab", ones, 0, {}},
        {"PasteBinaryFirst", {1, 2, 3}, false, 'h', 1, none, bin, "tx", "^V", {1, 0xB0, 0, 0xB1, 2, 3}, 1, {}},
        {"PasteTextOnly", {1, 2, 3}, false, 'h', 1, none, {}, "tx", "^V", {1, 't', 'x', 2, 3}, 1, {}},
        {"PasteLowNibbleOneFurther", five, false, 'l', 2, none, ab, {}, "^V", {0, 1, 2, 0xAA, 0xBB, 3, 4}, 2, {}},
        {"PasteCharacterAtCaret", five, false, 'c', 0, none, ab, {}, "^V", {0xAA, 0xBB, 0, 1, 2, 3, 4}, 0, {}},
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
        Click(c.column == 'c' ? CharCell(c.offset) : c.column == 'a' ? AddressOfRow(0) : HexCell(c.offset, c.column == 'l' ? 2 : 0));
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
            EXPECT_EQ(Clip(HexClipboard::kBinaryMime), QByteArray::fromStdString(*c.clipAfter));
        }
    }
    // The commands behind the menu refuse a read-only buffer too.
    edit->SelectAll();
    edit->Cut();
    edit->Clear();
    edit->Paste();
    edit->Insert(0, 4);
    edit->DeleteRange(0, 4);
    EXPECT_EQ(edit->Editor().Data(), Counting(6));
}

TEST_F(HexViewTest, MenuGreysEntriesByState) {
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
}

TEST_F(HexViewTest, MenuFromKeyboardOpensAtCornerAndRunsCommands) {
    Load(Counting(10));
    QPoint at;
    ASSERT_EQ(OpenMenu(QContextMenuEvent::Keyboard, &at, QStringLiteral("Select All")).size(), 5u);
    EXPECT_EQ(at, edit->mapToGlobal(QPoint(5, 5)));
    EXPECT_EQ(Selection(), Range(0, 10));
    EXPECT_FALSE(edit->IsCaretVisible());
    OpenMenu(QContextMenuEvent::Mouse, nullptr, QStringLiteral("Clear"));
    EXPECT_EQ(edit->Editor().Length(), 0);
}

TEST_F(HexViewTest, CaretOnlyWithFocusAndInsideClient) {
    Load(Counting(512));
    Click(HexCell(0));
    EXPECT_TRUE(edit->IsCaretVisible());
    other->setFocus();
    EXPECT_FALSE(edit->IsCaretVisible());
    edit->setFocus();
    // Scroll far enough that the caret's row drops above the client: the caret follows top.
    for (int i = 0; i < 3; ++i)
        edit->verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(std::make_pair(Caret(), edit->IsCaretVisible()), std::make_pair(Top(), true));
    Key(Qt::Key_Up);
    EXPECT_EQ(std::make_pair(Caret(), edit->IsCaretVisible()), std::make_pair(Top(), true));
    Click(HexCell(8 * 5));
    ASSERT_TRUE(edit->IsCaretVisible());
    edit->resize(edit->width(), 3 * L().LineHeight());
    EXPECT_FALSE(edit->IsCaretVisible()) << "row 5 is below a client of about two rows";
}

TEST_F(HexViewTest, WheelScrollsOneRowPerMessageWhateverTheTurn) {
    Load(Counting(512));
    std::vector<int32_t> tops;
    for (int delta : {-360, -15, 120, 120, 120}) {
        const QPointF pos(20, 20);
        QWheelEvent event(pos, Client()->mapToGlobal(pos), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(Client(), &event);
        tops.push_back(Top());
    }
    EXPECT_EQ(tops, (std::vector<int32_t>{8, 16, 8, 0, 0}));
}

TEST_F(HexViewTest, ScrollBarFollowsAndDrivesTop) {
    Load(Counting(800));
    QScrollBar* bar = edit->verticalScrollBar();
    const int rows = L().VisibleRows();
    EXPECT_EQ(std::make_tuple(bar->isEnabled(), bar->maximum(), bar->pageStep()), std::make_tuple(true, 100 - rows, rows));
    bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    EXPECT_EQ(Top(), 8);
    bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(Top(), 8 + rows * 8);
    bar->setSliderPosition(40);
    EXPECT_EQ(std::make_pair(Top(), Caret()), std::make_pair(320, 320)) << "the caret moved with top from offset 0";
    bar->triggerAction(QAbstractSlider::SliderToMaximum);
    EXPECT_EQ(std::make_pair(Top(), bar->value()), std::make_pair(320, 40)) << "jumps to an end are not scroll messages here";
    for (int i = 0; i < 20; ++i)
        bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(Top(), 800 - 8 * rows) << "paging stops at the last page";
    Load(Counting(9));
    EXPECT_FALSE(bar->isEnabled());
}

TEST(HexViewInDialog, KeepsEnterAndEscapeFromTheDialog) {
    QDialog dialog;
    auto* ok = new QPushButton(QStringLiteral("OK"), &dialog);
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto* edit = new CHexEdit(&dialog);
    edit->setGeometry(0, 30, 300, 100);
    const std::vector<uint8_t> data{1, 2, 3};
    edit->SetData(data.data(), 3);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    edit->setFocus();
    for (Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
        QTest::keyClick(edit, key);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(dialog.result(), 0);
    EXPECT_EQ(edit->Editor().Data(), data) << "hex column ignores control characters";
}

} // namespace
