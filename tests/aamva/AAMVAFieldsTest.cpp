#include "AAMVAFields.h"
#include "RecordBuilder.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace {

// The record is read as the library lays it out. Fields of one size could trade places without
// changing any size, so each one's offset is pinned.
static_assert(offsetof(AAMVARecord, LicenceNumber) == 0, "");
static_assert(offsetof(AAMVARecord, FullName) == 3000, "");
static_assert(offsetof(AAMVARecord, Surname) == 6000, "");
static_assert(offsetof(AAMVARecord, Forename) == 9000, "");
static_assert(offsetof(AAMVARecord, MiddleName) == 12000, "");
static_assert(offsetof(AAMVARecord, AddressStreet) == 18049, "");
static_assert(offsetof(AAMVARecord, AddressCity) == 21049, "");
static_assert(offsetof(AAMVARecord, AddressState) == 24049, "");
static_assert(offsetof(AAMVARecord, AddressPostalCode) == 27049, "");
static_assert(offsetof(AAMVADataItem, ID) == 0 && sizeof(AAMVADataItem::ID) == 4, "");
static_assert(offsetof(AAMVADataItem, Name) == 4 && sizeof(AAMVADataItem::Name) == 3000, "");
static_assert(offsetof(AAMVADataItem, Value) == 3004 && sizeof(AAMVADataItem::Value) == 3000, "");
static_assert(offsetof(AAMVADate, Day) == 0 && offsetof(AAMVADate, Month) == 4 &&
                  offsetof(AAMVADate, Year) == 8,
              "");
static_assert(offsetof(AAMVAMeasure, Value) == 0 && offsetof(AAMVAMeasure, Unit) == 4, "");

std::vector<std::string> Names(const std::vector<AAMVARow>& rows) {
    std::vector<std::string> names;
    for (const auto& row : rows)
        names.push_back(row.name);
    return names;
}

// The identity rows, colours and data items of a full record are checked where the viewer shows
// them (dialog and export tests).
TEST(AAMVAFieldsTest, HeaderShowsNumbersWithTheirNotes) {
    struct {
        uint32_t version, jurisdiction;
        const char *versionText, *versionNote, *jurisdictionText, *jurisdictionNote;
    } const cases[] = {
        {8, 0, "8", "AAMVA 2013 Standard", "0", ""},
        {AAMVA_NOT_PRESENT, AAMVA_NOT_PRESENT, "-1", "Not present", "-1", "Not present"},
        {9, 12, "9", "Unknown Standard", "12", ""},
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        b.record().Version = c.version;
        b.record().JurisdictionVersion = c.jurisdiction;
        const auto rows = AAMVAFields::Header(b.get());
        ASSERT_EQ(Names(rows), (std::vector<std::string>{"FileType", "IIN", "IssuerName", "Version",
                                                         "JurisdictionVersion"}));
        EXPECT_EQ(rows[0].value, "ANSI ");
        EXPECT_EQ(rows[1].value, "636000");
        EXPECT_EQ(rows[2].value, "Virginia");
        EXPECT_EQ(rows[3].value, c.versionText);
        EXPECT_EQ(rows[3].extra, c.versionNote);
        EXPECT_EQ(rows[4].value, c.jurisdictionText);
        EXPECT_EQ(rows[4].extra, c.jurisdictionNote);
        for (const auto& row : rows)
            EXPECT_EQ(row.id, "") << row.name;
    }
}

TEST(AAMVAFieldsTest, MeasuresWithUnknownUnitsLeaveNoRow) {
    struct {
        uint32_t heightUnit, weightUnit;
        std::vector<std::string> names;
    } const cases[] = {
        {AAMVA_UNIT_INCHES, AAMVA_UNIT_POUNDS, {"Height", "Weight", "EyeColour", "HairColour"}},
        {AAMVA_UNIT_CENTIMETRES, 0, {"Height", "EyeColour", "HairColour"}},
        {7, AAMVA_UNIT_KILOGRAMS, {"Weight", "EyeColour", "HairColour"}},
        {0, 0, {"EyeColour", "HairColour"}},
    };
    for (const auto& c : cases) {
        RecordBuilder b;
        b.Full();
        b.record().Height = Measure(170, c.heightUnit);
        b.record().Weight = Measure(60, c.weightUnit);
        EXPECT_EQ(Names(AAMVAFields::Physical(b.get())), c.names)
            << "units " << c.heightUnit << "/" << c.weightUnit;
    }
}

TEST(AAMVAFieldsTest, ACountOfZeroOrLessReadsNoItems) {
    // The array stays in place: a count that is not positive must not be trusted to read it.
    for (int32_t count : {0, -1, -2147483647 - 1}) {
        RecordBuilder b;
        b.Items({{"DCS", "Family Name", "DOE"}}).ItemCount(count);
        EXPECT_TRUE(AAMVAFields::DataItems(b.get()).empty()) << count;
    }
    RecordBuilder noArray;
    noArray.ItemCount(5);
    EXPECT_TRUE(AAMVAFields::DataItems(noArray.get()).empty());
}

} // namespace
