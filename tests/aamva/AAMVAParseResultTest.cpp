#include "AAMVAParseResult.h"
#include "ParseDouble.h"
#include "RecordBuilder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Log = std::vector<std::string>;

std::vector<uint8_t> Raw(const AAMVAParseResult& p) {
    return std::vector<uint8_t>(p.RawData(), p.RawData() + p.RawLength());
}

class AAMVAParseResultTest : public ::testing::Test {
protected:
    void SetUp() override { full.Full(); }
    void Start(ParseDouble::Script script) {
        script.record = &full.get();
        ParseDouble::Reset(script);
    }
    RecordBuilder full;
};

// Every byte is copied (NUL, line breaks, bytes above 0x7F), also when the caller's buffer goes
// away; a library that accepts no bytes leaves an empty copy, not the previous one.
TEST_F(AAMVAParseResultTest, StartsTheParserOnlyWhenItIsNotRunningAndCopiesEveryByte) {
    const std::vector<uint8_t> bytes = {'@', '\n', 0x1e, '\r', 0, 0xff, 0};
    for (const bool initialised : {false, true}) {
        ParseDouble::Script script;
        script.initialised = initialised;
        Start(script);
        {
            AAMVAParseResult p;
            std::vector<uint8_t> caller = bytes;
            ASSERT_EQ(p.Parse(caller.data(), static_cast<int32_t>(caller.size())), 0);
            caller.assign(caller.size(), 'x');
            const Log expected = initialised ? Log{"IsParsingInitialised", "ParseAAMVA 7"}
                                             : Log{"IsParsingInitialised", "ParseInitialise", "ParseAAMVA 7"};
            EXPECT_EQ(ParseDouble::Log(), expected);
            ASSERT_NE(p.Record(), nullptr);
            EXPECT_STREQ(p.Record()->Surname, "DOE");
            EXPECT_EQ(Raw(p), bytes);
            EXPECT_EQ(ParseDouble::Outstanding(), 1);
            const std::pair<const uint8_t*, int32_t> empty[] = {{bytes.data(), 0}, {nullptr, 10}, {bytes.data(), -4}};
            for (const auto& [data, length] : empty) {
                ASSERT_EQ(p.Parse(bytes.data(), 3), 0);
                ASSERT_EQ(p.Parse(data, length), 0);
                EXPECT_EQ(std::make_pair(p.RawData(), p.RawLength()), std::make_pair((const uint8_t*)nullptr, 0));
            }
        }
        EXPECT_EQ(ParseDouble::Outstanding(), 0) << "the destructor releases the record";
    }
}

// A second parse releases the first record before asking the library again, and a failed one
// keeps the bytes of the last success.
TEST_F(AAMVAParseResultTest, FailuresReturnTheLibraryCodeAndKeepTheOldBytes) {
    const struct {
        const char* what;
        bool parserDown;        // the parser stopped after the first parse
        int32_t initialiseCode; // answer to starting it again
        int32_t parseCode;
        Log log; // calls of the second parse
    } cases[] = {
        {"parser start fails", true, ZYR_ERR_OUT_OF_MEMORY, 0, {"IsParsingInitialised", "ParseInitialise", "Destroy"}},
        {"parse fails", false, 0, ZYR_ERR_NOT_AAMVA, {"IsParsingInitialised", "Destroy", "ParseAAMVA 5"}},
        {"parse fails after a restart", true, 0, ZYR_ERR_AAMVA_TRUNCATED,
         {"IsParsingInitialised", "ParseInitialise", "Destroy", "ParseAAMVA 5"}},
    };
    for (const auto& c : cases) {
        ParseDouble::Script script;
        script.initialised = true;
        Start(script);
        AAMVAParseResult p;
        const std::string good = "good", bad = "wrong";
        ASSERT_EQ(p.Parse(reinterpret_cast<const uint8_t*>(good.data()), 4), 0) << c.what;
        ParseDouble::Script& now = ParseDouble::Current();
        now.initialised = !c.parserDown;
        now.initialiseCode = c.initialiseCode;
        now.parseCodes = {c.parseCode};
        const std::size_t before = ParseDouble::Log().size();
        EXPECT_EQ(p.Parse(reinterpret_cast<const uint8_t*>(bad.data()), 5), c.initialiseCode != 0 ? c.initialiseCode : c.parseCode) << c.what;
        EXPECT_EQ(Log(ParseDouble::Log().begin() + long(before), ParseDouble::Log().end()), c.log) << c.what;
        EXPECT_EQ(p.Record(), nullptr) << c.what;
        EXPECT_EQ(Raw(p), std::vector<uint8_t>(good.begin(), good.end())) << c.what << ": the copy is replaced only on success";
        EXPECT_EQ(ParseDouble::Outstanding(), 0) << c.what;
    }
}

} // namespace
