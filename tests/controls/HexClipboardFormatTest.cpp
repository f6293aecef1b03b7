#include "HexClipboardFormat.h"
#include "HexLayout.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

const std::vector<uint8_t> kData{'A', 'B', 0x01, 0xFF, 'x', 'y', 'z', 0x7F};

std::vector<uint8_t> Bytes(const std::string& s) {
    return std::vector<uint8_t>(s.begin(), s.end());
}

struct CopyCase {
    std::string name;
    int32_t start, end;
    int mode;
    std::vector<uint8_t> binary;
    std::string text;
};

void PrintTo(const CopyCase& c, std::ostream* os) {
    *os << c.name;
}

class CopyBlocks : public testing::TestWithParam<CopyCase> {};

TEST_P(CopyBlocks, ExactBytesInBothFormats) {
    const CopyCase& c = GetParam();
    const auto payload = HexClipboardFormat::MakeCopy(kData, c.start, c.end, c.mode);
    ASSERT_TRUE(payload.has_value());
    EXPECT_EQ(payload->binary, c.binary);
    EXPECT_EQ(payload->text, c.text);
}

// The character column copies start..end exclusive; every other column copies one byte more.
INSTANTIATE_TEST_SUITE_P(
    Modes, CopyBlocks,
    testing::Values(
        CopyCase{"CharacterForward", 1, 4, HexModeCharacter, Bytes("B\x01\xFF"), "B.."},
        CopyCase{"CharacterReversed", 4, 1, HexModeCharacter, Bytes("B\x01\xFF"), "B.."},
        CopyCase{"CharacterEmptyRange", 3, 3, HexModeCharacter, {}, ""},
        CopyCase{"CharacterWholeBuffer", 0, 8, HexModeCharacter, kData, "AB..xyz."},
        CopyCase{"HexForwardInclusive", 1, 4, HexModeHigh, Bytes("B\x01\xFFx"), "42 01 FF 78 "},
        CopyCase{"HexReversedTextFromStart", 4, 1, HexModeLow, Bytes("B\x01\xFFx"), "78 79 7A 7F "},
        CopyCase{"HexWholeBufferStopsAtEnd", 0, 8, HexModeHigh, kData, "41 42 01 FF 78 79 7A 7F "},
        CopyCase{"HexReversedNearEnd", 7, 5, HexModeHigh, Bytes("yz\x7F"), "7F "},
        CopyCase{"AddressColumnCopiesLikeHex", 2, 2, HexModeAddress, Bytes("\x01"), "01 "}),
    [](const testing::TestParamInfo<CopyCase>& info) { return info.param.name; });

TEST(HexClipboardFormat, NothingWithoutSelection) {
    EXPECT_FALSE(HexClipboardFormat::MakeCopy(kData, -1, -1, HexModeHigh).has_value());
    EXPECT_FALSE(HexClipboardFormat::MakeCopy(kData, 2, -1, HexModeCharacter).has_value());
    EXPECT_FALSE(HexClipboardFormat::MakeCopy(kData, -1, 3, HexModeHigh).has_value());
}

TEST(HexClipboardFormat, SelectionPastEmptyBufferCopiesNothing) {
    const auto payload = HexClipboardFormat::MakeCopy({}, 0, 0, HexModeHigh);
    ASSERT_TRUE(payload.has_value());
    EXPECT_TRUE(payload->binary.empty());
    EXPECT_TRUE(payload->text.empty());
}

} // namespace
