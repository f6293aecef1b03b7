// Capture against the reader double: the settings check, the call sequence and arguments of a
// cycle on one- and two-sided readers, the option word, the visible override, the removal
// countdown, errors, timing and the jobs.
#include "CaptureCycle.h"
#include "CaptureOptions.h"
#include "CaptureSettingsCheck.h"
#include "FakeView.h"
#include "JobContext.h"
#include "ReaderDouble.h"
#include "TempFolder.h"
#include "TestSession.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <deque>
#include <future>
#include <ostream>

namespace rd = readerdouble;

namespace {

class RecordingJob : public JobContext {
public:
    bool IsStopped() const override { return stopped; }
    void SetStatusText(const std::string& text) override { statusTexts.push_back(text); }
    bool stopped = false;
    std::vector<std::string> statusTexts;
};

// FakeView that also records which picture each image went to, and runs a hook on messages.
class CaptureView : public FakeView {
public:
    void SetPictureImage(PictureId picture, std::shared_ptr<const ZyrImage> image) override {
        sets.emplace_back(picture, image.get());
        FakeView::SetPictureImage(picture, std::move(image));
    }
    // The session's PNG writer as a recorder of picture and path.
    TestSession::PngSaver Saver() {
        return [this](PictureId picture, const ZyrImage&, const std::string& path) {
            savedPngs.push_back(path);
            saves.emplace_back(picture, path);
        };
    }
    void ShowMessage(MessageKind kind, const std::string& text) override {
        FakeView::ShowMessage(kind, text);
        if (onMessage) {
            onMessage();
        }
    }
    std::vector<std::pair<PictureId, const ZyrImage*>> sets;
    std::vector<std::pair<PictureId, std::string>> saves;
    std::function<void()> onMessage;
};

ZyrImageSettings Record(const char* image, uint32_t lightMask = ZYR_LIGHT_VISIBLE) {
    ZyrImageSettings r{};
    std::snprintf(r.ImageName, sizeof r.ImageName, "%s", image);
    std::snprintf(r.LightName, sizeof r.LightName, "%s",
                  lightMask == ZYR_LIGHT_IR ? "IMAGE_IR" : "IMAGE_VISIBLE");
    r.LightMask = lightMask;
    r.ProcessingMode = 0;
    return r;
}

rd::PluginScript Plugin(const std::string& name, std::vector<ZyrImageSettings> settings) {
    rd::PluginScript p("KVDECODE_" + name + ".so");
    for (const ZyrImageSettings& s : settings)
        p.requiredImages += (p.requiredImages.empty() ? "" : ",") + std::string(s.ImageName);
    p.imageSettings = std::move(settings);
    return p;
}

const void* PointerIn(const std::string& arg) {
    void* p = nullptr;
    return std::sscanf(arg.c_str(), "ptr(%p)", &p) == 1 ? p : nullptr;
}

std::vector<std::string> CaptureCalls() {
    std::vector<std::string> names;
    for (const std::string& name : rd::CallNames())
        if (name.find("Plugin") == std::string::npos || name == "ZyrReader_ImagePluginDecode")
            names.push_back(name);
    return names;
}

class CaptureTest : public ::testing::Test {
protected:
    void SetUp() override {
        rd::Reset();
        ReaderSession::Reset();
        ZyrReaderSettings& reader = ReaderSession::Settings();
        std::snprintf(reader.PluginFolder, ZYR_PATH_SIZE, "%s", plugins.path().c_str());
        std::snprintf(reader.ApplicationFolder, ZYR_PATH_SIZE, "%s", appFolder.path().c_str());
        reader.VisibleParameters.DetectThreshold = 60;
        reader.VisibleParameters.CaptureResolution = 600;
        reader.VisibleParameters.Binning = 2;
        reader.DarkObjectValue = 40;
        session.savePng = view.Saver();
        cycle.sleep = [this](int ms) { sleeps.push_back(ms); };
        cycle.clockMs = [this] {
            const int64_t now = clock.empty() ? 0 : clock.front();
            if (!clock.empty())
                clock.pop_front();
            return now;
        };
        rd::CaptureScript script;
        script.snapshots = {rd::MakeImage(8, 6, ZYR_PIXEL_GREY8, 1)};
        script.processed = {rd::MakeImage(4, 3, ZYR_PIXEL_GREY8, 2)};
        script.sides = {rd::MakeImage(2, 2, ZYR_PIXEL_GREY8, 3), rd::MakeImage(2, 2, ZYR_PIXEL_GREY8, 4)};
        rd::SetCapture(script);
    }
    void TearDown() override { ReaderSession::Reset(); }

