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

TEST(AAMVAFieldsTest, IdentityFieldsInTheirFixedOrder) {
    RecordBuilder b;
    b.Full();
    const auto rows = AAMVAFields::Identity(b.get());
    const std::vector<std::pair<std::string, std::string>> expected = {
        {"AddressCity", "ANYTOWN"},
        {"AddressPostalCode", "221010000"},
        {"AddressState", "VA"},
        {"AddressStreet", "123 MAIN ST"},
        {"AddressCountry", "USA"},
        {"DateOfBirth", "04 July 1976"},
        {"ExpiryDate", "Invalid DateTime"},
        {"Forename", "JANE"},
        {"FullName", "JANE ANN DOE"},
        {"GivenNames", "JANE ANN"},
        {"IssueDate", "29 February 2016"},
        {"LicenceNumber", "D1234567"},
        {"MiddleName", "ANN"},
        {"NameSuffix", "JR"},
        {"Sex", "Female"},
        {"ShortSex", "F"},
        {"Surname", "DOE"},
    };
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows[i].name, expected[i].first) << i;
        EXPECT_EQ(rows[i].value, expected[i].second) << rows[i].name;
        EXPECT_EQ(rows[i].extra, "") << rows[i].name;
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

TEST(AAMVAFieldsTest, ColoursAreBareCodes) {
    RecordBuilder b;
    b.Full();
    b.record().Height = Measure(183, AAMVA_UNIT_CENTIMETRES);
    b.record().Weight = Measure(82, AAMVA_UNIT_KILOGRAMS);
    b.record().EyeColour = AAMVA_EYE_HAZEL;
    b.record().HairColour = -1;
    const auto rows = AAMVAFields::Physical(b.get());
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0].value, "183 Centimetres");
    EXPECT_EQ(rows[1].value, "82 Kilograms");
    EXPECT_EQ(rows[2].value, "5");
    EXPECT_EQ(rows[3].value, "-1");
}

TEST(AAMVAFieldsTest, DataItemsInLibraryOrderWithNameFirst) {
    RecordBuilder b;
    b.Items(
        {{"DCS", "Family Name", "DOE"}, {"DAC", "First Name", "JANE"}, {"ZVA", "Unknown element", "X&Y"}});
    const auto rows = AAMVAFields::DataItems(b.get());
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_EQ(rows[0].name, "Family Name");
    EXPECT_EQ(rows[0].id, "DCS");
    EXPECT_EQ(rows[0].value, "DOE");
    EXPECT_EQ(rows[1].id, "DAC");
    EXPECT_EQ(rows[2].id, "ZVA");
    EXPECT_EQ(rows[2].value, "X&Y");
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
