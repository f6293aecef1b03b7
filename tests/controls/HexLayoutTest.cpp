#include "HexLayout.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace {

// Cells of 7 x 14 pixels keep the expected figures easy to work out by hand.
constexpr int kCharWidth = 7;
constexpr int kLineHeight = 14;

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
    layout.SetCellSize(kCharWidth, kLineHeight);
    layout.Compute(width, height, length);
    return layout;
}

struct LayoutCase {
    std::string name;
    HexLayout::Options options;
    int width, height;
    int32_t length;
    int32_t bytesPerRow;
    int hexX, charX;
    int32_t visibleRows;
    bool partial;
};

void PrintTo(const LayoutCase& c, std::ostream* os) {
    *os << c.name;
}

class LayoutFigures : public testing::TestWithParam<LayoutCase> {};

TEST_P(LayoutFigures, MatchWorkedExample) {
    const LayoutCase& c = GetParam();
    const HexLayout layout = Make(c.options, c.width, c.height, c.length);
    EXPECT_EQ(layout.BytesPerRow(), c.bytesPerRow);
    EXPECT_EQ(layout.HexColumnX(), c.hexX);
    EXPECT_EQ(layout.CharColumnX(), c.charX);
    EXPECT_EQ(layout.VisibleRows(), c.visibleRows);
    EXPECT_EQ(layout.PartialLastRow(), c.partial);
}

INSTANTIATE_TEST_SUITE_P(
    Widths, LayoutFigures,
    testing::Values(
        // 500 - 10 - 2 x 5 x 7 = 420 pixels, 28 per byte.
        LayoutCase{"WideAddressAllColumns", {}, 500, 140, 1000, 15, 63, 378, 10, false},
        LayoutCase{"NineBytesAtEightPerRow", FixedRow(8), 500, 140, 9, 8, 63, 231, 2, true},
        LayoutCase{"TwelveBytesCountThreeRows", FixedRow(8), 500, 140, 12, 8, 63, 231, 3, true},
        LayoutCase{"SixteenBytesFillTwoRows", FixedRow(8), 500, 140, 16, 8, 63, 231, 2, false},
        LayoutCase{"ThreeBytesOneRow", FixedRow(8), 500, 140, 3, 8, 63, 231, 1, true},
        // 300 - 10 - 2 x 3 x 7 = 248 pixels.
        LayoutCase{"NarrowAddress", Columns(true, true, true, false), 300, 140, 1000, 8, 35, 203, 10, false},
        // 300 - 10 - 70 = 220 pixels, 7 per byte.
        LayoutCase{"NoHexColumn", Columns(true, false, true), 300, 140, 1000, 31, 63, 63, 10, false},
        LayoutCase{"NoAddressColumn", Columns(false, true, true), 300, 140, 1000, 10, 0, 210, 10, false},
        LayoutCase{"NarrowerThanOneByte", {}, 50, 140, 1000, 1, 63, 84, 10, false},
        LayoutCase{"NoHeight", {}, 500, 0, 1000, 15, 63, 378, 0, false},
        LayoutCase{"EmptyBuffer", {}, 500, 140, 0, 15, 63, 378, 0, false}),
    [](const testing::TestParamInfo<LayoutCase>& info) { return info.param.name; });

TEST(HexLayout, WholeLinesDropPartialRowAndCellSizeNeverZero) {
    HexLayout layout = Make({}, 500, 150, 1000);
    EXPECT_EQ(layout.WholeLinesHeight(), 140);
    layout.SetCellSize(0, -3);
    layout.Compute(500, 150, 1000);
    EXPECT_EQ(layout.CharWidth(), 1);
    EXPECT_EQ(layout.LineHeight(), 1);
}

// 500 x 100 pixels over 200 bytes: 15 bytes per row, 7 visible rows, hex column at cell 9,
// characters at cell 54.
struct HitCase {
    std::string name;
    HexLayout::Options options;
    int x, y;
    int32_t top;
    bool hit;
    int32_t position;
    int mode;
    HexPoint caret;
};

void PrintTo(const HitCase& c, std::ostream* os) {
    *os << c.name;
}

class HitTest : public testing::TestWithParam<HitCase> {};

TEST_P(HitTest, FindsByteModeAndCaretPoint) {
    const HitCase& c = GetParam();
    const HexLayout layout =
        Make(c.options, c.options.showAddress && c.options.wideAddress ? 500 : 300, 100, 200);
    const auto hit = layout.HitTest(c.x, c.y, c.top, 200);
    ASSERT_EQ(hit.has_value(), c.hit);
    if (!c.hit)
        return;
    EXPECT_EQ(hit->position, c.position);
    EXPECT_EQ(hit->mode, c.mode);
    EXPECT_EQ(hit->caretPoint, c.caret);
}

const HexLayout::Options kWide{};

