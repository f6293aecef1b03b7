// Hand-written cards with the deviations real cards and scanners produce. Each row changes a
// clean card in one way and checks that the card still reads the same, or reads as it should;
// inputs that are no card get their own error codes.
#include "AamvaParser.h"
#include "AamvaTestSupport.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
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

// The text with each replacement made in turn, every occurrence.
std::string edited(std::string text, const std::vector<std::pair<std::string, std::string>>& edits) {
    for (const auto& [from, to] : edits)
        for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
            text.replace(at, from.size(), to);
    return text;
}
std::string replaced(const std::string& text, const std::string& from, const std::string& to) {
    return edited(text, {{from, to}});
}

const std::string kDl =
    "DLDAQT70012345\nDCSPEMBERTON\nDDEN\nDACNATHAN\nDDFN\nDADOLIVER\nDDGN\nDCUJR\nDCAD\nDCBK\n"
    "DCDPH\nDBD06062016\nDBB01311986\nDBA12102024\nDBC1\nDAU068 in\nDAYBRO\n"
    "DAG2300 WEST BROAD STREET\nDAIRICHMOND\nDAJVA\nDAK232690000  \n"
    "DCF2424244747474786102204\nDCGUSA\nDCK123456789\nDDAF\nDDB06062008\nDDD1\r";
const std::string kZv = "ZVZVA01\r";
const std::string kClean = card({kDl, kZv});
const std::string kCleanItems = itemsOf({kDl, kZv});

// What the clean card reads as; every row states how its card differs.
const Fields kCleanFields = fieldsOf(
    kCleanItems, "licence=T70012345|full=NATHAN OLIVER PEMBERTON JR|surname=PEMBERTON|forename=NATHAN|"
                 "middle=OLIVER|suffix=JR|given=NATHAN OLIVER|sex=Male|short=M|birth=1986-01-31|issue=2016-06-06|"
                 "expiry=2024-12-10|street=2300 WEST BROAD STREET|city=RICHMOND|state=VA|postal=232690000|"
                 "country=USA|height=68 in|weight=-|hair=-1|eye=2|fileType=ANSI |iin=636000|issuer=Virginia|"
                 "version=9|jversion=0");

struct DeviationCase {
    const char* name;
    std::string payload;
    Fields expected;              // every field, or for the example cards the holder's only
    const char* repair = nullptr; // part of one of the lines the parser notes
};

class Deviation : public ::testing::TestWithParam<DeviationCase> {};

TEST_P(Deviation, ReadsAsExpected) {
    const DeviationCase& c = GetParam();
    ParsedRecord parsed = parseRecord(c.payload);
    ASSERT_EQ(parsed.code, ZYR_OK) << c.payload;
    Fields actual;
    for (const auto& field : describe(*parsed.record))
        if (c.expected.count(field.first))
            actual.insert(field);
    EXPECT_EQ(actual, c.expected) << c.payload;
    std::string notes;
    for (const std::string& line : parsed.repairs)
        notes += line + "\n";
    EXPECT_NE(notes.find(c.repair ? c.repair : ""), std::string::npos) << notes;
}

const std::string kHead = kClean.substr(0, 41), kBody = kClean.substr(41);

std::vector<DeviationCase> headerCases() {
    const Fields same = kCleanFields;
    const std::string dl = kClean.substr(21, 10), zv = kClean.substr(31, 10); // the designators
    return {
        {"ByteOrderMarkAndBlanksFirst", "\xEF\xBB\xBF  \r\n" + kClean, same},
        {"ScannerPrefixFirst", "]L2" + kClean, same},
        {"HeaderCrWrittenAsLf", replaced(kClean, "@\n\x1e\r", "@\n\x1e\n"), same},
        {"HeaderLfDoubled", replaced(kClean, "@\n\x1e\r", "@\n\n"), same},
        {"ControlBytesLost", kClean.substr(4), same},
        {"AnsiWithoutSpace", replaced(kClean, "ANSI ", "ANSI"), with(same, {{"fileType", "ANSI"}})},
        {"MangledFileType", replaced(kClean, "ANSI ", "AMVA "), with(same, {{"fileType", "AMVA "}})},
        {"DesignatorOffsetsZero",
         edited(kClean, {{dl, "DL0000" + dl.substr(6)}, {zv, "ZV0000" + zv.substr(6)}}), same},
        {"DesignatorOffsetOneTooHigh", replaced(kClean, dl, "DL0042" + dl.substr(6)), same},
        {"DesignatorNumbersAsLetters", replaced(kClean, dl, "DLabacdefg"), same},
        {"CountPromisesMoreSubfiles", replaced(kClean, "ANSI 636000090002", "ANSI 636000090005"), same},
    };
}

