// Entry points that fill the reader settings record.
#include "ZyrReaderLowLevelAPI.h"
#include "core/ErrorReporter.h"
#include "core/Log.h"
#include "core/SettingsLoader.h"

#include <cstring>

using namespace zyr;

extern "C" {

ZYRREADER_API int32_t ZyrReader_LL_LoadSettings(ZyrReaderSettings* settings) {
    if (settings == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    const std::string device = SettingsLoader::connectedDevice();
    if (device.empty()) {
        SettingsLoader::fillDefaults(*settings);
        ErrorReporter::report(ZYR_ERR_NO_READER);
        return ZYR_ERR_NO_READER;
    }
    const int32_t result = SettingsLoader::loadFile(*settings, device + SettingsLoader::kDeviceFile);
    if (result != ZYR_OK) {
        // The file vanished between the two looks: as good as no reader.
        ErrorReporter::report(ZYR_ERR_NO_READER);
        return ZYR_ERR_NO_READER;
    }
    if (settings->DeviceFolder[0] == '\0' && device.size() < ZYR_PATH_SIZE)
        std::memcpy(settings->DeviceFolder, device.c_str(), device.size() + 1);
    Log::write(ZYR_LOG_SETTINGS, LogInfo, "reader connected: %s", device.c_str());
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_LL_LoadSettingsFromIniFile(ZyrReaderSettings* settings, const char* path) {
    if (settings == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    if (path == nullptr || path[0] == '\0') {
        SettingsLoader::fillDefaults(*settings);
        return ZYR_ERR_FILE;
    }
    return SettingsLoader::loadFile(*settings, path);
}

} // extern "C"
