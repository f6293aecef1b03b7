// Start-up and shut-down of the reader session, call by call against the reader double.
#include "ReaderSession.h"
#include "ReaderDouble.h"

#include <gtest/gtest.h>

namespace rd = readerdouble;

namespace {

std::string SettingsPtr() {
    return rd::Ptr(&ReaderSession::Settings());
}

struct StartupCase {
    const char* name;
    bool reader;
    int32_t loggingLevel;
    uint32_t loggingMask;
    uint64_t device;
    bool lost = false; // the camera reports no reader when initialised
};

class StartupTest : public ::testing::TestWithParam<StartupCase> {
protected:
    void SetUp() override {
        rd::Reset();
        ReaderSession::Reset();
        ReaderSession::SetMessageSink([this](const std::string& text) { messages.push_back(text); });
    }
    void TearDown() override { ReaderSession::Reset(); }
    std::vector<std::string> messages;
};

TEST_P(StartupTest, CallsTheLibraryInOrder) {
    const StartupCase& c = GetParam();
    ZyrReaderSettings stored{};
    stored.LoggingLevel = c.loggingLevel;
    stored.LoggingMask = c.loggingMask;
    stored.CameraDevice = c.device;
    stored.ImageWidth = 640;
    stored.ImageHeight = 480;
    c.reader ? rd::SetReaderSettings(stored) : (rd::SetNoReader(), rd::SetIniSettings(stored));
    if (c.lost)
        rd::QueueError("ZyrReader_CameraInitialise", ZYR_ERR_NO_READER, "gone");

    ReaderSession::Startup();

    std::vector<std::string> expected = {"ZyrReader_SetErrorHandler(callback, 0)",
                                         "ZyrReader_LL_LoadSettings(" + SettingsPtr() + ")"};
    if (!c.reader)
        expected.push_back("ZyrReader_LL_LoadSettingsFromIniFile(" + SettingsPtr() + ", \"./ZyrReader.ini\")");
    if (c.loggingLevel > 0)
        expected.push_back("ZyrReader_InitialiseLogging(true, " + std::to_string(c.loggingLevel) + ", " +
                           std::to_string(c.loggingMask) + ", \"Glyphor.log\")");
    const std::string device = c.reader ? std::to_string(c.device) : "0";
    if (c.reader)
        expected.push_back("ZyrReader_CameraInitialise(" + SettingsPtr() + ", " + device + ", 0)");
    expected.push_back("ZyrReader_ImageProcessingInitialise(" + SettingsPtr() + ", " + device + ", " +
                       rd::Ptr(&ReaderSession::Settings().ImageProcessing) + ")");
    EXPECT_EQ(rd::CallTexts(), expected);

    EXPECT_EQ(ReaderSession::ScannerConnected(), c.reader && !c.lost);
    EXPECT_TRUE(messages.empty()) << "error 9 must stay silent, also when reported late";
    // Without a reader the snapshot size is fixed; with one it is the reader's.
    EXPECT_EQ(ReaderSession::Settings().ImageWidth, c.reader ? 640 : 2700);
    EXPECT_EQ(ReaderSession::Settings().ImageHeight, c.reader ? 480 : 2000);
}

INSTANTIATE_TEST_SUITE_P(Modes, StartupTest,
                         ::testing::Values(StartupCase{"NoReader", false, 0, 0, 77},
                                           StartupCase{"Reader", true, 0, 0, 42},
                                           StartupCase{"ReaderLogging", true, 1, 0x5, 42},
                                           StartupCase{"ReaderNegativeLevel", true, -3, 0x5, 42},
                                           StartupCase{"ReaderLostDuringStartup", true, 0, 0, 42, true}),
                         [](const auto& info) { return std::string(info.param.name); });

struct ShutdownCase {
    const char* name;
    bool camera, imageProcessing, signal, parsing;
};

class ShutdownTest : public ::testing::TestWithParam<ShutdownCase> {};

TEST_P(ShutdownTest, ShutsDownOnlyWhatIsInitialisedThenFreesTheCaches) {
    const ShutdownCase& c = GetParam();
    rd::Reset();
    rd::SetInitialised(rd::Service::Camera, c.camera);
    rd::SetInitialised(rd::Service::ImageProcessing, c.imageProcessing);
    rd::SetInitialised(rd::Service::Signal, c.signal);
    rd::SetInitialised(rd::Service::Parsing, c.parsing);

    ReaderSession::Shutdown();

    // Each service asked in this order and shut down when initialised; then the caches go.
    const std::tuple<const char*, const char*, bool> services[] = {{"Camera", "Camera", c.camera},
                                                                   {"ImageProcessing", "ImageProcessing", c.imageProcessing},
                                                                   {"Signal", "Signal", c.signal},
                                                                   {"Parsing", "Parse", c.parsing}};
    std::vector<std::string> expected;
    for (const auto& [asked, stopped, on] : services) {
        expected.push_back(std::string("ZyrReader_Is") + asked + "Initialised");
        if (on)
            expected.push_back(std::string("ZyrReader_") + stopped + "Shutdown");
    }
    expected.push_back("ZyrReader_DestroyCachedData");
    EXPECT_EQ(rd::CallNames(), expected);
}

INSTANTIATE_TEST_SUITE_P(Services, ShutdownTest,
                         ::testing::Values(ShutdownCase{"Nothing", false, false, false, false},
                                           ShutdownCase{"NoReader", false, true, false, false},
                                           ShutdownCase{"ReaderAndParser", true, true, false, true},
                                           ShutdownCase{"Everything", true, true, true, true}),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
