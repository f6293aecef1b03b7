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

INSTANTIATE_TEST_SUITE_P(Empty, BadInput,
                         ::testing::Values(ErrorCase{"NoBytes", "", ZYR_ERR_AAMVA_EMPTY},
                                           ErrorCase{"OnlyBlanks", "  \r\n\t ", ZYR_ERR_AAMVA_EMPTY},
                                           ErrorCase{"OnlyNuls", std::string(16, '\0'), ZYR_ERR_AAMVA_EMPTY},
                                           ErrorCase{"OnlyC1Controls", "\xC2\x80\xC2\x9F",
                                                     ZYR_ERR_AAMVA_EMPTY}),
                         [](const auto& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(
    NotAamva, BadInput,
    ::testing::Values(
        ErrorCase{"MagneticStripeText",
                  "%BCVICTORIA^SAMPLE,$ALEX^12 FORT ST$VICTORIA BC  V8W 1H8^?;636028"
                  "1234567=250119800101=?",
                  ZYR_ERR_NOT_AAMVA},
        ErrorCase{"PlainText", "Hello, this is not a licence.", ZYR_ERR_NOT_AAMVA},
        ErrorCase{"BinaryBlob", std::string("\x00\x01\x02\x80\xff\x7f\x10\x20", 8), ZYR_ERR_NOT_AAMVA},
        ErrorCase{"FileTypeWordInProse", "The ANSI standard text describes it.", ZYR_ERR_NOT_AAMVA},
        ErrorCase{"LettersInIin", "@\n\x1e\rANSI 63A000090001DL00310010DLDAQ1\r", ZYR_ERR_NOT_AAMVA},
        ErrorCase{"TooMuchBeforeTheHeader", std::string(80, 'x') + kHeader + "DLDAQ1\r", ZYR_ERR_NOT_AAMVA},
        ErrorCase{"TextBeforeTheFileType", "note: ANSI 636000090001DL00310010DLDAQ1\r", ZYR_ERR_NOT_AAMVA},
        ErrorCase{"ComplianceIndicatorOnly", "@\n\x1e\rXYZW 636000", ZYR_ERR_NOT_AAMVA},
        ErrorCase{"HeaderThenJunk", kHeader + "!!!!!!!!!!!!????????", ZYR_ERR_NOT_AAMVA}),
    [](const auto& info) { return std::string(info.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Truncated, BadInput,
    ::testing::Values(ErrorCase{"ComplianceIndicator", "@", ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"InsideFileType", "@\n\x1e\rANS", ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"InsideIin", "@\n\x1e\rANSI 6360", ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"InsideVersion", "@\n\x1e\rANSI 6360000", ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"InsideCount", "@\n\x1e\rANSI 63600009000", ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"InsideSecondDesignator", kHeader.substr(0, kHeader.size() - 3),
                                ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"AfterDesignators", kHeader, ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"AfterDesignatorsWithBlanks", kHeader + "\r\n", ZYR_ERR_AAMVA_TRUNCATED},
                      ErrorCase{"InsideFirstElement", kHeader + "DLDAQT7", ZYR_ERR_AAMVA_TRUNCATED}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(BadInput, NullDataIsEmpty) {
    zyr::AamvaDocument document;
    EXPECT_EQ(zyr::AamvaParser::parse(nullptr, 0, document), ZYR_ERR_AAMVA_EMPTY);
}

} // namespace
