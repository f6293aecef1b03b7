// Capture against the reader double: the calls and arguments of a cycle on one- and two-sided
// readers, the option word, the visible override, the removal countdown, errors, timing and the jobs.
#include "CaptureCycle.h"
#include "CaptureOptions.h"
#include "CaptureSettingsCheck.h"
#include "FakeView.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace rd = readerdouble;
using Strings = std::vector<std::string>;
using Saves = std::vector<std::pair<PictureId, std::string>>;
using Messages = std::vector<std::pair<MessageKind, std::string>>;

namespace {

ZyrImageSettings Record(const char* image, uint32_t lightMask = ZYR_LIGHT_VISIBLE) {
    ZyrImageSettings r{};
    std::snprintf(r.ImageName, sizeof r.ImageName, "%s", image);
    std::snprintf(r.LightName, sizeof r.LightName, "%s", lightMask == ZYR_LIGHT_IR ? "IMAGE_IR" : "IMAGE_VISIBLE");
    r.LightMask = lightMask;
    return r;
}

rd::PluginScript Plugin(const std::string& name, std::vector<ZyrImageSettings> settings) {
    rd::PluginScript p("KVDECODE_" + name + ".so");
    for (const ZyrImageSettings& s : settings)
        p.requiredImages += (p.requiredImages.empty() ? "" : ",") + std::string(s.ImageName);
    p.imageSettings = std::move(settings);
    return p;
}

// The cycle's reader calls without their "ZyrReader_" (the catalogue's plug-in calls left out).
Strings CaptureCalls() {
    Strings names;
    for (const std::string& name : rd::CallNames())
        if (name.find("Plugin") == std::string::npos || name == "ZyrReader_ImagePluginDecode")
            names.push_back(name.substr(10));
    return names;
}

rd::Call First(const std::string& name) {
    return rd::CallsNamed("ZyrReader_" + name).at(0);
}

// "*" matches any argument: outputs the cycle owns.
void ExpectArgs(const rd::Call& call, Strings expected) {
    for (size_t i = 0; i < expected.size() && i < call.args.size(); ++i)
        if (expected[i] == "*")
            expected[i] = call.args[i];
    EXPECT_EQ(call.args, expected) << call.name;
}

class CaptureTest : public SessionFixture {
protected:
    void SetUp() override {
        ZyrReaderSettings& reader = ReaderSession::Settings();
        reader.VisibleParameters.DetectThreshold = 60;
        reader.VisibleParameters.CaptureResolution = 600;
        reader.VisibleParameters.Binning = 2;
        reader.DarkObjectValue = 40;
        session.savePng = [this](PictureId picture, const ZyrImage&, const std::string& path) {
            saves.emplace_back(picture, path.substr(appFolder.path().size()));
        };
        cycle.sleep = [this](int ms) { sleeps.push_back(ms); };
        cycle.clockMs = [this] { return ticks < clock.size() ? clock[ticks++] : 0; };
        Script(rd::CaptureScript{});
    }
    // One snapshot, one processed image and two sides, each of its own grey.
    static void Script(rd::CaptureScript script) {
        script.snapshots = {rd::MakeImage(8, 6, ZYR_PIXEL_GREY8, 1)};
        script.processed = {rd::MakeImage(4, 3, ZYR_PIXEL_GREY8, 2)};
        script.sides = {rd::MakeImage(2, 2, ZYR_PIXEL_GREY8, 3), rd::MakeImage(2, 2, ZYR_PIXEL_GREY8, 4)};
        rd::SetCapture(script);
    }
    void Install(std::vector<rd::PluginScript> scripts, std::vector<bool> selected = {}) {
        SessionFixture::Install(scripts, selected);
        rd::ClearCalls();
    }
    void InstallOne(const ZyrImageSettings& record) { Install({Plugin("A", {record})}); }
    ZyrImageSettings& PluginRecord() { return *session.imageSettings.ForPlugin(session.plugins.Entries()[0].handle); }

