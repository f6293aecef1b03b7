// The payload generator is the oracle of the parser tests, so its layout is checked on its own
// terms: header fields at their fixed places and designators that point at their subfiles. (Its
// element list is checked against the parsed bytes by the generated-card tests.)
#include "AamvaPayloadWriter.h"

#include <gtest/gtest.h>

#include <string>

using glyphor::samples::AamvaPayloadDescription;
using glyphor::samples::AamvaPayloadWriter;

namespace {

int number(const std::string& s, std::size_t at, std::size_t count) {
    return std::stoi(s.substr(at, count));
}

struct WriterCase {
    int version;
    bool canadian;
};

class PayloadLayout : public ::testing::TestWithParam<WriterCase> {};

TEST_P(PayloadLayout, HeaderAndDesignatorsDescribeTheSubfiles) {
    const WriterCase c = GetParam();
    const AamvaPayloadDescription card = AamvaPayloadDescription::typical(c.version, c.canadian);
    const std::string payload = AamvaPayloadWriter::write(card);

    EXPECT_EQ(payload.substr(0, 4), "@\n\x1e\r");
    EXPECT_EQ(payload.substr(4, 5), c.version == 0 ? "AAMVA" : "ANSI ");
    EXPECT_EQ(payload.substr(9, 6), c.canadian ? "636012" : "636000");
    EXPECT_EQ(number(payload, 15, 2), c.version);
    const std::size_t countAt = c.version <= 1 ? 17 : 19;
    if (c.version >= 2) {
        EXPECT_EQ(number(payload, 17, 2), card.jurisdictionVersion);
    }
    const int count = number(payload, countAt, 2);
    ASSERT_EQ(count, 2);

    std::size_t expectedOffset = countAt + 2 + 10 * static_cast<std::size_t>(count);
    const std::string types[] = {card.subfileType, card.jurisdictionSubfile};
    for (int i = 0; i < count; ++i) {
        const std::size_t at = countAt + 2 + 10 * static_cast<std::size_t>(i);
        EXPECT_EQ(payload.substr(at, 2), types[i]);
        const auto offset = static_cast<std::size_t>(number(payload, at + 2, 4));
        const auto length = static_cast<std::size_t>(number(payload, at + 6, 4));
        EXPECT_EQ(offset, expectedOffset) << "subfile " << i;
        ASSERT_LE(offset + length, payload.size());
        EXPECT_EQ(payload.substr(offset, 2), types[i]);
        EXPECT_EQ(payload[offset + length - 1], '\r') << "subfile " << i << " ends with its terminator";
        expectedOffset = offset + length;
    }
    EXPECT_EQ(expectedOffset, payload.size());
}

std::vector<WriterCase> allVersions() {
    std::vector<WriterCase> cases;
    for (int version = 0; version <= 11; ++version)
        for (bool canadian : {false, true})
            cases.push_back({version, canadian});
    return cases;
}

INSTANTIATE_TEST_SUITE_P(EveryVersion, PayloadLayout, ::testing::ValuesIn(allVersions()),
                         [](const ::testing::TestParamInfo<WriterCase>& info) {
                             return "v" + std::to_string(info.param.version) +
                                    (info.param.canadian ? "_Canada" : "_US");
                         });

TEST(PayloadWriter, DatesFollowTheVersionAndCountry) {
    struct Row {
        int version;
        bool canadian;
        const char* birth; // DBB as written for 27 March 1984
    } rows[] = {{0, false, "19840327"}, {1, false, "19840327"}, {1, true, "19840327"},
                {2, false, "03271984"}, {2, true, "03271984"},  {3, false, "03271984"},
                {3, true, "19840327"},  {9, false, "03271984"}, {10, true, "19840327"}};
    for (const Row& row : rows) {
        bool found = false;
        for (const auto& e :
             AamvaPayloadWriter::elements(AamvaPayloadDescription::typical(row.version, row.canadian)))
            if (e.id == "DBB") {
                EXPECT_EQ(e.value, row.birth)
                    << "version " << row.version << (row.canadian ? " Canada" : " US");
                found = true;
            }
        EXPECT_TRUE(found);
    }
}

} // namespace