    void Install(std::vector<rd::PluginScript> scripts, std::vector<bool> selected = {}) {
        for (rd::PluginScript& script : scripts) {
            plugins.write(script.fileName, "");
            rd::AddPlugin(script);
        }
        session.LoadPlugins();
        for (size_t i = 0; i < session.plugins.Entries().size(); ++i)
            session.plugins.SetSelected(i, selected.empty() || selected[i]);
        rd::ClearCalls();
    }
    void InstallOne(const ZyrImageSettings& record) { Install({Plugin("A", {record})}); }
    ZyrImageSettings& PluginRecord() {
        return *session.imageSettings.ForPlugin(session.plugins.Entries()[0].handle);
    }

    TempFolder plugins;
    TempFolder appFolder;
    CaptureView view;
    TestSession session{view};
    CaptureCycle cycle{session};
    RecordingJob job;
    std::vector<int> sleeps;
    std::deque<int64_t> clock;
};

// --- The settings check --------------------------------------------------------------------

struct CheckCase {
    const char* name;
    std::vector<std::vector<const char*>> plugins; // image names each plug-in needs (none = no settings)
    std::vector<bool> selected;
    bool passes;
    const char* chosen; // image name of the record a cycle takes; null = none
};

void PrintTo(const CheckCase& c, std::ostream* out) {
    *out << c.name;
}

class CaptureSettings : public CaptureTest, public ::testing::WithParamInterface<CheckCase> {};

TEST_P(CaptureSettings, CheckAndChoice) {
    const CheckCase& c = GetParam();
    std::vector<rd::PluginScript> scripts;
    char name[] = "A";
    for (const auto& images : c.plugins) {
        std::vector<ZyrImageSettings> records;
        for (const char* image : images)
            records.push_back(Record(image));
        scripts.push_back(Plugin(name, records));
        ++name[0];
    }
    Install(scripts, c.selected);
    EXPECT_EQ(cycle.CheckImageSettings(), c.passes);
    if (c.passes) {
        EXPECT_TRUE(view.messages.empty());
    } else {
        ASSERT_EQ(view.messages.size(), 1u);
        EXPECT_EQ(view.messages[0].first, MessageKind::Exclamation);
        EXPECT_EQ(view.messages[0].second,
                  "All selected plugins must use the same image settings for image capture");
    }
    const ZyrImageSettings* chosen = CaptureSettingsCheck::Choose(session.plugins, session.imageSettings);
    if (c.chosen == nullptr)
        EXPECT_EQ(chosen, nullptr);
    else
        EXPECT_STREQ(chosen ? chosen->ImageName : "(none)", c.chosen);
    EXPECT_TRUE(rd::CallsNamed("ZyrReader_CameraDetectDocumentTwoSidedEx").empty())
        << "a check calls no reader";
}

INSTANTIATE_TEST_SUITE_P(
    Selections, CaptureSettings,
    ::testing::Values(
        CheckCase{"nothing_selected", {{"VISIBLE_DOC"}}, {false}, false, "VISIBLE_DOC"},
        CheckCase{"one_plugin", {{"VISIBLE_DOC"}}, {}, true, "VISIBLE_DOC"},
        CheckCase{"two_needing_the_same_image", {{"VISIBLE_DOC"}, {"VISIBLE_DOC"}}, {}, true, "VISIBLE_DOC"},
        CheckCase{"two_needing_different_images", {{"IR_DOC"}, {"VISIBLE_DOC"}}, {}, false, "IR_DOC"},
        CheckCase{"names_differing_only_in_case", {{"DOC"}, {"doc"}}, {}, false, "DOC"},
        CheckCase{"one_without_settings_after", {{"VISIBLE_DOC"}, {}}, {}, true, "VISIBLE_DOC"},
        CheckCase{"first_selected_without_settings", {{}, {"VISIBLE_DOC"}}, {}, true, nullptr},
        CheckCase{"none_with_settings", {{}, {}}, {}, false, nullptr},
        CheckCase{
            "unselected_one_differs", {{"VISIBLE_DOC"}, {"IR_DOC"}}, {true, false}, true, "VISIBLE_DOC"}),
    [](const ::testing::TestParamInfo<CheckCase>& info) { return info.param.name; });

// --- One cycle ------------------------------------------------------------------------------

TEST_F(CaptureTest, OneSidedCycleCallsTheReaderInOrderWithItsArguments) {
    ZyrImageSettings record = Record("VISIBLE_DOC");
    record.Colour = 1;
    // The catalogue gives the record the reader's camera block for its light.
    ReaderSession::Settings().VisibleParameters.OutputDpi = 300;
    ReaderSession::Settings().VisibleParameters.OutputScale = 0.5f;
    InstallOne(record);
    session.useVisibleImage = false;
    clock = {1000, 1037};

    EXPECT_EQ(cycle.Run(job, false), 0u);

    EXPECT_EQ(CaptureCalls(), (std::vector<std::string>{
                                  "ZyrReader_CameraDetectDocumentTwoSidedEx", "ZyrReader_CameraTakeSnapshot",
                                  "ZyrReader_ImagePostProcessImage", "ZyrReader_ImagePluginDecode",
                                  "ZyrReader_DestroyCachedObject", "ZyrReader_DestroyCachedObject",
                                  "ZyrReader_DocumentProcessingComplete"}));
    ZyrReaderSettings& reader = ReaderSession::Settings();
    const rd::Call detect = rd::CallsNamed("ZyrReader_CameraDetectDocumentTwoSidedEx").at(0);
    EXPECT_EQ(detect.args, (std::vector<std::string>{"true",
                                                     "0",
                                                     "0",
                                                     detect.args[3],
                                                     detect.args[4],
                                                     rd::Ptr(&reader),
                                                     rd::Ptr(&reader.Detect),
                                                     rd::Ptr(&reader.Locate),
                                                     "0",
                                                     "0",
                                                     "0",
                                                     "0",
                                                     "0",
                                                     rd::Ptr(&reader.Process),
                                                     rd::Ptr(&reader.Side),
                                                     rd::Ptr(&reader.Feed),
                                                     "0",
                                                     "null",
                                                     "true",
                                                     "true",
                                                     detect.args[20]}));
    const rd::Call snapshot = rd::CallsNamed("ZyrReader_CameraTakeSnapshot").at(0);
    EXPECT_EQ(snapshot.args,
              (std::vector<std::string>{"true", "1", "15", rd::Ptr(&PluginRecord().Camera), rd::Ptr(&reader),
                                        "callback", snapshot.args[6], "0", "null"}));
    const rd::Call process = rd::CallsNamed("ZyrReader_ImagePostProcessImage").at(0);
    const uint32_t options = ZYR_OPT_LOCATE;
    EXPECT_EQ(process.args, (std::vector<std::string>{
                                "true", process.args[1], "1", "300", "true", std::to_string(options), "0",
                                "0", "0.5", rd::Ptr(&reader), rd::Ptr(&reader.Locate), detect.args[3],
                                "callback", process.args[13], "0", "null", rd::Ptr(&reader.Process)}));
    EXPECT_NE(process.args[1], "null") << "the snapshot the callback delivered is post-processed";

    // The processed image is copied into the session, which shows, saves by parity and decodes
    // its copy as side 0; the library's images are released.
    const rd::Call decode = rd::CallsNamed("ZyrReader_ImagePluginDecode").at(0);
    const std::vector<rd::Call> destroyed = rd::CallsNamed("ZyrReader_DestroyCachedObject");
    ASSERT_EQ(destroyed.size(), 2u);
    EXPECT_EQ(destroyed.at(0).args[0], process.args[1]) << "the snapshot first";
    EXPECT_EQ(decode.args[2], rd::Ptr(session.Image(PictureId::Main).get())) << "the session's copy is decoded";
    EXPECT_NE(destroyed.at(1).args[0], decode.args[2]);
    ASSERT_EQ(view.sets.size(), 4u);
    for (size_t i = 0; i < 3; ++i)
        EXPECT_EQ(view.sets[i].second, nullptr) << "all three views are emptied first";
    EXPECT_EQ(view.sets[3].first, PictureId::Main);
    EXPECT_EQ(view.sets[3].second, session.Image(PictureId::Main).get()) << "the session's copy is shown";
    ASSERT_FALSE(view.saves.empty());
    EXPECT_EQ(view.saves[0], std::make_pair(PictureId::Main, appFolder.path() + "/Glyphor_1.png"));
    EXPECT_EQ(session.imageNumber.load(), 1);
    EXPECT_EQ(session.decode.TakeNextRow()->results, "[NO DATA]") << "side 0 has no side in its row";
    EXPECT_EQ(job.statusTexts,
              (std::vector<std::string>{"Waiting for document...", "Processing document..."}));
    EXPECT_EQ(sleeps, (std::vector<int>{500}));
    EXPECT_EQ(session.stats.lastImageProcessMs.load(), 37u);
    EXPECT_EQ(session.stats.totalImageProcessMs.load(), 37u);
    EXPECT_EQ(rd::LiveObjects(), 0);
}

struct TwoSidedCase {
    const char* name;
    bool crop;
};

void PrintTo(const TwoSidedCase& c, std::ostream* out) {
    *out << c.name;
}

class TwoSidedCapture : public CaptureTest, public ::testing::WithParamInterface<TwoSidedCase> {};

TEST_P(TwoSidedCapture, DecodesBothSidesAndShowsThemOnlyWithCrop) {
    const bool crop = GetParam().crop;
    ReaderSession::Settings().TwoSided = 1;
    ZyrImageSettings record = Record("VISIBLE_DOC");
    record.CropWidth = 1; // replaced by "Crop" through the visible override
    InstallOne(record);
    session.crop = crop;
    session.imageNumber = 6;

    EXPECT_EQ(cycle.Run(job, false), 0u);

    EXPECT_EQ(CaptureCalls(), (std::vector<std::string>{
                                  "ZyrReader_InsertDocument", "ZyrReader_CameraDetectDocumentTwoSidedEx",
                                  "ZyrReader_CameraTakeSnapshot", "ZyrReader_ImagePostProcessImage",
                                  "ZyrReader_ImagePostProcessImageTwoSided", "ZyrReader_ImagePluginDecode",
                                  "ZyrReader_ImagePluginDecode", "ZyrReader_DestroyCachedObject",
                                  "ZyrReader_DestroyCachedObject", "ZyrReader_DestroyCachedObject",
                                  "ZyrReader_DestroyCachedObject", "ZyrReader_DocumentProcessingComplete"}))
        << "the whole processed image is not decoded on a two-sided reader";
    const uint32_t single = ZYR_OPT_LOCATE | (crop ? ZYR_OPT_CROP : 0u);
    EXPECT_EQ(rd::CallsNamed("ZyrReader_ImagePostProcessImage").at(0).args[5], std::to_string(single));
    const rd::Call both = rd::CallsNamed("ZyrReader_ImagePostProcessImageTwoSided").at(0);
    EXPECT_EQ(both.args[5], std::to_string(single | ZYR_OPT_TWO_SIDED));
    EXPECT_NE(both.args[11], both.args[12]) << "both location records";
    EXPECT_EQ(view.sideViews, std::vector<bool>{crop});

    // Side 1 is the first image the library delivers, side 2 the second.
    const std::vector<rd::Call> decodes = rd::CallsNamed("ZyrReader_ImagePluginDecode");
    std::vector<std::string> rows;
    while (auto row = session.decode.TakeNextRow())
        rows.push_back(row->results);
    EXPECT_EQ(rows, (std::vector<std::string>{"Side Left: [NO DATA]", "Side Right: [NO DATA]"}));
    // Each side is decoded from the session's copy (the one shown, with crop); the library's side
    // images are released.
    const std::vector<rd::Call> destroyed = rd::CallsNamed("ZyrReader_DestroyCachedObject");
    ASSERT_EQ(decodes.size(), 2u);
    for (size_t side = 0; side < 2; ++side) {
        EXPECT_NE(destroyed.at(side).args[0], decodes[side].args[2]) << side;
        if (crop) {
            const PictureId view = side == 0 ? PictureId::Side1 : PictureId::Side2;
            EXPECT_EQ(decodes[side].args[2], rd::Ptr(session.Image(view).get())) << side;
        }
    }
    EXPECT_EQ(session.imageNumber.load(), 9) << "one for the capture, one per side";

    std::vector<std::pair<PictureId, std::string>> expectedSaves = {
        {PictureId::Main, appFolder.path() + "/Glyphor_1.png"}};
    if (crop) {
        expectedSaves.emplace_back(PictureId::Side1, appFolder.path() + "/GlyphorSide1_1.png");
        expectedSaves.emplace_back(PictureId::Side2, appFolder.path() + "/GlyphorSide2_1.png");
    }
    std::vector<std::pair<PictureId, std::string>> captureSaves;
    for (const auto& save : view.saves)
        if (save.second.find("/Glyphor") != std::string::npos)
            captureSaves.push_back(save);
    EXPECT_EQ(captureSaves, expectedSaves);
    EXPECT_EQ(sleeps, crop ? (std::vector<int>{500, 500, 500}) : (std::vector<int>{500, 500}));
    EXPECT_EQ(rd::LiveObjects(), 0);
}

INSTANTIATE_TEST_SUITE_P(Crop, TwoSidedCapture,
                         ::testing::Values(TwoSidedCase{"with_crop", true},
                                           TwoSidedCase{"without_crop", false}),
                         [](const ::testing::TestParamInfo<TwoSidedCase>& info) { return info.param.name; });

TEST_F(CaptureTest, TwoSidedPostProcessingErrorSkipsTheSides) {
    ReaderSession::Settings().TwoSided = 1;
    InstallOne(Record("VISIBLE_DOC"));
    rd::QueueResult("ZyrReader_ImagePostProcessImageTwoSided", ZYR_ERR_NO_DOCUMENT);
    EXPECT_EQ(cycle.Run(job, false), 0u);
    EXPECT_TRUE(rd::CallsNamed("ZyrReader_ImagePluginDecode").empty());
    EXPECT_EQ(session.imageNumber.load(), 1);
    EXPECT_EQ(rd::CallNames().back(), "ZyrReader_DocumentProcessingComplete");
    EXPECT_EQ(rd::LiveObjects(), 0);
}

// --- The option word and the record used ----------------------------------------------------

struct OptionCase {
    const char* name;
    std::function<void(ZyrImageSettings&, ZyrReaderSettings&)> set;
    bool crop;
    uint32_t expected;
};

void PrintTo(const OptionCase& c, std::ostream* out) {
    *out << c.name;
}

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
    ::testing::Values(OptionCase{"nothing", [](R&, S&) {}, false, 0},
                      OptionCase{"mode_zero_locates", [](R& r, S&) { r.ProcessingMode = 0; }, false, 0x1},
                      OptionCase{"mode_positive_locates", [](R& r, S&) { r.ProcessingMode = 7; }, false, 0x1},
                      OptionCase{"deskew", [](R& r, S&) { r.Deskew = 1; }, false, 0x2},
                      OptionCase{"deskew_by_the_camera",
                                 [](R& r, S&) { r.Deskew = 1, r.Camera.HardwareDeskew = 1; }, false, 0},
                      OptionCase{"normalise", [](R& r, S&) { r.Normalise = 1; }, false, 0x4},
                      OptionCase{"crop_width", [](R& r, S&) { r.CropWidth = 1; }, false, 0x8},
                      OptionCase{"crop_height", [](R& r, S&) { r.CropHeight = 9; }, false, 0x10},
                      OptionCase{"crop_box_overrides_the_bytes", [](R&, S&) {}, true, 0x18},
                      OptionCase{"crop_box_with_width_byte", [](R& r, S&) { r.CropWidth = 1; }, true, 0x18},
                      OptionCase{"extra", [](R& r, S&) { r.ExtraProcessing = 1; }, false, 0x20},
                      OptionCase{"extra_from_the_reader", [](R&, S& s) { s.ExtraProcessing = 1; }, false,
                                 0x20},
                      OptionCase{"sharpen", [](R& r, S&) { r.Sharpen = 1; }, false, 0x80},
                      OptionCase{"rotate_90", [](R& r, S&) { r.Rotate90 = 1; }, false, 0x100},
                      OptionCase{"rotate_180", [](R& r, S&) { r.Rotate180 = 1; }, false, 0x200},
                      OptionCase{"mirror_h", [](R& r, S&) { r.MirrorHorizontal = 1; }, false, 0x400},
                      OptionCase{"mirror_v", [](R& r, S&) { r.MirrorVertical = 1; }, false, 0x800},
                      OptionCase{"greyscale", [](R& r, S&) { r.Greyscale = 1; }, false, 0x1000},
                      OptionCase{"colour_and_border_are_no_bits",
                                 [](R& r, S&) { r.Colour = 1, r.UseBorder = 1; }, false, 0},
                      OptionCase{"everything",
                                 [](R& r, S&) {
                                     r.ProcessingMode = 0;
                                     r.Deskew = r.Normalise = r.CropWidth = r.CropHeight = r.ExtraProcessing =
                                         r.Sharpen = 1;
                                     r.Rotate90 = r.Rotate180 = r.MirrorHorizontal = r.MirrorVertical =
                                         r.Greyscale = 1;
                                 },
                                 false, 0x1FBF}),
    [](const ::testing::TestParamInfo<OptionCase>& info) { return info.param.name; });

