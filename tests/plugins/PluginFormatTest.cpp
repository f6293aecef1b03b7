// Each plug-in on the generated samples of the formats it reads: the bytes written into the
// symbol come back exactly (NULs and high bytes included), with the right type, ECI and symbology.
#include "PluginTestSupport.h"
#include "SampleCatalogue.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

using namespace plugintest;

namespace {

struct FormatCase { const char* plugin; const char* sample; int32_t symbology; int32_t dataType; int32_t eci; };

std::ostream& operator<<(std::ostream& out, const FormatCase& c) { return out << c.plugin << " on " << c.sample; }

// Short names for the table: symbologies, then data types; ECI numbers as they are.
enum : int32_t {
    AZTEC = ZYR_SYM_AZTEC, CODE128 = ZYR_SYM_CODE128, CODE39 = ZYR_SYM_CODE39, CODE93 = ZYR_SYM_CODE93,
    DM = ZYR_SYM_DATAMATRIX, EAN13 = ZYR_SYM_EAN13, EAN8 = ZYR_SYM_EAN8, ITF = ZYR_SYM_ITF, PDF417 = ZYR_SYM_PDF417,
    QRCODE = ZYR_SYM_QRCODE, UPCA = ZYR_SYM_UPCA, UPCE = ZYR_SYM_UPCE,
    ASCII = ZYR_DATA_ASCII, BINARY = ZYR_DATA_BINARY, ECI = ZYR_DATA_ECI_BYTES
};

const FormatCase kCases[] = {
    // zxing-cpp, a sample per kind of payload, and the formats one digit apart
    {"ZXing", "code39-plain", CODE39, ASCII, 0}, {"ZXing", "itf-plain", ITF, ASCII, 0},
    {"ZXing", "code128-plain", CODE128, ASCII, 0}, {"ZXing", "code93-plain", CODE93, ASCII, 0},
    {"ZXing", "ean13-plain", EAN13, ASCII, 0}, {"ZXing", "ean8-plain", EAN8, ASCII, 0},
    {"ZXing", "upca-plain", UPCA, ASCII, 0}, {"ZXing", "upce-plain", UPCE, ASCII, 0},
    {"ZXing", "binary-aztec", AZTEC, BINARY, 0}, {"ZXing", "eci-utf8-pdf417", PDF417, ECI, 26},
    {"ZXing", "colour-qrcode", QRCODE, ASCII, 0}, {"ZXing", "sjis-qrcode", QRCODE, ECI, 20},
    {"ZXing", "gb18030-qrcode", QRCODE, ECI, 29}, {"ZXing", "latin1-aztec", AZTEC, ECI, 3},
    {"ZXing", "eci-mixed-datamatrix", DM, ECI, 26}, {"ZXing", "ean13-addon2", EAN13, ASCII, 0},
    {"ZXing", "upca-addon5", UPCA, ASCII, 0},
    // zxing-cpp, PDF417 only, and QR
    {"Pdf417", "pdf417-low-contrast", PDF417, ASCII, 0}, {"Pdf417", "binary-pdf417", PDF417, BINARY, 0},
    {"Pdf417", "aamva-pdf417-tilted", PDF417, ASCII, 0}, {"QRCode", "qrcode-scaled", QRCODE, ASCII, 0},
    {"QRCode", "binary-qrcode", QRCODE, BINARY, 0}, {"QRCode", "sjis-qrcode", QRCODE, ECI, 20},
    // libdmtx
    {"DataMatrix", "datamatrix-rotated", DM, ASCII, 0}, {"DataMatrix", "datamatrix-noisy", DM, ASCII, 0},
    {"DataMatrix", "binary-datamatrix", DM, BINARY, 0},
    // ZBar
    {"ZBar", "ean8-plain", EAN8, ASCII, 0}, {"ZBar", "binary-qrcode", QRCODE, BINARY, 0},
    {"ZBar", "sjis-qrcode", QRCODE, ECI, 20}, {"ZBar", "ean13-addon2", EAN13, ASCII, 0},
    {"ZBar", "upca-addon5", UPCA, ASCII, 0},
};

class PluginFormat : public ::testing::TestWithParam<FormatCase> {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
};

TEST_P(PluginFormat, GivesBackTheBytesWritten) {
    const FormatCase& c = GetParam();
    const glyphor::samples::Sample* sample = glyphor::samples::findSample(c.sample);
    ASSERT_NE(sample, nullptr);
    const std::string& expected = sample->symbols.at(0).payload;
    const uint64_t handle = loadPlugin(c.plugin);
    std::vector<SeenSymbol> seen = decodeSample(handle, c.sample);
    ASSERT_EQ(seen.size(), 1u);
    const SeenSymbol& s = seen[0];
    EXPECT_EQ(std::make_tuple(s.data, s.zeroAfterData, s.symbology, s.dataType, s.eci),
              std::make_tuple(expected, true, c.symbology, c.dataType, c.eci));
}

INSTANTIATE_TEST_SUITE_P(Samples, PluginFormat, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<FormatCase>& info) {
                             std::string name = std::string(info.param.plugin) + "_" + info.param.sample;
                             for (char& ch : name)
                                 if (!std::isalnum(static_cast<unsigned char>(ch)))
                                     ch = '_';
                             return name;
                         });

