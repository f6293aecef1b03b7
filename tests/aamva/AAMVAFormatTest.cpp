#include "AAMVAFormat.h"
#include "RecordBuilder.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

const uint32_t NA = AAMVA_NOT_PRESENT;

TEST(AAMVAFormatTest, DateTextOfRealDaysOnlyAndNothingWhenAbsent) {
    const char* const invalid = "Invalid DateTime";
    const struct {
        uint32_t day, month, year;
        const char* text;
    } cases[] = {
        // two-digit day, English month name, the year as it is
        {4, 7, 1976, "04 July 1976"}, {31, 12, 9999, "31 December 9999"}, {29, 2, 2000, "29 February 2000"},
        {29, 2, 2024, "29 February 2024"}, {1, 1, 100, "01 January 100"},
        // absent in any component
        {NA, 7, 1976, ""}, {4, NA, 1976, ""}, {4, 7, NA, ""},
        // impossible or out of range: never rolled over into another day
        {29, 2, 1999, invalid}, {29, 2, 1900, invalid}, {31, 2, 2026, invalid}, {31, 4, 2020, invalid},
        {0, 1, 2020, invalid}, {1, 0, 2020, invalid}, {1, 13, 2020, invalid}, {1, 1, 99, invalid},
        {1, 1, 10000, invalid}, {32, 1, 2020, invalid}, {0xFFFFFFFEu, 1, 2020, invalid},
        {1, 0x80000001u, 2020, invalid},
    };
    for (const auto& c : cases)
        EXPECT_EQ(AAMVAFormat::DateText(AAMVADate{c.day, c.month, c.year}), c.text) << c.day << "/" << c.month << "/" << c.year;
}

// The window switches the process to the user's locale at start-up; month names stay English.
TEST(AAMVAFormatTest, MonthNamesStayEnglishUnderAnotherLocale) {
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr)
        << "locale de_DE.UTF-8 missing: run scripts/setup.sh";
    const std::string text = AAMVAFormat::DateText(AAMVADate{4, 7, 1976});
    std::setlocale(LC_ALL, previous.c_str());
    EXPECT_EQ(text, "04 July 1976");
}

TEST(AAMVAFormatTest, NumbersCharactersAndFieldsEndingAtTheTerminatorOrTheArray) {
    EXPECT_EQ(AAMVAFormat::Number(AAMVA_NOT_PRESENT), "-1");
    EXPECT_EQ(AAMVAFormat::Number(int32_t{-2147483647 - 1}), "-2147483648");
    EXPECT_EQ(AAMVAFormat::ShortSexText('\0'), std::string(1, '\0'));
    const char unterminated[4] = {'U', 'S', 'A', 'X'};
    const char early[7] = {'6', '3', '\0', '9', '9', '9', '\0'};
    EXPECT_EQ(AAMVA_FIELD(unterminated), "USAX");
    EXPECT_EQ(AAMVA_FIELD(early), "63");
}

} // namespace
