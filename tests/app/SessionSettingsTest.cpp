// "Glyphor.ini" round trips, the dark-object setting, and showing and stepping through files.
#include "FakeView.h"
#include "ReaderDouble.h"
#include "TempFolder.h"
#include "TestSession.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace rd = readerdouble;

namespace {

class SessionTest : public ::testing::Test {
protected:
    void SetUp() override {
        rd::Reset();
        ReaderSession::Reset();
        SetApplicationFolder(folder.path());
        for (const char* name : {"KVDECODE_A.so", "KVDECODE_B.so", "KVDECODE_C.so"}) {
            plugins.write(name, "");
            rd::AddPlugin({name});
        }
        std::snprintf(ReaderSession::Settings().PluginFolder, ZYR_PATH_SIZE, "%s", plugins.path().c_str());
    }
    void TearDown() override { ReaderSession::Reset(); }

    static void SetApplicationFolder(const std::string& path) {
        std::snprintf(ReaderSession::Settings().ApplicationFolder, ZYR_PATH_SIZE, "%s", path.c_str());
    }

    // A session as the window makes it: plug-ins loaded, then settings.
    std::unique_ptr<TestSession> Start(FakeView& view, const std::string& executableFolder) {
        auto session = std::make_unique<TestSession>(view);
        session->loadImage = view.Loader();
        session->executableFolder = executableFolder;
        session->LoadPlugins();
        session->LoadSettings();
        return session;
    }