INSTANTIATE_TEST_SUITE_P(
    Columns, HitTest,
    testing::Values(
        HitCase{"AddressFirstCell", kWide, 0, 0, 0, true, 0, HexModeAddress, {0, 0}},
        HitCase{"AddressGapCell", kWide, 60, 20, 0, true, 15, HexModeAddress, {56, 14}},
        HitCase{"HexFirstCellHigh", kWide, 63, 0, 0, true, 0, HexModeHigh, {63, 0}},
        HitCase{"HexSecondCellHigh", kWide, 71, 0, 0, true, 0, HexModeHigh, {63, 0}},
        HitCase{"HexThirdCellLow", kWide, 78, 0, 0, true, 0, HexModeLow, {70, 0}},
        HitCase{"HexThirdRowSecondByte", kWide, 85, 30, 0, true, 31, HexModeHigh, {84, 28}},
        HitCase{"HexLastCellOfRow", kWide, 375, 0, 0, true, 14, HexModeLow, {364, 0}},
        HitCase{"CharacterFirst", kWide, 378, 0, 0, true, 0, HexModeCharacter, {378, 0}},
        HitCase{"CharacterSecondRow", kWide, 382, 14, 0, true, 15, HexModeCharacter, {378, 14}},
        HitCase{"CharacterOnePastRow", kWide, 483, 0, 0, true, 15, HexModeCharacter, {483, 0}},
        HitCase{"RightOfCharacters", kWide, 490, 0, 0, false, 0, 0, {}},
        HitCase{"LastCountedRow", kWide, 10, 98, 0, true, 105, HexModeAddress, {7, 98}},
        HitCase{"BelowVisibleRows", kWide, 10, 112, 0, false, 0, 0, {}},
        HitCase{"AboveClient", kWide, 10, -1, 0, false, 0, 0, {}},
        HitCase{"RowPastBuffer", kWide, 10, 14, 195, false, 0, 0, {}},
        HitCase{"CharacterClampedToLength", kWide, 427, 0, 195, true, 200, HexModeCharacter, {427, 0}},
        HitCase{"LeftOfClientIsFirstCell", kWide, -20, 0, 0, true, 0, HexModeAddress, {0, 0}},
        HitCase{"NoAddressHigh", Columns(false, true, true), 8, 0, 0, true, 0, HexModeHigh, {0, 0}},
        HitCase{"NoAddressLow", Columns(false, true, true), 15, 0, 0, true, 0, HexModeLow, {7, 0}},
        HitCase{"NoAddressSecondByte", Columns(false, true, true), 21, 0, 0, true, 1, HexModeHigh, {21, 0}},
        HitCase{"NarrowAddressFirstHexCell", Columns(true, true, true, false), 35, 0, 0, true, 0, HexModeLow, {28, 0}}),
    [](const testing::TestParamInfo<HitCase>& info) { return info.param.name; });

struct CaretCase {
    std::string name;
    int32_t position;
    int mode;
    int32_t top;
    HexPoint point;
    bool inClient;
};

void PrintTo(const CaretCase& c, std::ostream* os) {
    *os << c.name;
}

class CaretPlacement : public testing::TestWithParam<CaretCase> {};

TEST_P(CaretPlacement, PointAndVisibility) {
    const CaretCase& c = GetParam();
    const HexLayout layout = Make({}, 500, 100, 200);
    const HexPoint p = layout.CaretPoint(c.position, c.mode, c.top);
    EXPECT_EQ(layout.InClient(p), c.inClient);
    if (c.inClient) {
        EXPECT_EQ(p, c.point);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Modes, CaretPlacement,
    testing::Values(CaretCase{"HighNibble", 0, HexModeHigh, 0, {63, 0}, true},
                    CaretCase{"LowNibble", 0, HexModeLow, 0, {70, 0}, true},
                    CaretCase{"Character", 16, HexModeCharacter, 0, {385, 14}, true},
                    CaretCase{"ScrolledOneRow", 16, HexModeHigh, 15, {84, 0}, true},
                    CaretCase{"LowNibbleThirdRow", 31, HexModeLow, 0, {91, 28}, true},
                    CaretCase{"AddressAlwaysLeftEdge", 5, HexModeAddress, 0, {0, 0}, true},
                    CaretCase{"LastRowInClient", 105, HexModeHigh, 0, {63, 98}, true},
                    CaretCase{"AboveFirstVisibleRow", 14, HexModeCharacter, 15, {}, false},
                    CaretCase{"BelowClient", 120, HexModeHigh, 0, {}, false}),
    [](const testing::TestParamInfo<CaretCase>& info) { return info.param.name; });

struct ScrollCase {
    int32_t length, top;
    bool enabled;
    int32_t lastRow, page, position, lastPageTop;
};

void PrintTo(const ScrollCase& c, std::ostream* os) {
    *os << "length " << c.length << ", top " << c.top;
}

class ScrollBarFigures : public testing::TestWithParam<ScrollCase> {};

TEST_P(ScrollBarFigures, RangePagePosition) {
    const ScrollCase& c = GetParam();
    const HexLayout layout = Make({}, 500, 100, c.length);
    const HexScrollInfo info = layout.ScrollInfo(c.top, c.length);
    EXPECT_EQ(info.enabled, c.enabled);
    EXPECT_EQ(info.lastRow, c.lastRow);
    EXPECT_EQ(info.page, c.page);
    EXPECT_EQ(info.position, c.position);
    EXPECT_EQ(layout.LastPageTop(c.length), c.lastPageTop);
}

// 15 bytes per row, 7 rows in view (8 counted for 100 bytes); the bar comes alive only when the
// last row index exceeds the rows in view.
INSTANTIATE_TEST_SUITE_P(Lengths, ScrollBarFigures,
                         testing::Values(ScrollCase{100, 0, false, 6, 8, 0, 0},
                                         ScrollCase{120, 0, false, 7, 7, 0, 15},
                                         ScrollCase{121, 15, true, 8, 7, 1, 30},
                                         ScrollCase{200, 30, true, 13, 7, 2, 105},
                                         ScrollCase{0, 0, false, 0, 0, 0, 0}));

} // namespace
