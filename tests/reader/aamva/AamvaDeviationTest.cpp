// Hand-written cards with the deviations real cards and scanners produce. Each row changes a
// clean card in one way and checks that the card still reads the same, or reads as it should.
#include "AamvaTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace {

std::string digits(std::size_t value, int width) {
    char text[16];
    std::snprintf(text, sizeof text, "%0*zu", width, value);
    return text;
}

// A card with correct designators. Subfiles include their type and terminator.
std::string card(const std::vector<std::string>& subfiles, const std::string& iinAndVersion = "63600009",
                 const std::string& fileType = "ANSI ", bool jurisdictionVersion = true) {
    std::string header = "@\n\x1e\r" + fileType + iinAndVersion + (jurisdictionVersion ? "00" : "") +
                         digits(subfiles.size(), 2);
    std::size_t offset = header.size() + 10 * subfiles.size();
    for (const std::string& s : subfiles) {
        header += s.substr(0, 2) + digits(offset, 4) + digits(s.size(), 4);
        offset += s.size();
    }
    std::string out = header;
    for (const std::string& s : subfiles)
        out += s;
    return out;
}

// ID=value list of clean subfiles, in the form itemList() gives.
std::string itemsOf(const std::vector<std::string>& subfiles) {
    std::string out;
    for (const std::string& s : subfiles) {
        std::size_t at = 2;
        while (at < s.size()) {
            std::size_t end = s.find_first_of("\n\r", at);
            out += (out.empty() ? "" : "|") + s.substr(at, 3) + "=" + s.substr(at + 3, end - at - 3);
            at = end + 1;
        }
    }
    return out;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

const std::string kDl =
    "DLDAQT70012345\nDCSPEMBERTON\nDDEN\nDACNATHAN\nDDFN\nDADOLIVER\nDDGN\nDCUJR\nDCAD\nDCBK\n"
    "DCDPH\nDBD06062016\nDBB01311986\nDBA12102024\nDBC1\nDAU068 in\nDAYBRO\n"
    "DAG2300 WEST BROAD STREET\nDAIRICHMOND\nDAJVA\nDAK232690000  \n"
    "DCF2424244747474786102204\nDCGUSA\nDCK123456789\nDDAF\nDDB06062008\nDDD1\r";
const std::string kZv = "ZVZVA01\r";
const std::string kClean = card({kDl, kZv});
const std::string kCleanItems = itemsOf({kDl, kZv});
const std::string kDlDesignator = kClean.substr(21, 10);
const std::string kZvDesignator = kClean.substr(31, 10);

struct Expected {
    std::optional<std::string> items = kCleanItems;
    std::optional<std::string> fileType = "ANSI ";
    std::optional<std::string> iin = "636000";
    std::optional<std::string> issuer = "Virginia";
    std::optional<uint32_t> version = 9;
    std::optional<uint32_t> jurisdictionVersion = 0;
    std::optional<std::string> licence = "T70012345";
    std::optional<std::string> surname = "PEMBERTON";
    std::optional<std::string> forename = "NATHAN";
    std::optional<std::string> middle = "OLIVER";
    std::optional<std::string> suffix = "JR";
    std::optional<std::string> fullName = "NATHAN OLIVER PEMBERTON JR";
    std::optional<AAMVADate> birth = date(1986, 1, 31);
    std::optional<AAMVADate> issue = date(2016, 6, 6);
    std::optional<AAMVADate> expiry = date(2024, 12, 10);
    std::optional<std::string> street = "2300 WEST BROAD STREET";
    std::optional<std::string> city = "RICHMOND";
    std::optional<std::string> state = "VA";
    std::optional<std::string> postalCode = "232690000";
    std::optional<std::string> country = "USA";
    std::optional<AAMVAMeasure> height = AAMVAMeasure{68, AAMVA_UNIT_INCHES};
    std::optional<int32_t> hair = -1;
    std::optional<int32_t> eye = AAMVA_EYE_BROWN;
    std::optional<char> shortSex = 'M';
};

struct DeviationCase {
    const char* name;
    std::string payload;
    Expected expected;
};

void check(const AAMVARecord& r, const Expected& e) {
    if (e.items) {
        EXPECT_EQ(itemList(r), *e.items);
    }
    if (e.fileType) {
        EXPECT_STREQ(r.FileType, e.fileType->c_str());
    }
    if (e.iin) {
        EXPECT_STREQ(r.IIN, e.iin->c_str());
    }
    if (e.issuer) {
        EXPECT_STREQ(r.IssuerName, e.issuer->c_str());
    }
    if (e.version) {
        EXPECT_EQ(unpacked(r.Version), *e.version);
    }
    if (e.jurisdictionVersion) {
        EXPECT_EQ(unpacked(r.JurisdictionVersion), *e.jurisdictionVersion);
    }
    if (e.licence) {
        EXPECT_STREQ(r.LicenceNumber, e.licence->c_str());
    }
    if (e.surname) {
        EXPECT_STREQ(r.Surname, e.surname->c_str());
    }
    if (e.forename) {
        EXPECT_STREQ(r.Forename, e.forename->c_str());
    }
    if (e.middle) {
        EXPECT_STREQ(r.MiddleName, e.middle->c_str());
    }
    if (e.suffix) {
        EXPECT_STREQ(r.NameSuffix, e.suffix->c_str());
    }
    if (e.fullName) {
        EXPECT_STREQ(r.FullName, e.fullName->c_str());
    }
    if (e.birth) {
        EXPECT_EQ(r.DateOfBirth, *e.birth);
    }
    if (e.issue) {
        EXPECT_EQ(r.IssueDate, *e.issue);
    }
    if (e.expiry) {
        EXPECT_EQ(r.ExpiryDate, *e.expiry);
    }
    if (e.street) {
        EXPECT_STREQ(r.AddressStreet, e.street->c_str());
    }
    if (e.city) {
        EXPECT_STREQ(r.AddressCity, e.city->c_str());
    }
    if (e.state) {
        EXPECT_STREQ(r.AddressState, e.state->c_str());
    }
    if (e.postalCode) {
        EXPECT_STREQ(r.AddressPostalCode, e.postalCode->c_str());
    }
    if (e.country) {
        EXPECT_STREQ(r.AddressCountry, e.country->c_str());
    }
    if (e.height) {
        EXPECT_EQ(r.Height, *e.height);
    }
    if (e.hair) {
        EXPECT_EQ(unpacked(r.HairColour), *e.hair);
    }
    if (e.eye) {
        EXPECT_EQ(unpacked(r.EyeColour), *e.eye);
    }
    if (e.shortSex) {
        EXPECT_EQ(r.ShortSex, *e.shortSex);
    }
}

class Deviation : public ::testing::TestWithParam<DeviationCase> {};

TEST_P(Deviation, ReadsAsExpected) {
    const DeviationCase& c = GetParam();
    ParsedRecord parsed = parseRecord(c.payload);
    ASSERT_EQ(parsed.code, ZYR_OK) << c.payload;
    check(*parsed.record, c.expected);
}

std::string body(const std::string& payload) {
    return payload.substr(41);
}
std::string head(const std::string& payload) {
    return payload.substr(0, 41);
}

std::vector<DeviationCase> headerCases() {
    Expected same;
    Expected ansiFourLetters;
    ansiFourLetters.fileType = "ANSI";
    Expected lowerCase;
    lowerCase.fileType = "ansi ";
    Expected mangled;
    mangled.fileType = "AMVA ";
    return {
        {"ByteOrderMarkAndBlanksFirst", "\xEF\xBB\xBF  \r\n" + kClean, same},
        {"ScannerPrefixFirst", "]L2" + kClean, same},
        {"HeaderCrWrittenAsLf", replaced(kClean, "@\n\x1e\r", "@\n\x1e\n"), same},
        {"RecordSeparatorMissing", replaced(kClean, "@\n\x1e\r", "@\n\r"), same},
        {"HeaderLfDoubled", replaced(kClean, "@\n\x1e\r", "@\n\n"), same},
        {"RecordSeparatorWrittenAsFs", replaced(kClean, "@\n\x1e\r", "@\n\x1c\r"), same},
        {"KeyboardWedgeLetters", replaced(kClean, "@\n\x1e\r", "@\n6M"), same},
        {"ControlBytesLost", kClean.substr(4), same},
        {"AnsiWithoutSpace", replaced(kClean, "ANSI ", "ANSI"), ansiFourLetters},
        {"LowerCaseFileType", replaced(kClean, "ANSI ", "ansi "), lowerCase},
        {"MangledFileType", replaced(kClean, "ANSI ", "AMVA "), mangled},
        {"DesignatorOffsetsZero",
         replaced(replaced(kClean, kDlDesignator, "DL0000" + kDlDesignator.substr(6)), kZvDesignator,
                  "ZV0000" + kZvDesignator.substr(6)),
         same},
        {"DesignatorOffsetOneTooHigh", replaced(kClean, kDlDesignator, "DL0042" + kDlDesignator.substr(6)),
         same},
        {"DesignatorNumbersAsLetters", replaced(kClean, kDlDesignator, "DLabacdefg"), same},
        {"DesignatorLengthsTooLong",
         replaced(replaced(kClean, kDlDesignator, "DL00410999"), kZvDesignator,
                  kZvDesignator.substr(0, 6) + "9999"),
         same},
        {"CountPromisesMoreSubfiles", replaced(kClean, "ANSI 636000090002", "ANSI 636000090005"), same},
        {"CountMissingSubfileAbsent", kClean.substr(0, kClean.size() - kZv.size()),
         [] {
             Expected e;
             e.items = itemsOf({kDl});
             return e;
         }()},
    };
}

std::vector<DeviationCase> separatorCases() {
    Expected same;
    return {
        {"PipesAsSeparators", "@|\x1e|" + replaced(replaced(kClean.substr(4), "\n", "|"), "\r", "|"), same},
        {"ElementSeparatorFromHeader", "@|\x1e\r" + replaced(kClean.substr(4), "\n", "|"), same},
        {"CrLfWithOneSubfile",
         replaced(card({kDl}).substr(0, 31), "\n", "\r\n") +
             replaced(replaced(card({kDl}).substr(31), "\r", "\n"), "\n", "\r\n"),
         [] {
             Expected e;
             e.items = itemsOf({kDl});
             return e;
         }()},
        {"CrLfAfterEveryElement", head(kClean) + replaced(replaced(body(kClean), "\r", "\n"), "\n", "\r\n"),
         same},
        {"NoSegmentTerminators", head(kClean) + replaced(body(kClean), "\r", "\n"), same},
        {"JurisdictionSubfileGlued", head(kClean) + replaced(body(kClean), "DDD1\r", "DDD1"), same},
        {"LastElementWithoutTerminator", kClean.substr(0, kClean.size() - 1), same},
        {"SubfileTypeMissing", head(kClean) + body(kClean).substr(2), same},
        {"JurisdictionTypeMissing", replaced(kClean, "\rZVZVA", "\rZVA"), same},
        {"TrailingAmpersand", kClean + "&", same},
        {"TrailingCrCrLf", kClean + "\r\r\n", same},
        {"TrailingLettersAndDigits", kClean + "\r\nTRAILING JUNK 00000000\r\n", same},
        {"TrailingRunOfEights", kClean + "88888888888888888888", same},
        {"TrailingBinary", kClean + std::string("\x01\x02\xff\xfe", 4) + "xyzzy", same},
        {"C1ControlsAroundRecords",
         "\xC2\x9F" +
             replaced(replaced(kClean, "\nDCS",
                               "\n\xC2\x80"
                               "DCS"),
                      "DCUJR", "DCU\xC2\x85JR") +
             "\xC2\x9C",
         same},
    };
}

std::vector<DeviationCase> valueCases() {
    std::vector<DeviationCase> out;
    {
        Expected e;
        e.suffix = "";
        e.middle = "";
        e.fullName = "NATHAN PEMBERTON";
        const std::string dl = replaced(replaced(replaced(kDl, "DCUJR", "DCUNONE"), "DADOLIVER", "DADNONE"),
                                        "DCSPEMBERTON", "DCSPEMBERTON          ");
        const std::string withStreet2 = replaced(dl, "\nDAI", "\nDAHunavl\nDAI");
        e.items = itemsOf({withStreet2, kZv});
        out.push_back({"PaddingAndPlaceholders", card({withStreet2, kZv}), e});
    }
    {
        // Elements in any order: restrictions first, the number second.
        const std::string dl = "DLDCBK\nDAQT70012345\n" + kDl.substr(2);
        std::string moved = replaced(dl, "\nDAQT70012345\nDCS", "\nDCS");
        moved = replaced(moved, "\nDCBK\nDCD", "\nDCD");
        Expected e;
        e.items = itemsOf({moved, kZv});
        out.push_back({"ElementsInAnyOrder", card({moved, kZv}), e});
    }
    {
        // A newer version with elements this parser does not know, from an unknown issuer.
        const std::string dl = replaced(kDl, "DDD1\r", "DDD1\nDDM1\nDDPN\r");
        Expected e;
        e.items = itemsOf({dl, kZv});
        e.version = 11;
        e.iin = "999999";
        e.issuer = "Unknown";
        out.push_back({"NewerVersionUnknownIssuer", card({dl, kZv}, "99999911"), e});
    }
    {
        const std::string zv = "ZVZVA\xC2\xBF"
                               "01\r";
        Expected e;
        e.items = itemsOf({kDl, zv});
        out.push_back({"Utf8InJurisdictionValue", card({kDl, zv}), e});
    }
    {
        // Wyoming writes year-first dates on a US card.
        const std::string dl =
            replaced(replaced(replaced(kDl, "DBD06062016", "DBD20160606"), "DBB01311986", "DBB19860131"),
                     "DBA12102024", "DBA20241210");
        Expected e;
        e.items = itemsOf({dl, kZv});
        out.push_back({"UsCardWithYearFirstDates", card({dl, kZv}), e});
    }
    {
        const std::string dl =
            replaced(replaced(replaced(kDl, "DBD06062016", "DBD6062016"), "DBB01311986", "DBB01311986M"),
                     "DBA12102024", "DBA00000000");
        Expected e;
        e.items = itemsOf({dl, kZv});
        e.expiry = noDate();
        out.push_back({"SevenDigitsStrayLetterAndZeros", card({dl, kZv}), e});
    }
    {
        const std::string dl = replaced(kDl, "DBB01311986", "DBB02301990");
        Expected e;
        e.items = itemsOf({dl, kZv});
        e.birth = date(1990, 2, 30); // no such day: the numbers read are kept
        out.push_back({"ImpossibleDateKept", card({dl, kZv}), e});
    }
    // A date that fits neither order keeps its numbers in the order the card should use: month
    // first on a 2003 card even in Canada, year first on a later Canadian card.
    struct OrderRow {
        const char* name;
        const char* iinAndVersion;
        const char* written;
    } orderRows[] = {
        {"ImpossibleDateCanada2003", "63601202", "DBB02301990"},
        {"ImpossibleDateCanada2005", "63601203", "DBB19900230"},
        {"ImpossibleDateCanadaWithoutCountry", "63601209", "DBB19900230"},
        {"ImpossibleDateUs2005", "63600003", "DBB02301990"},
    };
    for (const OrderRow& row : orderRows) {
        std::string dl = replaced(kDl, "DBB01311986", row.written);
        if (std::string(row.iinAndVersion).substr(0, 6) == "636012")
            dl = replaced(dl, "DCGUSA",
                          std::string(row.name).find("Without") == std::string::npos ? "DCGCAN" : "DCG");
        Expected e;
        e.items = itemsOf({dl, kZv});
        e.iin = std::string(row.iinAndVersion).substr(0, 6);
        e.issuer.reset();
        e.country.reset();
        e.version = static_cast<uint32_t>(std::stoi(std::string(row.iinAndVersion).substr(6)));
        e.birth = date(1990, 2, 30);
        e.issue.reset();
        e.expiry.reset();
        out.push_back({row.name, card({dl, kZv}, row.iinAndVersion), e});
    }
    return out;
}

// Cards of the older versions with the oddities of particular issuers.
std::vector<DeviationCase> versionCases() {
    std::vector<DeviationCase> out;
    {
        // Version 2 number with the 19-byte header of version 1, year-first dates, sex as a letter.
        const std::string dl = "DLDAQ123456789\nDCSLINDQVIST\nDCTASTRID M\nDBD20150304\nDBB19770905\n"
                               "DBA20200905\nDBCF\nDAU065 in\nDAYBLU\nDAG17 ELM ST\nDAISPRINGFIELD\nDAJIL\n"
                               "DAK627010000\nDCGUSA\r";
        Expected e;
        e.items = itemsOf({dl});
        e.iin = "636035";
        e.issuer = "Illinois";
        e.version = 2;
        e.jurisdictionVersion = AAMVA_NOT_PRESENT;
        e.licence = "123456789";
        e.surname = "LINDQVIST";
        e.forename = "ASTRID";
        e.middle = "M";
        e.suffix = "";
        e.fullName = "ASTRID M LINDQVIST";
        e.birth = date(1977, 9, 5);
        e.issue = date(2015, 3, 4);
        e.expiry = date(2020, 9, 5);
        e.street = "17 ELM ST";
        e.city = "SPRINGFIELD";
        e.state = "IL";
        e.postalCode = "627010000";
        e.height = AAMVAMeasure{65, AAMVA_UNIT_INCHES};
        e.eye = AAMVA_EYE_BLUE;
        e.shortSex = 'F';
        out.push_back({"Version2WithShortHeader", card({dl}, "63603502", "ANSI ", false), e});
    }
    {
        // Pre-standard: mangled IIN, no entry count, residence address only, hyphenated dates,
        // feet and inches in the centimetre element.
        const std::string dl =
            "DLDAQ000012345678\nDAAOKAFOR,CHIDI,E\nDAL88 PINE KNOLL RD\nDANRALEIGH\nDAONC\n"
            "DAP27601\nDBB19800101\nDBA06-19-2023\nDBC1\nDAV5-10\nDAZBLO\nDAYBR\r";
        const std::string payload = "@\n\x1e\rAAMVA36004001DL0028" + digits(dl.size(), 4) + dl;
        Expected e;
        e.items = itemsOf({dl});
        e.fileType = "AAMVA";
        e.iin = "360040";
        e.issuer = "Unknown";
        e.version = 1;
        e.jurisdictionVersion = AAMVA_NOT_PRESENT;
        e.licence = "000012345678";
        e.surname = "OKAFOR";
        e.forename = "CHIDI";
        e.middle = "E";
        e.suffix = "";
        e.fullName = "OKAFOR,CHIDI,E";
        e.birth = date(1980, 1, 1);
        e.issue = noDate();
        e.expiry = date(2023, 6, 19);
        e.street = "88 PINE KNOLL RD";
        e.city = "RALEIGH";
        e.state = "NC";
        e.postalCode = "27601";
        e.country = "";
        e.height = AAMVAMeasure{70, AAMVA_UNIT_INCHES};
        e.hair = AAMVA_HAIR_BLOND;
        e.eye = AAMVA_EYE_BROWN;
        out.push_back({"PreStandardWithoutCount", payload, e});
    }
    {
        // Version 1 with both the full name and its parts; the parts win. The subfile lacks its type.
        const std::string dl =
            "DLDAAWHITFIELD,ROSA,,\nDABWHITFIELD-ORTEGA\nDACROSALIND\nDADMAE\nDAQD08812377\n"
            "DAG501 N CENTRAL AVE\nDAIPHOENIX\nDAJAZ\nDAK85004\nDBA20261104\nDBB19611104\n"
            "DBD20141016\nDBCF\nDAU504\nDAW135\nDAYHZL\nDAZBRN\r";
        const std::string payload = card({dl}, "63602601", "AAMVA", false);
        Expected e;
        e.items = itemsOf({dl});
        e.fileType = "AAMVA";
        e.iin = "636026";
        e.issuer = "Arizona";
        e.version = 1;
        e.jurisdictionVersion = AAMVA_NOT_PRESENT;
        e.licence = "D08812377";
        e.surname = "WHITFIELD-ORTEGA";
        e.forename = "ROSALIND";
        e.middle = "MAE";
        e.suffix = "";
        e.fullName = "WHITFIELD,ROSA,,";
        e.birth = date(1961, 11, 4);
        e.issue = date(2014, 10, 16);
        e.expiry = date(2026, 11, 4);
        e.street = "501 N CENTRAL AVE";
        e.city = "PHOENIX";
        e.state = "AZ";
        e.postalCode = "85004";
        e.country = "USA";
        e.height = AAMVAMeasure{64, AAMVA_UNIT_INCHES};
        e.hair = AAMVA_HAIR_BROWN;
        e.eye = AAMVA_EYE_HAZEL;
        e.shortSex = 'F';
        out.push_back({"Version1NamePartsWin", replaced(payload, "DLDAA", "DAA"), e});
    }
    {
        // Pennsylvania: full name in reading order with spaces only.
        const std::string dl =
            "DLDAQ27001234\nDAAJOHN CHESTER DOE JR\nDAG12 MARKET ST\nDAIHARRISBURG\nDAJPA\n"
            "DAK17101\nDBA20250101\nDBB19700202\nDBD20210303\nDBCM\nDAU600\nDAYBLU\nDAZBLK\r";
        Expected e;
        e.items = itemsOf({dl});
        e.iin = "636025";
        e.issuer = "Pennsylvania";
        e.version = 1;
        e.jurisdictionVersion = AAMVA_NOT_PRESENT;
        e.licence = "27001234";
        e.surname = "DOE";
        e.forename = "JOHN";
        e.middle = "CHESTER";
        e.suffix = "JR";
        e.fullName = "JOHN CHESTER DOE JR";
        e.birth = date(1970, 2, 2);
        e.issue = date(2021, 3, 3);
        e.expiry = date(2025, 1, 1);
        e.street = "12 MARKET ST";
        e.city = "HARRISBURG";
        e.state = "PA";
        e.postalCode = "17101";
        e.height = AAMVAMeasure{72, AAMVA_UNIT_INCHES};
        e.hair = AAMVA_HAIR_BLACK;
        e.eye = AAMVA_EYE_BLUE;
        out.push_back({"Version1FullNameWithSpaces", card({dl}, "63602501", "ANSI ", false), e});
    }
    {
        // 2005 card from Washington: given names split by a space, feet-and-inches height,
        // month-first dates, and a federal code the version no longer had.
        const std::string dl = "DLDCAD\nDCSMONACO\nDCTPRINCESS GRACE\nDCUNONE\nDBD03152009\nDBB11121980\n"
                               "DBA11122014\nDBC2\nDAYGRN\nDAU601   \nDAGPO BOX 1\nDAIOLYMPIA\nDAJWA\n"
                               "DAK98501\nDAQMONACPG123AB\nDCF123\nDCGUSA\nDCHNONE\nDAZWHI\r";
        Expected e;
        e.items = itemsOf({dl});
        e.iin = "636045";
        e.issuer = "Washington";
        e.version = 3;
        e.licence = "MONACPG123AB";
        e.surname = "MONACO";
        e.forename = "PRINCESS";
        e.middle = "GRACE";
        e.suffix = "";
        e.fullName = "PRINCESS GRACE MONACO";
        e.birth = date(1980, 11, 12);
        e.issue = date(2009, 3, 15);
        e.expiry = date(2014, 11, 12);
        e.street = "PO BOX 1";
        e.city = "OLYMPIA";
        e.state = "WA";
        e.postalCode = "98501";
        e.height = AAMVAMeasure{73, AAMVA_UNIT_INCHES};
        e.hair = AAMVA_HAIR_WHITE;
        e.eye = AAMVA_EYE_GREEN;
        e.shortSex = 'F';
        out.push_back({"Version3GivenNamesWithSpace", card({dl}, "63604503"), e});
    }
    {
        // 2005 Alberta card without a country, old IIN, mixing name elements; year-first dates
        // because the IIN is Canadian.
        const std::string dl = "DLDAQ123456-789\nDCSTREMBLAY\nDCTJOSEE,ANNE,\nDABTREMBLAY\nDACJOSEE\n"
                               "DBD20190102\nDBB19900708\nDBA20240708\nDBCF\nDAU165 cm\nDAW50 KG\nDAYBRO\n"
                               "DAG10 JASPER AVE\nDAIEDMONTON\nDAJAB\nDAKT5J 1N1\r";
        Expected e;
        e.items = itemsOf({dl});
        e.iin = "990876";
        e.issuer = "Alberta";
        e.version = 3;
        e.licence = "123456-789";
        e.surname = "TREMBLAY";
        e.forename = "JOSEE";
        e.middle = "ANNE";
        e.suffix = "";
        e.fullName = "JOSEE ANNE TREMBLAY";
        e.birth = date(1990, 7, 8);
        e.issue = date(2019, 1, 2);
        e.expiry = date(2024, 7, 8);
        e.street = "10 JASPER AVE";
        e.city = "EDMONTON";
        e.state = "AB";
        e.postalCode = "T5J 1N1";
        e.country = "CAN";
        e.height = AAMVAMeasure{165, AAMVA_UNIT_CENTIMETRES};
        e.eye = AAMVA_EYE_BROWN;
        e.shortSex = 'F';
        out.push_back({"Version3CanadianWithoutCountry", card({dl}, "99087603"), e});
    }
    return out;
}

std::string caseName(const ::testing::TestParamInfo<DeviationCase>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Header, Deviation, ::testing::ValuesIn(headerCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Separators, Deviation, ::testing::ValuesIn(separatorCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Values, Deviation, ::testing::ValuesIn(valueCases()), caseName);
INSTANTIATE_TEST_SUITE_P(OlderVersions, Deviation, ::testing::ValuesIn(versionCases()), caseName);

TEST(DeviationWeight, UnitWrittenInThePoundsElementWins) {
    const std::string dl = replaced(kDl, "DDD1\r", "DDD1\nDAW50 KG\r");
    ParsedRecord parsed = parseRecord(card({dl, kZv}));
    ASSERT_EQ(parsed.code, ZYR_OK);
    EXPECT_EQ(parsed.record->Weight, (AAMVAMeasure{50, AAMVA_UNIT_KILOGRAMS}));
}

} // namespace
