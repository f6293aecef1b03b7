// The results row actions without widgets (refusals without data are checked through the window):
// the binary save and its failures, and the parse's outcome deciding whether the viewer is shown.
#include "ResultActions.h"
#include "FakeView.h"
#include "TempFolder.h"

#include <gtest/gtest.h>


namespace {

GLD_DecodeData Data(const std::string& bytes) {
    GLD_DecodeData data;
    data.assign(bytes.data(), static_cast<uint32_t>(bytes.size()));
    return data;
}

// Records what the actions ask of the interface; the viewer answers a chosen parse code.
struct ScriptedUi : ResultActionUi {
    std::string savePath, parsedBytes;
    int32_t parseCode = 0;
    int pathRequests = 0, viewersMade = 0, viewersShown = 0, viewersAlive = 0;

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

using Messages = std::vector<std::pair<MessageKind, std::string>>;

class ResultActionsTest : public testing::Test {
protected:
    FakeView view;
    ScriptedUi ui;
    ResultActions actions{view, ui};
    TempFolder folder;
    // Bytes as a plug-in reports them: NUL, CR LF, high bytes and all.
    const std::string binary{"@\n\x1e\rANSI \0\xff\x80 end", 16};
};

// Cancelled, the save says nothing; it writes the bytes unchanged over a longer file; when it cannot
// write it says why and claims no success.
TEST_F(ResultActionsTest, SaveWritesTheBytesUnchangedOrSaysWhyNot) {
    actions.SaveDataAsBinary(Data(binary)); // no path chosen
    EXPECT_TRUE(view.messages.empty());
    ui.savePath = folder.write("row.bin", std::string(100, 'x'));
    actions.SaveDataAsBinary(Data(binary));
    EXPECT_EQ(ui.pathRequests, 2);
    EXPECT_EQ(readFile(ui.savePath), binary);
    EXPECT_EQ(view.messages, (Messages{{MessageKind::Info, "Successfully saved data to " + ui.savePath}}));
    for (const std::string& path : {folder.file("missing/row.bin"), folder.path()}) { // no folder; a folder
        view.messages.clear();
        ui.savePath = path;
        actions.SaveDataAsBinary(Data(binary));
        ASSERT_EQ(view.messages.size(), 1u) << path;
        EXPECT_EQ(view.messages[0].first, MessageKind::Exclamation);
        EXPECT_EQ(view.messages[0].second.rfind("Cannot save data to " + path + ": ", 0), 0u) << view.messages[0].second;
    }
}

// A failed parse names its code and shows no viewer; a parse of every byte, the NUL included, is
// shown once; each viewer is freed afterwards.
TEST_F(ResultActionsTest, ParseOutcomeDecidesWhetherTheViewerIsShown) {
    for (int32_t code : {1, 13, 22, 0}) {
        view.messages.clear();
        ui.parseCode = code;
        actions.ParseAsAamva(Data(binary));
        const std::string failure = "Cannot parse data. Check that it is in an AAMVA data format. Error code: ";
        const Messages expected = {{MessageKind::Exclamation, failure + std::to_string(code)}};
        EXPECT_EQ(view.messages, code ? expected : Messages{});
    }
    EXPECT_EQ(ui.parsedBytes, binary);
    EXPECT_EQ(std::make_tuple(ui.viewersMade, ui.viewersShown, ui.viewersAlive), std::make_tuple(4, 1, 0));
}

} // namespace