struct OverrideCase {
    const char* name;
    bool visible, crop, dark;
    uint8_t detectionFlag;
    bool readerExtra;
    bool copied;         // the snapshot gets a copy, not the plug-in's record
    uint32_t resolution; // record 124 seen by the snapshot
    uint8_t binning;     // record 130
    float detection;     // record 104
    uint32_t options;    // post-processing option word
};

void PrintTo(const OverrideCase& c, std::ostream* out) {
    *out << c.name;
}

class VisibleOverride : public CaptureTest, public ::testing::WithParamInterface<OverrideCase> {};

TEST_P(VisibleOverride, DecidesTheRecordTheSnapshotSees) {
    const OverrideCase& c = GetParam();
    ZyrImageSettings record = Record("IR_DOC", ZYR_LIGHT_IR);
    record.CropHeight = 1;
    InstallOne(record);
    PluginRecord().Camera.DetectThreshold = 99;
    ZyrReaderSettings& reader = ReaderSession::Settings();
    reader.ExtraProcessing = c.readerExtra;
    reader.CommonCaptureResolution = 400;
    reader.CommonBinning = 1;
    PluginRecord().Camera.CaptureResolution = 400; // the common values the catalogue wrote
    PluginRecord().Camera.Binning = 1;
    session.useVisibleImage = c.visible;
    session.crop = c.crop;
    session.darkObjectDetect = c.dark ? 1 : 0;
    rd::CaptureScript script;
    script.snapshots = {rd::MakeImage(8, 6, ZYR_PIXEL_GREY8, 1)};
    script.processed = {rd::MakeImage(4, 3, ZYR_PIXEL_GREY8, 2)};
    script.detectionFlag = c.detectionFlag;
    rd::SetCapture(script);

    ZyrCameraParameters seen{};
    const void* seenAt = nullptr;
    rd::SetHook("ZyrReader_CameraTakeSnapshot", [&] {
        seenAt = PointerIn(rd::CallsNamed("ZyrReader_CameraTakeSnapshot").back().args[3]);
        std::memcpy(&seen, seenAt, sizeof seen);
    });
    EXPECT_EQ(cycle.Run(job, false), 0u);

    ZyrImageSettings& shared = PluginRecord();
    EXPECT_EQ(seenAt != &shared.Camera, c.copied);
    EXPECT_EQ(seen.CaptureResolution, c.resolution);
    EXPECT_EQ(seen.Binning, c.binning);
    EXPECT_FLOAT_EQ(seen.DetectThreshold, c.detection);
    EXPECT_FLOAT_EQ(shared.Camera.DetectThreshold, c.copied ? 99 : c.detection)
        << "without a copy the plug-in's own record takes the detection value";
    EXPECT_EQ(shared.Camera.CaptureResolution, 400u) << "the override never touches the plug-in's record";
    EXPECT_EQ(rd::CallsNamed("ZyrReader_ImagePostProcessImage").at(0).args[5], std::to_string(c.options));
}

