#include "HexLayout.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>

namespace {

// Cells of 7 x 14 pixels keep the expected figures easy to work out by hand.
HexLayout::Options Columns(bool address, bool hex, bool characters, bool wide = true) {
    HexLayout::Options o;
    o.showAddress = address;
    o.showHex = hex;
    o.showCharacters = characters;
    o.wideAddress = wide;
    return o;
}

HexLayout::Options FixedRow(int32_t bytesPerRow) {
    HexLayout::Options o;
    o.autoBytesPerRow = false;
    o.bytesPerRow = bytesPerRow;
    return o;
}

HexLayout Make(const HexLayout::Options& options, int width, int height, int32_t length) {
    HexLayout layout;
    layout.SetOptions(options);
    layout.SetCellSize(7, 14);
    layout.Compute(width, height, length);
    return layout;
}

TEST(HexLayout, FiguresMatchWorkedExamples) {
    struct Case {
        const char* name; HexLayout::Options options; int width, height; int32_t length, bytesPerRow;
        int hexX, charX; int32_t visibleRows; bool partial;
    };
    const Case cases[] = {
        // 500 - 10 - 2 x 5 x 7 = 420 pixels, 28 per byte.
        {"WideAddressAllColumns", {}, 500, 140, 1000, 15, 63, 378, 10, false},
        {"NineBytesAtEightPerRow", FixedRow(8), 500, 140, 9, 8, 63, 231, 2, true},
        {"SixteenBytesFillTwoRows", FixedRow(8), 500, 140, 16, 8, 63, 231, 2, false},
        // 300 - 10 - 2 x 3 x 7 = 248 pixels.
        {"NarrowAddress", Columns(true, true, true, false), 300, 140, 1000, 8, 35, 203, 10, false},
        // 300 - 10 - 70 = 220 pixels, 7 per byte.
        {"NoHexColumn", Columns(true, false, true), 300, 140, 1000, 31, 63, 63, 10, false},
        {"NoAddressColumn", Columns(false, true, true), 300, 140, 1000, 10, 0, 210, 10, false},
        {"NarrowerThanOneByte", {}, 50, 140, 1000, 1, 63, 84, 10, false},
        {"EmptyBuffer", {}, 500, 140, 0, 15, 63, 378, 0, false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const HexLayout l = Make(c.options, c.width, c.height, c.length);
        EXPECT_EQ(std::make_tuple(l.BytesPerRow(), l.HexColumnX(), l.CharColumnX(), l.VisibleRows(), l.PartialLastRow()),
                  std::make_tuple(c.bytesPerRow, c.hexX, c.charX, c.visibleRows, c.partial));
    }
    HexLayout layout = Make({}, 500, 150, 1000);
    EXPECT_EQ(layout.WholeLinesHeight(), 140) << "the partial row is dropped";
    layout.SetCellSize(0, -3);
    layout.Compute(500, 150, 1000);
    EXPECT_EQ(std::make_pair(layout.CharWidth(), layout.LineHeight()), std::make_pair(1, 1));
}

// 500 x 100 pixels over 200 bytes: 15 bytes per row, 7 visible rows, hex column at cell 9,
// characters at cell 54.
TEST(HexLayout, HitTestFindsByteModeAndCaretPoint) {
    struct Case {
        const char* name; HexLayout::Options options; int x, y; int32_t top; bool hit; int32_t position; int mode;
        HexPoint caret;
    };
    const HexLayout::Options wide{}, noAddress = Columns(false, true, true);
    const Case cases[] = {
        {"AddressGapCell", wide, 60, 20, 0, true, 15, HexModeAddress, {56, 14}},
        {"HexSecondCellHigh", wide, 71, 0, 0, true, 0, HexModeHigh, {63, 0}},
        {"HexThirdCellLow", wide, 78, 0, 0, true, 0, HexModeLow, {70, 0}},
        {"HexLastCellOfRow", wide, 375, 0, 0, true, 14, HexModeLow, {364, 0}},
        {"CharacterFirst", wide, 378, 0, 0, true, 0, HexModeCharacter, {378, 0}},
        {"CharacterOnePastRow", wide, 483, 0, 0, true, 15, HexModeCharacter, {483, 0}},
        {"RightOfCharacters", wide, 490, 0, 0, false, 0, 0, {}},
        {"LastCountedRow", wide, 10, 98, 0, true, 105, HexModeAddress, {7, 98}},
        {"BelowVisibleRows", wide, 10, 112, 0, false, 0, 0, {}},
        {"AboveClient", wide, 10, -1, 0, false, 0, 0, {}},
        {"RowPastBuffer", wide, 10, 14, 195, false, 0, 0, {}},
        {"CharacterClampedToLength", wide, 427, 0, 195, true, 200, HexModeCharacter, {427, 0}},
        {"LeftOfClientIsFirstCell", wide, -20, 0, 0, true, 0, HexModeAddress, {0, 0}},
        {"NoAddressHigh", noAddress, 8, 0, 0, true, 0, HexModeHigh, {0, 0}},
        {"NarrowAddressFirstHexCell", Columns(true, true, true, false), 35, 0, 0, true, 0, HexModeLow, {28, 0}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const HexLayout layout = Make(c.options, c.options.showAddress && c.options.wideAddress ? 500 : 300, 100, 200);
        const auto hit = layout.HitTest(c.x, c.y, c.top, 200);
        ASSERT_EQ(hit.has_value(), c.hit);
        if (c.hit) {
            EXPECT_EQ(std::make_tuple(hit->position, hit->mode, hit->caretPoint), std::make_tuple(c.position, c.mode, c.caret));
        }
    }
}

TEST(HexLayout, CaretPointAndVisibility) {
    struct Case { const char* name; int32_t position; int mode; int32_t top; HexPoint point; bool inClient; };
    const Case cases[] = {{"HighNibble", 0, HexModeHigh, 0, {63, 0}, true},
                          {"LowNibble", 0, HexModeLow, 0, {70, 0}, true},
                          {"ScrolledOneRow", 16, HexModeHigh, 15, {84, 0}, true},
                          {"LowNibbleThirdRow", 31, HexModeLow, 0, {91, 28}, true},
                          {"LastRowInClient", 105, HexModeHigh, 0, {63, 98}, true},
                          {"AboveFirstVisibleRow", 14, HexModeCharacter, 15, {}, false},
                          {"BelowClient", 120, HexModeHigh, 0, {}, false}};
    const HexLayout layout = Make({}, 500, 100, 200);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const HexPoint p = layout.CaretPoint(c.position, c.mode, c.top);
        EXPECT_EQ(layout.InClient(p), c.inClient);
        if (c.inClient) {
            EXPECT_EQ(p, c.point);
        }
    }
}

// 15 bytes per row, 7 rows in view (8 counted for 100 bytes); the bar comes alive only when the
// last row index exceeds the rows in view.
TEST(HexLayout, ScrollBarRangePagePosition) {
    struct Case { int32_t length, top; bool enabled; int32_t lastRow, page, position, lastPageTop; };
    const Case cases[] = {{100, 0, false, 6, 8, 0, 0},
                          {120, 0, false, 7, 7, 0, 15}, {121, 15, true, 8, 7, 1, 30},
                          {200, 30, true, 13, 7, 2, 105},
                          {0, 0, false, 0, 0, 0, 0}};
    for (const Case& c : cases) {
        const HexLayout layout = Make({}, 500, 100, c.length);
        const HexScrollInfo i = layout.ScrollInfo(c.top, c.length);
        EXPECT_EQ(std::make_tuple(i.enabled, i.lastRow, i.page, i.position, layout.LastPageTop(c.length)),
                  std::make_tuple(c.enabled, c.lastRow, c.page, c.position, c.lastPageTop))
            << "length " << c.length;
    }
}

} // namespace