std::vector<DeviationCase> separatorCases() {
    const Fields same = kCleanFields;
    const std::string dlCard = card({kDl});
    return {
        {"PipesAsSeparators", "@|\x1e|" + edited(kClean.substr(4), {{"\n", "|"}, {"\r", "|"}}), same},
        {"ElementSeparatorFromHeader", "@|\x1e\r" + replaced(kClean.substr(4), "\n", "|"), same},
        {"CrLfWithOneSubfile",
         replaced(dlCard.substr(0, 31), "\n", "\r\n") + edited(dlCard.substr(31), {{"\r", "\n"}, {"\n", "\r\n"}}),
         with(same, {{"items", itemsOf({kDl})}})},
        {"CrLfAfterEveryElement", kHead + edited(kBody, {{"\r", "\n"}, {"\n", "\r\n"}}), same},
        {"JurisdictionSubfileGlued", kHead + replaced(kBody, "DDD1\r", "DDD1"), same},
        {"LastElementWithoutTerminator", kClean.substr(0, kClean.size() - 1), same},
        {"TrailingLettersAndDigits", kClean + "\r\nTRAILING JUNK 00000000\r\n", same},
        {"TrailingBinary", kClean + std::string("\x01\x02\xff\xfe", 4) + "xyzzy", same},
        {"C1ControlsAroundRecords",
         "\xC2\x9F" + edited(kClean, {{"\nDCS", "\n\xC2\x80" "DCS"}, {"DCUJR", "DCU\xC2\x85JR"}}) + "\xC2\x9C", same},
    };
}

// The clean card with some of its text replaced; the items follow the change.
using Edits = std::vector<std::pair<std::string, std::string>>;
DeviationCase changed(const char* name, const Edits& edits, Fields changes,
                      const std::string& iinAndVersion = "63600009") {
    const std::string dl = edited(kDl, edits);
    changes["items"] = itemsOf({dl, kZv});
    return {name, card({dl, kZv}, iinAndVersion), with(kCleanFields, changes)};
}

std::vector<DeviationCase> valueCases() {
    const Fields ontario = {{"iin", "636012"}, {"issuer", "Ontario"}, {"birth", "1990-02-30"}};
    return {
        changed("PaddingAndPlaceholders",
                {{"DCSPEMBERTON", "DCSPEMBERTON          "}, {"DADOLIVER", "DADNONE"}, {"DCUJR", "DCUNONE\nDAHunavl"}},
                {{"middle", ""}, {"suffix", ""}, {"full", "NATHAN PEMBERTON"}, {"given", "NATHAN"}}),
        // Restrictions first, the number further on.
        changed("ElementsInAnyOrder",
                {{"\nDCBK\n", "\n"}, {"DLDAQT70012345\nDCSPEMBERTON", "DLDCBK\nDCSPEMBERTON\nDAQT70012345"}}, {}),
        // A newer version with elements this parser does not know, from an unknown issuer.
        changed("NewerVersionUnknownIssuer", {{"DDD1\r", "DDD1\nDDM1\nDDPN\r"}},
                {{"version", "11"}, {"iin", "999999"}, {"issuer", "Unknown"}}, "99999911"),
        changed("Utf8InValue", {{"DCK123456789", "DCK12\xC2\xBF" "456789"}}, {}),
        // Wyoming writes year-first dates on a US card.
        changed("UsCardWithYearFirstDates",
                {{"DBD06062016", "DBD20160606"}, {"DBB01311986", "DBB19860131"}, {"DBA12102024", "DBA20241210"}}, {}),
        // No such day: the numbers read are kept, in the order the card should use: month first
        // on US cards and on a 2003 card even in Canada, year first on later Canadian cards.
        changed("ImpossibleDateUs2005", {{"DBB01311986", "DBB02301990"}}, {{"birth", "1990-02-30"}, {"version", "3"}},
                "63600003"),
        changed("ImpossibleDateCanada2003", {{"DBB01311986", "DBB02301990"}, {"DCGUSA", "DCGCDN"}},
                with(ontario, {{"version", "2"}, {"country", "CDN"}}), "63601202"),
        changed("ImpossibleDateCanada2005", {{"DBB01311986", "DBB19900230"}, {"DCGUSA", "DCGCAN"}},
                with(ontario, {{"version", "3"}, {"country", "CAN"}}), "63601203"),
        changed("ImpossibleDateCanadaByIssuer", {{"DBB01311986", "DBB19900230"}, {"DCGUSA", "DCG"}},
                with(ontario, {{"version", "9"}, {"country", "CAN"}}), "63601209"),
    };
}

