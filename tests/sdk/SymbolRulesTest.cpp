// Each way a symbol can break the interface is found on its own, and a sound one passes.
#include "SymbolRules.h"

#include <gtest/gtest.h>

using namespace plugincheck;

namespace {

// A QR code of five ASCII bytes, well inside a 100 x 100 image.
SymbolCopy sound() {
    return {ZYR_SYM_QRCODE, ZYR_DATA_ASCII, ZYR_ECI_NONE, 5, "HELLO", true,
            {{10, 10}, {90, 10}, {90, 90}, {10, 90}}};
}

struct Fault {
    const char* name;
    void (*apply)(SymbolCopy&);
    const char* problem; // a word of the one problem expected; null: none
};

const Fault kFaults[] = {
    {"Sound", [](SymbolCopy&) {}, nullptr},
    {"SymbologyAboveTheLast", [](SymbolCopy& s) { s.symbology = ZYR_SYM_DATABAR_EXPANDED + 1; }, "symbology"},
    {"NegativeSymbology", [](SymbolCopy& s) { s.symbology = -1; }, "symbology"},
    {"UnknownDataType", [](SymbolCopy& s) { s.dataType = 3; }, "unknown data type"},
    {"LengthOtherThanBytes", [](SymbolCopy& s) { s.length = 7; }, "length"},
    {"EciWithoutEciType", [](SymbolCopy& s) { s.eci = ZYR_ECI_UTF8; }, "with ECI"},
    {"EciTypeWithoutEci", [](SymbolCopy& s) { s.dataType = ZYR_DATA_ECI_BYTES; }, "with ECI"},
    {"EciOutOfRange", [](SymbolCopy& s) { s.dataType = ZYR_DATA_ECI_BYTES, s.eci = 1000000; }, "out of range"},
    {"EciBytesWithEci", [](SymbolCopy& s) { s.dataType = ZYR_DATA_ECI_BYTES, s.eci = ZYR_ECI_UTF8; }, nullptr},
    {"AsciiAbove7F", [](SymbolCopy& s) { s.bytes = "HELL\xe9"; }, "above 0x7F"},
    {"TextWithNul", [](SymbolCopy& s) { s.dataType = ZYR_DATA_TEXT8, s.bytes = std::string("HE\0LO", 5); }, "NUL"},
    {"BinaryWithNul", [](SymbolCopy& s) { s.dataType = ZYR_DATA_BINARY, s.bytes = std::string("HE\0LO", 5); }, nullptr},
    {"CornerPastTheRight", [](SymbolCopy& s) { s.corners[1].X = 101; }, "outside"},
    {"CornerAboveTheTop", [](SymbolCopy& s) { s.corners[0].Y = -1; }, "outside"},
    {"CornersOnTheEdge", [](SymbolCopy& s) { s.corners[2] = {100, 100}; }, nullptr},
    {"CornersInOnePoint", [](SymbolCopy& s) { for (ZyrPoint& p : s.corners) p = {5, 5}; }, "one point"},
};

class SymbolFault : public ::testing::TestWithParam<Fault> {};

TEST_P(SymbolFault, IsTheOnlyProblemFound) {
    SymbolCopy symbol = sound();
    GetParam().apply(symbol);
    const std::vector<std::string> problems = symbolProblems(symbol, 100, 100);
    if (!GetParam().problem) {
        EXPECT_TRUE(problems.empty()) << problems[0];
        return;
    }
    ASSERT_EQ(problems.size(), 1u);
    EXPECT_NE(problems[0].find(GetParam().problem), std::string::npos) << problems[0];
}

INSTANTIATE_TEST_SUITE_P(Each, SymbolFault, ::testing::ValuesIn(kFaults),
                         [](const ::testing::TestParamInfo<Fault>& info) { return info.param.name; });

TEST(SampleContents, MisreadsDuplicatesAndWrongEciAreFaultsButMissesAndUnreportedEciAreNot) {
    CheckImage image("two", 1, 1, ZYR_PIXEL_GREY8, 1);
    image.known = true;
    image.expected = {{"FIRST", ZYR_ECI_NONE}, {"SECOND", ZYR_ECI_UTF8}};
    auto symbol = [](const char* bytes, int32_t eci) { return SymbolCopy{0, 0, eci, 0, bytes}; };
    int unreported = 0;
    EXPECT_TRUE(contentProblems(image, {symbol("SECOND", ZYR_ECI_UTF8)}, unreported).empty());
    EXPECT_TRUE(contentProblems(image, {symbol("SECOND", ZYR_ECI_NONE)}, unreported).empty());
    EXPECT_EQ(unreported, 1);
    EXPECT_EQ(contentProblems(image, {symbol("THIRD", 0)}, unreported).size(), 1u);
    EXPECT_EQ(contentProblems(image, {symbol("FIRST", 0), symbol("FIRST", 0)}, unreported).size(), 1u);
    EXPECT_EQ(contentProblems(image, {symbol("FIRST", ZYR_ECI_ISO8859_1)}, unreported).size(), 1u);
    EXPECT_EQ(unreported, 1);
    // Two copies of one symbol in the image: both may be reported, a third may not.
    image.expected.push_back({"FIRST", ZYR_ECI_NONE});
    EXPECT_TRUE(contentProblems(image, {symbol("FIRST", 0), symbol("FIRST", 0)}, unreported).empty());
    EXPECT_EQ(contentProblems(image, {symbol("FIRST", 0), symbol("FIRST", 0), symbol("FIRST", 0)}, unreported)
                  .size(),
              1u);
}

} // namespace
