// Element names by version, and records cut to their fields.
#include "AamvaElementCatalogue.h"
#include "AamvaTestSupport.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using zyr::AamvaElementCatalogue;

TEST(ElementCatalogue, NamesDependOnTheVersion) {
    const struct {
        const char* id;
        uint32_t version;
        const char* name;
    } rows[] = {
        {"DAQ", 1, "Licence or ID number"}, {"DAQ", 9, "Customer ID number"},
        {"DAG", 0, "Mailing street address 1"}, {"DAG", 2, "Street address 1"},
        {"DBG", 1, "Medical indicator or codes"}, {"DBG", 2, "Medical indicator or codes"},
        {"DBG", 3, "Alias given name"}, {"DBN", 2, "Alias full name"}, {"DBN", 5, "Alias family name"},
        {"DBS", 1, "Alias prefix"}, {"DBS", 10, "Alias suffix"}, {"DAU", 1, "Height (feet and inches)"},
        {"DAU", 4, "Height"}, {"DAD", 1, "Middle name or initial"}, {"DAD", 4, "Middle names"},
        // An element met before the version that defined it takes its first name.
        {"DDA", 3, "Compliance type"}, {"DDL", 1, "Veteran indicator"}, {"DAA", 9, "Full name"},
        {"PAF", 10, "Permit endorsement code"}, {"DCS", AAMVA_NOT_PRESENT, "Family name"},
        {"DDK", 11, "Organ donor indicator"}, {"ZVA", 9, "Jurisdiction-specific element"},
        {"ZZZ", 1, "Jurisdiction-specific element"}, {"DDM", 11, "Unknown element"},
        {"ABC", 9, "Unknown element"}, {"DA", 9, "Unknown element"}, {"DAAA", 9, "Unknown element"}};
    for (const auto& row : rows)
        EXPECT_STREQ(AamvaElementCatalogue::name(row.id, row.version), row.name) << row.id << " v" << row.version;
}

// Text longer than its field is cut and still NUL-terminated; the last data item's value is the
// last bytes of its allocation, so writing past it is caught by the sanitizer.
TEST(RecordBuilder, LongTextIsCutToFit) {
    zyr::AamvaDocument document;
    document.identity.name.suffix = "JUNIOR";
    document.identity.country = "CANADA";
    document.identity.licenceNumber = std::string(5000, 'L');
    document.header.fileType = "ANSI ";
    document.header.iin = "6360001";
    document.body.subfiles.push_back({"DL", 0, true, true, -1});
    document.body.elements.push_back({"DAQ", std::string(3000, 'A'), 0});
    document.body.elements.push_back({"DCK", std::string(2999, 'B'), 0});
    document.body.elements.push_back({"ZVA", std::string(4000, 'C'), 0});
    document.elementNames = {"one", "two", "three"};
    const zyr::AamvaRecordPtr record = zyr::AamvaRecordBuilder::build(document);
    EXPECT_STREQ(record->NameSuffix, "JUN");
    EXPECT_STREQ(record->AddressCountry, "CAN");
    EXPECT_STREQ(record->IIN, "636000");
    EXPECT_STREQ(record->FileType, "ANSI ");
    EXPECT_EQ(std::string(record->LicenceNumber), std::string(2999, 'L'));
    const std::string a(2999, 'A'), b(2999, 'B'), c(2999, 'C');
    EXPECT_EQ(itemList(*record), "DAQ=" + a + "|DCK=" + b + "|ZVA=" + c);
    EXPECT_STREQ(record->DataItems[2].Name, "three");
}

} // namespace