// An older card: its one subfile, the payload around it, and what it reads as.
DeviationCase older(const char* name, const std::string& dl, const std::string& payload, const char* fields) {
    return {name, payload, fieldsOf(itemsOf({dl}), fields)};
}

// Cards of the older versions with the oddities of particular issuers.
std::vector<DeviationCase> versionCases() {
    // Version 2 number with the 19-byte header of version 1, year-first dates, sex as a letter.
    const std::string v2 = "DLDAQ123456789\nDCSLINDQVIST\nDCTASTRID M\nDBD20150304\nDBB19770905\nDBA20200905\nDBCF\n"
                           "DAU065 in\nDAYBLU\nDAG17 ELM ST\nDAISPRINGFIELD\nDAJIL\nDAK627010000\nDCGUSA\r";
    // Pre-standard: mangled IIN, no entry count, residence address only, hyphenated dates,
    // feet and inches in the centimetre element.
    const std::string v0 = "DLDAQ000012345678\nDAAOKAFOR,CHIDI,E\nDAL88 PINE KNOLL RD\nDANRALEIGH\nDAONC\n"
                           "DAP27601\nDBB19800101\nDBA06-19-2023\nDBC1\nDAV5-10\nDAZBLO\nDAYBR\r";
    // Version 1 with both the full name and its parts; the parts win. The subfile lacks its type.
    const std::string parts = "DLDAAWHITFIELD,ROSA,,\nDABWHITFIELD-ORTEGA\nDACROSALIND\nDADMAE\nDAQD08812377\n"
                              "DAG501 N CENTRAL AVE\nDAIPHOENIX\nDAJAZ\nDAK85004\nDBA20261104\nDBB19611104\n"
                              "DBD20141016\nDBCF\nDAU504\nDAW135\nDAYHZL\nDAZBRN\r";
    // 2005 Alberta card without a country, old IIN, mixing name elements; year-first dates
    // because the IIN is Canadian.
    const std::string ab = "DLDAQ123456-789\nDCSTREMBLAY\nDCTJOSEE,ANNE,\nDABTREMBLAY\nDACJOSEE\n"
                           "DBD20190102\nDBB19900708\nDBA20240708\nDBCF\nDAU165 cm\nDAW50 KG\nDAYBRO\n"
                           "DAG10 JASPER AVE\nDAIEDMONTON\nDAJAB\nDAKT5J 1N1\r";
    return {
        older("Version2WithShortHeader", v2, card({v2}, "63603502", "ANSI ", false),
              "licence=123456789|full=ASTRID M LINDQVIST|surname=LINDQVIST|forename=ASTRID|middle=M|suffix=|"
              "given=ASTRID M|sex=Female|short=F|birth=1977-09-05|issue=2015-03-04|expiry=2020-09-05|"
              "street=17 ELM ST|city=SPRINGFIELD|state=IL|postal=627010000|country=USA|height=65 in|weight=-|"
              "hair=-1|eye=1|fileType=ANSI |iin=636035|issuer=Illinois|version=2|jversion=-"),
        older("PreStandardWithoutCount", v0, "@\n\x1e\rAAMVA36004001DL0028" + digits(v0.size(), 4) + v0,
              "licence=000012345678|full=OKAFOR,CHIDI,E|surname=OKAFOR|forename=CHIDI|middle=E|suffix=|"
              "given=CHIDI E|sex=Male|short=M|birth=1980-01-01|issue=-|expiry=2023-06-19|street=88 PINE KNOLL RD|"
              "city=RALEIGH|state=NC|postal=27601|country=|height=70 in|weight=-|hair=2|eye=2|fileType=AAMVA|"
              "iin=360040|issuer=Unknown|version=1|jversion=-"),
        older("Version1NamePartsWin", parts, replaced(card({parts}, "63602601", "AAMVA", false), "DLDAA", "DAA"),
              "licence=D08812377|full=WHITFIELD,ROSA,,|surname=WHITFIELD-ORTEGA|forename=ROSALIND|middle=MAE|"
              "suffix=|given=ROSALIND MAE|sex=Female|short=F|birth=1961-11-04|issue=2014-10-16|"
              "expiry=2026-11-04|street=501 N CENTRAL AVE|city=PHOENIX|state=AZ|postal=85004|country=USA|"
              "height=64 in|weight=135 lb|hair=3|eye=5|fileType=AAMVA|iin=636026|issuer=Arizona|version=1|"
              "jversion=-"),
        older("Version3CanadianWithoutCountry", ab, card({ab}, "99087603"),
              "licence=123456-789|full=JOSEE ANNE TREMBLAY|surname=TREMBLAY|forename=JOSEE|middle=ANNE|suffix=|"
              "given=JOSEE ANNE|sex=Female|short=F|birth=1990-07-08|issue=2019-01-02|expiry=2024-07-08|"
              "street=10 JASPER AVE|city=EDMONTON|state=AB|postal=T5J 1N1|country=CAN|height=165 cm|"
              "weight=50 kg|hair=-1|eye=2|fileType=ANSI |iin=990876|issuer=Alberta|version=3|jversion=0"),
    };
}

