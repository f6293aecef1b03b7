// The checks that need the plug-in inside a process of their own. Each has a child side, run by
// this program when it is started with the probe's argument, and a parent side that reads its answer.
#pragma once

#include "ChildProcess.h"

#include <cstdint>
#include <string>
#include <vector>

namespace plugincheck {

constexpr const char* kExportsProbe = "--probe-exports";
constexpr const char* kThreadsProbe = "--probe-threads";

// Child: opens the library with dlopen and prints "error <text>", "missing <function>" and
// "version <n>" lines.
int runExportsProbe(const std::string& pluginPath);

struct ExportsAnswer {
    std::string loadError; // the child could not open the library or ended badly
    std::vector<std::string> missing;
    bool hasVersion = false;
    uint32_t version = 0;
};
ExportsAnswer probeExports(const std::string& pluginPath);

// Child: loads `threads` instances of the plug-in in this process from settingsPath (which must
// keep it in the process), decodes the images one at a time, then on all instances at once, and
// prints "ok <detail>" or "fail <detail>".
int runThreadsProbe(const std::string& pluginPath, const std::string& settingsPath, int threads,
                    const std::vector<std::string>& imageArguments);

// Parent: a copy of the settings file that keeps the plug-in in the calling process, beside the
// probe's answer; passed for a passing check, with the reason otherwise.
bool probeThreads(const std::string& pluginPath, const std::string& settingsPath, int threads,
                  const std::vector<std::string>& imageArguments, std::string& detail);

} // namespace plugincheck
