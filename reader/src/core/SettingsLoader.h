// Fills the reader settings record from a settings file (the virtual device's device.ini or any
// INI file). Every key has a default; a missing or unreadable value takes it. Keys and defaults
// are listed in the README ("Reader settings").
#ifndef ZYR_CORE_SETTINGS_LOADER_H
#define ZYR_CORE_SETTINGS_LOADER_H

#include "ZyrReaderLowLevelAPI.h"

#include <string>

namespace zyr {

class IniReader;

class SettingsLoader {
public:
    // The environment variable naming the virtual reader's folder, and the file inside it.
    static constexpr const char* kDeviceVariable = "ZYRREADER_DEVICE";
    static constexpr const char* kDeviceFile = "device.ini";

    static void fillDefaults(ZyrReaderSettings& settings);

    // Defaults, then every key present in the file; relative folders are taken from the file's
    // folder. ZYR_ERR_FILE when the file cannot be read (the record then holds the defaults).
    static int32_t loadFile(ZyrReaderSettings& settings, const std::string& path);

    // The connected virtual reader's folder ("" when none): $ZYRREADER_DEVICE holding device.ini.
    static std::string connectedDevice();

private:
    static void apply(ZyrReaderSettings& settings, const IniReader& ini, const std::string& baseFolder);
};

} // namespace zyr

#endif
