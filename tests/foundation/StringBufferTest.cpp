#include "StringBuffer.h"
#include "FoundationTestSupport.h"

#include <functional>
#include <string>
#include <tuple>
#include <vector>

namespace {

using namespace std::string_literals;

struct MadeCase {
    const char* name;
    std::function<StringBuffer()> make;
    std::string expected;
};

TEST(StringBuffer, ConstructionGivesExactBytesInExactBuffer) {
    const MadeCase cases[] = {
        {"Default", [] { return StringBuffer(); }, ""},
        {"NullCString", [] { return StringBuffer(static_cast<const char*>(nullptr)); }, ""},
        {"CountDropsTrailingNul", [] { return StringBuffer("abc", 4); }, "abc"},
        {"CountShorterThanText", [] { return StringBuffer("abcdef", 2); }, "ab"},
        {"CountNegative", [] { return StringBuffer("abc", -5); }, ""},
        {"CountKeepsEmbeddedNul", [] { return StringBuffer("a\0b", 3); }, "a\0b"s},
        {"CountDropsOnlyLastNul", [] { return StringBuffer("a\0\0", 3); }, "a\0"s},
        {"WideKeepsLowByte", [] { return StringBuffer(L"\u0141\u00e9"); }, "\x41\xe9"},
        {"WideCountDropsTrailingNul", [] { return StringBuffer(L"ab", 3); }, "ab"},
        {"UnsignedLong", [] { return StringBuffer(4294967295ul); }, "4294967295"},
        {"UnsignedIntMax", [] { return StringBuffer(4294967295u); }, "-1"},
        {"UnsignedIntBelowHighBit", [] { return StringBuffer(2147483647u); }, "2147483647"},
        {"CharNul", [] { return StringBuffer('\0'); }, ""},
        {"FloatLargest", [] { return StringBuffer(3.40282347e38f); },
                 "340282346638528859811704183484516925440.000000"},
        {"CopyKeepsEmbeddedNul", [] { return StringBuffer(StringBuffer("x\0y", 3)); }, "x\0y"s}};
    for (const MadeCase& c : cases) {
        SCOPED_TRACE(c.name);
        const StringBuffer s = c.make();
        EXPECT_EQ(Bytes(s), c.expected);
        EXPECT_TRUE(HasExactBuffer(s));
    }
}

// SubString into an out-parameter that starts as "keep".
StringBuffer IntoOut(const StringBuffer& s, uint32_t start, uint32_t count) {
    StringBuffer out("keep");
    s.SubString(out, start, count);
    return out;
}

struct EditCase {
    const char* name;
    std::string start;
    std::function<void(StringBuffer&)> edit;
    std::string expected;
};

TEST(StringBuffer, EditingKeepsExactBuffer) {
    const EditCase cases[] = {
        {"AppendCountedDropsNul", "ab", [](StringBuffer& s) { s.append("cd", 3); }, "abcd"},
        {"AppendSelf", "ab", [](StringBuffer& s) { s.append(&s); }, "abab"},
        {"AppendOtherWithNul", "a", [](StringBuffer& s) { const StringBuffer o("b\0c", 3); s.append(&o); }, "ab\0c"s},
        {"ShiftStopsAtNul", "a",
                 [](StringBuffer& s) { s << StringBuffer("b\0c", 3) << "d" << -7; }, "abd-7"},
        {"NOfCharIncludingNul", "a", [](StringBuffer& s) { s.appendNOfChar(3, 0); }, "a\0\0\0"s},
        {"PlusNulAddsByte", "abc", [](StringBuffer& s) { s = s + '\0'; }, "abc\0"s},
        {"InsertFromSelf", "abc", [](StringBuffer& s) { s.insert(1, s.str(), 2); }, "aabbc"},
        {"EraseMiddle", "abcdef", [](StringBuffer& s) { s.erase(1, 2); }, "adef"},
        {"EraseCountPastEndStops", "abcdef", [](StringBuffer& s) { s.erase(4, 99); }, "abcd"},
        {"EraseNegativePos", "abc", [](StringBuffer& s) { s.erase(-1, 1); }, "abc"},
        {"AssignSameLengthCounted", "xyz", [](StringBuffer& s) { s.assign("abc", 4); }, "abc"},
        {"AssignNullCString", "xyz", [](StringBuffer& s) { s = static_cast<const char*>(nullptr); }, ""},
        {"SelfAssign", "xyz", [](StringBuffer& s) { s = *&s; }, "xyz"},
        {"SubStringIntoOut", "abcdef", [](StringBuffer& s) { s = IntoOut(s, 2, 3); }, "cde"},
        {"SubStringPastEndLeavesOut", "abc", [](StringBuffer& s) { s = IntoOut(s, 3, 1); }, "keep"},
        {"SubStringCutAtEnd", "abcdef", [](StringBuffer& s) { s = s.SubString(4, 0xFFFFFFFFu); }, "ef"}};
    for (const EditCase& c : cases) {
        SCOPED_TRACE(c.name);
        StringBuffer s(c.start.data(), static_cast<int32_t>(c.start.size()));
        c.edit(s);
        EXPECT_EQ(Bytes(s), c.expected);
        EXPECT_TRUE(HasExactBuffer(s));
    }
}

TEST(StringBufferSearch, SubstringPositions) {
    struct Case { std::string text; const char* pattern; uint32_t start; int32_t first; int32_t last; };
    const std::vector<Case> cases = {
        {"abcabc", "bc", 0, 1, 4},   {"abcabc", "b", 2, 4, 4},
        {"abcabc", "cb", 0, -1, -1}, // a substring, not a character set
        {"aaa", "aa", 0, 0, 0},      // no overlap when counting from the left
        {"aaaaa", "aa", 1, 1, 2},    {"abc", "c", 3, -1, 2}, // start at the end finds nothing
        {"ab\0cb"s, "b", 0, 1, 1},   // the text after a NUL is never searched
        {"abc", "", 1, 1, -1},       // an empty pattern matches at start; no last one
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("text '" + c.text + "' pattern '" + c.pattern + "' from " + std::to_string(c.start));
        const StringBuffer s(c.text.data(), static_cast<int32_t>(c.text.size()));
        EXPECT_EQ(std::make_pair(s.find_first_of(c.pattern, c.start), s.find_last_of(c.pattern)), std::make_pair(c.first, c.last));
    }
    const StringBuffer abc("abc");
    EXPECT_EQ(std::string({abc[0], abc[2], abc[3], abc[100], abc[-1]}), "ac\0\0\0"s) << "bytes outside read as NUL";
}

TEST(StringBufferCompare, OrderEqualityAndStartsWith) {
    struct Case { std::string a, b; int compare; bool equal; bool startsWith; };
    const std::vector<Case> cases = {
        {"a", "b", -1, false, false}, {"abc", "abc", 0, true, true}, {"ABC", "abc", -1, false, false},
        {"\xe9", "z", 1, false, false}, // bytes compare unsigned
        {"abc", "abcdef", -1, false, false}, // the receiver's terminator takes part
        {"abcdef", "abc", 1, false, false}, {"", "a", -1, false, false},
        {"a\0x"s, "a\0y"s, 0, false, false}, // ordering stops at a NUL, equality does not
    };
    for (const Case& c : cases) {
        SCOPED_TRACE("'" + c.a + "' vs '" + c.b + "'");
        const StringBuffer a(c.a.data(), static_cast<int32_t>(c.a.size()));
        const StringBuffer b(c.b.data(), static_cast<int32_t>(c.b.size()));
        EXPECT_EQ(std::make_tuple(a.compare(b), a == b, a.StartsWith(b)),
                  std::make_tuple(c.compare, c.equal, c.startsWith));
    }
    // The receiver's terminator takes part: one NUL more still matches, a second one does not.
    const StringBuffer abc("abc");
    EXPECT_EQ(std::vector<bool>({abc.StartsWith(abc + '\0'), abc.StartsWith(abc + '\0' + '\0'), abc.StartsWith(abc + 'd'),
                                 (abc + '\0').StartsWith(abc), abc == "abc", abc == "ab", (abc + '\0') == "abc",
                                 StringBuffer() == static_cast<const char*>(nullptr)}),
              std::vector<bool>({true, false, false, false, true, false, false, true}));
}

TEST(StringBufferShared, UppercaseReusesOneObjectAndLeavesReceiver) {
    const StringBuffer text("abZ 1\xe9");
    const StringBuffer& upper = text.uppercase();
    EXPECT_EQ(Bytes(upper), "ABZ 1\xe9");
    EXPECT_EQ(Bytes(text), "abZ 1\xe9");
    EXPECT_NE(&upper, &text.substr(0, 1));
    const StringBuffer withNul("a\0b", 3);
    EXPECT_EQ(&withNul.uppercase(), &upper);
    EXPECT_EQ(Bytes(upper), "AB"); // the NUL byte is left out
    EXPECT_TRUE(HasExactBuffer(upper));
    EXPECT_EQ(Bytes(upper.uppercase()), "AB");
}

} // namespace
