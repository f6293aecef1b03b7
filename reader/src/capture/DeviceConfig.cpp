#include "capture/DeviceConfig.h"

#include "core/DefaultFolders.h"
#include "core/IniReader.h"
#include "core/SettingsLoader.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>

namespace zyr {

namespace fs = std::filesystem;

namespace {

int32_t readMilliseconds(const IniReader& ini, const char* section, const char* key, int32_t fallback) {
    const std::string* text = ini.find(section, key);
    if (text == nullptr || text->empty())
        return fallback;
    char* end = nullptr;
    const long value = std::strtol(text->c_str(), &end, 10);
    if (*end != '\0' || value < 0)
        return fallback;
    return int32_t(std::min<long>(value, 24L * 3600 * 1000));
}

} // namespace

int32_t DeviceConfig::read(const ZyrReaderSettings& settings, DeviceConfig& config, std::string& problem) {
    config = DeviceConfig{};
    const size_t length = strnlen(settings.DeviceFolder, sizeof settings.DeviceFolder);
    std::string folder(settings.DeviceFolder, length);
    if (folder.empty()) {
        const char* variable = std::getenv(SettingsLoader::kDeviceVariable);
        folder = variable != nullptr ? variable : "";
    }
    if (folder.empty()) {
        problem = std::string("No reader is connected: set ") + SettingsLoader::kDeviceVariable +
                  " to a reader folder holding " + SettingsLoader::kDeviceFile;
        return ZYR_ERR_NO_READER;
    }
    config.deviceFolder = DefaultFolders::withSlash(folder);
    IniReader ini;
    if (!ini.load(config.deviceFolder + SettingsLoader::kDeviceFile)) {
        problem = "The reader at " + config.deviceFolder + " cannot be opened: its " +
                  SettingsLoader::kDeviceFile + " is missing or unreadable";
        return ZYR_ERR_DEVICE;
    }
    const std::string* documents = ini.find("Documents", "Folder");
    fs::path documentsFolder = documents != nullptr && !documents->empty() ? *documents : "documents";
    if (documentsFolder.is_relative())
        documentsFolder = fs::path(config.deviceFolder) / documentsFolder;
    config.documentsFolder = DefaultFolders::withSlash(documentsFolder.lexically_normal().string());
    std::error_code error;
    if (!fs::is_directory(config.documentsFolder, error)) {
        problem =
            "The reader at " + config.deviceFolder + " has no documents folder " + config.documentsFolder;
        return ZYR_ERR_DEVICE;
    }
    config.twoSided = settings.TwoSided != 0;
    config.mirrorBack = settings.Side.MirrorBackSide != 0;
    config.removalTimeMs = std::max(0, int32_t(settings.Feed.RemovalTimeMs));
    config.pollIntervalMs = std::clamp(int32_t(settings.Detect.PollIntervalMs), 10, 5000);
    config.arrivalDelayMs = readMilliseconds(ini, "Feed", "ArrivalDelayMs", 0);
    return ZYR_OK;
}

} // namespace zyr
