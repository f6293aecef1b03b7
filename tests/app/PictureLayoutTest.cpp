// Geometry of the picture view: stretch, fit and zoom modes, and the bars around a kept ratio.
#include "PictureLayout.h"

#include <gtest/gtest.h>

namespace {

struct LayoutCase {
    const char* name;
    int left, top, right, bottom;
    int imageWidth, imageHeight;
    bool maintainAspect, fit;
    int zoomIn;
    LayoutRectF sourceIn;
    // expected
    bool clearOnly;
    LayoutRectF destination, source;
    int zoomOut;
    std::vector<LayoutRect> bars;
};

std::ostream& operator<<(std::ostream& os, const LayoutCase& c) {
    return os << c.name;
}

class PictureLayoutTest : public ::testing::TestWithParam<LayoutCase> {};

void ExpectRect(const LayoutRectF& actual, const LayoutRectF& expected, const char* what) {
    EXPECT_FLOAT_EQ(actual.x, expected.x) << what;
    EXPECT_FLOAT_EQ(actual.y, expected.y) << what;
    EXPECT_FLOAT_EQ(actual.width, expected.width) << what;
    EXPECT_FLOAT_EQ(actual.height, expected.height) << what;
}

TEST_P(PictureLayoutTest, Computes) {
    const LayoutCase& c = GetParam();
    PictureLayoutInput in;
    in.left = c.left;
    in.top = c.top;
    in.right = c.right;
    in.bottom = c.bottom;
    in.imageWidth = c.imageWidth;
    in.imageHeight = c.imageHeight;
    in.maintainAspect = c.maintainAspect;
    in.fit = c.fit;
    in.zoomPercent = c.zoomIn;
    in.source = c.sourceIn;
    const PictureLayoutResult out = ComputePictureLayout(in);
    EXPECT_EQ(out.clearOnly, c.clearOnly);
    if (c.clearOnly) {
        return;
    }
    ExpectRect(out.destination, c.destination, "destination");
    ExpectRect(out.source, c.source, "source");
    EXPECT_EQ(out.zoomPercent, c.zoomOut);
    EXPECT_EQ(out.bars, c.bars);
}

// Client 200 x 100 at (10, 20) unless said otherwise.
INSTANTIATE_TEST_SUITE_P(
    Modes, PictureLayoutTest,
    ::testing::Values(
        LayoutCase{"NoImage", 10, 20, 210, 120, 0, 0, true, true, 0, {}, true, {}, {}, 0, {}},
        LayoutCase{"ZeroHeightImage", 10, 20, 210, 120, 50, 0, false, true, 0, {}, true, {}, {}, 0, {}},
        LayoutCase{"EmptyClient", 10, 20, 10, 120, 50, 50, true, true, 0, {}, true, {}, {}, 0, {}},
        LayoutCase{"StretchIgnoresRatio",
                   10,
                   20,
                   210,
                   120,
                   40,
                   400,
                   false,
                   true,
                   33,
                   {1, 2, 3, 4},
                   false,
                   {10, 20, 200, 100},
                   {0, 0, 40, 400},
                   33,
                   {}},
        // 400 x 100 (ratio 4) is wider than the client (ratio 2): width-limited, bars above and below.
        LayoutCase{"FitWide",
                   10,
                   20,
                   210,
                   120,
                   400,
                   100,
                   true,
                   true,
                   0,
                   {},
                   false,
                   {10, 45, 200, 50},
                   {0, 0, 400, 100},
                   12,
                   {{10, 20, 200, 25}, {10, 95, 200, 25}}},
        // 100 x 200 (ratio 0.5): height-limited, bars left and right.
        LayoutCase{"FitTall",
                   10,
                   20,
                   210,
                   120,
                   100,
                   200,
                   true,
                   true,
                   0,
                   {},
                   false,
                   {85, 20, 50, 100},
                   {0, 0, 100, 200},
                   100,
                   {{10, 20, 75, 100}, {135, 20, 75, 100}}},
        // Equal ratios take the height branch: no bars at all.
        LayoutCase{"FitEqualRatio",
                   10,
                   20,
                   210,
                   120,
                   300,
                   150,
                   true,
                   true,
                   0,
                   {},
                   false,
                   {10, 20, 200, 100},
                   {0, 0, 300, 150},
                   33,
                   {}},
        // An odd margin is split with integer division; the far bar starts at right - margin.
        LayoutCase{"FitOddMargin",
                   0,
                   0,
                   101,
                   50,
                   100,
                   100,
                   true,
                   true,
                   0,
                   {},
                   false,
                   {25, 0, 50, 50},
                   {0, 0, 100, 100},
                   50,
                   {{0, 0, 25, 50}, {76, 0, 25, 50}}},
        // Zoom 50% of 200 x 100 = 100 x 50: all visible, centred, origin kept at 0.
        LayoutCase{"ZoomSmallerThanClient",
                   10,
                   20,
                   210,
                   120,
                   200,
                   100,
                   true,
                   false,
                   50,
                   {},
                   false,
                   {60, 45, 100, 50},
                   {0, 0, 200, 100},
                   50,
                   {{10, 20, 50, 100}, {160, 20, 50, 100}, {10, 20, 200, 25}, {10, 95, 200, 25}}},
        // Zoom 200% of 400 x 300 = 800 x 600 into 200 x 100: a 100 x 50 window, scrolled to (30, 40).
        LayoutCase{"ZoomWindowKeepsOrigin",
                   10,
                   20,
                   210,
                   120,
                   400,
                   300,
                   true,
                   false,
                   200,
                   {30, 40, 0, 0},
                   false,
                   {10, 20, 200, 100},
                   {30, 40, 100, 50},
                   200,
                   {}},
        // An origin that would show past the image's edge is pulled back.
        LayoutCase{"ZoomOriginClamped",
                   10,
                   20,
                   210,
                   120,
                   400,
                   300,
                   true,
                   false,
                   200,
                   {350, 290, 0, 0},
                   false,
                   {10, 20, 200, 100},
                   {300, 250, 100, 50},
                   200,
                   {}}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
