#include "BaseString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using KV::BaseString;
using String = BaseString<char>;

std::string Text(const String& s) { return std::string(s.GetBuffer(), static_cast<size_t>(s.Length())); }

TEST(BaseStringTest, ReplaceResumesAfterInsertedText) {
    struct Case { std::string text, find, with; int made; std::string expected; };
    const std::vector<Case> cases = {
        {"a&b&c", "&", "&amp;", 2, "a&amp;b&amp;c"}, // the inserted "&" is not replaced again
        {"&amp;lt;", "&amp;", "&", 1, "&lt;"}, {"aaa", "aa", "b", 1, "ba"}, {"abc", "", "y", 0, "abc"},
        {"abc", "abc", "", 1, ""},
        {"x\0x"s, "x", "yy", 2, "yy\0yy"s}, // NULs are ordinary units
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("'" + c.text + "' '" + c.find + "' -> '" + c.with + "'");
        String s(c.text.data(), static_cast<int>(c.text.size()));
        EXPECT_EQ(s.Replace(String(c.find.c_str()), String(c.with.c_str())), c.made);
        EXPECT_EQ(Text(s), c.expected);
        EXPECT_EQ(s.GetBuffer()[s.Length()], '\0');
    }
}

// Find and SubString split qualified XML names; equality looks up children and attributes.
TEST(BaseStringTest, FindSubStringAndEquality) {
    const String s("abcabc");
    EXPECT_EQ(std::vector<int>({s.Find(String("bc")), s.Find(String("bc"), 2), s.Find(String("bc"), 5), s.Find(String("abcabcd")),
                                s.Find(String("")), s.Find('c', 3), s.Find(':')}),
              std::vector<int>({1, 4, -1, -1, 0, 5, -1}));
    EXPECT_EQ(Text(s.SubString(2, 3)) + "|" + Text(s.SubString(4)) + "|" + Text(s.SubString(4, 99)) + "|" +
                  Text(s.SubString(6, 1)) + "|" + Text(s.SubString(-1, 1)),
              "cab|bc|bc||");
    EXPECT_EQ(std::string({s[0], s[6], s[-1]}), "a\0\0"s);
    const String withNul("a\0b", 3);
    EXPECT_EQ(std::vector<bool>({String("x") == "x", String(static_cast<const char*>(nullptr)) == "",
                                 withNul == "a", withNul == String("a\0b", 3), withNul != String("a\0c", 3)}),
              std::vector<bool>({true, true, false, true, true}));
}

} // namespace
