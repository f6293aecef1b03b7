// The readers of single values (dates, heights, weights, names) against tables of the forms cards
// write, and records cut to their fields.
#include "AamvaDateReader.h"
#include "AamvaMeasureReader.h"
#include "AamvaNameReader.h"
#include "AamvaTestSupport.h"

#include <gtest/gtest.h>

namespace {

using zyr::AamvaDateReader;
using Order = AamvaDateReader::Order;

TEST(DateReader, FormsAndOrders) {
    const Order M = Order::MonthFirst, Y = Order::YearFirst;
    const struct {
        const char* value;
        Order expected;
        AAMVADate date;
    } rows[] = {
        {"07041976", M, date(1976, 7, 4)}, {"19760704", Y, date(1976, 7, 4)},
        // The other order is tried when the expected one gives no date.
        {"19760704", M, date(1976, 7, 4)}, {"07041976", Y, date(1976, 7, 4)},
        {"02292000", M, date(2000, 2, 29)}, {"  07041976  ", M, date(1976, 7, 4)},
        {"06092016M", M, date(2016, 6, 9)}, {"1131990", M, date(1990, 1, 13)}, {"1131990", Y, date(1990, 1, 13)},
        {"06-19-2023", Y, date(2023, 6, 19)}, {"2023-06-19", M, date(2023, 6, 19)},
        {"06/19/2023", M, date(2023, 6, 19)},
        // No such day in either order: the numbers read in the expected order are kept.
        {"02301999", M, date(1999, 2, 30)}, {"02291999", M, date(1999, 2, 29)}, {"13131999", M, date(1999, 13, 13)},
        // No date at all.
        {"", M, noDate()}, {"   ", M, noDate()}, {"00000000", M, noDate()}, {"NONE", M, noDate()},
        {"MMDDCCYY", M, noDate()}, {"197607", Y, noDate()}, {"X07041976", M, noDate()}};
    for (const auto& row : rows)
        EXPECT_EQ(AamvaDateReader::read(row.value, row.expected), row.date) << '"' << row.value << '"';
}

TEST(DateReader, PlausibleDays) {
    const struct {
        AAMVADate date;
        bool plausible;
    } rows[] = {
        {date(2000, 2, 29), true},  {date(1900, 2, 29), false}, {date(2024, 2, 29), true},
        {date(2023, 2, 29), false}, {date(2023, 4, 31), false}, {date(2023, 12, 31), true},
        {date(2023, 0, 1), false},  {date(2023, 1, 0), false},  {date(1799, 12, 31), false},
        {date(1800, 1, 1), true},   {date(2199, 12, 31), true}, {date(2200, 1, 1), false}};
    for (const auto& row : rows)
        EXPECT_EQ(AamvaDateReader::plausible(row.date), row.plausible) << row.date;
}

// Heights and weights: the element's text, whether it is the metric element, the measure read.
TEST(MeasureReader, HeightsAndWeights) {
    const AAMVAMeasure none = noMeasure();
    const uint32_t in = AAMVA_UNIT_INCHES, cm = AAMVA_UNIT_CENTIMETRES, lb = AAMVA_UNIT_POUNDS,
                   kg = AAMVA_UNIT_KILOGRAMS;
    const struct {
        const char* value;
        bool metricElement;
        AAMVAMeasure measure;
    } heights[] = {
        {"069 in", false, {69, in}}, {"069 IN", false, {69, in}}, {" 73 in", false, {73, in}},
        {"62 in", false, {62, in}}, {"72 IN ", false, {72, in}}, {"181 cm", false, {181, cm}},
        {"170 CM", false, {170, cm}}, {"509", false, {69, in}}, {"600", false, {72, in}},
        {"601   ", false, {73, in}}, {"5'-04\"", false, {64, in}}, {"5'10\"", false, {70, in}},
        {"5-10", true, {70, in}}, {"175", true, {175, cm}}, {"175", false, {175, cm}}, {"68", false, {68, in}},
        {"", false, none}, {"NONE", false, none}, {"009", false, none}, {"000 in", false, none},
        {"5-15", false, none}, {"069 ft", false, none}, {"tall", false, none}},
      weights[] = {
        {"185", false, {185, lb}}, {"084", true, {84, kg}}, {"50 KG", false, {50, kg}},
        {"120 LBS", true, {120, lb}}, {"120 lb", false, {120, lb}}, {" 120 ", false, {120, lb}},
        {"000", false, none}, {"", true, none}, {"unavl", false, none}, {"90 st", false, none}};
    for (const auto& row : heights)
        EXPECT_EQ(zyr::AamvaMeasureReader::height(row.value, row.metricElement), row.measure) << row.value;
    for (const auto& row : weights)
        EXPECT_EQ(zyr::AamvaMeasureReader::weight(row.value, row.metricElement), row.measure) << row.value;
}

// Names as whole cards write them (full name in one element, trailing commas) are the deviation rows'.
TEST(NameReader, AssemblyFromEachGeneration) {
    // Elements present on the card, and what comes out: full|surname|forename|middle|suffix|given.
    const char* const rows[][2] = {
        {"DAC=ANN|DAD=MARIE,LOUISE|DCS=BAKER|DCU=SR", "ANN MARIE LOUISE BAKER SR|BAKER|ANN|MARIE LOUISE|SR|ANN MARIE LOUISE"},
        {"DAC=ANN|DAD=NONE|DCS=BAKER  |DCU=NONE", "ANN BAKER|BAKER|ANN|||ANN"},
        {"DCS=BAKER|DCT=JUSTIN,WILLIAM", "JUSTIN WILLIAM BAKER|BAKER|JUSTIN|WILLIAM||JUSTIN WILLIAM"},
        {"DCS=TESTER|DCT=JOHN,D,", "JOHN D TESTER|TESTER|JOHN|D||JOHN D"},
        {"DCS=NGUYEN|DCT=MARY M", "MARY M NGUYEN|NGUYEN|MARY|M||MARY M"},
        {"DCS=CHER|DCT=ANNE,", "ANNE CHER|CHER|ANNE|||ANNE"},
        {"DAA=JOHNSON,JACK,,3RD", "JOHNSON,JACK,,3RD|JOHNSON|JACK||3RD|JACK"},
        {"DAA=SMITH, MARY JONES", "SMITH, MARY JONES|SMITH|MARY|JONES||MARY JONES"},
        {"DAA=DOE$JANE$A", "DOE$JANE$A|DOE|JANE|A||JANE A"},
        {"DAA=JOHN CHESTER DOE JR", "JOHN CHESTER DOE JR|DOE|JOHN|CHESTER|JR|JOHN CHESTER"},
        {"DAA=MADONNA", "MADONNA|MADONNA||||"},
        {"DAA=X,Y|DAB=LASTNAME|DAC=FIRST|DAD=MID|DAE=II", "X,Y|LASTNAME|FIRST|MID|II|FIRST MID"},
        // A family name of several words stays whole when the card has a first name element.
        {"DAC=NONE|DCS=DE LA CRUZ", "DE LA CRUZ|DE LA CRUZ||||"},
        {"", "|||||"}};
    for (const auto& row : rows) {
        const Fields elements = row[0][0] ? fieldsOf(row[0]) : Fields{};
        auto element = [&](const char* id) -> std::string_view {
            const auto it = elements.find(id);
            return it == elements.end() ? std::string_view() : std::string_view(it->second);
        };
        const zyr::AamvaName name =
            zyr::AamvaNameReader::read({element("DAA"), element("DAB"), element("DAC"), element("DAD"),
                                        element("DAE"), element("DCS"), element("DCT"), element("DCU")});
        EXPECT_EQ(name.full + "|" + name.surname + "|" + name.forename + "|" + name.middle + "|" + name.suffix +
                      "|" + name.given,
                  row[1])
            << row[0];
    }
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
