// The library's category log.
#include "CaptureFixtures.h"
#include "TestSupport.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

using namespace support;

namespace {

const uint8_t notAnImage[] = {'n', 'o', 't', ' ', 'a', 'n', ' ', 'i', 'm', 'a', 'g', 'e'};

// One call per category the library logs under, with the level of the line it writes.
void failConversion() {
    uint32_t size = 0;
    ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, notAnImage, sizeof notAnImage, nullptr, &size); // images, 1
}
int32_t startCamera(ZyrReaderSettings* s) { // camera, 2
    if (s != nullptr)
        std::snprintf(s->DeviceFolder, sizeof s->DeviceFolder, "%s", capture::emptyDevice().c_str());
    return ZyrReader_CameraInitialise(s, 7, 0);
}
int32_t startParsing(ZyrReaderSettings*) { // parse, 2
    return ZyrReader_ParseInitialise();
}
void readMissingSettings() {
    ZyrReaderSettings settings{};
    ZyrReader_LL_LoadSettingsFromIniFile(&settings, "/nonexistent/ZyrReader.ini"); // settings, 1
}

// Of each line "YYYY-MM-DD hh:mm:ss.mmm [category] text" the category, of any other "MALFORMED: <line>".
std::vector<std::string> categories(const std::vector<std::string>& lines) {
    const std::string shape = "dddd-dd-dd dd:dd:dd.ddd [";
    std::vector<std::string> found;
    for (const std::string& line : lines) {
        bool ok = line.size() > shape.size();
        for (size_t i = 0; ok && i < shape.size(); ++i)
            ok = shape[i] == 'd' ? std::isdigit(static_cast<unsigned char>(line[i])) != 0 : line[i] == shape[i];
        const size_t close = ok ? line.find("] ", shape.size()) : std::string::npos;
        const bool whole = close != std::string::npos && close != shape.size() && close + 2 < line.size();
        found.push_back(whole ? line.substr(shape.size(), close - shape.size()) : "MALFORMED: " + line);
    }
    return found;
}

class Logging : public ::testing::Test {
protected:
    void TearDown() override {
        ZyrReader_InitialiseLogging(false, 0, 0, nullptr);
        ZyrReader_DestroyCachedData();
    }
    TempFolder folder;
    std::string log = folder.file("Glyphor.log");
};

struct FilterCase {
    const char* name;
    int32_t level;
    uint32_t mask;
    std::vector<std::string> expected; // categories of the lines written; none: no file
    bool enable = true;
};

class LoggingFilter : public Logging, public ::testing::WithParamInterface<FilterCase> {};

TEST_P(LoggingFilter, WritesOnlySelectedCategoriesAtOrBelowTheLevel) {
    const FilterCase& c = GetParam();
    ASSERT_EQ(ZyrReader_InitialiseLogging(c.enable, c.level, c.mask, log.c_str()), ZYR_OK);
    ZyrReaderSettings settings{};
    failConversion();
    startCamera(&settings);
    startParsing(nullptr);
    readMissingSettings();
    EXPECT_EQ(categories(readLines(log)), c.expected) << "a general line opens the log";
    EXPECT_EQ(std::filesystem::exists(log), !c.expected.empty());
}

const FilterCase filterCases[] = {
    {"everything", 3, ZYR_LOG_ALL, {"general", "images", "camera", "parse", "settings"}},
    {"errors_only", 1, ZYR_LOG_ALL, {"general", "images", "settings"}},
    {"images_only", 3, ZYR_LOG_IMAGES, {"general", "images"}},
    {"camera_and_parse", 2, ZYR_LOG_CAMERA | ZYR_LOG_PARSE, {"general", "camera", "parse"}},
    {"camera_at_error_level", 1, ZYR_LOG_CAMERA, {"general"}},
    {"empty_mask", 3, 0, {"general"}},
    {"switched_off", 5, ZYR_LOG_ALL, {}, false},
    {"no_level", 0, ZYR_LOG_ALL, {}},
};

INSTANTIATE_TEST_SUITE_P(Masks, LoggingFilter, ::testing::ValuesIn(filterCases),
                         [](const ::testing::TestParamInfo<FilterCase>& info) { return info.param.name; });

// Switching off stops writing, switching on again appends, a new file replaces the old one, and
// bad file names are refused without changing anything.
TEST_F(Logging, SwitchingFilesAndBadNames) {
    ASSERT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_IMAGES, log.c_str()), ZYR_OK);
    failConversion();
    ASSERT_EQ(ZyrReader_InitialiseLogging(false, 1, ZYR_LOG_IMAGES, log.c_str()), ZYR_OK);
    failConversion();
    EXPECT_EQ(readLines(log).size(), 2u);
    ASSERT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_IMAGES, log.c_str()), ZYR_OK);
    EXPECT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_ALL, nullptr), ZYR_ERR_BAD_ARGUMENT);
    EXPECT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_ALL, ""), ZYR_ERR_BAD_ARGUMENT);
    EXPECT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_ALL, folder.file("no/such/folder.log").c_str()), ZYR_ERR_FILE);
    EXPECT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_ALL, folder.path().c_str()), ZYR_ERR_FILE);
    failConversion();
    EXPECT_EQ(readLines(log).size(), 4u) << "a second start appends to the file";
    const std::string second = folder.file("second.log");
    ASSERT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_IMAGES, second.c_str()), ZYR_OK);
    failConversion();
    EXPECT_EQ(readLines(log).size(), 4u);
    EXPECT_EQ(readLines(second).size(), 2u);
}

TEST_F(Logging, LinesFromManyThreadsStayWhole) {
    ASSERT_EQ(ZyrReader_InitialiseLogging(true, 1, ZYR_LOG_IMAGES, log.c_str()), ZYR_OK);
    constexpr int threads = 6;
    constexpr int perThread = 50;
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t)
        workers.emplace_back([] {
            for (int i = 0; i < perThread; ++i)
                failConversion();
        });
    for (std::thread& worker : workers)
        worker.join();
    const std::vector<std::string> lines = categories(readLines(log));
    ASSERT_EQ(lines.size(), size_t(1 + threads * perThread));
    for (size_t i = 1; i < lines.size(); ++i)
        ASSERT_EQ(lines[i], "images") << "line " << i;
}

} // namespace