// Two copies of one linear label both come back: zxing-cpp 1.4 aborts when a single call finds
// them both, which cost the whole decode.
TEST(PluginFormatMulti, TwoCopiesOfOneLinearSymbolBothComeBack) {
    const uint64_t handle = loadPlugin("ZXing");
    const std::vector<SeenSymbol> seen = decodeSample(handle, "two-upce");
    ASSERT_EQ(seen.size(), 2u);
    for (const SeenSymbol& symbol : seen)
        EXPECT_EQ(std::make_pair(symbol.data, symbol.symbology), std::make_pair(std::string("01234565"), int32_t{ZYR_SYM_UPCE}));
    ZyrReader_DestroyCachedData();
}

// The decoder options that change what comes back, each against its default.
TEST(PluginFormatOptions, AddOnsAndMixedCharacterSetsFollowTheSettings) {
    struct Case { const char* plugin; const char* settings; const char* sample; std::string data; int32_t eci; };
    const Case cases[] = {
        {"ZXing", "[Decoder]\nEanAddOn=0\n", "ean13-addon2", "5901234123457", 0},
        {"ZBar", "[Decoder]\nEanAddOn=0\n", "ean13-addon2", "5901234123457", 0},
        {"ZXing", "[Decoder]\nMixedEciAsUtf8=0\n", "eci-mixed-datamatrix",
         "Stra\xdf"
         "e \x93\xfa\x96\x7b",
         ZYR_ECI_ISO8859_1},
    };
    for (const Case& c : cases) {
        const uint64_t handle = load(pluginPath(c.plugin), writeFile(std::string("#options-") + c.plugin + ".ini", c.settings));
        const std::vector<SeenSymbol> seen = decodeSample(handle, c.sample);
        ASSERT_EQ(seen.size(), 1u) << c.plugin << " " << c.settings;
        EXPECT_EQ(std::make_pair(seen[0].data, seen[0].eci), std::make_pair(c.data, c.eci)) << c.plugin << " " << c.settings;
        ZyrReader_DestroyCachedData();
    }
}

// Orientation comes from the corners the decoder reports: clockwise degrees of the top edge.
struct OrientationCase { const char* sample; int32_t degrees; };

class SymbolOrientation : public ::testing::TestWithParam<OrientationCase> {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
};

TEST_P(SymbolOrientation, FollowsTheSymbolsTurn) {
    const uint64_t handle = loadPlugin("ZXing");
    std::vector<SeenSymbol> seen = decodeSample(handle, GetParam().sample);
    ASSERT_EQ(seen.size(), 1u);
    int difference = std::abs(seen[0].orientation - GetParam().degrees) % 360;
    EXPECT_LE(std::min(difference, 360 - difference), 3) << "orientation " << seen[0].orientation;
}

INSTANTIATE_TEST_SUITE_P(Samples, SymbolOrientation,
                         ::testing::Values(OrientationCase{"qrcode-plain", 0},
                                           OrientationCase{"qrcode-rotated", 17},
                                           OrientationCase{"pdf417-upside-down", 180},
                                           OrientationCase{"code128-rotated", 90},
                                           OrientationCase{"datamatrix-rotated", 17}));

} // namespace
