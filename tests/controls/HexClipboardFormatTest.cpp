#include "HexClipboardFormat.h"
#include "HexLayout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::vector<uint8_t> kData{'A', 'B', 0x01, 0xFF, 'x', 'y', 'z', 0x7F};

std::vector<uint8_t> Bytes(const std::string& s) { return std::vector<uint8_t>(s.begin(), s.end()); }

// The character column copies start..end exclusive; every other column copies one byte more.
TEST(HexClipboardFormat, CopiesExactBytesInBothFormats) {
    struct Case { const char* name; int32_t start, end; int mode; std::vector<uint8_t> binary; std::string text; };
    const Case cases[] = {{"CharacterForward", 1, 4, HexModeCharacter, Bytes("B\x01\xFF"), "B.."},
        {"CharacterReversed", 4, 1, HexModeCharacter, Bytes("B\x01\xFF"), "B.."},
        {"CharacterEmptyRange", 3, 3, HexModeCharacter, {}, ""},
        {"CharacterWholeBuffer", 0, 8, HexModeCharacter, kData, "AB..xyz."},
        {"HexForwardInclusive", 1, 4, HexModeHigh, Bytes("B\x01\xFFx"), "42 01 FF 78 "},
        {"HexReversedTextFromStart", 4, 1, HexModeLow, Bytes("B\x01\xFFx"), "78 79 7A 7F "},
        {"HexWholeBufferStopsAtEnd", 0, 8, HexModeHigh, kData, "41 42 01 FF 78 79 7A 7F "},
        {"HexReversedNearEnd", 7, 5, HexModeHigh, Bytes("yz\x7F"), "7F "},
        {"AddressColumnCopiesLikeHex", 2, 2, HexModeAddress, Bytes("\x01"), "01 "}};
    for (const Case& c : cases) {
        const auto payload = HexClipboardFormat::MakeCopy(kData, c.start, c.end, c.mode);
        ASSERT_TRUE(payload.has_value()) << c.name;
        EXPECT_EQ(std::make_pair(payload->binary, payload->text), std::make_pair(c.binary, c.text)) << c.name;
    }
    // Without a selection nothing; a selection past an empty buffer copies nothing.
    for (const auto& [start, end] : {std::pair{-1, -1}, {2, -1}, {-1, 3}})
        EXPECT_FALSE(HexClipboardFormat::MakeCopy(kData, start, end, HexModeHigh).has_value());
    const auto empty = HexClipboardFormat::MakeCopy({}, 0, 0, HexModeHigh);
    ASSERT_TRUE(empty.has_value());
    EXPECT_TRUE(empty->binary.empty() && empty->text.empty());
}

} // namespace
