// Row texts, stepping through the image files, showing them, and "Glyphor.ini" round trips.
#include "FakeView.h"
#include "ImageFileList.h"
#include "ResultText.h"

#include <filesystem>
#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

TEST(ResultRowText, SpellsOutControlCodesOnOneLine) {
    const struct {
        std::string bytes, shown;
        RowBytes encoding = RowBytes::Latin1;
    } cases[] = {
        {"@\n\x1e\rANSI 636001", "@<LF><RS><CR>ANSI 636001"},
        {"\0\x01\t\x1b\x1f"s, "<NUL><SOH><HT><ESC><US>"},
        {"~\x7f", "~<DEL>"},
        {"\x80\x85\x9f", "<80><85><9F>"},
        {" \xa0\xe9\xff", " \xa0\xe9\xff"}, // printable in ISO-8859-1: kept
        {"", ""},
        // UTF-8 text converted from its character set: multi-byte characters are kept whole.
        {"\xe6\x97\xa5\n\xc2\x85\x7f", "\xe6\x97\xa5<LF>\xc2\x85<DEL>", RowBytes::Utf8},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ResultRowText(c.bytes, c.encoding), c.shown);
}

TEST(ImageFileList, StepsReplaceAndClear) {
    // Steps ('n' next, 'p' previous, 'c' clear, 'x' replace by "x"), each as "shown@index" ("-" when
    // nothing is shown), after what the new list shows first.
    const struct {
        std::vector<std::string> files;
        std::string steps, expected;
    } cases[] = {
        {{"a", "b", "c"}, "nnpp", "a@0 b@1 c@2 b@1 a@0"},
        // Clearing keeps the index but not the position; a new list starts at its first.
        {{"a", "b", "c"}, "nncnx", "a@0 b@1 c@2 -@2 -@2 x@0"},
        // Stepping past the end drops the position: the index still moves, later steps do nothing.
        {{"a", "b"}, "nnnp", "a@0 b@1 -@2 -@2 -@2"},
        {{"a", "b"}, "pn", "a@0 -@-1 -@-1"},
        {{"only"}, "n", "only@0 -@1"},
        {{}, "np", "-@0 -@0 -@0"},
    };
    for (const auto& c : cases) {
        ImageFileList list;
        list.Replace(c.files);
        std::string seen = list.CurrentPath().value_or("-") + "@" + std::to_string(list.CurrentIndex());
        for (char step : c.steps) {
            std::optional<std::string> shown;
            if (step == 'n' || step == 'p')
                shown = step == 'n' ? list.StepNext() : list.StepPrevious();
            else
                step == 'c' ? list.Clear() : list.Replace({"x"}), shown = list.CurrentPath();
            seen += " " + shown.value_or("-") + "@" + std::to_string(list.CurrentIndex());
        }
        EXPECT_EQ(seen, c.expected) << c.steps;
    }
}

class SessionTest : public SessionFixture {
protected:
    void SetUp() override { Install({{"KVDECODE_A.so"}, {"KVDECODE_B.so"}, {"KVDECODE_C.so"}}); }

    // A session as the window makes it: plug-ins loaded, then settings.
    std::unique_ptr<TestSession> Start(FakeView& view, const std::string& executableFolder) {
        auto session = std::make_unique<TestSession>(view);
        session->loadImage = view.Loader();
        session->executableFolder = executableFolder;
        session->LoadPlugins();
        session->LoadSettings();
        return session;
    }
    // "image number|selected plug-ins|filter index"
    static std::string State(TestSession& s) {
        return std::to_string(s.imageNumber) + "|" + s.plugins.SelectedNames().str() + "|" + std::to_string(s.files.FilterIndex());
    }
};

// Saved next to the executable, read from the application folder: when the two differ nothing is
// read back, as intended.
TEST_F(SessionTest, SettingsSurviveARestartWhenBothFoldersAreTheSameElseGiveDefaults) {
    TempFolder elsewhere;
    for (const std::string& executable : {elsewhere.path(), appFolder.path() + "/"}) {
        {
            auto first = Start(view, executable);
            first->imageNumber = 57;
            first->plugins.SetSelected(0, true);
            first->plugins.SetSelected(2, true);
            first->files.SetFilterIndex(2);
            first->SaveSettings();
        }
        EXPECT_EQ(readFile(executable + "/Glyphor.ini"),
                  "[Previous_State]\r\nBitmapID=57\r\nSelectedPlugins=A,C\r\nFileDlgFilterIndex=2\r\n");
        EXPECT_EQ(State(*Start(view, executable)), executable == elsewhere.path() ? "0||0" : "57|A,C|2");
    }
    // A file that is not a file, a missing one and each broken one give the defaults or what the
    // file still holds, silently; so does a failed save.
    std::filesystem::remove(appFolder.file("Glyphor.ini"));
    std::filesystem::create_directory(appFolder.file("Glyphor.ini"));
    EXPECT_EQ(State(*Start(view, appFolder.path())), "0||0");
    std::filesystem::remove(appFolder.file("Glyphor.ini"));
    EXPECT_EQ(State(*Start(view, appFolder.path())), "0||0");
    const std::pair<std::string, const char*> files[] = { // content, State
        {"", "0||0"},
        {"\x01\x02\xff\xfe\0\0[[[==="s, "0||0"},
        {"BitmapID=5\nSelectedPlugins=A\n", "0||0"},    // no section
        {"[previous_state]\nBitmapID=5\n", "0||0"},      // another section's name
        {"[Previous_State]\nBitmapID=abc\nFileDlgFilterIndex=2x\n", "0||2"},
        {"[Previous_State]\nSelectedPlugins=X,Y,,\n", "0||0"},
        {"[Previous_State]\rBitmapID=8\rSelectedPlugins=C\r", "8|C|0"}, // CR-only lines
    };
    for (const auto& [content, expected] : files) {
        appFolder.write("Glyphor.ini", content);
        EXPECT_EQ(State(*Start(view, appFolder.path())), expected) << content;
    }
    Start(view, appFolder.path() + "/no/such/folder/")->SaveSettings();
    EXPECT_FALSE(std::filesystem::exists(appFolder.file("no")));
    EXPECT_TRUE(view.messages.empty());
}


// Every show raises the image number, also back and forth; an unreadable file still changes the
// caption and the number; opening nothing shows nothing.
TEST_F(SessionTest, ShowingFiles) {
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
    session->OpenImages({"/x/missing.png", "b"}, 1);
    EXPECT_EQ(session->imageNumber, number + 1);
    EXPECT_EQ(view.captions.back(), "Glyphor - missing.png");
    EXPECT_EQ(view.sets.back().second, nullptr);
    session->OpenImages({}, 4);
    EXPECT_EQ(session->files.Count(), 0);
    EXPECT_EQ(view.loads.size(), 8u);
    EXPECT_EQ(session->files.FilterIndex(), 4u);
    EXPECT_FALSE(session->Buttons().decodeImage);
}

} // namespace
