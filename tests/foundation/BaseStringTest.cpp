#include "BaseString.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
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

TEST(BaseStringTest, FindSubStringAndEdits) {
    const String s("abcabc");
    EXPECT_EQ(std::vector<int>({s.Find(String("bc")), s.Find(String("bc"), 2), s.Find(String("bc"), 5), s.Find(String("abcabcd")),
                                s.Find(String("")), s.Find('c', 3), s.Find(':')}),
              std::vector<int>({1, 4, -1, -1, 0, 5, -1}));
    EXPECT_EQ(Text(s.SubString(2, 3)) + "|" + Text(s.SubString(4)) + "|" + Text(s.SubString(4, 99)) + "|" +
                  Text(s.SubString(6, 1)) + "|" + Text(s.SubString(-1, 1)),
              "cab|bc|bc||");

    String e("ad");
    e.Insert(1, String("bc"));
    e.Insert(99, String("e"));
    e.Insert(-3, String(">"));
    EXPECT_EQ(Text(e), ">abcde");
    e.Remove(0, 1);
    e.Remove(3, 99);
    e.Remove(7, 1);
    EXPECT_EQ(Text(e), "abc");
    e += 'd';
    e += "ef";
    e.Append("ghij", 2);
    EXPECT_EQ(Text(e), "abcdefgh");
    EXPECT_EQ(Text("<" + e + String(">")), "<abcdefgh>");
    EXPECT_EQ(std::string({e[0], e[8], e[-1]}), "a\0\0"s);
}

TEST(BaseStringTest, CompareAndEquality) {
    struct Case { std::string a, b; int compare; };
    const std::vector<Case> cases = {
        {"a", "b", -1}, {"ab", "abc", -1}, {"", "", 0}, {"\xe9", "z", 1}, {"a\0b"s, "a\0c"s, -1}, {"a\0"s, "a", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("'" + c.a + "' vs '" + c.b + "'");
        const String a(c.a.data(), static_cast<int>(c.a.size()));
        const String b(c.b.data(), static_cast<int>(c.b.size()));
        EXPECT_EQ(std::make_tuple(a.Compare(b), a == b, a != b), std::make_tuple(c.compare, c.compare == 0, c.compare != 0));
    }
    EXPECT_TRUE(String("x") == "x" && String(static_cast<const char*>(nullptr)) == "");
}

} // namespace