// The examples printed in the 2020 and 2000 standards, as scanners and issuers mangle them. Only
// the holder's fields are compared: the point is that each card reads as its clean original.
const std::string kExample2020 =
    "@\n\x1e\rANSI 636000100102DL00410278ZV03190008DLDAQT64235789\nDCSSAMPLE\nDDEN\nDACMICHAEL\nDDFN\n"
    "DADJOHN\nDDGN\nDCUJR\nDCAD\nDCBK\nDCDPH\nDBD06062019\nDBB06061986\nDBA12102024\nDBC1\nDAU068 in\n"
    "DAYBRO\nDAG2300 WEST BROAD STREET\nDAIRICHMOND\nDAJVA\nDAK232690000  \nDCF2424244747474786102204\n"
    "DCGUSA\nDCK123456789\nDDAF\nDDB06062018\nDDC06062020\nDDD1\rZVZVA01\r";
const std::string kExample2000 =
    "@\n\x1e\rANSI 6360000102DL00390187ZV02260031DLDAQ0123456789ABC\nDAAPUBLIC,JOHN,Q\n"
    "DAG123 MAIN STREET\nDAIANYTOWN\nDAJVA\nDAK123459999  \nDARDM  \nDAS          \nDAT     \nDAU509\n"
    "DAW175\nDAYBL \nDAZBR \nDBA20011201\nDBB19761123\nDBCM\nDBD19961201\rZVZVAJURISDICTIONDEFINEDELEMENT\r";
const Fields kHolder2020 = fieldsOf("licence=T64235789|surname=SAMPLE|forename=MICHAEL|middle=JOHN|"
                                    "suffix=JR|sex=Male|birth=1986-06-06|issue=2019-06-06|"
                                    "expiry=2024-12-10|street=2300 WEST BROAD STREET|city=RICHMOND|"
                                    "state=VA|postal=232690000");
const Fields kHolder2000 = fieldsOf("licence=0123456789ABC|surname=PUBLIC|forename=JOHN|middle=Q|suffix=|"
                                    "sex=Male|birth=1976-11-23|issue=1996-12-01|expiry=2001-12-01|"
                                    "street=123 MAIN STREET|city=ANYTOWN|state=VA|postal=123459999");