    TempFolder folder;
    TempFolder plugins;
    FakeView view;
};

TEST_F(SessionTest, SettingsSurviveARestartWhenBothFoldersAreTheSame) {
    {
        auto first = Start(view, folder.path() + "/");
        first->imageNumber = 57;
        first->plugins.SetSelected(0, true);
        first->plugins.SetSelected(2, true);
        first->files.SetFilterIndex(2);
        first->SaveSettings();
    }
    EXPECT_EQ(readFile(folder.file("Glyphor.ini")),
              "[Previous_State]\r\nBitmapID=57\r\nSelectedPlugins=A,C\r\nFileDlgFilterIndex=2\r\n");
    FakeView secondView;
    auto second = Start(secondView, folder.path());
    EXPECT_EQ(second->imageNumber, 57);
    EXPECT_STREQ(second->plugins.SelectedNames().str(), "A,C");
    EXPECT_EQ(second->files.FilterIndex(), 2u);
    EXPECT_TRUE(secondView.messages.empty());
}

TEST_F(SessionTest, SavedNextToTheExecutableButReadFromTheApplicationFolder) {
    TempFolder executable;
    {
        auto first = Start(view, executable.path());
        first->imageNumber = 9;
        first->plugins.SetSelected(1, true);
        first->SaveSettings();
    }
    EXPECT_TRUE(std::filesystem::exists(executable.file("Glyphor.ini")));
    EXPECT_FALSE(std::filesystem::exists(folder.file("Glyphor.ini")));
    auto second = Start(view, executable.path());
    EXPECT_EQ(second->imageNumber, 0) << "the two folders differ: nothing is read back, as intended";
    EXPECT_STREQ(second->plugins.SelectedNames().str(), "");
}

TEST_F(SessionTest, ARunThatShowedNothingSavesTheLoadedNumberAgain) {
    folder.write("Glyphor.ini", "[Previous_State]\nBitmapID=123\nSelectedPlugins=B,Gone\n");
    auto session = Start(view, folder.path());
    session->SaveSettings();
    EXPECT_EQ(readFile(folder.file("Glyphor.ini")),
              "[Previous_State]\r\nBitmapID=123\r\nSelectedPlugins=B\r\nFileDlgFilterIndex=0\r\n");
}

struct BrokenCase {
    const char* name;
    std::string content;
    int32_t number;
    const char* selected;
    uint32_t filter;
};

void PrintTo(const BrokenCase& c, std::ostream* os) {
    *os << c.name;
}

class BrokenSettingsTest : public SessionTest, public ::testing::WithParamInterface<BrokenCase> {};

TEST_P(BrokenSettingsTest, GiveDefaultsWithoutAMessage) {
    folder.write("Glyphor.ini", GetParam().content);
    auto session = Start(view, folder.path());
    EXPECT_EQ(session->imageNumber, GetParam().number);
    EXPECT_STREQ(session->plugins.SelectedNames().str(), GetParam().selected);
    EXPECT_EQ(session->files.FilterIndex(), GetParam().filter);
    EXPECT_TRUE(view.messages.empty());
}

using namespace std::string_literals;

INSTANTIATE_TEST_SUITE_P(
    Files, BrokenSettingsTest,
    ::testing::Values(
        BrokenCase{"Empty", "", 0, "", 0}, BrokenCase{"Binary", "\x01\x02\xff\xfe\0\0[[[==="s, 0, "", 0},
        BrokenCase{"NoSection", "BitmapID=5\nSelectedPlugins=A\n", 0, "", 0},
        BrokenCase{"OtherSectionName", "[previous_state]\nBitmapID=5\n", 0, "", 0},
        BrokenCase{"NumbersNotNumbers", "[Previous_State]\nBitmapID=abc\nFileDlgFilterIndex=2x\n", 0, "", 2},
        BrokenCase{"UnknownPlugins", "[Previous_State]\nSelectedPlugins=X,Y,,\n", 0, "", 0},
        BrokenCase{"CrOnlyLines", "[Previous_State]\rBitmapID=8\rSelectedPlugins=C\r", 8, "C", 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SessionTest, MissingOrUnreadableFileKeepsTheDefaults) {
    auto missing = Start(view, folder.path());
    EXPECT_EQ(missing->imageNumber, 0);
    std::filesystem::create_directory(folder.file("Glyphor.ini")); // exists, but cannot be read as a file
    auto unreadable = Start(view, folder.path());
    EXPECT_EQ(unreadable->imageNumber, 0);
    EXPECT_TRUE(view.messages.empty());
}

TEST_F(SessionTest, SaveIntoAMissingFolderIsSilent) {
    auto session = Start(view, folder.path() + "/no/such/folder/");
    session->imageNumber = 3;
    session->SaveSettings();
    EXPECT_TRUE(view.messages.empty());
    EXPECT_FALSE(std::filesystem::exists(folder.file("no")));
}

TEST_F(SessionTest, DarkObjectDetectGoesToTheCameraAndARefusalIsShown) {
    auto session = Start(view, folder.path());
    rd::ClearCalls();
    session->ApplyDarkObjectDetect(1);
    EXPECT_EQ(ReaderSession::Settings().DarkObjectDetect, 1);
    EXPECT_EQ(rd::CallTexts(), std::vector<std::string>{"ZyrReader_CameraUpdateSettings(" +
                                                        rd::Ptr(&ReaderSession::Settings()) + ", 1)"});
    EXPECT_TRUE(view.messages.empty());

    rd::SetResult("ZyrReader_CameraUpdateSettings", ZYR_ERR_NOT_INITIALISED);
    session->ApplyDarkObjectDetect(0);
    EXPECT_EQ(ReaderSession::Settings().DarkObjectDetect, 0) << "the record keeps the new value";
    ASSERT_EQ(view.messages.size(), 1u);
    EXPECT_EQ(view.messages[0].first, MessageKind::Exclamation);
    EXPECT_EQ(view.messages[0].second, "Error saving settings.  Error code: 1");

    rd::SetResult("ZyrReader_CameraUpdateSettings", -5);
    session->ApplyDarkObjectDetect(0x101); // only the low byte of the state is stored
    EXPECT_EQ(ReaderSession::Settings().DarkObjectDetect, 1);
    EXPECT_EQ(view.messages.back().second, "Error saving settings.  Error code: -5");
}

// ---- Showing files -------------------------------------------------------------------------

TEST_F(SessionTest, OpeningShowsTheFirstFile) {
    auto session = Start(view, folder.path());
    session->imageNumber = 10;
    session->OpenImages({"/img/a b.png", "C:\\scans\\b.jpg"}, 3);
    EXPECT_EQ(view.captions, std::vector<std::string>{"Glyphor - a b.png"});
    EXPECT_EQ(view.loads, std::vector<std::string>{"/img/a b.png"});
    EXPECT_EQ(session->CurrentFileName(), "a b.png");
    EXPECT_EQ(session->imageNumber, 11);
    EXPECT_EQ(session->files.FilterIndex(), 3u);
    EXPECT_EQ(session->files.CurrentIndex(), 0);
    session->NextImage();
    EXPECT_EQ(view.captions.back(), "Glyphor - b.jpg");
    EXPECT_EQ(session->CurrentFileName(), "b.jpg");
}

TEST_F(SessionTest, EveryShowRaisesTheImageNumberAlsoBackAndForth) {
    auto session = Start(view, folder.path());
    session->OpenImages({"a", "b", "c"}, 1);
    const std::pair<char, int32_t> steps[] = {{'n', 1}, {'n', 2}, {'p', 1}, {'n', 2}, {'p', 1}, {'p', 0}};
    int32_t number = session->imageNumber;
    for (const auto& [direction, index] : steps) {
        direction == 'n' ? session->NextImage() : session->PreviousImage();
        EXPECT_EQ(session->files.CurrentIndex(), index);
        EXPECT_EQ(session->imageNumber, ++number);
    }
    EXPECT_EQ(view.loads, (std::vector<std::string>{"a", "b", "c", "b", "c", "b", "a"}));
    EXPECT_EQ(view.buttonUpdates, 1 + 6);
}

TEST_F(SessionTest, AnUnreadableFileStillChangesCaptionNameAndNumber) {
    auto session = Start(view, folder.path());
    session->OpenImages({"missing.png"}, 1);
    EXPECT_EQ(session->imageNumber, 1);
    EXPECT_EQ(view.captions.back(), "Glyphor - missing.png");
    EXPECT_EQ(view.shown, nullptr);
}

TEST_F(SessionTest, OpeningNothingEmptiesTheListWithoutShowing) {
    auto session = Start(view, folder.path());
    session->OpenImages({"a", "b"}, 1);
    session->OpenImages({}, 4);
    EXPECT_EQ(session->files.Count(), 0);
    EXPECT_EQ(view.loads.size(), 1u);
    EXPECT_EQ(session->files.FilterIndex(), 4u);
    EXPECT_FALSE(session->Buttons().decodeImage);
}

TEST_F(SessionTest, AVeryLongSelectionIsKeptWhole) {
    auto session = Start(view, folder.path());
    std::vector<std::string> paths;
    for (int i = 0; i < 3000; ++i) {
        paths.push_back(folder.path() + "/a-rather-long-file-name-for-image-number-" + std::to_string(i) +
                        ".png");
    }
    session->OpenImages(paths, 1);
    EXPECT_EQ(session->files.Count(), 3000);
    for (int i = 0; i < 2999; ++i) {
        session->NextImage();
    }
    EXPECT_EQ(view.loads.back(), paths.back());
    EXPECT_FALSE(session->Buttons().next);
    EXPECT_TRUE(session->Buttons().previous);
}

} // namespace
