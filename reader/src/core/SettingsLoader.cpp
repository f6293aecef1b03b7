#include "core/SettingsLoader.h"

#include "core/DefaultFolders.h"
#include "core/IniReader.h"
#include "core/Log.h"

#include <cerrno>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <limits>
#include <vector>

namespace zyr {

namespace fs = std::filesystem;

namespace {

enum class Kind { Int32, UInt32, UInt64, Byte, Flag, Float, Folder };

// One settings key: where it lives in the record and its default as text (parsed like a value).
struct Key {
    std::string section;
    std::string name;
    Kind kind;
    size_t offset;
    std::string fallback;
};

// Folder defaults depend on where the library and the program are; computed at fill time.
constexpr const char* kPluginsDefault = "<plugins>";
constexpr const char* kApplicationDefault = "<application>";

#define ZYR_AT(member) offsetof(ZyrReaderSettings, member)

void addCameraKeys(std::vector<Key>& keys, const char* section, size_t base, const char* exposure,
                   const char* gain, const char* whiteBalance, const char* led, const char* autoExposure) {
    auto add = [&](const char* name, Kind kind, size_t offset, const char* fallback) {
        keys.push_back({section, name, kind, base + offset, fallback});
    };
    add("ExposureMicroseconds", Kind::UInt32, offsetof(ZyrCameraParameters, ExposureMicroseconds), exposure);
    add("Gain", Kind::UInt32, offsetof(ZyrCameraParameters, Gain), gain);
    add("Brightness", Kind::UInt32, offsetof(ZyrCameraParameters, Brightness), "128");
    add("Contrast", Kind::UInt32, offsetof(ZyrCameraParameters, Contrast), "128");
    add("WhiteBalance", Kind::UInt32, offsetof(ZyrCameraParameters, WhiteBalance), whiteBalance);
    add("LedIntensity", Kind::UInt32, offsetof(ZyrCameraParameters, LedIntensity), led);
    add("OutputScale", Kind::Float, offsetof(ZyrCameraParameters, OutputScale), "1.0");
    add("DetectThreshold", Kind::Float, offsetof(ZyrCameraParameters, DetectThreshold), "60");
    add("BorderPixels", Kind::UInt32, offsetof(ZyrCameraParameters, BorderPixels), "0");
    add("Sharpness", Kind::UInt32, offsetof(ZyrCameraParameters, Sharpness), "0");
    add("Saturation", Kind::UInt32, offsetof(ZyrCameraParameters, Saturation), "128");
    add("OutputDpi", Kind::UInt32, offsetof(ZyrCameraParameters, OutputDpi), "300");
    add("CaptureResolution", Kind::UInt32, offsetof(ZyrCameraParameters, CaptureResolution), "400");
    add("AutoExposure", Kind::Flag, offsetof(ZyrCameraParameters, AutoExposure), autoExposure);
    add("HardwareDeskew", Kind::Flag, offsetof(ZyrCameraParameters, HardwareDeskew), "0");
    add("Binning", Kind::Byte, offsetof(ZyrCameraParameters, Binning), "1");
}

const std::vector<Key>& keyTable() {
    static const std::vector<Key> keys = [] {
        std::vector<Key> k = {
            {"Logging", "Level", Kind::Int32, ZYR_AT(LoggingLevel), "0"},
            {"Logging", "Mask", Kind::UInt32, ZYR_AT(LoggingMask), "0x3F"},
            {"Device", "CameraDevice", Kind::UInt64, ZYR_AT(CameraDevice), "0"},
            {"Device", "ImageWidth", Kind::Int32, ZYR_AT(ImageWidth), "2700"},
            {"Device", "ImageHeight", Kind::Int32, ZYR_AT(ImageHeight), "2000"},
            {"Device", "TwoSided", Kind::Flag, ZYR_AT(TwoSided), "0"},
            {"Device", "ExtraProcessing", Kind::Flag, ZYR_AT(ExtraProcessing), "0"},
            {"Device", "DarkObjectDetect", Kind::Flag, ZYR_AT(DarkObjectDetect), "0"},
            {"Device", "DarkObjectValue", Kind::Float, ZYR_AT(DarkObjectValue), "40"},
            {"Device", "CommonCaptureResolution", Kind::UInt32, ZYR_AT(CommonCaptureResolution), "400"},
            {"Device", "CommonBinning", Kind::Byte, ZYR_AT(CommonBinning), "1"},
            {"Folders", "PluginFolder", Kind::Folder, ZYR_AT(PluginFolder), kPluginsDefault},
            {"Folders", "PluginSettingsFolder", Kind::Folder, ZYR_AT(PluginSettingsFolder), kPluginsDefault},
            {"Folders", "ApplicationFolder", Kind::Folder, ZYR_AT(ApplicationFolder), kApplicationDefault},
            {"Folders", "DeviceFolder", Kind::Folder, ZYR_AT(DeviceFolder), ""},
            {"ImageProcessing", "ThreadCount", Kind::Int32, ZYR_AT(ImageProcessing.ThreadCount), "1"},
            {"ImageProcessing", "JpegQuality", Kind::Int32, ZYR_AT(ImageProcessing.JpegQuality), "90"},
            {"Detect", "PollIntervalMs", Kind::Int32, ZYR_AT(Detect.PollIntervalMs), "100"},
            {"Locate", "MinimumArea", Kind::Int32, ZYR_AT(Locate.MinimumArea), "20000"},
            {"Process", "DenoiseRadius", Kind::Int32, ZYR_AT(Process.DenoiseRadius), "1"},
            {"Side", "MirrorBackSide", Kind::Int32, ZYR_AT(Side.MirrorBackSide), "0"},
            {"Feed", "RemovalTimeMs", Kind::Int32, ZYR_AT(Feed.RemovalTimeMs), "2000"},
        };
        addCameraKeys(k, "Visible", ZYR_AT(VisibleParameters), "8000", "100", "5000", "80", "1");
        addCameraKeys(k, "Infrared", ZYR_AT(InfraredParameters), "12000", "100", "0", "100", "0");
        addCameraKeys(k, "Ultraviolet", ZYR_AT(UltravioletParameters), "30000", "200", "0", "100", "0");
        return k;
    }();
    return keys;
}

#undef ZYR_AT

bool parseInteger(const std::string& text, long long minimum, unsigned long long maximum,
                  unsigned long long& out) {
    if (text.empty())
        return false;
    const char* begin = text.c_str();
    char* end = nullptr;
    errno = 0;
    if (text[0] == '-') {
        const long long value = std::strtoll(begin, &end, 0);
        if (errno != 0 || *end != '\0' || value < minimum)
            return false;
        out = static_cast<unsigned long long>(value);
        return true;
    }
    const unsigned long long value = std::strtoull(begin, &end, 0);
    if (errno != 0 || *end != '\0' || value > maximum)
        return false;
    out = value;
    return true;
}

bool parseFlag(const std::string& text, uint8_t& out) {
    static const char* const yes[] = {"1", "true", "yes", "on"};
    static const char* const no[] = {"0", "false", "no", "off"};
    for (const char* word : yes)
        if (strcasecmp(text.c_str(), word) == 0)
            return out = 1, true;
    for (const char* word : no)
        if (strcasecmp(text.c_str(), word) == 0)
            return out = 0, true;
    return false;
}

std::string resolveFolder(const std::string& text, const std::string& baseFolder) {
    if (text == kPluginsDefault)
        return DefaultFolders::plugins();
    if (text == kApplicationDefault)
        return DefaultFolders::application();
    if (text.empty())
        return text;
    fs::path folder(text);
    if (folder.is_relative() && !baseFolder.empty())
        folder = fs::path(baseFolder) / folder;
    return DefaultFolders::withSlash(folder.lexically_normal().string());
}

// Stores text as the key's value; false when it does not parse (the record is then unchanged).
bool store(ZyrReaderSettings& settings, const Key& key, const std::string& text,
           const std::string& baseFolder) {
    auto* field = reinterpret_cast<unsigned char*>(&settings) + key.offset;
    unsigned long long integer = 0;
    switch (key.kind) {
    case Kind::Int32: {
        if (!parseInteger(text, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max(),
                          integer))
            return false;
        const int32_t value = static_cast<int32_t>(static_cast<long long>(integer));
        std::memcpy(field, &value, sizeof value);
        return true;
    }
    case Kind::UInt32: {
        if (text[0] == '-' || !parseInteger(text, 0, std::numeric_limits<uint32_t>::max(), integer))
            return false;
        const uint32_t value = static_cast<uint32_t>(integer);
        std::memcpy(field, &value, sizeof value);
        return true;
    }
    case Kind::UInt64: {
        if (text[0] == '-' || !parseInteger(text, 0, std::numeric_limits<uint64_t>::max(), integer))
            return false;
        const uint64_t value = integer;
        std::memcpy(field, &value, sizeof value);
        return true;
    }
    case Kind::Byte:
        if (text[0] == '-' || !parseInteger(text, 0, 255, integer))
            return false;
        *field = static_cast<unsigned char>(integer);
        return true;
    case Kind::Flag: {
        uint8_t flag = 0;
        if (!parseFlag(text, flag))
            return false;
        *field = flag;
        return true;
    }
    case Kind::Float: {
        char* end = nullptr;
        const float value = std::strtof(text.c_str(), &end);
        if (end == text.c_str() || *end != '\0' || !std::isfinite(value))
            return false;
        std::memcpy(field, &value, sizeof value);
        return true;
    }
    case Kind::Folder: {
        const std::string folder = resolveFolder(text, baseFolder);
        if (folder.size() >= ZYR_PATH_SIZE)
            return false;
        std::memset(field, 0, ZYR_PATH_SIZE);
        std::memcpy(field, folder.c_str(), folder.size());
        return true;
    }
    }
    return false;
}

} // namespace

void SettingsLoader::fillDefaults(ZyrReaderSettings& settings) {
    settings = ZyrReaderSettings{};
    for (const Key& key : keyTable())
        store(settings, key, key.fallback, std::string());
}

void SettingsLoader::apply(ZyrReaderSettings& settings, const IniReader& ini, const std::string& baseFolder) {
    for (const Key& key : keyTable()) {
        const std::string* value = ini.find(key.section, key.name);
        if (value == nullptr || value->empty())
            continue;
        if (!store(settings, key, *value, baseFolder))
            Log::write(ZYR_LOG_SETTINGS, LogError, "[%s] %s = \"%s\" is not valid; the default is kept",
                       key.section.c_str(), key.name.c_str(), value->c_str());
    }
}

int32_t SettingsLoader::loadFile(ZyrReaderSettings& settings, const std::string& path) {
    fillDefaults(settings);
    IniReader ini;
    if (!ini.load(path)) {
        Log::write(ZYR_LOG_SETTINGS, LogError, "settings file %s cannot be read; defaults used",
                   path.c_str());
        return ZYR_ERR_FILE;
    }
    std::error_code error;
    const fs::path folder = fs::absolute(fs::path(path), error).parent_path();
    apply(settings, ini, folder.string());
    Log::write(ZYR_LOG_SETTINGS, LogInfo, "settings read from %s", path.c_str());
    return ZYR_OK;
}

std::string SettingsLoader::connectedDevice() {
    const char* variable = std::getenv(kDeviceVariable);
    if (variable == nullptr || variable[0] == '\0')
        return {};
    std::error_code error;
    const fs::path folder = fs::absolute(fs::path(variable), error);
    if (error || !fs::is_regular_file(folder / kDeviceFile, error))
        return {};
    return DefaultFolders::withSlash(folder.lexically_normal().string());
}

} // namespace zyr