std::vector<DeviationCase> offStandardCases() {
    const std::string &ex = kExample2020, &ex2000 = kExample2000;
    const Fields &h20 = kHolder2020, &h00 = kHolder2000;
    const std::string designators = "DL00410278ZV03190008";
    const std::string wedgeBody = replaced(ex.substr(41), "\r", "M");
    // The postal code moved to the end of the card subfile, where a glued terminator lands.
    const std::string postalLast =
        edited(ex, {{"DAK232690000  \n", ""}, {"DDD1\r", "DDD1\nDAK232690000  \r"}});
    auto withoutNames = [](std::string card, const std::string& names) {
        return edited(card, {{"DCSSAMPLE", names}, {"DACMICHAEL\n", ""}, {"DADJOHN\n", ""}});
    };
    return {
        {"ByteOrderMark", "\xEF\xBB\xBF" + ex, h20, "byte order mark"},
        {"ByteOrderMarkOn2000", "\xEF\xBB\xBF" + ex2000, h00, "byte order mark"},
        {"RecordSeparatorMissing", replaced(ex, "@\n\x1e\r", "@\n\r"), h20, "control bytes 0A 0D"},
        {"RecordSeparatorAsFs", replaced(ex, "@\n\x1e\r", "@\n\x1c\r"), h20, "control bytes 0A 1C 0D"},
        {"CrAsLfEverywhere", replaced(ex, "\r", "\n"), h20, "ZV without a segment terminator"},
        {"CrAsLfEverywhere2000", replaced(ex2000, "\r", "\n"), h00, "DL without a segment terminator"},
        {"WedgeSixAndM", "@\n6MANSI 636000100102" + designators + wedgeBody,
         h20, "ZV ends with a terminator typed as M after ZVA"},
        {"WedgeCaretAndM", "@\n^MANSI 636000100102" + designators + wedgeBody,
         h20, "DL ends with a terminator typed as M after DDD"},
        // Real terminators in the data: an "M" there is part of the value.
        {"WedgeLettersOnlyInTheHeader", "@\n6MANSI 636000100102" + designators + ex.substr(41), h20, "CR typed as M"},
        // An "M" that ends a value stays when the data has real terminators, or when no letters
        // replaced the header's control bytes.
        {"ValueEndingInMWithRealTerminators",
         edited(ex, {{"@\n\x1e\r", "@\n6M"}, {"DAIRICHMOND\n", ""}, {"DDD1\r", "DDD1\nDAIBIRMINGHAM\n"}}),
         with(h20, {{"city", "BIRMINGHAM"}}), "CR typed as M"},
        {"ValueEndingInMWithoutTerminators",
         edited(ex, {{"DAIRICHMOND\n", ""}, {"DDD1\r", "DDD1\nDAIBIRMINGHAM\r"}, {"\r", "\n"}}),
         with(h20, {{"city", "BIRMINGHAM"}}), "DL without a segment terminator"},
        {"WedgeGluedPostalCode", edited(postalLast, {{"@\n\x1e\r", "@\n6M"}, {"\r", "M"}}), h20, "after DAK"},
        {"WedgeGluedDate", edited(ex2000, {{"@\n\x1e\r", "@\n^M"}, {"\r", "M"}}), h00, "after DBD"},
        {"GluedDate",
         edited(ex, {{"DBA12102024\n", ""}, {"DDD1\rZVZVA", "DDD1\nDBA12102024MZVZVA"}}), h20, "after DBA"},
        {"HeaderByteLong", replaced(ex, "@\n\x1e\r", "@\n\x1e\r\n"), h20, "at offset 42, declared at 41"},
        {"HeaderSpaceDoubled", replaced(ex, "ANSI ", "ANSI  "), h20, "1 extra spaces"},
        {"HeaderByteShortWithoutJurisdictionType", edited(ex, {{"@\n\x1e\r", "@\n\r"}, {"\rZVZVA", "\rZVA"}}),
         h20, "ZV without its type"},
        {"LengthsPastTheEndWithLf", edited(ex, {{designators, "DL00410290ZV03310020"}, {"\r", "\n"}}),
         h20, "ZV is 8 bytes long, declared 20"},
        {"LengthsPastTheEndNoTerminator", replaced(ex, designators, "DL00410290ZV03310020").substr(0, ex.size() - 1),
         h20, "DL is 278 bytes long, declared 290"},
        {"SecondSubfileAbsentEndsWithLf", replaced(ex.substr(0, ex.size() - 8), "DDD1\r", "DDD1\n"),
         h20, "ZV declared but absent"},
        {"SecondSubfileAbsentNoTerminator", ex.substr(0, ex.size() - 9), h20, "ZV declared but absent"},
        {"SecondSubfileAbsentCrLf", ex.substr(0, ex.size() - 8) + "\n", h20, "ZV declared but absent"},
        {"OffsetsDisagree",
         replaced(ex, designators, "DL00370278ZV03250008"), h20, "ZV at offset 319, declared at 325"},
        {"OffsetsDisagreeWithoutTypes",
         edited(ex, {{designators, "DL00430278ZV03150008"}, {"DLDAQ", "DAQ"}, {"ZVZVA", "ZVA"}}),
         h20, "DL without its type"},
        // The jurisdiction subfile glued to the last value without its type: found at its offset.
        {"JurisdictionGluedWithoutType", replaced(postalLast, "\rZVZVA", "ZVA"), h20, "ZV without its type"},
        {"NewVersionOldLayout", replaced(ex, "ANSI 636000100102DL0041", "ANSI 6360001002DL0039"),
         h20, "version 10 header without a jurisdiction version"},
        {"NewVersionOldLayoutOneSubfile",
         replaced(ex.substr(0, ex.size() - 8), "ANSI 636000100102" + designators, "ANSI 6360000501DL00290278"),
         with(h20, {}), "version 5 header without a jurisdiction version"},
        {"FullNameInFamilyName",
         withoutNames(ex, "DCSSAMPLE,MICHAEL,JOHN"), h20, "full name taken apart from the family name"},
        {"FullNameInFamilyNameReadingOrder", withoutNames(ex, "DCSMICHAEL JOHN SAMPLE"),
         h20, "full name taken apart from the family name"},
        {"FullNameInReadingOrder", withoutNames(ex, "DAAMICHAEL JOHN SAMPLE"), h20, "DL is 272 bytes long"},
        {"NamesWithTrailingCommas",
         edited(ex,
                {{"DCSSAMPLE\n", "DCSSAMPLE,\n"}, {"DACMICHAEL\n", "DACMICHAEL,\n"}, {"DADJOHN\n", "DADJOHN,\n"}}),
         h20, "comma after the name \"MICHAEL\""},
        {"FullNameWithTrailingComma", replaced(ex2000, "PUBLIC,JOHN,Q", "PUBLIC,JOHN,Q,"),
         h00, "DL is 188 bytes long, declared 187"},
        {"AbsentElementsStayAbsent", edited(ex, {{"DADJOHN\n", ""}, {"DBD06062019\n", ""}, {"\r", "\n"}}),
         with(h20, {{"middle", ""}, {"issue", "-"}}), "DL is 258 bytes long, declared 278"},
    };
}

std::string caseName(const ::testing::TestParamInfo<DeviationCase>& info) {
    return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Header, Deviation, ::testing::ValuesIn(headerCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Separators, Deviation, ::testing::ValuesIn(separatorCases()), caseName);
INSTANTIATE_TEST_SUITE_P(Values, Deviation, ::testing::ValuesIn(valueCases()), caseName);
INSTANTIATE_TEST_SUITE_P(OlderVersions, Deviation, ::testing::ValuesIn(versionCases()), caseName);
INSTANTIATE_TEST_SUITE_P(RealCards, Deviation, ::testing::ValuesIn(offStandardCases()), caseName);

// ---- Inputs that are not a card: each gets its own error code, and nothing is read past the end ----

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
        // Cuts at every length of generated cards are the generated-card tests' own.
        ErrorCase{"CutAfterDesignatorsWithBlanks", kHeader + "\r\n", kCut}),
    [](const auto& info) { return std::string(info.param.name); });

} // namespace
