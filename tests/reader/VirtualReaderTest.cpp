// The virtual reader: device folders, the document feed, cancel, removal and snapshots.
#include "CaptureFixtures.h"
#include "ZyrPixelFormat.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <future>

namespace {

namespace fs = std::filesystem;
using capture::Card;
using capture::Delivered;
using capture::Device;
using support::RecordingErrorHandler;
using support::ScopedEnvironment;

// Documents are told apart by where their card lies: document k has its card at left 40 + 20 k.
fixtures::Picture document(int k, int width = 640) {
    return capture::scene(width, 480, {{40 + 20 * k, 100, 400, 250}});
}
int documentOf(const ZyrLocation& location) {
    return location.Width > 0 ? (location.Left - 40) / 20 : -1;
}

const char* const kQuickDevice = "[Feed]\nRemovalTimeMs=0\n";

class VirtualReaderTest : public ::testing::Test {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }

    void start(const Device& device) {
        settings = device.settings();
        ASSERT_EQ(ZyrReader_CameraInitialise(&settings, 0, 0), ZYR_OK);
    }
    int32_t detect(bool wait = true, int32_t timeoutMs = 0) {
        side1 = side2 = ZyrLocation{};
        flag = 0xEE;
        return ZyrReader_CameraDetectDocumentTwoSidedEx(
            wait, timeoutMs, 0, &side1, &side2, &settings, &settings.Detect, &settings.Locate, 0, 0, 0, 0, 0,
            &settings.Process, &settings.Side, nullptr, 0, nullptr, true, true, &flag);
    }
    int32_t locate(uint8_t& present, ZyrFeedSettings* feed = nullptr, int32_t timeoutMs = 0) {
        side1 = side2 = ZyrLocation{};
        present = 0xEE;
        return ZyrReader_LocateDocumentTwoSidedEx(
            0, timeoutMs, &side1, &side2, &present, &settings, &settings.Detect, &settings.Locate, true, 0,
            &settings.Process, &settings.Side, feed, 0, false, false, &flag);
    }
    int32_t snapshot(uint32_t light, Delivered& out) {
        return ZyrReader_CameraTakeSnapshot(true, light, 15, &settings.VisibleParameters, &settings,
                                            Delivered::callback, &out, 0, nullptr);
    }
    // Detects the next document and finishes with it at once; its number, or -1 - error.
    int detectAndFinish() {
        const int32_t result = detect(false);
        if (result != ZYR_OK)
            return -1 - result;
        ZyrReader_DocumentProcessingComplete();
        return documentOf(side1);
    }

    ZyrReaderSettings settings{};
    alignas(4) ZyrLocation side1{}, side2{};
    uint8_t flag = 0;
};

struct StartCase {
    const char* name;
    const char* variable;  // ZYRREADER_DEVICE under the test's folder; null: unset
    const char* deviceIni; // written to the test's folder; null: none
    const char* subfolder; // made in the test's folder; null: none
    int32_t expected;
    const char* messagePart; // expected in the error handler's text
    bool inSettings = false; // the folder given in the settings too, which comes first
};

class CameraStart : public VirtualReaderTest, public ::testing::WithParamInterface<StartCase> {};

TEST_P(CameraStart, OpensTheDeviceFolderOrSaysWhyNot) {
    const StartCase& c = GetParam();
    TempFolder folder;
    if (c.deviceIni != nullptr)
        writeFile(folder.file("device.ini"), c.deviceIni);
    if (c.subfolder != nullptr)
        fs::create_directory(folder.file(c.subfolder));
    const std::string variable = c.variable != nullptr ? folder.file(c.variable) : "";
    ScopedEnvironment device("ZYRREADER_DEVICE", c.variable != nullptr ? variable.c_str() : nullptr);
    RecordingErrorHandler errors;
    ZyrReaderSettings startSettings{};
    if (c.inSettings)
        std::snprintf(startSettings.DeviceFolder, sizeof startSettings.DeviceFolder, "%s", folder.path().c_str());
    EXPECT_EQ(ZyrReader_CameraInitialise(&startSettings, 0, 0), c.expected);
    EXPECT_EQ(ZyrReader_IsCameraInitialised(), c.expected == ZYR_OK);
    if (c.expected == ZYR_OK) {
        EXPECT_TRUE(errors.codes().empty());
        return;
    }
    ASSERT_EQ(errors.codes().size(), 1u);
    EXPECT_EQ(errors.codes()[0], c.expected);
    EXPECT_NE(errors.messages()[0].find(c.messagePart), std::string::npos) << errors.messages()[0];
}

