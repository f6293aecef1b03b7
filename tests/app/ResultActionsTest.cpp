// The results row actions without widgets: refusals without data, the binary save and its
// failures, and the parse's outcome deciding whether the viewer is shown.
#include "ResultActions.h"
#include "FakeView.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

GLD_DecodeData Data(const std::string& bytes) {
    GLD_DecodeData data;
    data.assign(bytes.data(), static_cast<uint32_t>(bytes.size()));
    return data;
}

// Records what the actions ask of the interface; the viewer answers a chosen parse code.
struct ScriptedUi : ResultActionUi {
    std::string savePath;
    int32_t parseCode = 0;
    int pathRequests = 0;
    int viewersMade = 0;
    int viewersShown = 0;
    int viewersAlive = 0;
    std::string parsedBytes;

    struct Viewer : AamvaViewer {
        explicit Viewer(ScriptedUi& ui) : ui(ui) { ++ui.viewersAlive; }
        ~Viewer() override { --ui.viewersAlive; }
        int32_t Parse(const uint8_t* bytes, int32_t length) override {
            ui.parsedBytes.assign(reinterpret_cast<const char*>(bytes), size_t(length));
            return ui.parseCode;
        }
        void ShowModal() override {
            EXPECT_EQ(ui.viewersAlive, 1);
            ++ui.viewersShown;
        }
        ScriptedUi& ui;
    };

    std::string AskBinarySavePath() override {
        ++pathRequests;
        return savePath;
    }
    std::unique_ptr<AamvaViewer> MakeAamvaViewer() override {
        ++viewersMade;
        return std::make_unique<Viewer>(*this);
    }
};

class ResultActionsTest : public testing::Test {
protected:
    FakeView view;
    ScriptedUi ui;
    ResultActions actions{view, ui};
    TempFolder folder;
    // Bytes as a plug-in reports them: NUL, CR LF, high bytes and all.
    const std::string binary{"@\n\x1e\rANSI \0\xff\x80 end", 16};
};

TEST_F(ResultActionsTest, BothActionsRefuseARowWithoutData) {
    using Action = void (ResultActions::*)(const std::optional<GLD_DecodeData>&);
    const struct {
        const char* name;
        Action action;
        std::optional<GLD_DecodeData> data;
    } cases[] = {
        {"save, no row selected", &ResultActions::SaveDataAsBinary, std::nullopt},
        {"save, nothing decoded", &ResultActions::SaveDataAsBinary, GLD_DecodeData()},
        {"parse, no row selected", &ResultActions::ParseAsAamva, std::nullopt},
        {"parse, nothing decoded", &ResultActions::ParseAsAamva, GLD_DecodeData()},
    };
    for (const auto& c : cases) {
        view.messages.clear();
        (actions.*c.action)(c.data);
        ASSERT_EQ(view.messages.size(), 1u) << c.name;
        EXPECT_EQ(view.messages[0].first, MessageKind::Error) << c.name;
        EXPECT_EQ(view.messages[0].second, "There is not data available for this result") << c.name;
    }
    EXPECT_EQ(ui.pathRequests, 0);
    EXPECT_EQ(ui.viewersMade, 0);
}

TEST_F(ResultActionsTest, CancelledSaveDoesNothing) {
    ui.savePath.clear();
    actions.SaveDataAsBinary(Data(binary));
    EXPECT_EQ(ui.pathRequests, 1);
    EXPECT_TRUE(view.messages.empty());
}

TEST_F(ResultActionsTest, SaveWritesTheBytesUnchangedOverALongerFile) {
    ui.savePath = folder.write("row.bin", std::string(100, 'x'));
    actions.SaveDataAsBinary(Data(binary));
    EXPECT_EQ(readFile(ui.savePath), binary);
    ASSERT_EQ(view.messages.size(), 1u);
    EXPECT_EQ(view.messages[0].first, MessageKind::Info);
    EXPECT_EQ(view.messages[0].second, "Successfully saved data to " + ui.savePath);
}

TEST_F(ResultActionsTest, SaveThatCannotWriteSaysWhyAndClaimsNoSuccess) {
    const struct {
        const char* name;
        std::string path;
    } cases[] = {
        {"folder that does not exist", folder.file("missing/row.bin")},
        {"path is a folder", folder.path()},
    };
    for (const auto& c : cases) {
        view.messages.clear();
        ui.savePath = c.path;
        actions.SaveDataAsBinary(Data(binary));
        ASSERT_EQ(view.messages.size(), 1u) << c.name;
        EXPECT_EQ(view.messages[0].first, MessageKind::Exclamation) << c.name;
        EXPECT_EQ(view.messages[0].second.rfind("Cannot save data to " + c.path + ": ", 0), 0u)
            << c.name << ": " << view.messages[0].second;
    }
}

TEST_F(ResultActionsTest, FailedParseNamesTheCodeAndShowsNoViewer) {
    for (int32_t code : {1, 13, 22}) {
        view.messages.clear();
        ui.parseCode = code;
        actions.ParseAsAamva(Data(binary));
        ASSERT_EQ(view.messages.size(), 1u) << code;
        EXPECT_EQ(view.messages[0].first, MessageKind::Exclamation);
        EXPECT_EQ(view.messages[0].second,
                  "Cannot parse data. Check that it is in an AAMVA data format. Error code: " +
                      std::to_string(code));
    }
    EXPECT_EQ(ui.viewersMade, 3);
    EXPECT_EQ(ui.viewersShown, 0);
    EXPECT_EQ(ui.viewersAlive, 0);
}

TEST_F(ResultActionsTest, ParsedDataIsShownOnceAndTheViewerFreedAfterwards) {
    ui.parseCode = 0;
    actions.ParseAsAamva(Data(binary));
    EXPECT_EQ(ui.parsedBytes, binary); // every byte, the NUL included
    EXPECT_EQ(ui.viewersShown, 1);
    EXPECT_EQ(ui.viewersAlive, 0);
    EXPECT_TRUE(view.messages.empty());
}

} // namespace
