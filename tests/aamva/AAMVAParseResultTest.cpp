#include "AAMVAParseResult.h"
#include "ParseDouble.h"
#include "RecordBuilder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Log = std::vector<std::string>;

// A second parse starts the parser only when it is not running, releases the first record before
// asking the library again, and copies every byte (NUL, line breaks, bytes above 0x7F) so that the
// caller's buffer may go away; a failed one returns the library's code and keeps the last bytes.
TEST(AAMVAParseResultTest, StartsTheParserWhenNeededCopiesEveryByteAndFailuresKeepTheOldBytes) {
    const struct {
        const char* what;
        bool parserDown;        // the parser stopped after the first parse
        int32_t initialiseCode; // answer to starting it again
        int32_t parseCode;
        Log log; // calls of the second parse
    } cases[] = {
        {"parser running", false, 0, 0, {"IsParsingInitialised", "Destroy", "ParseAAMVA 7"}},
        {"parser restarted", true, 0, 0,
         {"IsParsingInitialised", "ParseInitialise", "Destroy", "ParseAAMVA 7"}},
        {"parser start fails", true, ZYR_ERR_OUT_OF_MEMORY, 0,
         {"IsParsingInitialised", "ParseInitialise", "Destroy"}},
        {"parse fails", false, 0, ZYR_ERR_NOT_AAMVA, {"IsParsingInitialised", "Destroy", "ParseAAMVA 7"}},
        {"parse fails after a restart", true, 0, ZYR_ERR_AAMVA_TRUNCATED,
         {"IsParsingInitialised", "ParseInitialise", "Destroy", "ParseAAMVA 7"}},
    };
    RecordBuilder full;
    full.Full();
    const std::vector<uint8_t> good = {'g', 'o', 'o', 'd'}, bytes = {'@', '\n', 0x1e, '\r', 0, 0xff, 0};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        ParseDouble::Script script;
        script.record = &full.get();
        ParseDouble::Reset(script);
        {
            AAMVAParseResult p;
            ASSERT_EQ(p.Parse(good.data(), 4), 0);
            ParseDouble::Script& now = ParseDouble::Current();
            now.initialised = !c.parserDown;
            now.initialiseCode = c.initialiseCode;
            now.parseCodes = {c.parseCode};
            const std::size_t before = ParseDouble::Log().size();
            std::vector<uint8_t> caller = bytes;
            const bool ok = c.initialiseCode == 0 && c.parseCode == 0;
            EXPECT_EQ(p.Parse(caller.data(), 7), c.initialiseCode != 0 ? c.initialiseCode : c.parseCode);
            caller.assign(caller.size(), 'x');
            EXPECT_EQ(Log(ParseDouble::Log().begin() + long(before), ParseDouble::Log().end()), c.log);
            EXPECT_EQ(p.Record() ? std::string(p.Record()->Surname) : "<none>", ok ? "DOE" : "<none>");
            EXPECT_EQ(std::vector<uint8_t>(p.RawData(), p.RawData() + p.RawLength()), ok ? bytes : good);
            EXPECT_EQ(ParseDouble::Outstanding(), ok ? 1 : 0);
        }
        EXPECT_EQ(ParseDouble::Outstanding(), 0) << "the destructor releases the record";
    }
    // Input without bytes leaves an empty copy, not the previous one.
    ParseDouble::Script script;
    script.initialised = true;
    ParseDouble::Reset(script);
    const std::pair<const uint8_t*, int32_t> empty[] = {{bytes.data(), 0}, {nullptr, 10}, {bytes.data(), -4}};
    for (const auto& [data, length] : empty) {
        AAMVAParseResult p;
        ASSERT_EQ(p.Parse(bytes.data(), 3), 0);
        ASSERT_EQ(p.Parse(data, length), 0);
        EXPECT_EQ(std::make_pair(p.RawData(), p.RawLength()), std::make_pair((const uint8_t*)nullptr, 0));
    }
}

} // namespace
