#include "HexEditor.h"
#include "HexNavigator.h"

#include <gtest/gtest.h>

#include <numeric>
#include <ostream>
#include <string>
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

struct WalkCase {
    std::string name;
    int32_t startPos;
    int startMode;
    int32_t startTop;
    std::vector<Move> moves;
    int32_t pos;
    int mode;
    int32_t top;
};

void PrintTo(const WalkCase& c, std::ostream* os) {
    *os << c.name;
}

class CaretWalk : public testing::TestWithParam<WalkCase> {};

TEST_P(CaretWalk, EndsOnByteNibbleAndTop) {
    const WalkCase& c = GetParam();
    HexEditor editor;
    Prepare(editor, Counting(kLength));
    // Put top in place by scrolling, then the caret where the walk starts.
    for (int32_t t = 0; t < c.startTop; t += 4)
        editor.ScrollLineDown();
    editor.SetCaretFromHit({c.startPos, c.startMode, {}});
    for (Move m : c.moves)
        HexNavigator::Apply(editor, m, false);
    EXPECT_EQ(editor.CaretPosition(), c.pos);
    EXPECT_EQ(editor.CaretMode(), c.mode);
    EXPECT_EQ(editor.Top(), c.top);
}

INSTANTIATE_TEST_SUITE_P(
    Nibbles, CaretWalk,
    testing::Values(
        WalkCase{"RightHighToLow", 0, HexModeHigh, 0, {Move::Right}, 0, HexModeLow, 0},
        WalkCase{"RightLowToNextHigh", 0, HexModeLow, 0, {Move::Right}, 1, HexModeHigh, 0},
        WalkCase{"LeftLowToHigh", 1, HexModeLow, 0, {Move::Left}, 1, HexModeHigh, 0},
        WalkCase{"LeftHighToPreviousLow", 1, HexModeHigh, 0, {Move::Left}, 0, HexModeLow, 0},
        WalkCase{"RightAcrossRowEnd", 3, HexModeLow, 0, {Move::Right}, 4, HexModeHigh, 0},
        WalkCase{"LeftAtStartStaysOnFirstByte", 0, HexModeHigh, 0, {Move::Left}, 0, HexModeLow, 0},
        WalkCase{"RightPastEndStepsBack", 19, HexModeLow, 8, {Move::Right}, 19, HexModeHigh, 8},
        WalkCase{"DownThenScrollOneRowEach", 2, HexModeHigh, 0, {Move::Down, Move::Down, Move::Down, Move::Down},
                 18, HexModeHigh, 8},
        WalkCase{"DownPastLastRowStays", 18, HexModeHigh, 8, {Move::Down}, 18, HexModeHigh, 8},
        WalkCase{"UpScrollsBack", 18, HexModeLow, 8, {Move::Up, Move::Up, Move::Up}, 6, HexModeLow, 4},
        WalkCase{"UpAtFirstRowClampsToZero", 2, HexModeHigh, 0, {Move::Up}, 0, HexModeHigh, 0},
        WalkCase{"CharacterRightWrapsRow", 3, HexModeCharacter, 0, {Move::Right}, 4, HexModeCharacter, 0},
        WalkCase{"CharacterRightAtEndStays", 19, HexModeCharacter, 8, {Move::Right}, 19, HexModeCharacter, 8},
        WalkCase{"AddressColumnDoesNotMove", 4, HexModeAddress, 0, {Move::Down, Move::Right}, 4, HexModeAddress, 0},
        WalkCase{"HomeGoesToRowStartHigh", 6, HexModeLow, 0, {Move::Home}, 4, HexModeHigh, 0},
        WalkCase{"EndGoesToRowEnd", 5, HexModeCharacter, 0, {Move::End}, 7, HexModeCharacter, 0},
        WalkCase{"CtrlEndShowsLastPage", 0, HexModeHigh, 0, {Move::BufferEnd}, 19, HexModeHigh, 8},
        WalkCase{"CtrlHomeBackToTop", 17, HexModeCharacter, 8, {Move::BufferStart}, 0, HexModeCharacter, 0},
        WalkCase{"PageDownMovesViewAndCaret", 1, HexModeHigh, 0, {Move::PageDown}, 13, HexModeHigh, 8},
        WalkCase{"PageDownAtLastPageKeepsColumn", 13, HexModeHigh, 8, {Move::PageDown}, 17, HexModeHigh, 8},
        WalkCase{"PageUpToFirstRow", 17, HexModeHigh, 8, {Move::PageUp}, 5, HexModeHigh, 0}),
    [](const testing::TestParamInfo<WalkCase>& info) { return info.param.name; });

