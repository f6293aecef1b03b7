// Generated cards of every version, US and Canadian, with variations of the holder's data: the
// whole record and every data item must come back as described.
#include "AamvaPayloadWriter.h"
#include "AamvaTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

using namespace glyphor::samples;

namespace {

struct CardCase {
    std::string label;
    AamvaPayloadDescription card;
    int32_t hair;
    int32_t eye;
    std::string issuer;
};

std::string dateText(const AamvaPayloadDate& d) {
    char text[16];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", d.year, d.month, d.day);
    return d.year ? text : "-";
}

// Items as itemList() gives them: every element written, in order.
std::string itemsOf(const AamvaPayloadDescription& card) {
    std::string items;
    for (const auto& e : AamvaPayloadWriter::elements(card))
        items += (items.empty() ? "" : "|") + e.id + "=" + e.value;
    return items;
}

// The record a card should give, worked out from its description.
Fields expectedFields(const CardCase& c) {
    const AamvaPayloadDescription& card = c.card;
    std::string middle = card.middleNames;
    std::replace(middle.begin(), middle.end(), ',', ' ');
    const std::string given = card.firstName + (middle.empty() ? "" : " " + middle);
    std::string full = given + " " + card.familyName + (card.suffix.empty() ? "" : " " + card.suffix);
    if (card.version <= 1)
        full = card.familyName + "," + card.firstName + "," + card.middleNames +
               (card.suffix.empty() ? "" : "," + card.suffix);
    const char* sex = card.sex == AamvaPayloadSex::Male     ? "Male"
                      : card.sex == AamvaPayloadSex::Female ? "Female"
                                                            : "Unknown";
    // 2003 and 2005 cards only carry a weight range.
    const bool weightRangeOnly = card.version == 2 || card.version == 3;
    return {{"licence", card.licenceNumber}, {"full", full}, {"surname", card.familyName},
            {"forename", card.firstName}, {"middle", middle}, {"suffix", card.suffix}, {"given", given},
            {"sex", sex}, {"short", sex[0] == 'U' ? "X" : std::string(1, sex[0])},
            {"birth", dateText(card.birth)}, {"issue", dateText(card.issue)}, {"expiry", dateText(card.expiry)},
            {"street", card.street + (card.street2.empty() ? "" : ", " + card.street2)}, {"city", card.city},
            {"state", card.jurisdictionCode}, {"postal", card.postalCode},
            {"country", card.version == 2 && card.canadian ? "CDN" : card.canadian ? "CAN" : "USA"},
            {"height", std::to_string(card.height) + (card.heightMetric ? " cm" : " in")},
            {"weight", weightRangeOnly ? "-" : std::to_string(card.weight) + (card.weightMetric ? " kg" : " lb")},
            {"hair", std::to_string(c.hair)}, {"eye", std::to_string(c.eye)},
            {"fileType", card.version == 0 ? "AAMVA" : "ANSI "}, {"iin", card.iin}, {"issuer", c.issuer},
            {"version", std::to_string(card.version)},
            {"jversion", card.version <= 1 ? "-" : std::to_string(card.jurisdictionVersion)},
            {"items", itemsOf(card)}};
}

class GeneratedCard : public ::testing::TestWithParam<CardCase> {};

TEST_P(GeneratedCard, RecordAndItemsMatchTheDescription) {
    const CardCase& c = GetParam();
    const std::string payload = AamvaPayloadWriter::write(c.card);
    ParsedRecord parsed = parseRecord(payload);
    ASSERT_EQ(parsed.code, ZYR_OK) << payload;
    EXPECT_EQ(parsed.repairs, std::vector<std::string>()) << "a clean card needs no repair";
    EXPECT_EQ(describe(*parsed.record), expectedFields(c));
    for (int32_t i = 0; i < unpacked(parsed.record->DataItemCount); ++i) {
        const AAMVADataItem& item = parsed.record->DataItems[i];
        const std::string name = item.Name;
        EXPECT_TRUE(item.ID[0] == 'Z' ? name == "Jurisdiction-specific element" : name != "Unknown element")
            << item.ID << " is named \"" << name << '"';
        EXPECT_NE(name, "");
    }
}

// Every cut inside an element is reported as truncated. A cut just after a separator leaves
// whole elements, and so does the whole card less its final CR; a cut exactly between the two
// subfiles cannot be told from a card whose count promises a subfile it lacks.
TEST_P(GeneratedCard, EveryCutIsTruncated) {
    const CardCase& c = GetParam();
    const std::string payload = AamvaPayloadWriter::write(c.card);
    const std::size_t countAt = c.card.version <= 1 ? 17 : 19;
    std::size_t firstEnd = payload.size();
    if (!c.card.jurisdictionElements.empty())
        firstEnd = std::stoul(payload.substr(countAt + 4, 4)) + std::stoul(payload.substr(countAt + 8, 4));
    for (std::size_t length = 1; length < payload.size(); ++length) {
        const int32_t code = parseRecord(payload.substr(0, length)).code;
        const bool afterSeparator = length > countAt + 12 && payload[length - 1] == '\n';
        const bool complete =
            afterSeparator || length == payload.size() - 1 || length == firstEnd || length == firstEnd - 1;
        EXPECT_EQ(code, complete ? ZYR_OK : ZYR_ERR_AAMVA_TRUNCATED)
            << "cut at " << length << " of " << payload.size() << ": " << payload.substr(0, length);
    }
}

std::vector<CardCase> cases() {
    std::vector<CardCase> out;
    for (int version = 0; version <= 11; ++version) {
        const std::string v = "v" + std::to_string(version);
        out.push_back({v + "_Virginia", AamvaPayloadDescription::typical(version, false), AAMVA_HAIR_BROWN,
                       AAMVA_EYE_GREEN, "Virginia"});
        out.push_back({v + "_Ontario", AamvaPayloadDescription::typical(version, true), AAMVA_HAIR_BROWN,
                       AAMVA_EYE_GREEN, "Ontario"});
    }
    for (int version : {1, 2, 3, 4, 9, 10}) {
        const std::string v = "v" + std::to_string(version);

        AamvaPayloadDescription man = AamvaPayloadDescription::typical(version, false);
        man.iin = "636015", man.jurisdictionCode = "TX", man.familyName = "DELACROIX", man.firstName = "ANTHONY";
        man.middleNames = "PAUL,RENE", man.suffix = "JR", man.sex = AamvaPayloadSex::Male;
        man.height = 76, man.weight = 212, man.eyeColour = "BLU", man.hairColour = "BLK";
        man.birth = {2000, 2, 29}, man.issue = {2012, 12, 1}, man.expiry = {2030, 1, 31}, man.subfileType = "ID";
        out.push_back({v + "_TexasIdCardWithSuffix", man, AAMVA_HAIR_BLACK, AAMVA_EYE_BLUE, "Texas"});

        AamvaPayloadDescription plain = AamvaPayloadDescription::typical(version, true);
        plain.iin = "604428", plain.jurisdictionCode = "QC", plain.middleNames = "";
        plain.sex = AamvaPayloadSex::Unspecified, plain.heightMetric = false, plain.height = 63;
        plain.weightMetric = false, plain.weight = 118, plain.hairColour = "GRY", plain.eyeColour = "HAZ";
        plain.jurisdictionElements.clear();
        out.push_back({v + "_QuebecWithoutJurisdictionSubfile", plain, AAMVA_HAIR_GREY, AAMVA_EYE_HAZEL, "Quebec"});
    }
    AamvaPayloadDescription enhanced = AamvaPayloadDescription::typical(10, false);
    enhanced.subfileType = "EN", enhanced.iin = "636001", enhanced.heightMetric = true, enhanced.height = 181;
    enhanced.weightMetric = true, enhanced.weight = 84;
    out.push_back({"v10_NewYorkEnhanced", enhanced, AAMVA_HAIR_BROWN, AAMVA_EYE_GREEN, "New York"});
    return out;
}

INSTANTIATE_TEST_SUITE_P(Cards, GeneratedCard, ::testing::ValuesIn(cases()),
                         [](const ::testing::TestParamInfo<CardCase>& info) { return info.param.label; });

} // namespace
