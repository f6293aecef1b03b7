// How the library runs one plug-in, read from the [Host] section of the plug-in's own settings file:
//   Isolated=1            run it in a plug-in host process of its own (default); 0 loads it into
//                         the calling process, where a crash or hang of the plug-in is the caller's
//   TimeLimitSeconds=20   how long one call into an isolated plug-in may take before its host is
//                         killed (decimals allowed, from 0.001 to 86400)
#ifndef ZYR_PLUGINS_ISOLATION_SETTINGS_H
#define ZYR_PLUGINS_ISOLATION_SETTINGS_H

#include <chrono>
#include <string>

namespace zyr {

struct IsolationSettings {
    bool isolated = true;
    std::chrono::milliseconds timeLimit{20000};

    // A missing file, section or key keeps the default: the plug-in itself decides whether a
    // missing file is acceptable. False, with the reason, for a value that makes no sense.
    bool read(const std::string& settingsPath, std::string& reason);
    bool readText(const std::string& iniText, std::string& reason);
};

} // namespace zyr

#endif
