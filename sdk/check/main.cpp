// glyphor-plugin-check: does a decoder plug-in keep the plug-in interface? Loads it through the
// reader library, runs it on generated samples (or the images given), odd and blank images and
// from several threads, and prints one row per rule. Exit status 0 when every rule passed, 1 when
// one failed, 2 for usage errors and images that cannot be read.
#include "PluginChecker.h"
#include "Probes.h"

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <unistd.h>

using namespace plugincheck;

namespace {

const char* const kUsage =
    "Usage: glyphor-plugin-check [OPTION]... KVDECODE_<Name>.so [IMAGE]...\n"
    "Checks that a decoder plug-in keeps the plug-in interface: its exports and interface version,\n"
    "its required images and image settings, well-formed symbols with the right bytes on generated\n"
    "samples (or on the PNG, JPEG or BMP images given), tiny, odd and blank images, and decoding\n"
    "from several threads at once.\n"
    "\n"
    "  -s, --settings FILE  the plug-in's settings file (default: #KVDECODE_<Name>.ini beside it)\n"
    "  -t, --threads N      instances decoding at once in the thread check (default 4, 2 to 16)\n"
    "      --all-samples    every generated sample, not one per format and the special ones\n"
    "      --max-ms N       a decode slower than N milliseconds fails the time rule\n"
    "  -h, --help           this text\n"
    "\n"
    "Exit status: 0 every rule passed, 1 a rule failed, 2 usage error or unreadable image.\n";

int usageError(const std::string& message) {
    std::cerr << "glyphor-plugin-check: " << message << "\n" << kUsage;
    return 2;
}

bool number(const char* text, double low, double high, double& value) {
    char* end = nullptr;
    value = std::strtod(text, &end);
    return end != text && *end == '\0' && value >= low && value <= high;
}

} // namespace

int main(int argc, char** argv) {
    if (argc >= 3 && std::strcmp(argv[1], kExportsProbe) == 0)
        return runExportsProbe(argv[2]);
    if (argc >= 5 && std::strcmp(argv[1], kThreadsProbe) == 0)
        return runThreadsProbe(argv[3], argv[4], std::atoi(argv[2]), std::vector<std::string>(argv + 5, argv + argc));

    CheckOptions options;
    std::vector<std::string> positional;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&](const char* name) -> const char* {
            if (i + 1 >= argc)
                return nullptr;
            (void)name;
            return argv[++i];
        };
        double n = 0;
        if (arg == "-h" || arg == "--help") {
            std::cout << kUsage;
            return 0;
        } else if (arg == "-s" || arg == "--settings") {
            const char* v = value("settings");
            if (!v)
                return usageError(arg + " needs a file");
            options.settingsPath = v;
        } else if (arg == "-t" || arg == "--threads") {
            const char* v = value("threads");
            if (!v || !number(v, 2, 16, n) || n != double(int(n)))
                return usageError(arg + " needs a whole number from 2 to 16");
            options.threads = int(n);
        } else if (arg == "--max-ms") {
            const char* v = value("max-ms");
            if (!v || !number(v, 0.001, 86400000, n))
                return usageError(arg + " needs a positive number of milliseconds");
            options.maxMilliseconds = n;
        } else if (arg == "--all-samples") {
            options.allSamples = true;
        } else if (arg.size() > 1 && arg[0] == '-') {
            return usageError("unknown option " + arg);
        } else {
            positional.push_back(arg);
        }
    }
    if (positional.empty())
        return usageError("no plug-in given");
    options.pluginPath = positional[0];
    options.imagePaths.assign(positional.begin() + 1, positional.end());
    // The library and the probes need a path that still holds from another working folder.
    if (options.pluginPath.find('/') == std::string::npos)
        options.pluginPath = "./" + options.pluginPath;
    if (options.settingsPath.empty())
        options.settingsPath = defaultSettingsPath(options.pluginPath);
    if (access(options.pluginPath.c_str(), R_OK) != 0)
        return usageError("cannot read " + options.pluginPath + ": " + std::strerror(errno));

    std::cout << "Checking " << options.pluginPath << " with " << options.settingsPath << "\n";
    CheckReport report;
    std::string error;
    if (!PluginChecker(options).run(report, error)) {
        std::cerr << "glyphor-plugin-check: " << error << "\n";
        return 2;
    }
    report.print(std::cout);
    return report.failed() ? 1 : 0;
}
