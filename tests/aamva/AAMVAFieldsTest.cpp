#include "AAMVAFields.h"
#include "RecordBuilder.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

// The record is read as the library lays it out. Fields of one size could trade places without
// changing any size, so each one's offset is pinned.
static_assert(offsetof(AAMVARecord, LicenceNumber) == 0);
static_assert(offsetof(AAMVARecord, FullName) == 3000);
static_assert(offsetof(AAMVARecord, Surname) == 6000);
static_assert(offsetof(AAMVARecord, Forename) == 9000);
static_assert(offsetof(AAMVARecord, MiddleName) == 12000);
static_assert(offsetof(AAMVARecord, AddressStreet) == 18049);
static_assert(offsetof(AAMVARecord, AddressCity) == 21049);
static_assert(offsetof(AAMVARecord, AddressState) == 24049);
static_assert(offsetof(AAMVARecord, AddressPostalCode) == 27049);
static_assert(offsetof(AAMVADataItem, ID) == 0 && sizeof(AAMVADataItem::ID) == 4);
static_assert(offsetof(AAMVADataItem, Name) == 4 && sizeof(AAMVADataItem::Name) == 3000);
static_assert(offsetof(AAMVADataItem, Value) == 3004 && sizeof(AAMVADataItem::Value) == 3000);
static_assert(offsetof(AAMVADate, Day) == 0 && offsetof(AAMVADate, Month) == 4);
static_assert(offsetof(AAMVADate, Year) == 8);
static_assert(offsetof(AAMVAMeasure, Value) == 0 && offsetof(AAMVAMeasure, Unit) == 4);

// Each row as "name=value (extra)", joined by "|".
std::string Text(const std::vector<AAMVARow>& rows) {
    std::string text;
    for (const auto& row : rows)
        text += (text.empty() ? "" : "|") + row.name + "=" + row.value +
                (row.extra.empty() ? "" : " (" + row.extra + ")");
    return text;
}

// The identity rows, colours and data items of a full record are checked where the viewer shows
// them (dialog and export tests).
TEST(AAMVAFieldsTest, HeaderShowsNumbersWithTheirNotes) {
    const uint32_t NA = AAMVA_NOT_PRESENT;
    const struct {
        uint32_t version, jurisdiction;
        const char* rows;
    } cases[] = {
        {8, 0, "Version=8 (AAMVA 2013 Standard)|JurisdictionVersion=0"},
        {NA, NA, "Version=-1 (Not present)|JurisdictionVersion=-1 (Not present)"},
        {0, 1, "Version=0 (Pre-2000 Standard)|JurisdictionVersion=1"},
        {1, 0, "Version=1 (AAMVA 2000 Standard)|JurisdictionVersion=0"},
        {5, 0, "Version=5 (AAMVA 2010 Standard)|JurisdictionVersion=0"},
        {9, 12, "Version=9 (Unknown Standard)|JurisdictionVersion=12"}, // one past the names
        {0x80000000u, 0, "Version=-2147483648 (Unknown Standard)|JurisdictionVersion=0"},
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        b.record().Version = c.version;
        b.record().JurisdictionVersion = c.jurisdiction;
        EXPECT_EQ(Text(AAMVAFields::Header(b.get())),
                  std::string("FileType=ANSI |IIN=636000|IssuerName=Virginia|") + c.rows);
    }
}

// Measures in the four known units only; another unit leaves no row.
TEST(AAMVAFieldsTest, MeasuresWithUnknownUnitsLeaveNoRow) {
    const struct {
        uint32_t heightUnit, weightUnit;
        const char* rows;
    } cases[] = {
        {AAMVA_UNIT_INCHES, AAMVA_UNIT_POUNDS, "Height=170 Inches|Weight=-60 Pounds|"},
        {AAMVA_UNIT_CENTIMETRES, 0, "Height=170 Centimetres|"},
        {7, AAMVA_UNIT_KILOGRAMS, "Weight=-60 Kilograms|"},
        {0, 5, ""},
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        b.record().Height = AAMVAMeasure{170, c.heightUnit};
        b.record().Weight = AAMVAMeasure{-60, c.weightUnit};
        EXPECT_EQ(Text(AAMVAFields::Physical(b.get())), std::string(c.rows) + "EyeColour=1|HairColour=3");
    }
}

TEST(AAMVAFieldsTest, ACountOfZeroOrLessReadsNoItems) {
    // The array stays in place: a count that is not positive must not be trusted to read it.
    for (int32_t count : {0, -1, -2147483647 - 1}) {
        RecordBuilder b;
        b.Items({{"DCS", "Family Name", "DOE"}}).ItemCount(count);
        EXPECT_TRUE(AAMVAFields::DataItems(b.get()).empty()) << count;
    }
    EXPECT_TRUE(AAMVAFields::DataItems(RecordBuilder().ItemCount(5).get()).empty());
}

} // namespace