    CaptureCycle cycle{session};
    Saves saves;
    std::vector<int> sleeps;
    std::vector<int64_t> clock; // the times the cycle reads, in turn
    size_t ticks = 0;
};

// The selected plug-ins must share one image-settings record; a cycle takes the first selected
// plug-in's record.
struct CheckCase {
    const char* name;
    std::vector<std::vector<const char*>> plugins; // image names each plug-in needs (none = no settings)
    std::vector<bool> selected;
    bool passes;
    const char* chosen; // image name of the record a cycle takes; null = none
};

class CaptureSettings : public CaptureTest, public ::testing::WithParamInterface<CheckCase> {};

TEST_P(CaptureSettings, CheckAndChoice) {
    const CheckCase& c = GetParam();
    std::vector<rd::PluginScript> scripts;
    for (const auto& images : c.plugins) {
        std::vector<ZyrImageSettings> records;
        for (const char* image : images)
            records.push_back(Record(image));
        scripts.push_back(Plugin(std::string(1, char('A' + scripts.size())), records));
    }
    Install(scripts, c.selected);
    EXPECT_EQ(cycle.CheckImageSettings(), c.passes);
    const Messages complaint = {
        {MessageKind::Exclamation, "All selected plugins must use the same image settings for image capture"}};
    EXPECT_EQ(view.messages, c.passes ? Messages{} : complaint);
    const ZyrImageSettings* chosen = CaptureSettingsCheck::Choose(session.plugins, session.imageSettings);
    EXPECT_STREQ(chosen ? chosen->ImageName : nullptr, c.chosen);
    EXPECT_TRUE(rd::Calls().empty()) << "a check calls no reader";
}

INSTANTIATE_TEST_SUITE_P(
    Selections, CaptureSettings,
    ::testing::Values(CheckCase{"nothing_selected", {{"VISIBLE_DOC"}}, {false}, false, "VISIBLE_DOC"},
                      CheckCase{"names_differing_only_in_case", {{"DOC"}, {"doc"}}, {}, false, "DOC"},
                      CheckCase{"first_selected_without_settings", {{}, {"VISIBLE_DOC"}}, {}, true, nullptr},
                      CheckCase{"none_with_settings", {{}, {}}, {}, false, nullptr},
                      CheckCase{"unselected_one_differs", {{"VISIBLE_DOC"}, {"IR_DOC"}}, {true, false}, true,
                                "VISIBLE_DOC"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CaptureTest, OneSidedCycleCallsTheReaderInOrderWithItsArguments) {
    ZyrImageSettings record = Record("VISIBLE_DOC");
    record.Colour = 1;
    ZyrReaderSettings& reader = ReaderSession::Settings();
    reader.VisibleParameters.OutputDpi = 300; // the catalogue gives the record the block of its light
    reader.VisibleParameters.OutputScale = 0.5f;
    record.UseBorder = 1;
    InstallOne(record);
    PluginRecord().Camera.BorderPixels = 12; // handed over only when the record asks for a border
    session.useVisibleImage = false;
    clock = {100, 137};

    EXPECT_EQ(cycle.CaptureJob(job), 0u); // one cycle without waiting for removal, then a redraw

    EXPECT_EQ(std::make_pair(view.redraws, session.stats.lastImageProcessMs.load()), std::make_pair(1, 37u));
    EXPECT_EQ(CaptureCalls(), (Strings{"CameraDetectDocumentTwoSidedEx", "CameraTakeSnapshot", "ImagePostProcessImage",
                                       "ImagePluginDecode", "DestroyCachedObject", "DestroyCachedObject",
                                       "DocumentProcessingComplete"}));
    const rd::Call detect = First("CameraDetectDocumentTwoSidedEx");
    ExpectArgs(First("CameraTakeSnapshot"),
               {"true", "1", "15", rd::Ptr(&PluginRecord().Camera), rd::Ptr(&reader), "callback", "*", "0", "null"});
    const rd::Call process = First("ImagePostProcessImage");
    ExpectArgs(process, {"true", "*", "1", "300", "true", std::to_string(ZYR_OPT_LOCATE), "0", "12", "0.5", rd::Ptr(&reader),
                         rd::Ptr(&reader.Locate), detect.args[3], "callback", "*", "0", "null", rd::Ptr(&reader.Process)});
    EXPECT_NE(process.args[1], "null") << "the snapshot the callback delivered is post-processed";

    // The session's copy is shown, saved by parity and decoded as side 0; the library's images
    // are released, the snapshot first.
    const ZyrImage* copy = session.Image(PictureId::Main).get();
    EXPECT_EQ(First("ImagePluginDecode").args[2], rd::Ptr(copy));
    const std::vector<rd::Call> destroyed = rd::CallsNamed("ZyrReader_DestroyCachedObject");
    EXPECT_EQ(destroyed.at(0).args[0], process.args[1]);
    EXPECT_NE(destroyed.at(1).args[0], rd::Ptr(copy));
    EXPECT_EQ(view.sets, (std::vector<std::pair<PictureId, const ZyrImage*>>{
                             {PictureId::Main, nullptr}, {PictureId::Side1, nullptr}, {PictureId::Side2, nullptr},
                             {PictureId::Main, copy}}));
    EXPECT_EQ(saves, (Saves{{PictureId::Main, "/Glyphor_1.png"}, {PictureId::Main, "/Failed/1.png"}}));
    EXPECT_EQ(session.decode.TakeNextRow()->results, "[NO DATA]") << "side 0 has no side in its row";
    EXPECT_EQ(rd::LiveObjects(), 0);
}

class TwoSidedCapture : public CaptureTest, public ::testing::WithParamInterface<bool> {};

TEST_P(TwoSidedCapture, DecodesBothSidesAndShowsThemOnlyWithCrop) {
    const bool crop = GetParam();
    ReaderSession::Settings().TwoSided = 1;
    ZyrImageSettings record = Record("VISIBLE_DOC");
    record.CropWidth = 1; // replaced by "Crop" through the visible override
    InstallOne(record);
    PluginRecord().Camera.BorderPixels = 12;
    session.crop = crop;
    session.imageNumber = 5;

    EXPECT_EQ(cycle.Run(job, false), 0u);

    EXPECT_EQ(CaptureCalls(), (Strings{"InsertDocument", "CameraDetectDocumentTwoSidedEx", "CameraTakeSnapshot",
                                       "ImagePostProcessImage", "ImagePostProcessImageTwoSided", "ImagePluginDecode",
                                       "ImagePluginDecode", "DestroyCachedObject", "DestroyCachedObject",
                                       "DestroyCachedObject", "DestroyCachedObject", "DocumentProcessingComplete"}))
        << "the whole processed image is not decoded on a two-sided reader";
    const uint32_t single = ZYR_OPT_LOCATE | (crop ? ZYR_OPT_CROP : 0u);
    EXPECT_EQ(First("ImagePostProcessImage").args[5], std::to_string(single));
    EXPECT_EQ(First("ImagePostProcessImage").args[7], "0") << "no border asked for";
    const rd::Call both = First("ImagePostProcessImageTwoSided");
    EXPECT_EQ(both.args[5], std::to_string(single | ZYR_OPT_TWO_SIDED));
    EXPECT_NE(both.args[11], both.args[12]) << "both location records";
    EXPECT_EQ(view.sideViews, std::vector<bool>{crop});

    Strings rows;
    while (auto row = session.decode.TakeNextRow())
        rows.push_back(row->results);
    EXPECT_EQ(rows, (Strings{"Side Left: [NO DATA]", "Side Right: [NO DATA]"}));
    EXPECT_EQ(session.imageNumber.load(), 8) << "one for the capture, one per side";
    // Side 1 is the first image the library delivers; each side is decoded from the session's
    // copy, not the library's image.
    const std::vector<rd::Call> decodes = rd::CallsNamed("ZyrReader_ImagePluginDecode");
    const std::vector<rd::Call> destroyed = rd::CallsNamed("ZyrReader_DestroyCachedObject");
    for (size_t side = 0; side < 2; ++side)
        EXPECT_NE(destroyed.at(side).args[0], decodes.at(side).args[2]) << side;
    Saves expected = {{PictureId::Main, "/Glyphor_0.png"}}; // by the capture number's parity
    if (crop) {
        for (auto [picture, grey] : {std::pair{PictureId::Side1, 3}, std::pair{PictureId::Side2, 4}}) {
            EXPECT_EQ(session.Image(picture)->Pixels[0], grey);
            EXPECT_EQ(decodes.at(size_t(grey - 3)).args[2], rd::Ptr(session.Image(picture).get()));
        }
        expected.insert(expected.end(), {{PictureId::Side1, "/GlyphorSide1_0.png"}, {PictureId::Side2, "/GlyphorSide2_0.png"}});
    }
    saves.erase(std::remove_if(saves.begin(), saves.end(), [](const auto& s) { return s.second.rfind("/Glyphor", 0) != 0; }), saves.end());
    EXPECT_EQ(saves, expected);
    EXPECT_EQ(rd::LiveObjects(), 0);
}

INSTANTIATE_TEST_SUITE_P(Crop, TwoSidedCapture, ::testing::Bool());

struct OptionCase {
    const char* name;
    std::function<void(ZyrImageSettings&, ZyrReaderSettings&)> set;
    bool crop;
    uint32_t expected;
};

class OptionWord : public ::testing::TestWithParam<OptionCase> {};

TEST_P(OptionWord, FollowsTheRecordBytes) {
    const OptionCase& c = GetParam();
    ZyrImageSettings record{};
    record.ProcessingMode = -1;
    ZyrReaderSettings reader{};
    c.set(record, reader);
    EXPECT_EQ(CaptureOptions::OptionWord(record, reader, c.crop), c.expected);
}

using R = ZyrImageSettings;
using S = ZyrReaderSettings;

INSTANTIATE_TEST_SUITE_P(
    Bytes, OptionWord,
    ::testing::Values(OptionCase{"mode_zero_locates", [](R& r, S&) { r.ProcessingMode = 0; }, false, 0x1},
                      OptionCase{"deskew_by_the_camera", [](R& r, S&) { r.Deskew = 1, r.Camera.HardwareDeskew = 1; }, false, 0},
                      OptionCase{"crop_box_overrides_the_bytes", [](R&, S&) {}, true, 0x18},
                      OptionCase{"extra_from_the_reader", [](R&, S& s) { s.ExtraProcessing = 1; }, false, 0x20},
                      OptionCase{"colour_and_border_are_no_bits", [](R& r, S&) { r.Colour = 1, r.UseBorder = 1; }, false, 0},
                      OptionCase{"everything", [](R& r, S&) {
                                     r.ProcessingMode = 0;
                                     r.Deskew = r.Normalise = r.CropWidth = r.CropHeight = r.ExtraProcessing = r.Sharpen = 1;
                                     r.Rotate90 = r.Rotate180 = r.MirrorHorizontal = r.MirrorVertical = r.Greyscale = 1;
                                 }, false, 0x1FBF}),
    [](const auto& info) { return std::string(info.param.name); });

struct OverrideCase {
    const char* name;
    bool visible, crop, dark;
    uint8_t detectionFlag;
    bool copied;         // the snapshot gets a copy, not the plug-in's record
    uint32_t resolution; // what the snapshot sees
    uint8_t binning;
    float detection;
    uint32_t options; // post-processing option word
};

class VisibleOverride : public CaptureTest, public ::testing::WithParamInterface<OverrideCase> {};

TEST_P(VisibleOverride, DecidesTheRecordTheSnapshotSees) {
    const OverrideCase& c = GetParam();
    ZyrImageSettings record = Record("IR_DOC", ZYR_LIGHT_IR);
    record.CropHeight = 1;
    InstallOne(record);
    ZyrImageSettings& shared = PluginRecord();
    shared.Camera.DetectThreshold = 99;
    shared.Camera.CaptureResolution = 400; // the common values the catalogue wrote
    shared.Camera.Binning = 1;
    ZyrReaderSettings& reader = ReaderSession::Settings();
    reader.CommonCaptureResolution = 400;
    reader.CommonBinning = 1;
    session.useVisibleImage = c.visible;
    session.crop = c.crop;
    session.darkObjectDetect = c.dark ? 1 : 0;
    rd::CaptureScript script;
    script.detectionFlag = c.detectionFlag;
    Script(script);
    ZyrCameraParameters seen{};
    const void* seenAt = nullptr;
    rd::SetHook("ZyrReader_CameraTakeSnapshot", [&] {
        std::sscanf(First("CameraTakeSnapshot").args[3].c_str(), "ptr(%p)", &seenAt);
        std::memcpy(&seen, seenAt, sizeof seen);
    });

    EXPECT_EQ(cycle.Run(job, false), 0u);

    EXPECT_EQ(seenAt != &shared.Camera, c.copied);
    EXPECT_EQ(std::make_tuple(seen.CaptureResolution, seen.Binning, seen.DetectThreshold),
              std::make_tuple(c.resolution, c.binning, c.detection));
    EXPECT_FLOAT_EQ(shared.Camera.DetectThreshold, c.copied ? 99 : c.detection)
        << "without a copy the plug-in's own record takes the detection value";
    EXPECT_EQ(shared.Camera.CaptureResolution, 400u) << "the override never touches the plug-in's record";
    EXPECT_EQ(First("ImagePostProcessImage").args[5], std::to_string(c.options));
}

constexpr uint32_t L = ZYR_OPT_LOCATE, CH = ZYR_OPT_CROP_HEIGHT;

INSTANTIATE_TEST_SUITE_P(
    Checkboxes, VisibleOverride,
    ::testing::Values(OverrideCase{"plain", false, false, false, 0, false, 400, 1, 60, L | CH},
                      OverrideCase{"visible", true, false, false, 0, true, 600, 2, 60, L},
                      OverrideCase{"visible_with_crop", true, true, false, 0, true, 600, 2, 60, L | ZYR_OPT_CROP},
                      OverrideCase{"visible_but_found_dark", true, false, false, 1, false, 400, 1, 60, L | CH},
                      OverrideCase{"dark_found_dark", false, false, true, 1, false, 400, 1, 40, L | CH},
                      OverrideCase{"visible_dark_found_dark", true, true, true, 1, false, 400, 1, 40, L | ZYR_OPT_CROP}),
    [](const auto& info) { return std::string(info.param.name); });

struct CountdownCase {
    const char* name;
    bool repeat;
    std::vector<uint8_t> present; // after each location call
    int turns;                    // countdown lines shown
    bool twoSided;
    bool inserted;
};

class RemovalCountdown : public CaptureTest, public ::testing::WithParamInterface<CountdownCase> {};

TEST_P(RemovalCountdown, GivesFiveSecondsToTakeTheDocumentAway) {
    const CountdownCase& c = GetParam();
    ReaderSession::Settings().TwoSided = c.twoSided;
    InstallOne(Record("VISIBLE_DOC"));
    rd::CaptureScript script;
    script.presentAfterLocate = c.present;
    Script(script);

    EXPECT_EQ(cycle.Run(job, c.repeat), 0u);

    Strings expected;
    for (int left = 5; left > 5 - c.turns; --left)
        expected.push_back("(" + std::to_string(left) + ") Seconds left to Remove document before reprocessing...");
    expected.insert(expected.end(), {"Waiting for document...", "Processing document..."});
    EXPECT_EQ(job.statusTexts, expected);
    const size_t locates = !c.repeat ? 0 : size_t(c.turns + (c.turns < 5 ? 1 : 0));
    EXPECT_EQ(rd::CallsNamed("ZyrReader_LocateDocumentTwoSidedEx").size(), locates);
    EXPECT_EQ(rd::CallsNamed("ZyrReader_InsertDocument").size(), c.inserted ? 1u : 0u);
    EXPECT_EQ(std::count(sleeps.begin(), sleeps.end(), 1000), c.turns) << "a second per line";
}

INSTANTIATE_TEST_SUITE_P(Passes, RemovalCountdown,
                         ::testing::Values(CountdownCase{"first_pass_does_not_wait", false, {1}, 0, true, true},
                                           CountdownCase{"taken_away_after_two_turns", true, {1, 1, 0}, 2, false, false},
                                           CountdownCase{"never_taken_away", true, {1}, 5, false, false},
                                           CountdownCase{"two_sided_left_lying_is_drawn_in", true, {1}, 5, true, true}),
                         [](const auto& info) { return std::string(info.param.name); });

// Location or detection failing ends the cycle with the code, before any snapshot; post-processing
// failing ends it quietly, and on a two-sided reader the sides failing skips only the sides.
TEST_F(CaptureTest, ReaderErrorsEndTheCycle) {
    InstallOne(Record("VISIBLE_DOC"));
    const std::tuple<const char*, int32_t, bool> failures[] = {{"LocateDocumentTwoSidedEx", ZYR_ERR_DEVICE, true},
                                                                {"CameraDetectDocumentTwoSidedEx", ZYR_ERR_CANCELLED, false}};
    for (const auto& [function, code, repeat] : failures) {
        rd::ClearCalls();
        rd::CaptureScript script;
        script.presentAfterLocate = {1};
        rd::SetCapture(script);
        rd::QueueResult(std::string("ZyrReader_") + function, code);
        EXPECT_EQ(cycle.Run(job, repeat), uint32_t(code));
        const Strings calls = CaptureCalls();
        EXPECT_EQ(Strings(calls.end() - 2, calls.end()), (Strings{function, "DocumentProcessingComplete"}));
        EXPECT_TRUE(rd::CallsNamed("ZyrReader_CameraTakeSnapshot").empty());
    }
    Script(rd::CaptureScript{});
    rd::ClearCalls();
    rd::QueueResult("ZyrReader_ImagePostProcessImage", ZYR_ERR_NO_DOCUMENT);
    clock = {1000, 1500};
    EXPECT_EQ(cycle.Run(job, false), 0u);
    EXPECT_EQ(CaptureCalls(), (Strings{"CameraDetectDocumentTwoSidedEx", "CameraTakeSnapshot", "ImagePostProcessImage",
                                       "DestroyCachedObject", "DocumentProcessingComplete"}));
    EXPECT_TRUE(saves.empty());
    EXPECT_EQ(session.imageNumber.load(), 0);
    EXPECT_EQ(session.stats.totalImageProcessMs.load(), 0u) << "only successful post-processing is timed";

    ReaderSession::Settings().TwoSided = 1; // the sides failing skips only the sides
    rd::QueueResult("ZyrReader_ImagePostProcessImageTwoSided", ZYR_ERR_NO_DOCUMENT);
    EXPECT_EQ(cycle.Run(job, false), 0u);
    EXPECT_TRUE(rd::CallsNamed("ZyrReader_ImagePluginDecode").empty());
    EXPECT_EQ(session.imageNumber.load(), 1);
    EXPECT_EQ(CaptureCalls().back(), "DocumentProcessingComplete");
    EXPECT_TRUE(view.messages.empty());
    EXPECT_EQ(rd::LiveObjects(), 0);
}

TEST_F(CaptureTest, WithoutUsableSettingsEveryCycleComplainsAndStopDoesNotHelp) {
    // The check passes (the second plug-in has settings), but the first selected has none.
    Install({Plugin("A", {}), Plugin("B", {Record("VISIBLE_DOC")})});
    ASSERT_TRUE(cycle.CheckImageSettings());
    job.stopped = true;
    view.onMessage = [&] { // after the third complaint the first plug-in gets settings, so the loop can end
        if (view.messages.size() == 3) {
            session.imageSettings.MapPlugin(session.plugins.Entries()[0].handle, session.imageSettings.At(0));
            rd::QueueResult("ZyrReader_CameraDetectDocumentTwoSidedEx", ZYR_ERR_CANCELLED);
        }
    };
    EXPECT_EQ(cycle.CaptureMultiJob(job), uint32_t(ZYR_ERR_CANCELLED));
    const std::pair<MessageKind, std::string> complaint = {
        MessageKind::Exclamation, "The selected plugins either have no image settings, or different image settings. "
                                  "Unable to carry out image capture"};
    EXPECT_EQ(view.messages, Messages(3, complaint));
    EXPECT_EQ(rd::CallsNamed("ZyrReader_CameraDetectDocumentTwoSidedEx").size(), 1u)
        << "the reader is called only once settings exist";
    EXPECT_EQ(view.sets.size(), 3u) << "views are emptied only by a cycle that has settings";
}

} // namespace
