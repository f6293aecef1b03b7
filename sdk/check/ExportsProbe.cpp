#include "Probes.h"

#include <KVDecodePlugin.h>

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sstream>

namespace plugincheck {
namespace {

const char* const kExports[] = {"KVDecode_InterfaceVersion", "KVDecode_Open",   "KVDecode_GetRequiredImages",
                                "KVDecode_GetImageSettings", "KVDecode_Decode", "KVDecode_Close"};

} // namespace

int runExportsProbe(const std::string& pluginPath) {
    void* library = dlopen(pluginPath.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* error = dlerror();
        std::printf("error %s\n", error ? error : "dlopen failed");
        return 0;
    }
    for (const char* name : kExports)
        if (!dlsym(library, name))
            std::printf("missing %s\n", name);
    if (auto version = reinterpret_cast<KVDecode_InterfaceVersionFn>(dlsym(library, "KVDecode_InterfaceVersion")))
        std::printf("version %u\n", version());
    std::fflush(stdout);
    dlclose(library);
    return 0;
}

ExportsAnswer probeExports(const std::string& pluginPath) {
    constexpr int kTimeout = 60;
    const ChildOutcome outcome = runSelf({kExportsProbe, pluginPath}, kTimeout);
    ExportsAnswer answer;
    if (!outcome.finished || outcome.signal || outcome.exitCode != 0) {
        answer.loadError = "loading it ended with " + outcome.describe(kTimeout);
        return answer;
    }
    std::istringstream lines(outcome.output);
    std::string word;
    while (lines >> word) {
        std::string rest;
        std::getline(lines, rest);
        if (!rest.empty() && rest[0] == ' ')
            rest.erase(0, 1);
        if (word == "error")
            answer.loadError = rest;
        else if (word == "missing")
            answer.missing.push_back(rest);
        else if (word == "version") {
            answer.hasVersion = true;
            answer.version = uint32_t(std::strtoul(rest.c_str(), nullptr, 10));
        }
    }
    return answer;
}

} // namespace plugincheck