constexpr uint32_t L = ZYR_OPT_LOCATE;

INSTANTIATE_TEST_SUITE_P(Checkboxes, VisibleOverride,
                         ::testing::Values(OverrideCase{"plain", false, false, false, 0, false, false, 400, 1,
                                                        60, L | ZYR_OPT_CROP_HEIGHT},
                                           OverrideCase{"visible", true, false, false, 0, false, true, 600, 2,
                                                        60, L},
                                           OverrideCase{"visible_with_crop", true, true, false, 0, false,
                                                        true, 600, 2, 60, L | ZYR_OPT_CROP},
                                           OverrideCase{"visible_reader_extra", true, false, false, 0, true,
                                                        true, 600, 2, 60, L | ZYR_OPT_EXTRA},
                                           OverrideCase{"visible_but_found_dark", true, false, false, 1,
                                                        false, false, 400, 1, 60, L | ZYR_OPT_CROP_HEIGHT},
                                           OverrideCase{"dark_found_dark", false, false, true, 1, false,
                                                        false, 400, 1, 40, L | ZYR_OPT_CROP_HEIGHT},
                                           OverrideCase{"dark_not_found_dark", false, false, true, 0, false,
                                                        false, 400, 1, 60, L | ZYR_OPT_CROP_HEIGHT},
                                           OverrideCase{"visible_dark_found_dark", true, true, true, 1, false,
                                                        false, 400, 1, 40, L | ZYR_OPT_CROP}),
                         [](const ::testing::TestParamInfo<OverrideCase>& info) { return info.param.name; });

