// When the progress line is drawn and erased; times are given, never waited for.
#include "ProgressLine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using std::chrono::milliseconds;

// A short run shows nothing; a long one draws at most every interval, a long name loses its
// front, Clear erases only what is shown, and a disabled line never writes.
TEST(ProgressLine, WaitsForALongRunThenDrawsAtMostEveryIntervalAndClearErasesIt) {
    std::ostringstream out;
    ProgressLine line(out, true, 10);
    const ProgressLine::Clock::time_point start = ProgressLine::Clock::now();
    line.Update(1, "a.png", start + milliseconds(500));
    line.Clear();
    EXPECT_EQ(out.str(), "");
    line.Update(4, "b.png", start + milliseconds(2000));
    ASSERT_TRUE(line.Shown());
    EXPECT_EQ(out.str().rfind("\r[4/10]", 0), 0u) << out.str();
    const std::string afterFirst = out.str();
    line.Update(5, "c.png", start + milliseconds(2100));
    EXPECT_EQ(out.str(), afterFirst) << "too soon to redraw";
    line.Update(6, std::string(60, 'x') + "/end.png", start + milliseconds(2300));
    EXPECT_NE(out.str().find("[6/10] 2.6 images/s ..." + std::string(29, 'x') + "/end.png\x1b[K"), std::string::npos)
        << out.str();
    out.str("");
    line.Clear();
    line.Clear();
    EXPECT_EQ(out.str(), "\r\x1b[K");
    EXPECT_FALSE(line.Shown());
    ProgressLine disabled(out, false, 3);
    disabled.Update(3, "a.png", start + milliseconds(5000));
    disabled.Clear();
    EXPECT_EQ(out.str(), "\r\x1b[K") << "a disabled line never writes";
}

} // namespace
