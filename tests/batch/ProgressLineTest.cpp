// When the progress line is drawn and erased; times are given, never waited for.
#include "ProgressLine.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using std::chrono::milliseconds;

// A short run shows nothing; a long one draws at most every interval, a long name loses its
// front, and Clear erases only what is shown. (Off, it writes nothing: the command tests, whose
// standard error is no terminal, expect it empty.)
TEST(ProgressLine, WaitsForALongRunThenDrawsAtMostEveryIntervalAndClearErasesIt) {
    std::ostringstream out;
    ProgressLine line(out, true, 10);
    const ProgressLine::Clock::time_point start = ProgressLine::Clock::now();
    line.Update(1, "a.png", start + milliseconds(500));
    line.Clear();
    line.Update(4, "b.png", start + milliseconds(2000));
    line.Update(5, "c.png", start + milliseconds(2100)); // too soon to redraw
    line.Update(6, std::string(60, 'x') + "/end.png", start + milliseconds(2300));
    line.Clear();
    line.Clear();
    EXPECT_EQ(out.str(), "\r[4/10] 2.0 images/s b.png\x1b[K\r[6/10] 2.6 images/s ..." + std::string(29, 'x') +
                             "/end.png\x1b[K\r\x1b[K");
}

} // namespace
