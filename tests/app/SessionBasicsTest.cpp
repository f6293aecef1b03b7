// Button rules the window cannot reach, row texts and stepping through the image files.
#include "ButtonRules.h"
#include "ImageFileList.h"
#include "ResultText.h"

#include <gtest/gtest.h>

namespace {

TEST(ButtonRules, BusyOrAnEmptiedListTurnButtonsOff) {
    // busy, reader, files, index -> captureMulti, capture, open, next, previous, decodeImage, decodeMulti
    const std::pair<ButtonInputs, ButtonStates> cases[] = {
        {{true, true, 3, 1}, {false, false, false, false, false, false, false}},
        // A capture empties the list but keeps the index: arrows and decoding go off.
        {{false, true, 0, 2}, {true, true, true, false, false, false, false}},
    };
    for (const auto& [in, expected] : cases)
        EXPECT_TRUE(ComputeButtonStates(in) == expected) << in.busy << in.imageCount << in.currentIndex;
}

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
    for (const auto& c : cases)
        EXPECT_EQ(ResultRowText(c.bytes, c.encoding), c.shown);
}

TEST(ImageFileList, NamePartTakesTheLastSeparatorOfEitherKind) {
    const std::pair<const char*, const char*> cases[] = {
        {"/a/b/c.png", "c.png"}, {"C:\\x\\y.bmp", "y.bmp"}, {"a\\b/c.jpg", "c.jpg"},
        {"a/b\\c.jpg", "c.jpg"}, {"bare.png", "bare.png"},  {"dir/", ""},
    };
    for (const auto& [path, name] : cases)
        EXPECT_EQ(ImageFileList::NamePart(path), name) << path;
}

TEST(ImageFileList, StepsAndIndexes) {
    // Steps ('n' next, 'p' previous), each as "shown@index" ("-" when nothing is shown).
    const struct {
        std::vector<std::string> files;
        std::string steps, expected;
    } cases[] = {
        {{"a", "b", "c"}, "nnpp", "b@1 c@2 b@1 a@0"},
        // Stepping past the end drops the position: the index still moves, later steps do nothing.
        {{"a", "b"}, "nnnp", "b@1 -@2 -@2 -@2"},
        {{"a", "b"}, "pn", "-@-1 -@-1"},
        {{"only"}, "n", "-@1"},
        {{}, "np", "-@0 -@0"},
    };
    for (const auto& c : cases) {
        ImageFileList list;
        list.Replace(c.files);
        std::string seen;
        for (char step : c.steps) {
            const auto shown = step == 'n' ? list.StepNext() : list.StepPrevious();
            seen += (seen.empty() ? "" : " ") + shown.value_or("-") + "@" + std::to_string(list.CurrentIndex());
        }
        EXPECT_EQ(seen, c.expected) << c.steps;
    }
}

TEST(ImageFileList, ReplaceStartsAtTheFirstAndClearKeepsTheIndex) {
    ImageFileList list;
    list.Replace({"a", "b", "c"});
    EXPECT_EQ(list.CurrentPath().value_or(""), "a");
    list.StepNext();
    list.StepNext();
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.CurrentIndex(), 2);
    EXPECT_FALSE(list.StepNext()) << "no position after the list was emptied";
    list.Replace({"x"});
    EXPECT_EQ(list.CurrentIndex(), 0);
    EXPECT_EQ(list.CurrentPath().value_or(""), "x");
}

} // namespace
