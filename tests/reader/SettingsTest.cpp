#include "TestSupport.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string>

using namespace support;
namespace fs = std::filesystem;

namespace {

ZyrReaderSettings garbage() {
    ZyrReaderSettings s;
    std::memset(&s, 0xAB, sizeof s);
    return s;
}

std::string defaultPluginFolder() {
    return folderOf(readerLibraryPath()) + "plugins/";
}

// A field of the settings record as text, so that one table can hold every kind of field.
using Field = std::function<std::string(const ZyrReaderSettings&)>;
template <class T> std::string text(T value) {
    std::ostringstream out;
    out << +value;
    return out.str();
}
#define FIELD(name) [](const ZyrReaderSettings& s) { return text(s.name); }
#define FOLDER(name) [](const ZyrReaderSettings& s) { return std::string(s.name); }

struct DocumentedDefault {
    const char* key;
    Field field;
    std::string value;
};

// Defaults the README promises, one of each kind of field.
const DocumentedDefault documentedDefaults[] = {
    {"Logging.Mask", FIELD(LoggingMask), "63"},
    {"Device.ImageWidth", FIELD(ImageWidth), "2700"},
    {"Device.DarkObjectValue", FIELD(DarkObjectValue), "40"},
    {"Folders.PluginSettingsFolder", FOLDER(PluginSettingsFolder), defaultPluginFolder()},
    {"Folders.ApplicationFolder", FOLDER(ApplicationFolder), executableFolder()},
    {"Visible.DetectThreshold", FIELD(VisibleParameters.DetectThreshold), "60"},
    {"Feed.RemovalTimeMs", FIELD(Feed.RemovalTimeMs), "2000"},
};

// They hold without a reader and for keys missing from a file.
TEST(SettingsDefault, HoldWithoutAReaderAndForKeysMissingFromAFile) {
    RecordingErrorHandler handler;
    ScopedEnvironment noDevice("ZYRREADER_DEVICE", nullptr);
    TempFolder folder;
    writeFile(folder.file("empty.ini"), "; nothing set here\n[Logging]\n");
    ZyrReaderSettings fromNoReader = garbage(), fromFile = garbage();
    ASSERT_EQ(ZyrReader_LL_LoadSettings(&fromNoReader), ZYR_ERR_NO_READER);
    ASSERT_EQ(ZyrReader_LL_LoadSettingsFromIniFile(&fromFile, folder.file("empty.ini").c_str()), ZYR_OK);
    for (const DocumentedDefault& d : documentedDefaults) {
        EXPECT_EQ(d.field(fromNoReader), d.value) << d.key << " without a reader";
        EXPECT_EQ(d.field(fromFile), d.value) << d.key << " missing from a file";
    }
}

// ---- Keys read from a file ----

struct KeyCase {
    const char* name;
    const char* ini;
    Field field;
    const char* expected;
};

// Several fields read as one text.
template <class... F> Field fields(F... each) {
    return [=](const ZyrReaderSettings& s) {
        std::string out;
        for (const Field& f : {Field(each)...})
            out += (out.empty() ? "" : " ") + f(s);
        return out;
    };
}

const KeyCase keyCases[] = {
    {"level", "[Logging]\nLevel=3\n", FIELD(LoggingLevel), "3"},
    {"hex_mask", "[Logging]\nMask=0x21\n", FIELD(LoggingMask), "33"},
    {"largest_device", "[Device]\nCameraDevice=18446744073709551615\n", FIELD(CameraDevice), "18446744073709551615"},
    {"image_size", "[Device]\nImageWidth=1024\nImageHeight=768\n", fields(FIELD(ImageWidth), FIELD(ImageHeight)),
     "1024 768"},
    {"flag_words", "[Device]\nTwoSided=yes\nExtraProcessing=On\nDarkObjectDetect=true\n",
     fields(FIELD(TwoSided), FIELD(ExtraProcessing), FIELD(DarkObjectDetect)), "1 1 1"},
    {"float", "[Device]\nDarkObjectValue=12.5\n", FIELD(DarkObjectValue), "12.5"},
    {"camera_blocks_apart", "[Visible]\nOutputScale=0.5\n[Infrared]\nBinning=2\n[Ultraviolet]\nExposureMicroseconds=45000\n",
     fields(FIELD(VisibleParameters.OutputScale), FIELD(InfraredParameters.Binning),
            FIELD(UltravioletParameters.ExposureMicroseconds), FIELD(VisibleParameters.Binning)),
     "0.5 2 45000 1"},
    {"sub_records",
     "[Detect]\nPollIntervalMs=10\n[Locate]\nMinimumArea=5\n[Process]\nDenoiseRadius=3\n[Side]\nMirrorBackSide=1\n"
     "[Feed]\nRemovalTimeMs=750\n",
     fields(FIELD(Detect.PollIntervalMs), FIELD(Locate.MinimumArea), FIELD(Process.DenoiseRadius),
            FIELD(Side.MirrorBackSide), FIELD(Feed.RemovalTimeMs)),
     "10 5 3 1 750"},
    {"names_ignore_case", "[logging]\nLEVEL=2\n", FIELD(LoggingLevel), "2"},
    {"spaces_and_crlf", "  [ Logging ]  \r\n  Level  =  4  \r\n", FIELD(LoggingLevel), "4"},
    {"last_of_two_wins", "[Logging]\nLevel=1\nLevel=5\n", FIELD(LoggingLevel), "5"},
    {"key_in_wrong_section_ignored", "[Device]\nLevel=5\n", FIELD(LoggingLevel), "0"},
    {"quoted_folder_keeps_spaces", "[Folders]\nApplicationFolder=\"/tmp/with space \"\n", FOLDER(ApplicationFolder),
     "/tmp/with space /"},
    {"absolute_folder_gets_slash", "[Folders]\nPluginFolder=/opt/decoders\n", FOLDER(PluginFolder), "/opt/decoders/"},
    // Values that do not parse keep the default.
    {"bad_number", "[Logging]\nLevel=abc\n", FIELD(LoggingLevel), "0"},
    {"trailing_junk", "[Device]\nImageWidth=12x\n", FIELD(ImageWidth), "2700"},
    {"negative_unsigned", "[Logging]\nMask=-1\n", FIELD(LoggingMask), "63"},
    {"int_overflow", "[Device]\nImageWidth=99999999999\n", FIELD(ImageWidth), "2700"},
    {"byte_overflow", "[Device]\nCommonBinning=256\n", FIELD(CommonBinning), "1"},
    {"flag_not_a_flag", "[Device]\nTwoSided=2\n", FIELD(TwoSided), "0"},
    {"float_not_finite", "[Device]\nDarkObjectValue=nan\n", FIELD(DarkObjectValue), "40"},
    {"empty_value", "[Device]\nImageHeight=\n", FIELD(ImageHeight), "2000"},
    {"folder_too_long", nullptr, FOLDER(PluginFolder), nullptr},
};

class SettingsKey : public ::testing::TestWithParam<KeyCase> {};

TEST_P(SettingsKey, IsReadFromTheFile) {
    const KeyCase& c = GetParam();
    TempFolder folder;
    const std::string ini =
        c.ini != nullptr ? c.ini : "[Folders]\nPluginFolder=/" + std::string(2000, 'x') + "\n";
    const std::string expected = c.expected != nullptr ? c.expected : defaultPluginFolder();
    writeFile(folder.file("ZyrReader.ini"), ini);
    ZyrReaderSettings settings = garbage();
    ASSERT_EQ(ZyrReader_LL_LoadSettingsFromIniFile(&settings, folder.file("ZyrReader.ini").c_str()), ZYR_OK);
    EXPECT_EQ(c.field(settings), expected);
}

INSTANTIATE_TEST_SUITE_P(Files, SettingsKey, ::testing::ValuesIn(keyCases),
                         [](const ::testing::TestParamInfo<KeyCase>& info) { return info.param.name; });

// A relative settings file and a relative device folder are taken from the working folder; the
// device's settings come from its device.ini without a report, relative folders from the device's.
TEST(SettingsFile, RelativePathsAndTheConnectedReadersSettings) {
    TempFolder folder;
    writeFile(folder.file("ZyrReader.ini"), "[Folders]\nApplicationFolder=app\n");
    fs::create_directory(folder.file("reader"));
    writeFile(folder.file("reader/device.ini"), "[Device]\nTwoSided=1\nImageWidth=1800\n[Feed]\nRemovalTimeMs=300\n"
                                                "[Folders]\nPluginFolder=decoders\n");
    const fs::path previous = fs::current_path();
    fs::current_path(folder.path());
    ScopedEnvironment device("ZYRREADER_DEVICE", "reader");
    RecordingErrorHandler handler;
    ZyrReaderSettings fromFile = garbage(), fromDevice = garbage();
    const int32_t fileResult = ZyrReader_LL_LoadSettingsFromIniFile(&fromFile, "./ZyrReader.ini");
    const int32_t deviceResult = ZyrReader_LL_LoadSettings(&fromDevice);
    fs::current_path(previous);
    ASSERT_EQ(fileResult, ZYR_OK);
    EXPECT_EQ(std::string(fromFile.ApplicationFolder), folder.path() + "/app/");
    EXPECT_EQ(deviceResult, ZYR_OK);
    EXPECT_TRUE(handler.codes().empty());
    EXPECT_EQ(std::string(fromDevice.DeviceFolder), folder.path() + "/reader/");
    EXPECT_EQ(std::string(fromDevice.PluginFolder), folder.path() + "/reader/decoders/");
    // Keys absent from device.ini keep their defaults.
    EXPECT_EQ(text(fromDevice.TwoSided) + " " + text(fromDevice.ImageWidth) + " " + text(fromDevice.ImageHeight) +
                  " " + text(fromDevice.Feed.RemovalTimeMs),
              "1 1800 2000 300");
}

// ---- The virtual reader's folder ----

class NoReader : public ::testing::TestWithParam<const char*> {};

// ZYRREADER_DEVICE unset, empty, a missing folder, a folder without device.ini, one whose
// device.ini is a folder, or naming a file.
TEST_P(NoReader, ReportsNineOnceFillsDefaultsAndReturnsNine) {
    TempFolder folder;
    const std::string kind = GetParam();
    if (kind == "ini_is_a_folder")
        fs::create_directory(folder.file("device.ini"));
    if (kind == "names_a_file")
        writeFile(folder.file("device.ini"), "[Device]\nTwoSided=1\n");
    const std::string value = kind == "empty"             ? ""
                              : kind == "missing_folder"  ? folder.file("nowhere")
                              : kind == "names_a_file"    ? folder.file("device.ini")
                                                          : folder.path();
    ScopedEnvironment device("ZYRREADER_DEVICE", kind == "unset" ? nullptr : value.c_str());
    RecordingErrorHandler handler;
    ZyrReaderSettings settings = garbage();
    EXPECT_EQ(ZyrReader_LL_LoadSettings(&settings), ZYR_ERR_NO_READER);
    ASSERT_EQ(handler.codes(), std::vector<int32_t>{ZYR_ERR_NO_READER});
    EXPECT_EQ(handler.messages()[0], ZyrReader_ErrorText(ZYR_ERR_NO_READER));
    EXPECT_EQ(int32_t(settings.ImageWidth), 2700);
    EXPECT_EQ(int(settings.TwoSided), 0);
    EXPECT_EQ(settings.DeviceFolder[0], '\0');
    ZyrReader_SetErrorHandler(nullptr, 0);
    EXPECT_EQ(ZyrReader_LL_LoadSettings(&settings), ZYR_ERR_NO_READER) << "without a handler too";
}

INSTANTIATE_TEST_SUITE_P(Device, NoReader,
                         ::testing::Values("unset", "empty", "missing_folder", "folder_without_device_ini",
                                           "ini_is_a_folder", "names_a_file"),
                         [](const ::testing::TestParamInfo<const char*>& info) { return std::string(info.param); });

} // namespace
