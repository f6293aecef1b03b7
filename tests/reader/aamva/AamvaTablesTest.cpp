// The lookup tables: issuers by IIN and element names by version.
#include "AamvaElementCatalogue.h"
#include "AamvaIssuerTable.h"
#include "AamvaRecordBuilder.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

using zyr::AamvaCountry;
using zyr::AamvaElementCatalogue;
using zyr::AamvaIssuerTable;

std::set<std::string> abbreviationsOf(AamvaCountry country) {
    std::set<std::string> found;
    auto scan = [&](int from, int to) {
        for (int iin = from; iin <= to; ++iin) {
            const zyr::AamvaIssuer issuer = AamvaIssuerTable::find(std::to_string(iin));
            if (issuer.country == country)
                found.insert(issuer.abbreviation);
        }
    };
    scan(604400, 604499);
    scan(636000, 636099);
    return found;
}

TEST(IssuerTable, EveryStateTerritoryAndProvince) {
    const std::set<std::string> us = {"AL", "AK", "AZ", "AR", "CA", "CO", "CT", "DE", "FL", "GA", "HI", "ID",
                                      "IL", "IN", "IA", "KS", "KY", "LA", "ME", "MD", "MA", "MI", "MN", "MS",
                                      "MO", "MT", "NE", "NV", "NH", "NJ", "NM", "NY", "NC", "ND", "OH", "OK",
                                      "OR", "PA", "RI", "SC", "SD", "TN", "TX", "UT", "VT", "VA", "WA", "WV",
                                      "WI", "WY", "DC", "AS", "GU", "MP", "PR", "VI", ""};
    const std::set<std::string> canada = {"AB", "BC", "MB", "NB", "NL", "NS", "NT",
                                          "NU", "ON", "PE", "QC", "SK", "YT"};
    EXPECT_EQ(abbreviationsOf(AamvaCountry::UnitedStates), us);
    EXPECT_EQ(abbreviationsOf(AamvaCountry::Canada), canada);
    EXPECT_EQ(abbreviationsOf(AamvaCountry::Mexico), (std::set<std::string>{"CU", "HL"}));
}

TEST(IssuerTable, NamesAndCountries) {
    struct Row {
        const char* iin;
        const char* name;
        const char* countryCode;
    } rows[] = {
        {"604426", "Prince Edward Island", "CAN"},
        {"604434", "Northwest Territories", "CAN"},
        {"636000", "Virginia", "USA"},
        {"636012", "Ontario", "CAN"},
        {"636027", "U.S. Department of State", "USA"},
        {"636056", "Coahuila", "MEX"},
        {"636062", "U.S. Virgin Islands", "USA"},
        {"990876", "Alberta", "CAN"},
        {"604432", "Alberta", "CAN"},
        {"636063", "Unknown", ""},
        {"999999", "Unknown", ""},
        {"360040", "Unknown", ""},
        {"63600", "Unknown", ""},
        {"", "Unknown", ""},
    };
    for (const Row& row : rows) {
        const zyr::AamvaIssuer issuer = AamvaIssuerTable::find(row.iin);
        EXPECT_STREQ(issuer.name, row.name) << row.iin;
        EXPECT_STREQ(AamvaIssuerTable::countryCode(issuer.country), row.countryCode) << row.iin;
    }
}

TEST(ElementCatalogue, NamesDependOnTheVersion) {
    struct Row {
        const char* id;
        uint32_t version;
        const char* name;
    } rows[] = {
        {"DAQ", 1, "Licence or ID number"},
        {"DAQ", 9, "Customer ID number"},
        {"DAG", 0, "Mailing street address 1"},
        {"DAG", 2, "Street address 1"},
        {"DBG", 1, "Medical indicator or codes"},
        {"DBG", 2, "Medical indicator or codes"},
        {"DBG", 3, "Alias given name"},
        {"DBN", 2, "Alias full name"},
        {"DBN", 5, "Alias family name"},
        {"DBS", 1, "Alias prefix"},
        {"DBS", 10, "Alias suffix"},
        {"DAU", 1, "Height (feet and inches)"},
        {"DAU", 4, "Height"},
        {"DAD", 1, "Middle name or initial"},
        {"DAD", 4, "Middle names"},
        // An element met before the version that defined it takes its first name.
        {"DDA", 3, "Compliance type"},
        {"DDL", 1, "Veteran indicator"},
        {"DAA", 9, "Full name"},
        {"PAF", 10, "Permit endorsement code"},
        {"DCS", AAMVA_NOT_PRESENT, "Family name"},
        {"DDK", 11, "Organ donor indicator"},
        {"ZVA", 9, "Jurisdiction-specific element"},
        {"ZZZ", 1, "Jurisdiction-specific element"},
        {"DDM", 11, "Unknown element"},
        {"ABC", 9, "Unknown element"},
        {"DA", 9, "Unknown element"},
        {"DAAA", 9, "Unknown element"},
    };
    for (const Row& row : rows)
        EXPECT_STREQ(AamvaElementCatalogue::name(row.id, row.version), row.name)
            << row.id << " v" << row.version;
}

// Every element the standards define has a name of its own in the versions that use it.
TEST(ElementCatalogue, EveryStandardElementIsNamed) {
    const char* const version1[] = {
        "DAA", "DAB", "DAC", "DAD", "DAE", "DAF", "DAG", "DAH", "DAI", "DAJ", "DAK", "DAL", "DAM",
        "DAN", "DAO", "DAP", "DAQ", "DAR", "DAS", "DAT", "DAU", "DAV", "DAW", "DAX", "DAY", "DAZ",
        "DBA", "DBB", "DBC", "DBD", "DBE", "DBF", "DBG", "DBH", "DBI", "DBJ", "DBK", "DBL", "DBM",
        "DBN", "DBO", "DBP", "DBQ", "DBR", "DBS", "PAA", "PAB", "PAC", "PAD", "PAE", "PAF"};
    const char* const later[] = {"DCA", "DCB", "DCD", "DCE", "DCF", "DCG", "DCH", "DCI", "DCJ", "DCK", "DCL",
                                 "DCM", "DCN", "DCO", "DCP", "DCQ", "DCR", "DCS", "DCT", "DCU", "DDA", "DDB",
                                 "DDC", "DDD", "DDE", "DDF", "DDG", "DDH", "DDI", "DDJ", "DDK", "DDL"};
    // Within one version every element has a name of its own.
    std::set<std::string> firstNames;
    for (const char* id : version1) {
        const std::string name = AamvaElementCatalogue::name(id, 1);
        EXPECT_NE(name, AamvaElementCatalogue::kUnknownElement) << id;
        firstNames.insert(name);
    }
    EXPECT_EQ(firstNames.size(), std::size(version1));
    std::set<std::string> laterNames;
    for (const char* id : later) {
        const std::string name = AamvaElementCatalogue::name(id, 10);
        EXPECT_NE(name, AamvaElementCatalogue::kUnknownElement) << id;
        laterNames.insert(name);
    }
    EXPECT_EQ(laterNames.size(), std::size(later));
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
    ASSERT_EQ(static_cast<int32_t>(record->DataItemCount), 3);
    EXPECT_EQ(std::string(record->DataItems[0].Value), std::string(2999, 'A'));
    EXPECT_EQ(std::string(record->DataItems[1].Value), std::string(2999, 'B'));
    EXPECT_EQ(std::string(record->DataItems[2].Value), std::string(2999, 'C'));
    EXPECT_STREQ(record->DataItems[2].Name, "three");
    EXPECT_STREQ(record->DataItems[2].ID, "ZVA");
}

} // namespace
