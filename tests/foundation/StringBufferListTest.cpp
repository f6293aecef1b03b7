#include "StringBufferList.h"
#include "FoundationTestSupport.h"
#include "StringBufferException.h"

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;

Lines LinesOf(const StringBufferList& list) {
    Lines lines;
    for (int i = 0; i < list.GetCount(); ++i)
        lines.push_back(Bytes(list.GetItem(i)));
    return lines;
}

StringBuffer Sb(const std::string& bytes) { return StringBuffer(bytes.data(), static_cast<int32_t>(bytes.size())); }

TEST(StringBufferListSplit, RunsOfSeparatorsCountAsOne) {
    struct Case { std::string text, separators; Lines pieces; };
    const std::vector<Case> cases = {
        {"  a   b  ", " ", {"a", "b"}}, {"a,;b;,c", ",;", {"a", "b", "c"}}, {"abc", "x", {"abc"}},
        {",,,", ",", {}}, {"a,b", "", {}},
        {"a,b\0c,d"s, ",", {"a", "b"}}, // the text ends at its first NUL
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("'" + c.text + "' by '" + c.separators + "'");
        StringBufferList list;
        list.Add(StringBuffer("kept"));
        EXPECT_EQ(list.Split(Sb(c.text), Sb(c.separators)), static_cast<int>(c.pieces.size()));
        Lines expected = {"kept"};
        expected.insert(expected.end(), c.pieces.begin(), c.pieces.end());
        EXPECT_EQ(LinesOf(list), expected);
    }
}

TEST(StringBufferListFiles, SaveEndsEveryLineWithCrLf) {
    struct Case { const char* name; std::string existing; Lines lines; std::string expected; };
    const std::vector<Case> cases = {
        {"empty list writes nothing", "old", {}, ""},
        {"shorter content truncates", "a much longer old text\r\n", {"", "a"}, "\r\na\r\n"},
        {"embedded nul written by length", "", {"a\0b"s}, "a\0b\r\n"s},
    };
    TempFolder folder;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string path = folder.file("out.txt");
        std::filesystem::remove(path);
        if (!c.existing.empty())
            writeFile(path, c.existing);
        StringBufferList list;
        for (const std::string& line : c.lines)
            list.Add(Sb(line));
        EXPECT_TRUE(list.SaveToFile(StringBuffer(path.c_str()), false, true));
        EXPECT_EQ(readFile(path), c.expected);
    }
}

// Loud: an exception (the ini file catches it); quietly: false on each failure. Nothing to write,
// or a device, is no failure.
TEST(StringBufferListFiles, FailuresThrowOrGiveFalse) {
    TempFolder folder;
    const StringBuffer missingFolder(folder.file("absent/out.txt").c_str());
    StringBufferList lines;
    lines.Add(StringBuffer("line"));
    EXPECT_THROW(lines.LoadFromFile(StringBuffer(folder.file("absent.txt").c_str())), StringBufferException);
    EXPECT_THROW(lines.SaveToFile(StringBuffer("/dev/full"), false, true), StringBufferException);
    EXPECT_EQ(LinesOf(lines), Lines{"line"}); // failed loads add nothing
    EXPECT_EQ(std::vector<bool>({lines.SaveToFile(missingFolder, false, false),
                                 lines.SaveToFile(StringBuffer(folder.path().c_str()), true, false),
                                 lines.SaveToFile(StringBuffer("/dev/full"), false, false),
                                 StringBufferList().SaveToFile(StringBuffer("/dev/full"), false, true),
                                 lines.SaveToFile(StringBuffer("/dev/null"), false, true)}),
              std::vector<bool>({false, false, false, true, true}));
}

} // namespace
