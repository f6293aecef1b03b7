// The plug-ins' shared pieces that decide what the bench shows: payload typing, ECI extraction
// and settings parsing (retry passes are refused or taken when a plug-in opens).
#include "IniFile.h"
#include "PayloadType.h"
#include "SettingsReader.h"
#include "ZXingSymbol.h"

#include <ZyrReaderLowLevelAPI.h>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

struct TypeCase { const char* what; std::string bytes; int32_t eci; int32_t expected; };

TEST(PayloadType, ClassifiesByContent) {
    const TypeCase cases[] = {
        {"empty", "", 0, ZYR_DATA_ASCII}, {"printable", "HELLO 123", 0, ZYR_DATA_ASCII},
        {"licence separators", "@\n\x1e\rANSI 636014", 0, ZYR_DATA_ASCII},
        {"GS1 group separator", "0101234\x1d" "10ABC", 0, ZYR_DATA_ASCII},
        {"Latin-1 letters", "Gr\xfc\xdf" "e", 0, ZYR_DATA_TEXT8},
        {"NUL byte", std::string("A\0B", 3), 0, ZYR_DATA_BINARY},
        {"C1 control byte", "A\x85" "B", 0, ZYR_DATA_BINARY},
        {"DEL", "A\x7f", 0, ZYR_DATA_BINARY},
        {"text with an ECI", "HELLO", 26, ZYR_DATA_ECI_BYTES},
        {"binary with an ECI", std::string("\0\1", 2), 899, ZYR_DATA_ECI_BYTES},
    };
    for (const TypeCase& c : cases)
        EXPECT_EQ(
            kvdecode::payloadType(reinterpret_cast<const uint8_t*>(c.bytes.data()), c.bytes.size(), c.eci),
            c.expected)
            << c.what;
}

TEST(EciDesignators, ReadsEveryDesignatorInOrder) {
    struct Case { const char* what; std::string rendered; std::vector<int32_t> values; bool highBytesBefore; };
    const Case cases[] = {
        {"no designator", "]Q1HELLO", {}, false}, {"UTF-8", "]Q2\\000026Gr\xc3\xbc", {26}, false},
        {"8-bit text before the first", "]d4Gr\xfc\\000020\x82\xa0", {20}, true},
        {"doubled backslash is data", "]Q2AB\\\\000020CD\\000026", {26}, false},
        {"designator cut short", "]Q2\\000003A\\0000", {3}, false},
        {"not digits", "]Q2\\00002X", {}, false},
        {"large designator", "]d4\\811799AB", {811799}, false},
    };
    for (const Case& c : cases) {
        const kvdecode::EciDesignators found = kvdecode::eciDesignators(ZXing::ByteArray(c.rendered));
        EXPECT_EQ(std::make_tuple(found.values, found.highBytesBefore, kvdecode::firstEci(ZXing::ByteArray(c.rendered))),
                  std::make_tuple(c.values, c.highBytesBefore, c.values.empty() ? 0 : c.values[0])) << c.what;
    }
}

TEST(SettingsFile, ReadsSectionsKeysAndCommentsAndReportsTheFirstBadValue) {
    kvdecode::IniFile ini;
    std::string error;
    ASSERT_TRUE(ini.parse("; comment\n[Decoder]\n  TryHarder = yes \n# also a comment\n[images]\nRequired=A, B\n"
                          "N=12x\nX=0x10\nB=maybe\n", error)) << error;
    kvdecode::SettingsReader r(ini);
    EXPECT_TRUE(r.boolean("decoder", "tryharder", false));
    EXPECT_EQ(r.list("Images", "Required", {}), (std::vector<std::string>{"A", "B"}));
    EXPECT_EQ(std::make_pair(r.integer("Decoder", "Missing", 5, 0, 10), r.integer("images", "X", 0, 0, 255)), std::make_pair(5L, 16L));
    EXPECT_EQ(ini.keys("DECODER"), std::vector<std::string>{"TryHarder"});
    EXPECT_TRUE(r.ok());
    EXPECT_EQ(r.integer("images", "N", 7, 0, 255), 7);
    const std::string first = r.error();
    r.boolean("images", "B", true);
    EXPECT_FALSE(r.ok() || first.empty());
    EXPECT_EQ(r.error(), first) << "the first fault is the one reported";
    for (const char* bad : {"[Decoder\n", "[]\n", "just words\n", "=value\n"}) {
        kvdecode::IniFile other;
        error.clear();
        EXPECT_FALSE(other.parse(bad, error) || error.empty()) << bad;
    }
}

} // namespace
