#include "plugins/IsolationSettings.h"

#include "core/IniReader.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <strings.h>

namespace zyr {
namespace {

bool readSection(const IniReader& ini, IsolationSettings& settings, std::string& reason) {
    if (const std::string* value = ini.find("Host", "Isolated")) {
        const char* text = value->c_str();
        if (strcasecmp(text, "1") == 0 || strcasecmp(text, "true") == 0 || strcasecmp(text, "yes") == 0)
            settings.isolated = true;
        else if (strcasecmp(text, "0") == 0 || strcasecmp(text, "false") == 0 || strcasecmp(text, "no") == 0)
            settings.isolated = false;
        else if (!value->empty()) {
            reason = "[Host] Isolated is not 0 or 1: " + *value;
            return false;
        }
    }
    if (const std::string* value = ini.find("Host", "TimeLimitSeconds"); value && !value->empty()) {
        errno = 0;
        char* end = nullptr;
        const double seconds = std::strtod(value->c_str(), &end);
        if (errno != 0 || *end != '\0' || !std::isfinite(seconds) || seconds < 0.001 || seconds > 86400) {
            reason = "[Host] TimeLimitSeconds must be a number of seconds from 0.001 to 86400: " + *value;
            return false;
        }
        settings.timeLimit = std::chrono::milliseconds(std::llround(seconds * 1000));
    }
    return true;
}

} // namespace

bool IsolationSettings::read(const std::string& settingsPath, std::string& reason) {
    IniReader ini;
    if (settingsPath.empty() || !ini.load(settingsPath))
        return true;
    return readSection(ini, *this, reason);
}

bool IsolationSettings::readText(const std::string& iniText, std::string& reason) {
    IniReader ini;
    ini.parse(iniText);
    return readSection(ini, *this, reason);
}

} // namespace zyr