TEST_F(CaptureTest, BorderGoesToPostProcessingOnlyWhenAskedFor) {
    InstallOne(Record("VISIBLE_DOC"));
    PluginRecord().Camera.BorderPixels = 12;
    session.useVisibleImage = false;
    ASSERT_EQ(cycle.Run(job, false), 0u);
    PluginRecord().UseBorder = 1;
    ASSERT_EQ(cycle.Run(job, false), 0u);
    const std::vector<rd::Call> calls = rd::CallsNamed("ZyrReader_ImagePostProcessImage");
    EXPECT_EQ(calls.at(0).args[7], "0");
    EXPECT_EQ(calls.at(1).args[7], "12");
}

// --- Repeat passes, errors, timing ------------------------------------------------------------

struct CountdownCase {
    const char* name;
    bool repeat;
    std::vector<uint8_t> present; // after each location call
    std::vector<std::string> countdown;
    bool twoSided;
    bool inserted;
};

void PrintTo(const CountdownCase& c, std::ostream* out) {
    *out << c.name;
}

class RemovalCountdown : public CaptureTest, public ::testing::WithParamInterface<CountdownCase> {};

TEST_P(RemovalCountdown, GivesFiveSecondsToTakeTheDocumentAway) {
    const CountdownCase& c = GetParam();
    ReaderSession::Settings().TwoSided = c.twoSided;
    InstallOne(Record("VISIBLE_DOC"));
    rd::CaptureScript script;
    script.presentAfterLocate = c.present;
    script.processed = {rd::MakeImage(4, 3, ZYR_PIXEL_GREY8, 2)};
    rd::SetCapture(script);

    EXPECT_EQ(cycle.Run(job, c.repeat), 0u);

    std::vector<std::string> expected = c.countdown;
    expected.push_back("Waiting for document...");
    expected.push_back("Processing document...");
    EXPECT_EQ(job.statusTexts, expected);
    const size_t locates = !c.repeat ? 0 : c.countdown.size() + (c.countdown.size() < 5 ? 1 : 0);
    EXPECT_EQ(rd::CallsNamed("ZyrReader_LocateDocumentTwoSidedEx").size(), locates);
    for (const rd::Call& call : rd::CallsNamed("ZyrReader_LocateDocumentTwoSidedEx"))
        EXPECT_EQ(call.args[8], "true") << "both sides";
    EXPECT_EQ(rd::CallsNamed("ZyrReader_InsertDocument").size(), c.inserted ? 1u : 0u);
    std::vector<int> expectedSleeps;
    if (c.twoSided)
        expectedSleeps.push_back(500);
    for (size_t i = 0; i < locates; ++i) {
        expectedSleeps.push_back(100);
        if (i < c.countdown.size())
            expectedSleeps.push_back(1000);
    }
    expectedSleeps.push_back(500);
    EXPECT_EQ(sleeps, expectedSleeps);
}

