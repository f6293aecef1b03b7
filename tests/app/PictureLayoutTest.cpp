// Geometry of the picture view: stretch, fit and zoom modes, and the bars around a kept ratio.
#include "PictureLayout.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// "destination from source zoom N bars ..." or "clear".
std::string Text(const PictureLayoutResult& out) {
    if (out.clearOnly)
        return "clear";
    std::ostringstream text;
    const auto rect = [&](const char* before, auto r) { text << before << r.x << ',' << r.y << ' ' << r.width << 'x' << r.height; };
    rect("", out.destination);
    rect(" from ", out.source);
    text << " zoom " << out.zoomPercent << " bars";
    for (const LayoutRect& bar : out.bars)
        rect(" ", bar);
    return text.str();
}

struct LayoutCase {
    const char* name;
    PictureLayoutInput in; // client, image size, maintain aspect, fit, zoom, last source
    const char* expected;
};

class PictureLayoutTest : public ::testing::TestWithParam<LayoutCase> {};

TEST_P(PictureLayoutTest, Computes) {
    EXPECT_EQ(Text(ComputePictureLayout(GetParam().in)), GetParam().expected);
}

// Client 200 x 100 at (10, 20) unless said otherwise.
INSTANTIATE_TEST_SUITE_P(
    Modes, PictureLayoutTest,
    ::testing::Values(
        LayoutCase{"NoImage", {10, 20, 210, 120, 0, 0, true, true, 0, {}}, "clear"},
        LayoutCase{"ZeroHeightImage", {10, 20, 210, 120, 50, 0, false, true, 0, {}}, "clear"},
        LayoutCase{"EmptyClient", {10, 20, 10, 120, 50, 50, true, true, 0, {}}, "clear"},
        LayoutCase{"StretchIgnoresRatio", {10, 20, 210, 120, 40, 400, false, true, 33, {1, 2, 3, 4}},
                   "10,20 200x100 from 0,0 40x400 zoom 33 bars"},
        // Wider than the client: width-limited, bars above and below.
        LayoutCase{"FitWide", {10, 20, 210, 120, 400, 100, true, true, 0, {}},
                   "10,45 200x50 from 0,0 400x100 zoom 12 bars 10,20 200x25 10,95 200x25"},
        LayoutCase{"FitTall", {10, 20, 210, 120, 100, 200, true, true, 0, {}},
                   "85,20 50x100 from 0,0 100x200 zoom 100 bars 10,20 75x100 135,20 75x100"},
        // Equal ratios take the height branch: no bars at all.
        LayoutCase{"FitEqualRatio", {10, 20, 210, 120, 300, 150, true, true, 0, {}},
                   "10,20 200x100 from 0,0 300x150 zoom 33 bars"},
        // An odd margin is split with integer division; the far bar starts at right - margin.
        LayoutCase{"FitOddMargin", {0, 0, 101, 50, 100, 100, true, true, 0, {}},
                   "25,0 50x50 from 0,0 100x100 zoom 50 bars 0,0 25x50 76,0 25x50"},
        // Zoom 50% of 200 x 100 = 100 x 50: all visible, centred, origin kept at 0.
        LayoutCase{"ZoomSmallerThanClient", {10, 20, 210, 120, 200, 100, true, false, 50, {}},
                   "60,45 100x50 from 0,0 200x100 zoom 50 bars 10,20 50x100 160,20 50x100 10,20 200x25 10,95 200x25"},
        // Zoom 200% of 400 x 300 into 200 x 100: a 100 x 50 window, scrolled to (30, 40).
        LayoutCase{"ZoomWindowKeepsOrigin", {10, 20, 210, 120, 400, 300, true, false, 200, {30, 40, 0, 0}},
                   "10,20 200x100 from 30,40 100x50 zoom 200 bars"},
        // An origin that would show past the image's edge is pulled back.
        LayoutCase{"ZoomOriginClamped", {10, 20, 210, 120, 400, 300, true, false, 200, {350, 290, 0, 0}},
                   "10,20 200x100 from 300,250 100x50 zoom 200 bars"}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
