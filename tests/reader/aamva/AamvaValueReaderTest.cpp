// The readers of single values: dates, heights, weights, names and colour codes, each against a
// table of the forms cards write.
#include "AamvaColourCodes.h"
#include "AamvaDateReader.h"
#include "AamvaMeasureReader.h"
#include "AamvaNameReader.h"
#include "AamvaTestSupport.h"

#include <gtest/gtest.h>

namespace {

using zyr::AamvaDateReader;
using Order = AamvaDateReader::Order;

TEST(DateReader, FormsAndOrders) {
    struct Row {
        const char* value;
        Order expected;
        AAMVADate date;
    } rows[] = {
        {"07041976", Order::MonthFirst, date(1976, 7, 4)},
        {"19760704", Order::YearFirst, date(1976, 7, 4)},
        // The other order is tried when the expected one gives no date.
        {"19760704", Order::MonthFirst, date(1976, 7, 4)},
        {"07041976", Order::YearFirst, date(1976, 7, 4)},
        // Both orders fit the digits only in the expected one.
        {"12122012", Order::MonthFirst, date(2012, 12, 12)},
        {"20121212", Order::YearFirst, date(2012, 12, 12)},
        {"02292000", Order::MonthFirst, date(2000, 2, 29)},
        {"  07041976  ", Order::MonthFirst, date(1976, 7, 4)},
        {"06092016M", Order::MonthFirst, date(2016, 6, 9)},
        {"1131990", Order::MonthFirst, date(1990, 1, 13)},
        {"1131990", Order::YearFirst, date(1990, 1, 13)},
        {"06-19-2023", Order::YearFirst, date(2023, 6, 19)},
        {"2023-06-19", Order::MonthFirst, date(2023, 6, 19)},
        {"06/19/2023", Order::MonthFirst, date(2023, 6, 19)},
        // No such day in either order: the numbers read in the expected order are kept.
        {"02301999", Order::MonthFirst, date(1999, 2, 30)},
        {"02291999", Order::MonthFirst, date(1999, 2, 29)},
        {"13131999", Order::MonthFirst, date(1999, 13, 13)},
        {"17530101", Order::YearFirst, date(1753, 1, 1)},
        {"99999999", Order::YearFirst, date(9999, 99, 99)},
        {"02-30-2001", Order::MonthFirst, date(2001, 2, 30)},
        // No date at all.
        {"", Order::MonthFirst, noDate()},
        {"   ", Order::MonthFirst, noDate()},
        {"00000000", Order::MonthFirst, noDate()},
        {"NONE", Order::MonthFirst, noDate()},
        {"MMDDCCYY", Order::MonthFirst, noDate()},
        {"197607", Order::YearFirst, noDate()},
        {"X07041976", Order::MonthFirst, noDate()},
    };
    for (const Row& row : rows)
        EXPECT_EQ(AamvaDateReader::read(row.value, row.expected), row.date) << '"' << row.value << '"';
}

TEST(DateReader, PlausibleDays) {
    struct Row {
        AAMVADate date;
        bool plausible;
    } rows[] = {
        {date(2000, 2, 29), true},  {date(1900, 2, 29), false}, {date(2024, 2, 29), true},
        {date(2023, 2, 29), false}, {date(2023, 4, 31), false}, {date(2023, 12, 31), true},
        {date(2023, 0, 1), false},  {date(2023, 1, 0), false},  {date(1799, 12, 31), false},
        {date(1800, 1, 1), true},   {date(2199, 12, 31), true}, {date(2200, 1, 1), false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(AamvaDateReader::plausible(row.date), row.plausible) << row.date;
}

TEST(MeasureReader, Heights) {
    const AAMVAMeasure none = noMeasure();
    struct Row {
        const char* value;
        bool metricElement;
        AAMVAMeasure height;
    } rows[] = {
        {"069 in", false, {69, AAMVA_UNIT_INCHES}},
        {"069 IN", false, {69, AAMVA_UNIT_INCHES}},
        {" 73 in", false, {73, AAMVA_UNIT_INCHES}},
        {"62 in", false, {62, AAMVA_UNIT_INCHES}},
        {"72 IN ", false, {72, AAMVA_UNIT_INCHES}},
        {"181 cm", false, {181, AAMVA_UNIT_CENTIMETRES}},
        {"170 CM", false, {170, AAMVA_UNIT_CENTIMETRES}},
        {"509", false, {69, AAMVA_UNIT_INCHES}},
        {"600", false, {72, AAMVA_UNIT_INCHES}},
        {"601   ", false, {73, AAMVA_UNIT_INCHES}},
        {"5'-04\"", false, {64, AAMVA_UNIT_INCHES}},
        {"5'10\"", false, {70, AAMVA_UNIT_INCHES}},
        {"5-10", true, {70, AAMVA_UNIT_INCHES}},
        {"175", true, {175, AAMVA_UNIT_CENTIMETRES}},
        {"175", false, {175, AAMVA_UNIT_CENTIMETRES}},
        {"68", false, {68, AAMVA_UNIT_INCHES}},
        {"", false, none},
        {"NONE", false, none},
        {"009", false, none},
        {"000 in", false, none},
        {"5-15", false, none},
        {"069 ft", false, none},
        {"tall", false, none},
    };
    for (const Row& row : rows)
        EXPECT_EQ(zyr::AamvaMeasureReader::height(row.value, row.metricElement), row.height)
            << '"' << row.value << '"';
}

TEST(MeasureReader, Weights) {
    const AAMVAMeasure none = noMeasure();
    struct Row {
        const char* value;
        bool metricElement;
        AAMVAMeasure weight;
    } rows[] = {
        {"185", false, {185, AAMVA_UNIT_POUNDS}},
        {"084", true, {84, AAMVA_UNIT_KILOGRAMS}},
        {"50 KG", false, {50, AAMVA_UNIT_KILOGRAMS}},
        {"120 LBS", true, {120, AAMVA_UNIT_POUNDS}},
        {"120 lb", false, {120, AAMVA_UNIT_POUNDS}},
        {" 120 ", false, {120, AAMVA_UNIT_POUNDS}},
        {"000", false, none},
        {"", true, none},
        {"unavl", false, none},
        {"90 st", false, none},
    };
    for (const Row& row : rows)
        EXPECT_EQ(zyr::AamvaMeasureReader::weight(row.value, row.metricElement), row.weight)
            << '"' << row.value << '"';
}

TEST(NameReader, AssemblyFromEachGeneration) {
    // Elements present on the card, and what comes out: full|surname|forename|middle|suffix|given.
    struct Row {
        const char* label;
        const char* elements;
        const char* name;
    } rows[] = {
        {"2009 elements", "DAC=ANN|DAD=MARIE,LOUISE|DCS=BAKER|DCU=SR",
         "ANN MARIE LOUISE BAKER SR|BAKER|ANN|MARIE LOUISE|SR|ANN MARIE LOUISE"},
        {"2009 placeholders", "DAC=ANN|DAD=NONE|DCS=BAKER  |DCU=NONE", "ANN BAKER|BAKER|ANN|||ANN"},
        {"given names with comma", "DCS=BAKER|DCT=JUSTIN,WILLIAM",
         "JUSTIN WILLIAM BAKER|BAKER|JUSTIN|WILLIAM||JUSTIN WILLIAM"},
        {"given names trailing commas", "DCS=TESTER|DCT=JOHN,D,", "JOHN D TESTER|TESTER|JOHN|D||JOHN D"},
        {"given names with space", "DCS=NGUYEN|DCT=MARY M", "MARY M NGUYEN|NGUYEN|MARY|M||MARY M"},
        {"single given name", "DCS=CHER|DCT=ANNE,", "ANNE CHER|CHER|ANNE|||ANNE"},
        {"full name with commas", "DAA=PUBLIC,JOHN,Q", "PUBLIC,JOHN,Q|PUBLIC|JOHN|Q||JOHN Q"},
        {"full name with suffix", "DAA=JOHNSON,JACK,,3RD", "JOHNSON,JACK,,3RD|JOHNSON|JACK||3RD|JACK"},
        {"full name space after comma", "DAA=SMITH, MARY JONES",
         "SMITH, MARY JONES|SMITH|MARY|JONES||MARY JONES"},
        {"full name with dollars", "DAA=DOE$JANE$A", "DOE$JANE$A|DOE|JANE|A||JANE A"},
        {"full name in reading order", "DAA=JOHN P SMITH", "JOHN P SMITH|SMITH|JOHN|P||JOHN P"},
        {"reading order with suffix", "DAA=JOHN CHESTER DOE JR",
         "JOHN CHESTER DOE JR|DOE|JOHN|CHESTER|JR|JOHN CHESTER"},
        {"single word", "DAA=MADONNA", "MADONNA|MADONNA||||"},
        {"version 1 parts", "DAA=X,Y|DAB=LASTNAME|DAC=FIRST|DAD=MID|DAE=II",
         "X,Y|LASTNAME|FIRST|MID|II|FIRST MID"},
        {"trailing commas after 2009 names", "DAC=ANN,|DAD=LEE,|DCS=BAKER, |DCU=JR,",
         "ANN LEE BAKER JR|BAKER|ANN|LEE|JR|ANN LEE"},
        {"family name element holding the full name", "DCS=BAKER,ANN,LEE",
         "ANN LEE BAKER|BAKER|ANN|LEE||ANN LEE"},
        {"family name element in reading order", "DCS=ANN LEE BAKER", "ANN LEE BAKER|BAKER|ANN|LEE||ANN LEE"},
        // A family name of several words stays whole when the card has a first name element.
        {"family name of several words", "DAC=NONE|DCS=DE LA CRUZ", "DE LA CRUZ|DE LA CRUZ||||"},
        {"nothing", "", "|||||"},
    };
    for (const Row& row : rows) {
        const Fields elements = row.elements[0] ? fieldsOf(row.elements) : Fields{};
        auto element = [&](const char* id) -> std::string_view {
            const auto it = elements.find(id);
            return it == elements.end() ? std::string_view() : std::string_view(it->second);
        };
        const zyr::AamvaName name =
            zyr::AamvaNameReader::read({element("DAA"), element("DAB"), element("DAC"), element("DAD"),
                                        element("DAE"), element("DCS"), element("DCT"), element("DCU")});
        EXPECT_EQ(name.full + "|" + name.surname + "|" + name.forename + "|" + name.middle + "|" +
                      name.suffix + "|" + name.given,
                  row.name)
            << row.label;
    }
}

TEST(ColourCodes, HairAndEyeSpellings) {
    struct Row {
        const char* value;
        int32_t hair;
        int32_t eye;
    } rows[] = {
        {"BAL", AAMVA_HAIR_BALD, AAMVA_EYE_UNKNOWN},
        {"BLD", AAMVA_HAIR_BALD, AAMVA_EYE_UNKNOWN},
        {"BLK", AAMVA_HAIR_BLACK, AAMVA_EYE_BLACK},
        {"BLN", AAMVA_HAIR_BLOND, AAMVA_EYE_UNKNOWN},
        {"BLO", AAMVA_HAIR_BLOND, AAMVA_EYE_UNKNOWN},
        {"BRO", AAMVA_HAIR_BROWN, AAMVA_EYE_BROWN},
        {"BRN", AAMVA_HAIR_BROWN, AAMVA_EYE_BROWN},
        {"BR", AAMVA_HAIR_BROWN, AAMVA_EYE_BROWN},
        {"BN", AAMVA_HAIR_BROWN, AAMVA_EYE_BROWN},
        {"brown", AAMVA_HAIR_BROWN, AAMVA_EYE_BROWN},
        {"GRY", AAMVA_HAIR_GREY, AAMVA_EYE_GREY},
        {"GRAY", AAMVA_HAIR_GREY, AAMVA_EYE_GREY},
        {"RED", AAMVA_HAIR_RED, AAMVA_EYE_UNKNOWN},
        {"SDY", AAMVA_HAIR_SANDY, AAMVA_EYE_UNKNOWN},
        {"WHI", AAMVA_HAIR_WHITE, AAMVA_EYE_UNKNOWN},
        {"UNK", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_UNKNOWN},
        {"BLU", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_BLUE},
        {"BL", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_BLUE},
        {"GRN", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_GREEN},
        {"HAZ", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_HAZEL},
        {"HZL", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_HAZEL},
        {"HZ", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_HAZEL},
        {"MAR", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_MAROON},
        {"PNK", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_PINK},
        {"DIC", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_DICHROMATIC},
        {" BRO  ", AAMVA_HAIR_BROWN, AAMVA_EYE_BROWN},
        {"PURPLE", AAMVA_HAIR_UNKNOWN, AAMVA_EYE_UNKNOWN},
        {"", -1, -1},
        {"NONE", -1, -1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(zyr::AamvaColourCodes::hair(row.value), row.hair) << '"' << row.value << '"';
        EXPECT_EQ(zyr::AamvaColourCodes::eye(row.value), row.eye) << '"' << row.value << '"';
    }
}

} // namespace