const StartCase startCases[] = {
    {"no_device_named", nullptr, nullptr, nullptr, ZYR_ERR_NO_READER, "ZYRREADER_DEVICE"},
    {"folder_without_device_ini", ".", nullptr, nullptr, ZYR_ERR_DEVICE, "device.ini"},
    {"no_documents_folder", ".", "", nullptr, ZYR_ERR_DEVICE, "/documents/"},
    {"documents_named_by_the_device", ".", "[Documents]\nFolder=cards\n", "cards", ZYR_OK, ""},
    {"named_documents_folder_missing", ".", "[Documents]\nFolder=/nonexistent/cards\n", "documents", ZYR_ERR_DEVICE,
     "/nonexistent/cards/"},
    {"settings_folder_before_the_environment", "gone", "", "documents", ZYR_OK, "", true},
};

INSTANTIATE_TEST_SUITE_P(Devices, CameraStart, ::testing::ValuesIn(startCases),
                         [](const ::testing::TestParamInfo<StartCase>& info) { return info.param.name; });

// Documents come in name order, once each, also when they arrive later; a restart begins again.
TEST_F(VirtualReaderTest, DetectsDocumentsInNameOrderOnce) {
    Device device(kQuickDevice);
    device.add("b.png", document(2));
    device.add("a.png", document(1));
    device.add("c.png", document(3));
    device.add("a.ir.png", document(7));   // a light of document a, not a document
    device.add("z.back.png", document(8)); // a back without its front is no document
    device.addBytes("notes.txt", "not an image");
    device.addBytes(".d.png", "hidden");
    start(device);
    EXPECT_EQ(detectAndFinish(), 1);
    EXPECT_EQ(detectAndFinish(), 2);
    EXPECT_EQ(detectAndFinish(), 3);
    EXPECT_EQ(detect(false), ZYR_ERR_NO_DOCUMENT) << "every document was delivered";
    EXPECT_EQ(detect(true, 50), ZYR_ERR_NO_DOCUMENT) << "a time limit ends the wait";
    // A later file named before the last delivered one still counts as new.
    device.add("0.png", document(0));
    EXPECT_EQ(detectAndFinish(), 0);
    auto waiting = std::async(std::launch::async, [this] { return detect(); });
    device.add("x.png", document(4));
    ASSERT_EQ(waiting.get(), ZYR_OK);
    EXPECT_EQ(documentOf(side1), 4);
    ZyrReader_DocumentProcessingComplete();

    ASSERT_EQ(ZyrReader_CameraCancelQueue(), ZYR_OK);
    start(device);
    EXPECT_EQ(detectAndFinish(), 0) << "a restart forgets what was delivered and any pending cancel";
}