TEST(HexEditor, ShiftMovesStartSelectionAtCaretAndEndFollows) {
    HexEditor editor;
    Prepare(editor, Counting(kLength));
    editor.SetCaretFromHit({5, HexModeCharacter, {}});
    HexNavigator::Apply(editor, Move::Right, true);
    HexNavigator::Apply(editor, Move::Down, true);
    EXPECT_EQ(editor.SelectionStart(), 5);
    EXPECT_EQ(editor.SelectionEnd(), 10);
    HexNavigator::Apply(editor, Move::Left, false);
    EXPECT_FALSE(editor.HasSelection());
}

TEST(HexEditor, EditingReshapesBufferAndClampsCaret) {
    HexEditor editor;
    Prepare(editor, Counting(6));
    ASSERT_TRUE(editor.Insert(2, 3));
    EXPECT_EQ(editor.Data(), (std::vector<uint8_t>{0, 1, 0, 0, 0, 2, 3, 4, 5}));
    editor.SetCaretFromHit({8, HexModeHigh, {}});
    ASSERT_TRUE(editor.DeleteRange(7, 1)); // reversed ends remove the same bytes
    EXPECT_EQ(editor.Data(), (std::vector<uint8_t>{0, 4, 5}));
    EXPECT_EQ(editor.CaretPosition(), 3);
    EXPECT_TRUE(editor.Backspace());
    EXPECT_EQ(editor.Data(), (std::vector<uint8_t>{0, 4}));
    EXPECT_EQ(editor.CaretPosition(), 2);
    EXPECT_TRUE(editor.Insert(99, 2)) << "past the end appends";
    EXPECT_EQ(editor.Data(), (std::vector<uint8_t>{0, 4, 0, 0}));
    EXPECT_FALSE(editor.Insert(0, 0));
    EXPECT_FALSE(editor.Insert(0, -4));
    EXPECT_FALSE(editor.Insert(0, INT32_MAX)) << "length would overflow";
    EXPECT_EQ(editor.Length(), 4);
}

TEST(HexEditor, ShrinkingBufferPullsTopBackOntoData) {
    HexEditor editor;
    Prepare(editor, Counting(kLength));
    editor.ScrollPageDown();
    ASSERT_EQ(editor.Top(), 8);
    editor.DeleteRange(3, kLength);
    editor.UpdateLayout(300, 30);
    EXPECT_EQ(editor.Top(), 0);
    EXPECT_EQ(editor.CaretPosition(), 3);
}

TEST(HexEditor, SetDataCopiesAndResets) {
    HexEditor editor;
    std::vector<uint8_t> data = Counting(10);
    Prepare(editor, data);
    editor.SetSelection(2, 4);
    editor.SetCaretFromHit({5, HexModeCharacter, {}});
    editor.SetData(data.data(), 3);
    data[0] = 0x7E;
    EXPECT_EQ(editor.Data(), (std::vector<uint8_t>{0, 1, 2}));
    EXPECT_EQ(editor.SelectionStart(), -1);
    EXPECT_EQ(editor.CaretPosition(), 0);
    EXPECT_EQ(editor.CaretMode(), HexModeHigh);
    editor.SetData(nullptr, 5);
    EXPECT_FALSE(editor.HasBuffer());
    editor.SetData(data.data(), -1);
    EXPECT_FALSE(editor.HasBuffer());
}

} // namespace
