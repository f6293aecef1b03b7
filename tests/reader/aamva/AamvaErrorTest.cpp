// Inputs that are not a card: each gets its own error code, and nothing is read past the end.
#include "AamvaParser.h"
#include "AamvaTestSupport.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

struct ErrorCase {
    const char* name;
    std::string bytes;
    int32_t code;
};

class BadInput : public ::testing::TestWithParam<ErrorCase> {};

// The bytes are copied into a buffer of exactly their size so that ASan catches any read past it.
TEST_P(BadInput, GivesItsOwnCode) {
    const ErrorCase& c = GetParam();
    std::unique_ptr<uint8_t[]> exact(new uint8_t[c.bytes.size() + (c.bytes.empty() ? 1 : 0)]);
    std::copy(c.bytes.begin(), c.bytes.end(), exact.get());
    zyr::AamvaDocument document;
    EXPECT_EQ(zyr::AamvaParser::parse(exact.get(), c.bytes.size(), document), c.code);
}

const std::string kHeader = "@\n\x1e\rANSI 636000090002DL00410278ZV03190008";
constexpr int32_t kEmpty = ZYR_ERR_AAMVA_EMPTY, kNot = ZYR_ERR_NOT_AAMVA, kCut = ZYR_ERR_AAMVA_TRUNCATED;

INSTANTIATE_TEST_SUITE_P(
    Inputs, BadInput,
    ::testing::Values(
        ErrorCase{"NoBytes", "", kEmpty}, ErrorCase{"OnlyBlanks", "  \r\n\t ", kEmpty},
        ErrorCase{"OnlyNuls", std::string(16, '\0'), kEmpty}, ErrorCase{"OnlyC1Controls", "\xC2\x80\xC2\x9F", kEmpty},
        ErrorCase{"MagneticStripeText",
                  "%BCVICTORIA^SAMPLE,$ALEX^12 FORT ST$VICTORIA BC  V8W 1H8^?;6360281234567=250119800101=?", kNot},
        ErrorCase{"PlainText", "Hello, this is not a licence.", kNot},
        ErrorCase{"BinaryBlob", std::string("\x00\x01\x02\x80\xff\x7f\x10\x20", 8), kNot},
        ErrorCase{"FileTypeWordInProse", "The ANSI standard text describes it.", kNot},
        ErrorCase{"LettersInIin", "@\n\x1e\rANSI 63A000090001DL00310010DLDAQ1\r", kNot},
        ErrorCase{"TooMuchBeforeTheHeader", std::string(80, 'x') + kHeader + "DLDAQ1\r", kNot},
        ErrorCase{"TextBeforeTheFileType", "note: ANSI 636000090001DL00310010DLDAQ1\r", kNot},
        ErrorCase{"ComplianceIndicatorOnly", "@\n\x1e\rXYZW 636000", kNot},
        ErrorCase{"HeaderThenJunk", kHeader + "!!!!!!!!!!!!????????", kNot},
        ErrorCase{"CutInComplianceIndicator", "@", kCut}, ErrorCase{"CutInFileType", "@\n\x1e\rANS", kCut},
        ErrorCase{"CutInIin", "@\n\x1e\rANSI 6360", kCut}, ErrorCase{"CutInVersion", "@\n\x1e\rANSI 6360000", kCut},
        ErrorCase{"CutInCount", "@\n\x1e\rANSI 63600009000", kCut},
        ErrorCase{"CutInSecondDesignator", kHeader.substr(0, kHeader.size() - 3), kCut},
        ErrorCase{"CutAfterDesignators", kHeader, kCut}, ErrorCase{"CutAfterDesignatorsWithBlanks", kHeader + "\r\n", kCut},
        ErrorCase{"CutInFirstElement", kHeader + "DLDAQT7", kCut}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
