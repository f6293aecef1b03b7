// Checks one plug-in against the plug-in interface, through the reader library as the bench
// loads it, rule by rule. Rules that need a plug-in that loaded are skipped when it did not.
#pragma once

#include "CheckImage.h"
#include "CheckReport.h"
#include "DecodeRun.h"

#include <string>
#include <vector>

namespace plugincheck {

struct CheckOptions {
    std::string pluginPath;
    std::string settingsPath;             // default: #KVDECODE_<Name>.ini beside the plug-in
    std::vector<std::string> imagePaths;  // default: generated samples
    bool allSamples = false;
    int threads = 4;
    double maxMilliseconds = 0;           // 0: only the plug-in's time limit bounds a decode
};

class PluginChecker {
public:
    explicit PluginChecker(const CheckOptions& options) : options_(options) {}
    // Runs every rule into the report; false (and error) when the images cannot be had.
    bool run(CheckReport& report, std::string& error);

private:
    bool loads(CheckReport& report);
    void checkRequiredImages(CheckReport& report);
    void checkDecodes(CheckReport& report, const std::vector<CheckImage>& images);
    void checkOddImages(CheckReport& report);
    void checkPixelFormats(CheckReport& report, const std::vector<CheckImage>& images);
    void checkThreads(CheckReport& report);
    std::vector<std::string> imageArguments() const;

    CheckOptions options_;
    LoadedPlugin plugin_;
    std::vector<std::string> requiredNames_;
    std::vector<Decoded> decoded_; // of the main images, in order
};

// #KVDECODE_<Name>.ini in the folder of KVDECODE_<Name>.so
std::string defaultSettingsPath(const std::string& pluginPath);

} // namespace plugincheck
