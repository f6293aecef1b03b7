// Button rules, statistics texts, row texts and stepping through the image files.
#include "ButtonRules.h"
#include "DecodeStatistics.h"
#include "ImageFileList.h"
#include "ResultText.h"

#include <gtest/gtest.h>

namespace {

// ---- Button rules --------------------------------------------------------------------------

struct ButtonCase {
    const char* name;
    ButtonInputs in;
    ButtonStates expected; // captureMulti, capture, open, next, previous, decodeImage, decodeMulti
};

void PrintTo(const ButtonCase& c, std::ostream* os) {
    *os << c.name;
}

class ButtonRulesTest : public ::testing::TestWithParam<ButtonCase> {};

TEST_P(ButtonRulesTest, Enables) {
    const ButtonStates s = ComputeButtonStates(GetParam().in);
    const ButtonStates& e = GetParam().expected;
    EXPECT_EQ(s.captureMulti, e.captureMulti);
    EXPECT_EQ(s.capture, e.capture);
    EXPECT_EQ(s.openImage, e.openImage);
    EXPECT_EQ(s.next, e.next);
    EXPECT_EQ(s.previous, e.previous);
    EXPECT_EQ(s.decodeImage, e.decodeImage);
    EXPECT_EQ(s.decodeMulti, e.decodeMulti);
}

INSTANTIATE_TEST_SUITE_P(
    States, ButtonRulesTest,
    ::testing::Values(
        ButtonCase{
            "NoReaderNoImages", {false, false, 0, 0}, {false, false, true, false, false, false, false}},
        ButtonCase{"ReaderNoImages", {false, true, 0, 0}, {true, true, true, false, false, false, false}},
        ButtonCase{"OneImage", {false, false, 1, 0}, {false, false, true, false, false, true, true}},
        ButtonCase{"ThreeAtFirst", {false, false, 3, 0}, {false, false, true, true, false, true, true}},
        ButtonCase{"ThreeAtMiddle", {false, true, 3, 1}, {true, true, true, true, true, true, true}},
        ButtonCase{"ThreeAtLast", {false, false, 3, 2}, {false, false, true, false, true, true, true}},
        ButtonCase{"SteppedPastEnd", {false, false, 3, 3}, {false, false, true, false, true, true, true}},
        ButtonCase{
            "SteppedBeforeStart", {false, false, 3, -1}, {false, false, true, true, false, true, true}},
        ButtonCase{"BusyDisablesAll", {true, true, 3, 1}, {false, false, false, false, false, false, false}},
        // A capture empties the list but keeps the index: arrows and decoding go off.
        ButtonCase{
            "ListEmptiedKeepsIndex", {false, true, 0, 2}, {true, true, true, false, false, false, false}}),
    [](const auto& info) { return std::string(info.param.name); });

// ---- Statistics texts ----------------------------------------------------------------------

struct StatisticsCase {
    const char* name;
    int32_t symbols, decodes, images;
    uint32_t totalDecode, totalProcess;
    const char *averageTime, *imageCount, *symbolsCount, *averageProcess;
};

void PrintTo(const StatisticsCase& c, std::ostream* os) {
    *os << c.name;
}

class StatisticsTest : public ::testing::TestWithParam<StatisticsCase> {};

TEST_P(StatisticsTest, Formats) {
    const StatisticsCase& c = GetParam();
    DecodeStatistics stats;
    stats.symbolsCount = c.symbols;
    stats.decodeCount = c.decodes;
    stats.imageCount = c.images;
    stats.totalDecodeMs = c.totalDecode;
    stats.totalImageProcessMs = c.totalProcess;
    const DecodeStatistics::Texts t = stats.Format();
    EXPECT_EQ(t.averageTime, c.averageTime);
    EXPECT_EQ(t.imageCount, c.imageCount);
    EXPECT_EQ(t.symbolsCount, c.symbolsCount);
    EXPECT_EQ(t.averageImageProcessTime, c.averageProcess);
}

INSTANTIATE_TEST_SUITE_P(
    Values, StatisticsTest,
    ::testing::Values(StatisticsCase{"Nothing", 0, 0, 0, 0, 0, "0.00ms", "0", "0", "0.00ms"},
                      // No decode yet: both averages read 0.00 whatever the totals say.
                      StatisticsCase{"NoDecodeWithTotals", 3, 0, 2, 500, 70, "0.00ms", "2", "3", "0.00ms"},
                      StatisticsCase{"ThirdsRound", 5, 3, 1, 100, 10, "33.33ms", "1", "5", "3.33ms"},
                      // The image-process average divides by decodes, not by images.
                      StatisticsCase{"ProcessPerDecode", 0, 4, 1, 10, 30, "2.50ms", "1", "0", "7.50ms"},
                      StatisticsCase{"Large", 2147483647, 1, 1, 4000000000u, 0, "4000000000.00ms", "1",
                                     "2147483647", "0.00ms"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(Statistics, ClearKeepsOnlyTheLastImageProcessTime) {
    DecodeStatistics stats;
    stats.symbolsCount = 1;
    stats.decodeCount = 2;
    stats.imageCount = 3;
    stats.totalDecodeMs = 4;
    stats.lastImageProcessMs = 5;
    stats.totalImageProcessMs = 6;
    stats.Clear();
    EXPECT_EQ(stats.symbolsCount, 0);
    EXPECT_EQ(stats.decodeCount, 0);
    EXPECT_EQ(stats.imageCount, 0);
    EXPECT_EQ(stats.totalDecodeMs, 0u);
    EXPECT_EQ(stats.totalImageProcessMs, 0u);
    EXPECT_EQ(stats.lastImageProcessMs, 5u);
}

// ---- Auto-reset event ----------------------------------------------------------------------

TEST(ResultRowText, SpellsOutControlCodesOnOneLine) {
    using namespace std::string_literals;
    const struct {
        std::string bytes, shown;
        RowBytes encoding = RowBytes::Latin1;
    } cases[] = {
        {"@\n\x1e\rANSI 636001", "@<LF><RS><CR>ANSI 636001"},
        {"\0\x01\t\x1b\x1f"s, "<NUL><SOH><HT><ESC><US>"},
        {"~\x7f", "~<DEL>"},
        {"\x80\x85\x9f", "<80><85><9F>"},
        {" \xa0\xe9\xff", " \xa0\xe9\xff"}, // printable in ISO-8859-1: kept
        {"", ""},
        // UTF-8 text converted from its character set: multi-byte characters are kept whole.
        {"\xe6\x97\xa5\n\xc2\x85\x7f", "\xe6\x97\xa5<LF>\xc2\x85<DEL>", RowBytes::Utf8},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ResultRowText(c.bytes, c.encoding), c.shown);
    }
}

// ---- Image file list -----------------------------------------------------------------------

TEST(ImageFileList, NamePartTakesTheLastSeparatorOfEitherKind) {
    const std::pair<const char*, const char*> cases[] = {
        {"/a/b/c.png", "c.png"}, {"C:\\x\\y.bmp", "y.bmp"}, {"a\\b/c.jpg", "c.jpg"},
        {"a/b\\c.jpg", "c.jpg"}, {"bare.png", "bare.png"},  {"dir/", ""},
    };
    for (const auto& [path, name] : cases) {
        EXPECT_EQ(ImageFileList::NamePart(path), name) << path;
    }
}

// One step: which entry is shown (or none) and the index afterwards.
struct Step {
    char direction; // 'n' next, 'p' previous
    const char* shown;
    int32_t index;
};

struct NavigationCase {
    const char* name;
    std::vector<std::string> files;
    std::vector<Step> steps;
};

void PrintTo(const NavigationCase& c, std::ostream* os) {
    *os << c.name;
}

class NavigationTest : public ::testing::TestWithParam<NavigationCase> {};

TEST_P(NavigationTest, StepsAndIndexes) {
    ImageFileList list;
    list.Replace(GetParam().files);
    for (const Step& step : GetParam().steps) {
        const auto shown = step.direction == 'n' ? list.StepNext() : list.StepPrevious();
        EXPECT_EQ(shown.value_or("-"), step.shown) << step.direction;
        EXPECT_EQ(list.CurrentIndex(), step.index) << step.direction;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Lists, NavigationTest,
    ::testing::Values(
        NavigationCase{
            "ForwardAndBack", {"a", "b", "c"}, {{'n', "b", 1}, {'n', "c", 2}, {'p', "b", 1}, {'p', "a", 0}}},
        // Stepping past the end drops the position: the index still moves, later steps do nothing.
        NavigationCase{
            "PastTheEnd", {"a", "b"}, {{'n', "b", 1}, {'n', "-", 2}, {'n', "-", 2}, {'p', "-", 2}}},
        NavigationCase{"BeforeTheStart", {"a", "b"}, {{'p', "-", -1}, {'n', "-", -1}}},
        NavigationCase{"SingleFile", {"only"}, {{'n', "-", 1}}},
        NavigationCase{"Empty", {}, {{'n', "-", 0}, {'p', "-", 0}}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(ImageFileList, ReplaceStartsAtTheFirstAndClearKeepsTheIndex) {
    ImageFileList list;
    list.Replace({"a", "b", "c"});
    EXPECT_EQ(list.CurrentPath().value_or(""), "a");
    list.StepNext();
    list.StepNext();
    EXPECT_EQ(list.Count(), 3);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.CurrentIndex(), 2);
    EXPECT_FALSE(list.StepNext()) << "no position after the list was emptied";
    list.Replace({"x"});
    EXPECT_EQ(list.CurrentIndex(), 0);
    EXPECT_EQ(list.CurrentPath().value_or(""), "x");
}

} // namespace