const std::vector<std::string> kAllFive = {"(5) Seconds left to Remove document before reprocessing...",
                                           "(4) Seconds left to Remove document before reprocessing...",
                                           "(3) Seconds left to Remove document before reprocessing...",
                                           "(2) Seconds left to Remove document before reprocessing...",
                                           "(1) Seconds left to Remove document before reprocessing..."};

INSTANTIATE_TEST_SUITE_P(
    Passes, RemovalCountdown,
    ::testing::Values(
        CountdownCase{"first_pass_does_not_wait", false, {1}, {}, false, false},
        CountdownCase{"taken_away_at_once", true, {0}, {}, false, false},
        CountdownCase{
            "taken_away_after_two_turns", true, {1, 1, 0}, {kAllFive[0], kAllFive[1]}, false, false},
        CountdownCase{"never_taken_away", true, {1}, kAllFive, false, false},
        CountdownCase{"two_sided_first_pass_inserts", false, {1}, {}, true, true},
        CountdownCase{"two_sided_taken_away", true, {1, 0}, {kAllFive[0]}, true, false},
        CountdownCase{"two_sided_left_lying_is_drawn_in", true, {1}, kAllFive, true, true}),
    [](const ::testing::TestParamInfo<CountdownCase>& info) { return info.param.name; });

