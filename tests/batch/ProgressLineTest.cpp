// When the progress line is drawn and erased; times are given, never waited for.
#include "ProgressLine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using std::chrono::milliseconds;

TEST(ProgressLine, WaitsForALongRunThenDrawsAtMostEveryInterval) {
    std::ostringstream out;
    ProgressLine line(out, true, 10);
    const ProgressLine::Clock::time_point start = ProgressLine::Clock::now();
    line.Update(1, "a.png", start + milliseconds(500));
    EXPECT_EQ(out.str(), "") << "a short run shows nothing";
    line.Update(4, "b.png", start + milliseconds(2000));
    ASSERT_TRUE(line.Shown());
    EXPECT_NE(out.str().find("[4/10]"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("b.png"), std::string::npos);
    EXPECT_EQ(out.str().front(), '\r');
    const std::string afterFirst = out.str();
    line.Update(5, "c.png", start + milliseconds(2100));
    EXPECT_EQ(out.str(), afterFirst) << "too soon to redraw";
    line.Update(6, "d.png", start + milliseconds(2300));
    EXPECT_NE(out.str().find("[6/10] 2.6 images/s d.png"), std::string::npos) << out.str();
}

TEST(ProgressLine, ClearErasesOnlyWhatIsShownLongNamesLoseTheirFrontAndDisabledIsSilent) {
    std::ostringstream out;
    ProgressLine line(out, true, 3);
    line.Clear();
    EXPECT_EQ(out.str(), "");
    line.Update(1, std::string(60, 'x') + "/end.png", ProgressLine::Clock::now() + milliseconds(5000));
    EXPECT_NE(out.str().find("..." + std::string(29, 'x') + "/end.png\x1b[K"), std::string::npos) << out.str();
    out.str("");
    line.Clear();
    line.Clear();
    EXPECT_EQ(out.str(), "\r\x1b[K");
    EXPECT_FALSE(line.Shown());
    std::ostringstream none;
    ProgressLine disabled(none, false, 3);
    disabled.Update(3, "a.png", ProgressLine::Clock::now() + milliseconds(5000));
    disabled.Clear();
    EXPECT_EQ(none.str(), "") << "a disabled line never writes";
}

} // namespace
