// "Glyphor.ini" round trips, and showing and stepping through files.
#include "FakeView.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace rd = readerdouble;

namespace {

class SessionTest : public SessionFixture {
protected:
    void SetUp() override {
        for (const char* name : {"KVDECODE_A.so", "KVDECODE_B.so", "KVDECODE_C.so"}) {
            plugins.write(name, "");
            rd::AddPlugin({name});
        }
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

};

TEST_F(SessionTest, SettingsSurviveARestartWhenBothFoldersAreTheSame) {
    {
        auto first = Start(view, appFolder.path() + "/");
        first->imageNumber = 57;
        first->plugins.SetSelected(0, true);
        first->plugins.SetSelected(2, true);
        first->files.SetFilterIndex(2);
        first->SaveSettings();
    }
    EXPECT_EQ(readFile(appFolder.file("Glyphor.ini")),
              "[Previous_State]\r\nBitmapID=57\r\nSelectedPlugins=A,C\r\nFileDlgFilterIndex=2\r\n");
    FakeView secondView;
    auto second = Start(secondView, appFolder.path());
    EXPECT_EQ(std::to_string(second->imageNumber) + "|" + second->plugins.SelectedNames().str() + "|" +
                  std::to_string(second->files.FilterIndex()),
              "57|A,C|2");
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
    EXPECT_FALSE(std::filesystem::exists(appFolder.file("Glyphor.ini")));
    auto second = Start(view, executable.path());
    EXPECT_EQ(second->imageNumber, 0) << "the two folders differ: nothing is read back, as intended";
    EXPECT_STREQ(second->plugins.SelectedNames().str(), "");
}

class BrokenSettingsTest : public SessionTest,
                           public ::testing::WithParamInterface<std::tuple<const char*, std::string, int32_t, const char*, uint32_t>> {};

TEST_P(BrokenSettingsTest, GiveDefaultsWithoutAMessage) {
    const auto& [name, content, number, selected, filter] = GetParam();
    appFolder.write("Glyphor.ini", content);
    auto session = Start(view, appFolder.path());
    EXPECT_EQ(std::to_string(session->imageNumber) + "|" + session->plugins.SelectedNames().str() + "|" +
                  std::to_string(session->files.FilterIndex()),
              std::to_string(number) + "|" + selected + "|" + std::to_string(filter));
    EXPECT_TRUE(view.messages.empty());
}

using namespace std::string_literals;
using B = std::tuple<const char*, std::string, int32_t, const char*, uint32_t>;

INSTANTIATE_TEST_SUITE_P(
    Files, BrokenSettingsTest,
    ::testing::Values(B{"Empty", "", 0, "", 0}, B{"Binary", "\x01\x02\xff\xfe\0\0[[[==="s, 0, "", 0},
                      B{"NoSection", "BitmapID=5\nSelectedPlugins=A\n", 0, "", 0},
                      B{"OtherSectionName", "[previous_state]\nBitmapID=5\n", 0, "", 0},
                      B{"NumbersNotNumbers", "[Previous_State]\nBitmapID=abc\nFileDlgFilterIndex=2x\n", 0, "", 2},
                      B{"UnknownPlugins", "[Previous_State]\nSelectedPlugins=X,Y,,\n", 0, "", 0},
                      B{"CrOnlyLines", "[Previous_State]\rBitmapID=8\rSelectedPlugins=C\r", 8, "C", 0}),
    [](const auto& info) { return std::string(std::get<0>(info.param)); });

TEST_F(SessionTest, MissingOrUnreadableFileKeepsTheDefaultsAndAFailedSaveIsSilent) {
    EXPECT_EQ(Start(view, appFolder.path())->imageNumber, 0);
    std::filesystem::create_directory(appFolder.file("Glyphor.ini")); // exists, but cannot be read as a file
    EXPECT_EQ(Start(view, appFolder.path())->imageNumber, 0);
    auto session = Start(view, appFolder.path() + "/no/such/folder/");
    session->imageNumber = 3;
    session->SaveSettings();
    EXPECT_FALSE(std::filesystem::exists(appFolder.file("no")));
    EXPECT_TRUE(view.messages.empty());
}

// ---- Showing files -------------------------------------------------------------------------

TEST_F(SessionTest, EveryShowRaisesTheImageNumberAlsoBackAndForth) {
    auto session = Start(view, appFolder.path());
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

TEST_F(SessionTest, AnUnreadableFileStillChangesCaptionAndNumberAndOpeningNothingShowsNothing) {
    auto session = Start(view, appFolder.path());
    session->OpenImages({"missing.png", "b"}, 1);
    EXPECT_EQ(session->imageNumber, 1);
    EXPECT_EQ(view.captions.back(), "Glyphor - missing.png");
    EXPECT_EQ(view.sets.back().second, nullptr);
    session->OpenImages({}, 4);
    EXPECT_EQ(session->files.Count(), 0);
    EXPECT_EQ(view.loads.size(), 1u);
    EXPECT_EQ(session->files.FilterIndex(), 4u);
    EXPECT_FALSE(session->Buttons().decodeImage);
}

} // namespace
