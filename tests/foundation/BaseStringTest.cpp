#include "BaseString.h"
#include "BaseStringList.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace std::string_literals;
using KV::BaseString;
using KV::BaseStringList;
using String = BaseString<char>;

std::string Text(const String& s) { return std::string(s.GetBuffer(), static_cast<size_t>(s.Length())); }

TEST(BaseStringTest, ReplaceResumesAfterInsertedText) {
    struct Case { std::string text, find, with; int made; std::string expected; };
    const std::vector<Case> cases = {
        {"a&b&c", "&", "&amp;", 2, "a&amp;b&amp;c"}, // the inserted "&" is not replaced again
        {"&&", "&", "&amp;", 2, "&amp;&amp;"}, {"&amp;lt;", "&amp;", "&", 1, "&lt;"},
        {"aaa", "aa", "b", 1, "ba"}, {"abc", "x", "y", 0, "abc"}, {"abc", "", "y", 0, "abc"},
        {"abc", "abc", "", 1, ""}, {"", "a", "b", 0, ""},
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
        {"a", "b", -1}, {"b", "a", 1},    {"ab", "abc", -1},      {"abc", "ab", 1},
        {"", "", 0},    {"\xe9", "z", 1}, {"a\0b"s, "a\0c"s, -1}, {"a\0"s, "a", 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("'" + c.a + "' vs '" + c.b + "'");
        const String a(c.a.data(), static_cast<int>(c.a.size()));
        const String b(c.b.data(), static_cast<int>(c.b.size()));
        EXPECT_EQ(a.Compare(b), c.compare);
        EXPECT_EQ(a == b, c.compare == 0);
        EXPECT_EQ(a != b, c.compare != 0);
    }
    EXPECT_TRUE(String("x") == "x");
    EXPECT_TRUE(String(static_cast<const char*>(nullptr)) == "");
}

TEST(BaseStringTest, WideUnitsWork) {
    BaseString<wchar_t> w(L"p:n\u0141");
    EXPECT_EQ(w.Length(), 4);
    EXPECT_EQ(w.Find(L':'), 1);
    EXPECT_EQ(w.SubString(2), BaseString<wchar_t>(L"n\u0141"));
    EXPECT_EQ(w.Replace(BaseString<wchar_t>(L":"), BaseString<wchar_t>(L"::")), 1);
    EXPECT_EQ(w, L"p::n\u0141");
    EXPECT_EQ(BaseString<wchar_t>(L"\u0141").Compare(BaseString<wchar_t>(L"z")), 1);
}

TEST(BaseStringListTest, SplitTreatsRunsOfSeparatorsAsOne) {
    struct Case { std::string text; const char* separators; std::vector<std::string> pieces; };
    const std::vector<Case> cases = {
        {"a\r\nb", "\r\n", {"a", "b"}}, {"\r\n\r\na\r\r\nb\n\n", "\r\n", {"a", "b"}}, {"one", "\r\n", {"one"}},
        {"", "\r\n", {}}, {"a b", "", {}}, {"\n\n", "\n", {}}, {"a\0b\nc"s, "\n", {"a\0b"s, "c"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("'" + c.text + "'");
        BaseStringList<char> list;
        list.Add(String("before"));
        EXPECT_EQ(list.Split(String(c.text.data(), static_cast<int>(c.text.size())), String(c.separators)),
                  static_cast<int>(c.pieces.size()));
        ASSERT_EQ(list.GetCount(), static_cast<int>(c.pieces.size()) + 1);
        for (size_t i = 0; i < c.pieces.size(); ++i)
            EXPECT_EQ(Text(list.GetAt(static_cast<int>(i) + 1)), c.pieces[i]);
    }
    BaseStringList<char> joined;
    joined.Split(String("x y  z"), String(" "));
    EXPECT_EQ(Text(joined.Join(String(", "))) + Text(joined.GetAt(3)), "x, y, z");
}

} // namespace
