// The library's parse entry point: service state, argument checks, error codes and the life of
// the records it hands out.
#include "AamvaPayloadWriter.h"
#include "TempFolder.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

using glyphor::samples::AamvaPayloadDescription;
using glyphor::samples::AamvaPayloadWriter;

namespace {

constexpr int32_t LogInfoLevel = 2;
constexpr int32_t LogDetailLevel = 3;

AAMVARecord* const kUntouched = reinterpret_cast<AAMVARecord*>(static_cast<uintptr_t>(0x1234));

const std::string& typicalCard() {
    static const std::string payload = AamvaPayloadWriter::write(AamvaPayloadDescription::typical(9, false));
    return payload;
}

int32_t parse(const std::string& bytes, AAMVARecord** record) {
    return ZyrReader_ParseAAMVA(reinterpret_cast<const uint8_t*>(bytes.data()),
                                static_cast<int32_t>(bytes.size()), record, 0);
}

class ParseApi : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(ZyrReader_ParseInitialise(), ZYR_OK); }
    void TearDown() override { ZyrReader_DestroyCachedData(); }
};

// Records are filled, independent of each other, and released once (the one left is freed with
// the cached data).
TEST_F(ParseApi, RecordIsFilledAndReleasedOnce) {
    AAMVARecord *us = nullptr, *canada = nullptr;
    ASSERT_EQ(parse(typicalCard(), &us), ZYR_OK);
    ASSERT_EQ(parse(AamvaPayloadWriter::write(AamvaPayloadDescription::typical(4, true)), &canada), ZYR_OK);
    ASSERT_NE(us, canada);
    EXPECT_STREQ(us->LicenceNumber, "T51148823");
    EXPECT_STREQ(us->Surname, "HOLLOWAY");
    EXPECT_EQ(static_cast<uint32_t>(us->Version), 9u);
    ASSERT_EQ(static_cast<int32_t>(us->DataItemCount),
              static_cast<int32_t>(AamvaPayloadWriter::elements(AamvaPayloadDescription::typical(9, false)).size()));
    EXPECT_STREQ(us->DataItems[0].ID, "DCA");
    EXPECT_EQ(ZyrReader_DestroyCachedObject(us), ZYR_OK);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(us), ZYR_ERR_UNKNOWN_HANDLE);
    EXPECT_STREQ(canada->IssuerName, "Ontario");
    EXPECT_STREQ(canada->DataItems[canada->DataItemCount - 1].ID, "ZOA");
}

TEST_F(ParseApi, FailuresLeaveTheHandleAlone) {
    const std::string card = typicalCard();
    const auto* bytes = reinterpret_cast<const uint8_t*>(card.data());
    const int32_t whole = static_cast<int32_t>(card.size());
    const struct {
        const char* label;
        const uint8_t* data;
        int32_t length;
        bool withRecord;
        int32_t code;
    } rows[] = {
        {"null data with a length", nullptr, 10, true, ZYR_ERR_BAD_ARGUMENT},
        {"negative length", bytes, -1, true, ZYR_ERR_BAD_ARGUMENT},
        {"no handle to fill", bytes, whole, false, ZYR_ERR_BAD_ARGUMENT},
        {"nothing", nullptr, 0, true, ZYR_ERR_AAMVA_EMPTY},
        {"zero length", bytes, 0, true, ZYR_ERR_AAMVA_EMPTY},
        {"not a card", reinterpret_cast<const uint8_t*>("%BC^?"), 5, true, ZYR_ERR_NOT_AAMVA},
        {"cut short", bytes, whole / 2, true, ZYR_ERR_AAMVA_TRUNCATED},
        {"parsing not started", bytes, whole, true, ZYR_ERR_NOT_INITIALISED},
    };
    for (const auto& row : rows) {
        if (row.code == ZYR_ERR_NOT_INITIALISED) {
            ZyrReader_ParseShutdown();
            EXPECT_FALSE(ZyrReader_IsParsingInitialised());
        }
        AAMVARecord* record = kUntouched;
        EXPECT_EQ(ZyrReader_ParseAAMVA(row.data, row.length, row.withRecord ? &record : nullptr, 0), row.code)
            << row.label;
        EXPECT_EQ(record, kUntouched) << row.label;
    }
}

// Each repair of an off-standard card is one detail line of the parse log; clean cards add none.
TEST_F(ParseApi, RepairsGoToTheDetailLog) {
    const TempFolder folder;
    const std::string log = folder.file("parse.log");
    for (int32_t level : {LogInfoLevel, LogDetailLevel}) {
        std::filesystem::remove(log);
        ASSERT_EQ(ZyrReader_InitialiseLogging(true, level, ZYR_LOG_PARSE, log.c_str()), ZYR_OK);
        AAMVARecord* record = nullptr;
        ASSERT_EQ(parse(typicalCard(), &record), ZYR_OK);
        ASSERT_EQ(parse("\xEF\xBB\xBF" + typicalCard(), &record), ZYR_OK);
        ZyrReader_InitialiseLogging(false, 0, 0, nullptr);
        std::ifstream in(log);
        std::vector<std::string> repairs;
        for (std::string line; std::getline(in, line);)
            if (line.find("off-standard data: ") != std::string::npos)
                repairs.push_back(line.substr(line.find("off-standard data: ") + 19));
        EXPECT_EQ(repairs, level == LogDetailLevel
                               ? std::vector<std::string>{"byte order mark before the header skipped"}
                               : std::vector<std::string>())
            << "level " << level;
    }
}

} // namespace
