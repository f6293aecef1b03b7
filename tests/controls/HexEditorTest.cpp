#include "HexEditor.h"
#include "HexNavigator.h"

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <tuple>
#include <vector>

namespace {

// 4 bytes per row and 3 visible rows over 20 bytes (5 rows): small enough to trace by hand.
constexpr int32_t kLength = 20;

std::vector<uint8_t> Counting(int32_t n) {
    std::vector<uint8_t> v(static_cast<size_t>(n));
    std::iota(v.begin(), v.end(), uint8_t{0});
    return v;
}

void Prepare(HexEditor& editor, const std::vector<uint8_t>& data, bool readOnly = false) {
    HexLayout::Options options;
    options.autoBytesPerRow = false;
    options.bytesPerRow = 4;
    editor.Layout().SetOptions(options);
    editor.Layout().SetCellSize(10, 10);
    editor.SetData(data.data(), static_cast<int32_t>(data.size()));
    editor.SetReadOnly(readOnly);
    editor.UpdateLayout(300, 30);
}

using Move = HexNavigator::Move;

TEST(HexEditor, CaretWalksEndOnByteNibbleAndTop) {
    struct Case {
        const char* name; int32_t startPos; int startMode; int32_t startTop; std::vector<Move> moves; int32_t pos;
        int mode; int32_t top;
    };
    const Case cases[] = {{"RightHighToLow", 0, HexModeHigh, 0, {Move::Right}, 0, HexModeLow, 0},
        {"RightLowToNextHigh", 0, HexModeLow, 0, {Move::Right}, 1, HexModeHigh, 0},
        {"LeftHighToPreviousLow", 1, HexModeHigh, 0, {Move::Left}, 0, HexModeLow, 0},
        {"RightAcrossRowEnd", 3, HexModeLow, 0, {Move::Right}, 4, HexModeHigh, 0},
        {"LeftAtStartStaysOnFirstByte", 0, HexModeHigh, 0, {Move::Left}, 0, HexModeLow, 0},
        {"RightPastEndStepsBack", 19, HexModeLow, 8, {Move::Right}, 19, HexModeHigh, 8},
        {"DownThenScrollOneRowEach", 2, HexModeHigh, 0, {Move::Down, Move::Down, Move::Down, Move::Down},
                 18, HexModeHigh, 8},
        {"DownPastLastRowStays", 18, HexModeHigh, 8, {Move::Down}, 18, HexModeHigh, 8},
        {"UpScrollsBack", 18, HexModeLow, 8, {Move::Up, Move::Up, Move::Up}, 6, HexModeLow, 4},
        {"UpAtFirstRowClampsToZero", 2, HexModeHigh, 0, {Move::Up}, 0, HexModeHigh, 0},
        {"CharacterRightWrapsRow", 3, HexModeCharacter, 0, {Move::Right}, 4, HexModeCharacter, 0},
        {"AddressColumnDoesNotMove", 4, HexModeAddress, 0, {Move::Down, Move::Right}, 4, HexModeAddress, 0},
        {"HomeGoesToRowStartHigh", 6, HexModeLow, 0, {Move::Home}, 4, HexModeHigh, 0},
        {"EndGoesToRowEnd", 5, HexModeCharacter, 0, {Move::End}, 7, HexModeCharacter, 0},
        {"CtrlEndShowsLastPage", 0, HexModeHigh, 0, {Move::BufferEnd}, 19, HexModeHigh, 8},
        {"CtrlHomeBackToTop", 17, HexModeCharacter, 8, {Move::BufferStart}, 0, HexModeCharacter, 0},
        {"PageDownMovesViewAndCaret", 1, HexModeHigh, 0, {Move::PageDown}, 13, HexModeHigh, 8},
        {"PageDownAtLastPageKeepsColumn", 13, HexModeHigh, 8, {Move::PageDown}, 17, HexModeHigh, 8},
        {"PageUpToFirstRow", 17, HexModeHigh, 8, {Move::PageUp}, 5, HexModeHigh, 0}};
    for (const Case& c : cases) {
        HexEditor editor;
        Prepare(editor, Counting(kLength));
        for (int32_t t = 0; t < c.startTop; t += 4) // top in place by scrolling, then the caret
            editor.ScrollLineDown();
        editor.SetCaretFromHit({c.startPos, c.startMode, {}});
        for (Move m : c.moves)
            HexNavigator::Apply(editor, m, false);
        EXPECT_EQ(std::make_tuple(editor.CaretPosition(), editor.CaretMode(), editor.Top()), std::make_tuple(c.pos, c.mode, c.top))
            << c.name;
    }
}

TEST(HexEditor, EditingReshapesBufferClampsCaretAndNewDataResets) {
    HexEditor editor;
    Prepare(editor, Counting(6));
    ASSERT_TRUE(editor.Insert(2, 3));
    EXPECT_EQ(editor.Data(), (std::vector<uint8_t>{0, 1, 0, 0, 0, 2, 3, 4, 5}));
    editor.SetCaretFromHit({8, HexModeHigh, {}});
    ASSERT_TRUE(editor.DeleteRange(7, 1)); // reversed ends remove the same bytes
    EXPECT_EQ(std::make_pair(editor.Data(), editor.CaretPosition()), std::make_pair(std::vector<uint8_t>{0, 4, 5}, 3));
    EXPECT_TRUE(editor.Backspace());
    EXPECT_EQ(std::make_pair(editor.Data(), editor.CaretPosition()), std::make_pair(std::vector<uint8_t>{0, 4}, 2));
    EXPECT_TRUE(editor.Insert(99, 2)) << "past the end appends";
    EXPECT_EQ(editor.Data(), (std::vector<uint8_t>{0, 4, 0, 0}));
    EXPECT_FALSE(editor.Insert(0, 0) || editor.Insert(0, -4) || editor.Insert(0, INT32_MAX)) << "nothing, or a length that would overflow";
    EXPECT_EQ(editor.Length(), 4);

    // Shrinking the buffer pulls top back onto the data.
    Prepare(editor, Counting(kLength));
    editor.ScrollPageDown();
    ASSERT_EQ(editor.Top(), 8);
    editor.DeleteRange(3, kLength);
    editor.UpdateLayout(300, 30);
    EXPECT_EQ(std::make_pair(editor.Top(), editor.CaretPosition()), std::make_pair(0, 3));

    // New data is a copy and resets selection and caret; no bytes or a negative length is no buffer.
    std::vector<uint8_t> data = Counting(10);
    editor.SetSelection(2, 4);
    editor.SetCaretFromHit({2, HexModeCharacter, {}});
    editor.SetData(data.data(), 3);
    data[0] = 0x7E;
    EXPECT_EQ(std::make_tuple(editor.Data(), editor.SelectionStart(), editor.CaretPosition(), editor.CaretMode()),
              std::make_tuple(std::vector<uint8_t>{0, 1, 2}, -1, 0, int(HexModeHigh)));
    editor.SetData(nullptr, 5);
    EXPECT_FALSE(editor.HasBuffer());
    editor.SetData(data.data(), -1);
    EXPECT_FALSE(editor.HasBuffer());
}

} // namespace