struct ErrorCase {
    const char* name;
    const char* function;
    int32_t code;
    bool repeat;
};

void PrintTo(const ErrorCase& c, std::ostream* out) {
    *out << c.name;
}

class ReaderErrors : public CaptureTest, public ::testing::WithParamInterface<ErrorCase> {};

TEST_P(ReaderErrors, EndTheCycleWithTheCode) {
    const ErrorCase& c = GetParam();
    InstallOne(Record("VISIBLE_DOC"));
    rd::CaptureScript script;
    script.presentAfterLocate = {1};
    rd::SetCapture(script);
    rd::QueueResult(c.function, c.code);
    EXPECT_EQ(cycle.Run(job, c.repeat), uint32_t(c.code));
    const std::vector<std::string> calls = CaptureCalls();
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[calls.size() - 2], c.function);
    EXPECT_EQ(calls.back(), "ZyrReader_DocumentProcessingComplete");
    EXPECT_TRUE(rd::CallsNamed("ZyrReader_CameraTakeSnapshot").empty());
    EXPECT_TRUE(view.messages.empty()) << "the code is returned, not shown";
    EXPECT_EQ(session.imageNumber.load(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Calls, ReaderErrors,
    ::testing::Values(
        ErrorCase{"location", "ZyrReader_LocateDocumentTwoSidedEx", ZYR_ERR_DEVICE, true},
        ErrorCase{"location_cancelled", "ZyrReader_LocateDocumentTwoSidedEx", ZYR_ERR_CANCELLED, true},
        ErrorCase{"detection", "ZyrReader_CameraDetectDocumentTwoSidedEx", ZYR_ERR_DEVICE, false},
        ErrorCase{"detection_cancelled", "ZyrReader_CameraDetectDocumentTwoSidedEx", ZYR_ERR_CANCELLED,
                  true}),
    [](const ::testing::TestParamInfo<ErrorCase>& info) { return info.param.name; });

TEST_F(CaptureTest, APostProcessingErrorEndsTheCycleQuietly) {
    InstallOne(Record("VISIBLE_DOC"));
    rd::QueueResult("ZyrReader_ImagePostProcessImage", ZYR_ERR_NO_DOCUMENT);
    clock = {1000, 1500};
    EXPECT_EQ(cycle.Run(job, false), 0u);
    EXPECT_EQ(CaptureCalls(), (std::vector<std::string>{
                                  "ZyrReader_CameraDetectDocumentTwoSidedEx", "ZyrReader_CameraTakeSnapshot",
                                  "ZyrReader_ImagePostProcessImage", "ZyrReader_DestroyCachedObject",
                                  "ZyrReader_DocumentProcessingComplete"}));
    EXPECT_TRUE(view.messages.empty());
    EXPECT_TRUE(view.saves.empty());
    EXPECT_EQ(session.imageNumber.load(), 0);
    EXPECT_EQ(session.stats.totalImageProcessMs.load(), 0u) << "only successful post-processing is timed";
    EXPECT_EQ(rd::LiveObjects(), 0);
}

TEST_F(CaptureTest, PostProcessingTimeAddsUpAndTheFileNameAlternates) {
    InstallOne(Record("VISIBLE_DOC"));
    clock = {100, 137, 500, 510, 900, 905};
    for (int i = 0; i < 3; ++i)
        ASSERT_EQ(cycle.Run(job, false), 0u);
    EXPECT_EQ(session.stats.lastImageProcessMs.load(), 5u);
    EXPECT_EQ(session.stats.totalImageProcessMs.load(), 52u);
    std::vector<std::string> names;
    for (const auto& save : view.saves)
        if (save.second.find("/Glyphor_") != std::string::npos)
            names.push_back(save.second.substr(appFolder.path().size()));
    EXPECT_EQ(names, (std::vector<std::string>{"/Glyphor_1.png", "/Glyphor_0.png", "/Glyphor_1.png"}));
}

// --- Jobs -----------------------------------------------------------------------------------

TEST_F(CaptureTest, CaptureJobRunsOneCycleAndRedraws) {
    InstallOne(Record("VISIBLE_DOC"));
    EXPECT_EQ(cycle.CaptureJob(job), 0u);
    EXPECT_EQ(rd::CallsNamed("ZyrReader_CameraDetectDocumentTwoSidedEx").size(), 1u);
    EXPECT_TRUE(rd::CallsNamed("ZyrReader_LocateDocumentTwoSidedEx").empty());
    EXPECT_EQ(view.redraws, 1);
}

TEST_F(CaptureTest, CaptureMultiRepeatsUntilTheReaderFails) {
    InstallOne(Record("VISIBLE_DOC"));
    rd::CaptureScript script;
    script.presentAfterLocate = {0};
    script.processed = {rd::MakeImage(4, 3, ZYR_PIXEL_GREY8, 2)};
    rd::SetCapture(script);
    for (int32_t code : {0, 0, 0, int32_t(ZYR_ERR_CANCELLED)})
        rd::QueueResult("ZyrReader_CameraDetectDocumentTwoSidedEx", code);
    EXPECT_EQ(cycle.CaptureMultiJob(job), uint32_t(ZYR_ERR_CANCELLED));
    EXPECT_EQ(rd::CallsNamed("ZyrReader_CameraDetectDocumentTwoSidedEx").size(), 4u);
    EXPECT_EQ(rd::CallsNamed("ZyrReader_LocateDocumentTwoSidedEx").size(), 3u) << "every pass but the first";
    EXPECT_EQ(session.imageNumber.load(), 3);
    EXPECT_EQ(view.redraws, 0);
}

TEST_F(CaptureTest, StopEndsCaptureMultiWhileItWaitsForADocument) {
    InstallOne(Record("VISIBLE_DOC"));
    rd::CaptureScript script;
    script.detectWaitsForCancel = true;
    rd::SetCapture(script);
    auto running = std::async(std::launch::async, [this] { return cycle.CaptureMultiJob(job); });
    session.job.Stop(); // what the stop dialog asks for
    EXPECT_EQ(running.get(), uint32_t(ZYR_ERR_CANCELLED));
    EXPECT_EQ(rd::CallNames().back(), "ZyrReader_DocumentProcessingComplete");
}

TEST_F(CaptureTest, WithoutUsableSettingsEveryCycleComplainsAndStopDoesNotHelp) {
    // The check passes (the second plug-in has settings), but the first selected has none.
    Install({Plugin("A", {}), Plugin("B", {Record("VISIBLE_DOC")})});
    ASSERT_TRUE(cycle.CheckImageSettings());
    job.stopped = true;
    int complaints = 0;
    view.onMessage = [&] {
        // After the third complaint the first plug-in gets settings, so the loop can end.
        if (++complaints == 3) {
            session.imageSettings.MapPlugin(session.plugins.Entries()[0].handle, session.imageSettings.At(0));
            rd::QueueResult("ZyrReader_CameraDetectDocumentTwoSidedEx", ZYR_ERR_CANCELLED);
        }
    };
    EXPECT_EQ(cycle.CaptureMultiJob(job), uint32_t(ZYR_ERR_CANCELLED));
    ASSERT_EQ(view.messages.size(), 3u);
    for (const auto& message : view.messages) {
        EXPECT_EQ(message.first, MessageKind::Exclamation);
        EXPECT_EQ(message.second, "The selected plugins either have no image settings, or different image "
                                  "settings. Unable to carry out image capture");
    }
    EXPECT_EQ(rd::CallsNamed("ZyrReader_CameraDetectDocumentTwoSidedEx").size(), 1u)
        << "the reader is called only once settings exist";
    EXPECT_TRUE(view.sets.size() == 3u) << "views are emptied only by a cycle that has settings";
}

TEST_F(CaptureTest, TwoSidedCallbackFillsTheSlotsByTheToggle) {
    ZyrImage* pair[2] = {nullptr, nullptr};
    ZyrImage a{}, b{}, c{};
    CaptureCycle::SetSideToggle(true);
    CaptureCycle::TwoSidedCallback(pair, 0, 1, 1, &a);
    CaptureCycle::TwoSidedCallback(pair, 1, 2, 1, &b);
    EXPECT_EQ(pair[0], &a);
    EXPECT_EQ(pair[1], &b);
    // With the toggle clear the first image goes to the second slot.
    CaptureCycle::SetSideToggle(false);
    CaptureCycle::TwoSidedCallback(pair, 0, 1, 1, &c);
    EXPECT_EQ(pair[1], &c);
    EXPECT_EQ(pair[0], &a);
}

} // namespace