// A cancel waits for the next detection or location, which it ends without touching the results,
// even with a document waiting; a second cancel is no second pending one.
TEST_F(VirtualReaderTest, ACancelIsKeptUntilACallTakesItAndAShutdownEndsEverything) {
    Device device(kQuickDevice);
    device.add("a.png", document(1));
    start(device);
    EXPECT_EQ(ZyrReader_CameraCancelQueue(), ZYR_OK);
    EXPECT_EQ(ZyrReader_CameraCancelQueue(), ZYR_OK);
    EXPECT_EQ(detect(), ZYR_ERR_CANCELLED);
    EXPECT_EQ(detectAndFinish(), 1);
    uint8_t present = 0;
    EXPECT_EQ(ZyrReader_CameraCancelQueue(), ZYR_OK);
    EXPECT_EQ(locate(present), ZYR_ERR_CANCELLED);
    EXPECT_EQ(present, 0xEE) << "a cancelled call leaves its results alone";
    EXPECT_EQ(locate(present), ZYR_OK);
    EXPECT_EQ(present, 0);

    auto waiting = std::async(std::launch::async, [this] { return detect(); });
    ASSERT_EQ(ZyrReader_CameraCancelQueue(), ZYR_OK);
    EXPECT_EQ(waiting.get(), ZYR_ERR_CANCELLED);

    // A shutdown ends a waiting detection too, and every later call.
    waiting = std::async(std::launch::async, [this] { return detect(); });
    ASSERT_EQ(ZyrReader_CameraShutdown(), ZYR_OK);
    EXPECT_EQ(waiting.get(), ZYR_ERR_NOT_INITIALISED);
    Delivered out;
    EXPECT_EQ(detect(false), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(locate(present), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(snapshot(ZYR_LIGHT_VISIBLE, out), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(ZyrReader_CameraCancelQueue(), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(ZyrReader_InsertDocument(), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(ZyrReader_DocumentProcessingComplete(), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(ZyrReader_CameraUpdateSettings(&settings), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(ZyrReader_CameraUpdateSettings(nullptr), ZYR_ERR_BAD_ARGUMENT);
    EXPECT_EQ(ZyrReader_CameraShutdown(), ZYR_ERR_NOT_INITIALISED);
}

// Done with, a document still lies there until the removal time has passed (the caller's, when it
// gives one), and a location can wait for that.
TEST_F(VirtualReaderTest, ADocumentIsPresentUntilDoneWithAndRemoved) {
    Device device("[Feed]\nRemovalTimeMs=3600000\n");
    device.add("a.png", document(1));
    device.add("b.png", document(2));
    start(device);
    uint8_t present = 0;
    ASSERT_EQ(locate(present), ZYR_OK);
    EXPECT_EQ(present, 0) << "nothing on the platen yet";
    ASSERT_EQ(detect(), ZYR_OK);
    alignas(4) const ZyrLocation detected = side1;
    ASSERT_EQ(locate(present), ZYR_OK);
    EXPECT_EQ(present, 1);
    ASSERT_EQ(ZyrReader_DocumentProcessingComplete(), ZYR_OK);
    ASSERT_EQ(locate(present), ZYR_OK);
    EXPECT_EQ(present, 1) << "done with, but not yet taken away";
    EXPECT_EQ(side1.Left, detected.Left);
    EXPECT_EQ(side1.Width, detected.Width);
    // Still lying there: the camera sees the same document again, not the next one.
    ASSERT_EQ(detect(false), ZYR_OK);
    EXPECT_EQ(documentOf(side1), 1);

    ASSERT_EQ(ZyrReader_DocumentProcessingComplete(), ZYR_OK);
    ZyrFeedSettings feed{};
    feed.RemovalTimeMs = 50;
    ASSERT_EQ(locate(present, &feed, 60000), ZYR_OK);
    EXPECT_EQ(present, 0) << "the caller's removal time counts";
}

TEST_F(VirtualReaderTest, SnapshotShowsTheDocumentUnderTheLightAskedFor) {
    Device device(kQuickDevice);
    fixtures::Picture colour = document(1);
    for (fixtures::Rgba& c : colour.pixels)
        c.g = uint8_t(c.g / 2);
    device.add("a.png", colour, true);
    device.add("a.ir.png", capture::scene(640, 480, {}, 99)); // its own infrared image
    start(device);
    Delivered none;
    EXPECT_EQ(snapshot(ZYR_LIGHT_VISIBLE, none), ZYR_ERR_NO_DOCUMENT) << "nothing on the platen";
    EXPECT_TRUE(none.images.empty());

    ASSERT_EQ(detect(), ZYR_OK);
    Delivered visible, infrared;
    ASSERT_EQ(snapshot(ZYR_LIGHT_VISIBLE | ZYR_LIGHT_UV, visible), ZYR_OK);
    ASSERT_EQ(snapshot(ZYR_LIGHT_IR, infrared), ZYR_OK);
    ASSERT_EQ(visible.images.size(), 1u);
    EXPECT_EQ(visible.images[0].lightMask, ZYR_LIGHT_VISIBLE | ZYR_LIGHT_UV);
    const ZyrImage& v = *visible.images[0].image;
    ASSERT_EQ(v.PixelFormat, ZYR_PIXEL_RGB24);
    const uint8_t* card = v.Pixels + 200 * v.Stride + 300 * 3;
    EXPECT_EQ(card[0], capture::kCard);
    EXPECT_EQ(card[1], capture::kCard / 2);
    const ZyrImage& ir = *infrared.images.at(0).image;
    EXPECT_EQ(ir.Pixels[200 * ir.Stride + 300 * ZyrPixel_BytesPerPixel(ir.PixelFormat)], 99)
        << "the document's own infrared file";
}

// An unreadable document is reported and skipped; a documents folder that went away is reported.
TEST_F(VirtualReaderTest, DeviceErrorsAreReported) {
    Device device(kQuickDevice);
    device.addBytes("a.png", "\x89PNG\r\n\x1a\n truncated");
    device.add("b.png", document(2));
    start(device);
    RecordingErrorHandler errors;
    EXPECT_EQ(detectAndFinish(), 2);
    fs::remove_all(device.documents());
    EXPECT_EQ(detect(), ZYR_ERR_DEVICE);
    ASSERT_EQ(errors.codes(), (std::vector<int32_t>{ZYR_ERR_DEVICE, ZYR_ERR_DEVICE}));
    EXPECT_NE(errors.messages()[0].find("document a"), std::string::npos) << errors.messages()[0];
    EXPECT_NE(errors.messages()[1].find(device.documents()), std::string::npos) << errors.messages()[1];
}

} // namespace
