#include "AAMVAFormat.h"
#include "RecordBuilder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <ctime>
#include <string>

namespace {

const uint32_t NA = AAMVA_NOT_PRESENT;

struct VersionCase {
    uint32_t version;
    const char* text;
};

void PrintTo(const VersionCase& c, std::ostream* os) {
    *os << c.version;
}

class StandardNameTest : public ::testing::TestWithParam<VersionCase> {};

TEST_P(StandardNameTest, NamesTheStandard) {
    RecordBuilder b;
    b.record().Version = GetParam().version;
    EXPECT_EQ(AAMVAFormat::VersionText(b.get(), AAMVAFormat::StandardVersion), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Versions, StandardNameTest,
                         ::testing::Values(VersionCase{NA, "Not present"}, VersionCase{0, "Pre-2000 Standard"},
                                           VersionCase{1, "AAMVA 2000 Standard"}, VersionCase{2, "AAMVA 2003 Standard"},
                                           VersionCase{3, "AAMVA 2005 Standard"}, VersionCase{4, "AAMVA 2009 Standard"},
                                           VersionCase{5, "AAMVA 2010 Standard"}, VersionCase{6, "AAMVA 2011 Standard"},
                                           VersionCase{7, "AAMVA 2012 Standard"}, VersionCase{8, "AAMVA 2013 Standard"},
                                           VersionCase{9, "Unknown Standard"}, VersionCase{10, "Unknown Standard"},
                                           VersionCase{0xFFFFFFFEu, "Unknown Standard"},
                                           VersionCase{0x80000000u, "Unknown Standard"}));

TEST(VersionTextTest, JurisdictionNoteOnlyFlagsAbsence) {
    const struct {
        uint32_t jurisdictionVersion;
        int which;
        const char* text;
    } cases[] = {{NA, AAMVAFormat::JurisdictionVersion, "Not present"}, {0, AAMVAFormat::JurisdictionVersion, ""},
                 {7, AAMVAFormat::JurisdictionVersion, ""}, {NA, 2, ""}, {NA, -1, ""}};
    for (const auto& c : cases) {
        RecordBuilder b;
        b.record().Version = 1;
        b.record().JurisdictionVersion = c.jurisdictionVersion;
        EXPECT_EQ(AAMVAFormat::VersionText(b.get(), c.which), c.text)
            << "jurisdiction version " << c.jurisdictionVersion << ", which " << c.which;
    }
}

struct DateCase {
    uint32_t day, month, year;
    const char* text;
};

void PrintTo(const DateCase& c, std::ostream* os) {
    *os << c.day << "/" << c.month << "/" << c.year;
}

class DateTextTest : public ::testing::TestWithParam<DateCase> {};

TEST_P(DateTextTest, Formats) {
    const DateCase& c = GetParam();
    EXPECT_EQ(AAMVAFormat::DateText(Date(c.day, c.month, c.year)), c.text);
}

constexpr const char* kInvalid = "Invalid DateTime";
INSTANTIATE_TEST_SUITE_P(
    Dates, DateTextTest,
    ::testing::Values(
        // valid: two-digit day, English month name, four-digit year
        DateCase{4, 7, 1976, "04 July 1976"}, DateCase{1, 1, 2024, "01 January 2024"},
        DateCase{31, 12, 9999, "31 December 9999"}, DateCase{29, 2, 2000, "29 February 2000"},
        DateCase{29, 2, 2024, "29 February 2024"}, DateCase{30, 9, 1999, "30 September 1999"},
        DateCase{1, 1, 100, "01 January 100"},
        // absent in any component
        DateCase{NA, 7, 1976, ""}, DateCase{4, NA, 1976, ""}, DateCase{4, 7, NA, ""}, DateCase{NA, NA, NA, ""},
        // impossible or out of range: never rolled over into another day
        DateCase{29, 2, 1999, kInvalid}, DateCase{29, 2, 1900, kInvalid}, DateCase{31, 2, 2026, kInvalid},
        DateCase{31, 4, 2020, kInvalid}, DateCase{31, 11, 2020, kInvalid}, DateCase{0, 1, 2020, kInvalid},
        DateCase{1, 0, 2020, kInvalid}, DateCase{1, 13, 2020, kInvalid}, DateCase{1, 1, 99, kInvalid},
        DateCase{1, 1, 10000, kInvalid}, DateCase{1, 1, 0, kInvalid}, DateCase{32, 1, 2020, kInvalid},
        DateCase{0xFFFFFFFEu, 1, 2020, kInvalid}, DateCase{1, 0x80000001u, 2020, kInvalid}));

// The window switches the process to the user's locale at start-up; month names stay English.
TEST(DateTextLocaleTest, MonthNamesStayEnglishUnderAnotherLocale) {
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr)
        << "locale de_DE.UTF-8 missing: run scripts/setup.sh";
    std::tm july{};
    july.tm_mon = 6;
    char month[64] = {};
    std::strftime(month, sizeof month, "%B", &july);
    const std::string german = month; // the locale really is in effect
    const std::string text = AAMVAFormat::DateText(Date(4, 7, 1976));
    std::setlocale(LC_ALL, previous.c_str());
    EXPECT_EQ(german, "Juli");
    EXPECT_EQ(text, "04 July 1976");
}

TEST(MeasureTextTest, KnownUnitsOnly) {
    const struct {
        int32_t value;
        uint32_t unit;
        const char* text; // null: no text
    } cases[] = {{69, AAMVA_UNIT_INCHES, "69 Inches"},   {175, AAMVA_UNIT_CENTIMETRES, "175 Centimetres"},
                 {180, AAMVA_UNIT_POUNDS, "180 Pounds"}, {82, AAMVA_UNIT_KILOGRAMS, "82 Kilograms"},
                 {0, AAMVA_UNIT_INCHES, "0 Inches"},     {-5, AAMVA_UNIT_KILOGRAMS, "-5 Kilograms"},
                 {69, 0, nullptr},                       {69, 5, nullptr},
                 {69, 0xFFFFFFFFu, nullptr}};
    for (const auto& c : cases)
        EXPECT_EQ(AAMVAFormat::MeasureText(Measure(c.value, c.unit)).value_or("<none>"), c.text ? c.text : "<none>")
            << "unit " << c.unit;
}

TEST(ValueTextTest, NumbersAndCharacters) {
    EXPECT_EQ(AAMVAFormat::Number(AAMVA_NOT_PRESENT), "-1");
    EXPECT_EQ(AAMVAFormat::Number(uint32_t{9}), "9");
    EXPECT_EQ(AAMVAFormat::Number(int32_t{-2147483647 - 1}), "-2147483648");
    EXPECT_EQ(AAMVAFormat::ShortSexText('M'), "M");
    EXPECT_EQ(AAMVAFormat::ShortSexText(' '), " ");
    EXPECT_EQ(AAMVAFormat::ShortSexText('\0'), std::string(1, '\0'));
}

TEST(FieldTextTest, StopsAtTheTerminatorOrTheEndOfTheArray) {
    const char terminated[6] = {'A', 'N', 'S', 'I', ' ', '\0'};
    const char unterminated[4] = {'U', 'S', 'A', 'X'};
    const char early[7] = {'6', '3', '\0', '9', '9', '9', '\0'};
    EXPECT_EQ(AAMVA_FIELD(terminated), "ANSI ");
    EXPECT_EQ(AAMVA_FIELD(unterminated), "USAX");
    EXPECT_EQ(AAMVA_FIELD(early), "63");
}

} // namespace
