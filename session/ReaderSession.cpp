#include "ReaderSession.h"

#include <atomic>
#include <mutex>

namespace {

ZyrReaderSettings g_settings{};
std::atomic<bool> g_scannerConnected{true};
std::mutex g_sinkMutex;
ReaderSession::MessageSink g_sink;

constexpr int32_t kNoReaderImageWidth = 2700;
constexpr int32_t kNoReaderImageHeight = 2000;

} // namespace

ZyrReaderSettings& ReaderSession::Settings() {
    return g_settings;
}

bool ReaderSession::ScannerConnected() {
    return g_scannerConnected.load();
}

void ReaderSession::SetScannerConnected(bool connected) {
    g_scannerConnected = connected;
}

void ReaderSession::SetMessageSink(MessageSink sink) {
    std::lock_guard<std::mutex> lock(g_sinkMutex);
    g_sink = std::move(sink);
}

void ReaderSession::ErrorHandler(int32_t code, const char* message) {
    if (code == ZYR_ERR_NO_READER) {
        g_scannerConnected = false;
        return;
    }
    MessageSink sink;
    {
        std::lock_guard<std::mutex> lock(g_sinkMutex);
        sink = g_sink;
    }
    // The sink may wait for the user; no lock of ours is held while it does.
    if (sink) {
        sink(message ? message : "");
    }
}

void ReaderSession::Startup() {
    ZyrReaderSettings& settings = g_settings;
    ZyrReader_SetErrorHandler(&ReaderSession::ErrorHandler, 0);
    ZyrReader_LL_LoadSettings(&settings);
    if (!ScannerConnected()) {
        ZyrReader_LL_LoadSettingsFromIniFile(&settings, "./ZyrReader.ini");
    }
    if (settings.LoggingLevel > 0) {
        ZyrReader_InitialiseLogging(true, settings.LoggingLevel, settings.LoggingMask, "Glyphor.log");
    }
    uint64_t device = 0;
    if (ScannerConnected()) {
        ZyrReader_CameraInitialise(&settings, settings.CameraDevice, 0);
        device = settings.CameraDevice;
    } else {
        settings.ImageWidth = kNoReaderImageWidth;
        settings.ImageHeight = kNoReaderImageHeight;
    }
    ZyrReader_ImageProcessingInitialise(&settings, device, &settings.ImageProcessing);
}

void ReaderSession::Shutdown() {
    if (ZyrReader_IsCameraInitialised()) {
        ZyrReader_CameraShutdown();
    }
    if (ZyrReader_IsImageProcessingInitialised()) {
        ZyrReader_ImageProcessingShutdown();
    }
    if (ZyrReader_IsSignalInitialised()) {
        ZyrReader_SignalShutdown();
    }
    if (ZyrReader_IsParsingInitialised()) {
        ZyrReader_ParseShutdown();
    }
    ZyrReader_DestroyCachedData();
}

void ReaderSession::Reset() {
    g_settings = ZyrReaderSettings{};
    g_scannerConnected = true;
    SetMessageSink(nullptr);
}
