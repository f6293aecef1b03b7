// How bytes and texts are written into the outputs: base64, JSON strings, CSV fields and
// table cells; decoded bytes read in the character set of their ECI.
#include "EciText.h"
#include "TextEncoding.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

struct Case { const char* name; std::string input; std::string expected; };

std::string Bytes(const char* data, size_t size) { return std::string(data, size); }

TEST(TextEncoding, Base64) {
    const Case cases[] = {
        {"empty", "", ""}, {"one byte pads twice", "f", "Zg=="}, {"two bytes pad once", "fo", "Zm8="},
        {"three bytes no padding", "foo", "Zm9v"}, {"NUL and high bytes", Bytes("\0\xff\x80", 3), "AP+A"},
        {"last two alphabet letters", Bytes("\xfb\xff", 2), "+/8="},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TextEncoding::Base64(c.input), c.expected) << c.name;
}

// Text read as ISO-8859-1 (latin1) or as UTF-8, whose broken sequences fall back to Latin-1.
TEST(TextEncoding, JsonString) {
    const struct {
        bool latin1;
        Case c;
    } cases[] = {
        {true, {"quote and backslash", "a\"b\\c", "\"a\\\"b\\\\c\""}},
        {true, {"line ends and tab", "a\r\nb\tc", "\"a\\r\\nb\\tc\""}},
        {true, {"other control bytes", Bytes("\x1e\0\x7f", 3), "\"\\u001e\\u0000\\u007f\""}},
        {true, {"high bytes are ISO-8859-1", "\xfc\xdf", "\"\\u00fc\\u00df\""}},
        {false, {"two-byte character", "Gr\xc3\xbc\xc3\x9f" "e", "\"Gr\\u00fc\\u00dfe\""}},
        {false, {"three-byte character", "\xe2\x82\xac", "\"\\u20ac\""}},
        {false, {"four-byte character becomes a surrogate pair", "\xf0\x9f\x98\x80", "\"\\ud83d\\ude00\""}},
        {false, {"lone continuation byte read as Latin-1", "a\x80" "b", "\"a\\u0080b\""}},
        {false, {"overlong form read as Latin-1", "\xe0\x80\xaf", "\"\\u00e0\\u0080\\u00af\""}},
        {false, {"surrogate code read as Latin-1", "\xed\xa0\x80", "\"\\u00ed\\u00a0\\u0080\""}},
    };
    for (const auto& [latin1, c] : cases)
        EXPECT_EQ(TextEncoding::JsonString(c.input, latin1), c.expected) << c.name;
}

TEST(TextEncoding, CsvField) {
    const Case cases[] = {
        {"plain stays bare", "qrcode-plain.png", "qrcode-plain.png"}, {"comma", "a,b", "\"a,b\""},
        {"quotes doubled", "say \"hi\"", "\"say \"\"hi\"\"\""},
        {"CR LF kept inside quotes", "a\r\nb", "\"a\r\nb\""},
        {"leading space", " a", "\" a\""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(TextEncoding::CsvField(c.input), c.expected) << c.name;
}

TEST(TextEncoding, TableTextKeepsOneLineAndIsAsWideAsItsCharacters) {
    const Case latin1[] = {
        {"line ends", "a\r\nb", "a\\r\\nb"}, {"NUL and tab", Bytes("a\0\tb", 4), "a\\0\\tb"},
        {"record separator and DEL", "\x1e\x7f", "\\x1E\\x7F"},
        {"Latin-1 letters as UTF-8", "Gr\xfc\xdf" "e", "Gr\xc3\xbc\xc3\x9f" "e"},
    };
    for (const Case& c : latin1)
        EXPECT_EQ(TextEncoding::TableText(c.input, true), c.expected) << c.name;
    EXPECT_EQ(TextEncoding::TableText("caf\xc3\xa9\n.png", false), "caf\xc3\xa9\\n.png");
    // Columns line up by characters.
    EXPECT_EQ(TextEncoding::DisplayWidth("caf\xc3\xa9"), 4u);
    EXPECT_EQ(TextEncoding::DisplayWidth("\xe2\x82\xac\xf0\x9f\x98\x80"), 2u);
}

TEST(EciText, ConvertsTheCharacterSetAnEciNames) {
    struct Case { int32_t dataType; int32_t eci; std::string bytes; std::optional<std::string> utf8; };
    const std::string nihon = "\xe6\x97\xa5\xe6\x9c\xac";
    const Case cases[] = {
        {ZYR_DATA_ECI_BYTES, ZYR_ECI_SHIFT_JIS, "\x93\xfa\x96\x7b", nihon},
        {ZYR_DATA_ECI_BYTES, ZYR_ECI_SHIFT_JIS, "C:\\", std::string("C:\\")}, // backslash stays one
        {ZYR_DATA_ECI_BYTES, ZYR_ECI_SHIFT_JIS, "\x93", std::nullopt},         // cut double byte
        {ZYR_DATA_ECI_BYTES, 29, "\xd6\xd0\xce\xc4", std::string("\xe4\xb8\xad\xe6\x96\x87")},
        {ZYR_DATA_ECI_BYTES, ZYR_ECI_UTF8, "Gr\xfc", std::nullopt},
        {ZYR_DATA_ECI_BYTES, 25, std::string("\x00\x41\x65\xe5", 4), std::string("A\xe6\x97\xa5")},
        {ZYR_DATA_ECI_BYTES, 899, "AB", std::nullopt},
        {ZYR_DATA_TEXT8, 0, "Gr\xfc", std::string("Gr\xc3\xbc")},
        {ZYR_DATA_BINARY, 0, "HELLO", std::nullopt},
    };
    for (const Case& c : cases)
        EXPECT_EQ(EciText::SymbolText(c.dataType, c.eci, c.bytes), c.utf8) << c.eci << " " << c.bytes;
}

} // namespace
