#include "BatchReaderStart.h"

#include "ReaderSession.h"

bool BatchReaderStart::Start(const std::string& settingsFile, void (*report)(const std::string& text),
                             std::string& error) {
    ReaderSession::SetMessageSink(report);
    ZyrReader_SetErrorHandler(&ReaderSession::ErrorHandler, 0);
    ZyrReaderSettings& settings = ReaderSession::Settings();
    if (!settingsFile.empty()) {
        const int32_t result = ZyrReader_LL_LoadSettingsFromIniFile(&settings, settingsFile.c_str());
        if (result != ZYR_OK) {
            error = "cannot read reader settings '" + settingsFile + "': " + ZyrReader_ErrorText(result);
            return false;
        }
    } else {
        ZyrReader_LL_LoadSettings(&settings);
        if (!ReaderSession::ScannerConnected()) {
            ZyrReader_LL_LoadSettingsFromIniFile(&settings, "./ZyrReader.ini");
        }
    }
    if (settings.LoggingLevel > 0) {
        ZyrReader_InitialiseLogging(true, settings.LoggingLevel, settings.LoggingMask, "Glyphor.log");
    }
    return true;
}

void BatchReaderStart::Stop() {
    ReaderSession::Shutdown();
}
