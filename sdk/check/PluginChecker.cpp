#include "PluginChecker.h"

#include "Probes.h"
#include "SymbolRules.h"

#include <KVDecodePlugin.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <set>

namespace plugincheck {
namespace {

constexpr int kMostImageSettings = 64;

std::string milliseconds(double ms) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f ms", ms);
    return text;
}

bool terminated(const char* field, size_t size) {
    return std::memchr(field, '\0', size) != nullptr;
}

uint32_t lightBit(const std::string& light) {
    return light == "IMAGE_VISIBLE" ? ZYR_LIGHT_VISIBLE : light == "IMAGE_IR" ? ZYR_LIGHT_IR
                                                      : light == "IMAGE_UV" ? ZYR_LIGHT_UV
                                                                            : 0;
}

std::vector<std::string> settingsProblems(const ZyrImageSettings& s, const std::string& expectedName) {
    std::vector<std::string> problems;
    if (!terminated(s.ImageName, sizeof s.ImageName) || !terminated(s.LightName, sizeof s.LightName)) {
        problems.push_back("image or light name without its terminating NUL");
        return problems;
    }
    const std::string name = s.ImageName, light = s.LightName;
    if (name != expectedName)
        problems.push_back("record names \"" + name + "\" where the required images list \"" + expectedName + "\"");
    const uint32_t bit = lightBit(light);
    if (!bit)
        problems.push_back(name + ": light \"" + light + "\" is not IMAGE_VISIBLE, IMAGE_IR or IMAGE_UV");
    else if (!(s.LightMask & bit) || (s.LightMask & ~(ZYR_LIGHT_VISIBLE | ZYR_LIGHT_IR | ZYR_LIGHT_UV)))
        problems.push_back(name + ": light mask " + std::to_string(s.LightMask) + " does not fit light " + light);
    const float scale = s.Camera.OutputScale, threshold = s.Camera.DetectThreshold;
    if (!std::isfinite(scale) || scale < 0 || !std::isfinite(threshold) || threshold < 0 || threshold > 255)
        problems.push_back(name + ": output scale or detect threshold out of range");
    if (s.Camera.Brightness > 255 || s.Camera.Contrast > 255 || s.Camera.LedIntensity > 100)
        problems.push_back(name + ": brightness, contrast or LED intensity out of range");
    return problems;
}

} // namespace

std::string defaultSettingsPath(const std::string& pluginPath) {
    const size_t slash = pluginPath.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : pluginPath.substr(0, slash + 1);
    std::string file = slash == std::string::npos ? pluginPath : pluginPath.substr(slash + 1);
    const size_t dot = file.rfind('.');
    if (dot != std::string::npos)
        file.erase(dot);
    return folder + "#" + file + ".ini";
}

bool PluginChecker::run(CheckReport& report, std::string& error) {
    std::vector<CheckImage> images;
    const bool haveImages = options_.imagePaths.empty() ? generatedSamples(options_.allSamples, images, error)
                                                        : imageFiles(options_.imagePaths, images, error);
    if (!haveImages)
        return false;
    if (!loads(report)) {
        for (const char* rule : {"required-images", "image-settings", "decode", "symbols", "sample-contents", "time",
                                 "bad-images", "empty-images", "pixel-formats", "threads"})
            report.skip(rule, "the plug-in did not load");
        return true;
    }
    checkRequiredImages(report);
    checkDecodes(report, images);
    checkOddImages(report);
    checkPixelFormats(report, images);
    ZyrReader_DestroyCachedData();
    checkThreads(report);
    return true;
}

bool PluginChecker::loads(CheckReport& report) {
    const ExportsAnswer exports = probeExports(options_.pluginPath);
    if (!exports.loadError.empty()) {
        report.fail("exports", exports.loadError);
        report.skip("interface-version", "not a loadable library");
    } else {
        std::string missing;
        for (const std::string& name : exports.missing)
            missing += (missing.empty() ? "" : ", ") + name;
        if (missing.empty())
            report.pass("exports", "all six KVDecode_* functions");
        else
            report.fail("exports", "missing " + missing + " (exported with C names and default visibility?)");
        if (!exports.hasVersion)
            report.skip("interface-version", "KVDecode_InterfaceVersion is missing");
        else if (exports.version != KVDECODE_INTERFACE_VERSION)
            report.fail("interface-version", "built for " + std::to_string(exports.version) + ", the library runs " +
                                                 std::to_string(KVDECODE_INTERFACE_VERSION));
        else
            report.pass("interface-version", std::to_string(exports.version));
    }
    const int32_t result = plugin_.load(options_.pluginPath, options_.settingsPath);
    if (result != ZYR_OK) {
        report.fail("open", "the library refused it: " + resultText(result) + ", settings " + options_.settingsPath);
        return false;
    }
    report.pass("open", "with " + options_.settingsPath);
    return true;
}

void PluginChecker::checkRequiredImages(CheckReport& report) {
    char buffer[1024];
    std::vector<std::string> problems;
    const int32_t result = ZyrReader_ImagePluginGetRequiredImages(plugin_.handle(), "", buffer, sizeof buffer);
    if (result != ZYR_OK) {
        problems.push_back("asking for them gave " + resultText(result));
    } else {
        std::string names = buffer;
        for (size_t start = 0;;) {
            const size_t comma = names.find(',', start);
            requiredNames_.push_back(names.substr(start, comma - start));
            if (comma == std::string::npos)
                break;
            start = comma + 1;
        }
        std::set<std::string> seen;
        for (const std::string& name : requiredNames_) {
            if (name.empty())
                problems.push_back("an empty image name in \"" + names + "\"");
            else if (name.size() >= sizeof(ZyrImageSettings::ImageName))
                problems.push_back("\"" + name + "\" is longer than an image-settings record holds (31)");
            else if (name.find_first_of(" \t") != std::string::npos)
                problems.push_back("\"" + name + "\" contains a space");
            else if (!seen.insert(name).second)
                problems.push_back("\"" + name + "\" listed twice");
        }
    }
    report.verdict("required-images", problems, buffer);

    problems.clear();
    std::string detail;
    int count = 0;
    for (; count < kMostImageSettings; ++count) {
        ZyrImageSettings settings;
        std::memset(&settings, 0, sizeof settings);
        if (ZyrReader_ImagePluginGetImageSettings(plugin_.handle(), &settings, count) != ZYR_OK)
            break;
        const std::string expected = size_t(count) < requiredNames_.size() ? requiredNames_[size_t(count)] : "";
        for (const std::string& p : settingsProblems(settings, expected))
            problems.push_back("record " + std::to_string(count) + ": " + p);
        if (terminated(settings.ImageName, sizeof settings.ImageName) &&
            terminated(settings.LightName, sizeof settings.LightName))
            detail += (detail.empty() ? "" : ", ") + std::string(settings.ImageName) + " " + settings.LightName;
    }
    if (count == kMostImageSettings)
        problems.push_back("the records never end (" + std::to_string(count) + " given)");
    else if (size_t(count) != requiredNames_.size())
        problems.push_back(std::to_string(count) + " records for " + std::to_string(requiredNames_.size()) +
                           " required images");
    ZyrImageSettings untouched;
    std::memset(&untouched, 0, sizeof untouched);
    if (ZyrReader_ImagePluginGetImageSettings(plugin_.handle(), &untouched, -1) == ZYR_OK)
        problems.push_back("index -1 gave a record");
    report.verdict("image-settings", problems, detail);
}

void PluginChecker::checkDecodes(CheckReport& report, const std::vector<CheckImage>& images) {
    std::vector<std::string> failures, malformed, contents;
    size_t read = 0, symbols = 0, known = 0, timedOut = 0;
    int eciUnreported = 0;
    double total = 0, slowest = 0;
    std::string slowestName;
    for (const CheckImage& image : images) {
        decoded_.push_back(plugin_.decode(image));
        const Decoded& d = decoded_.back();
        total += d.milliseconds;
        if (d.milliseconds > slowest) {
            slowest = d.milliseconds;
            slowestName = image.name();
        }
        if (d.result != ZYR_OK)
            failures.push_back(image.name() + ": " + resultText(d.result));
        if (d.result == ZYR_ERR_PLUGIN_TIMEOUT)
            ++timedOut;
        read += d.symbols.empty() ? 0 : 1;
        symbols += d.symbols.size();
        for (const SymbolCopy& s : d.symbols)
            for (const std::string& p : symbolProblems(s, image.view()->Width, image.view()->Height))
                malformed.push_back(image.name() + ": " + p);
        if (image.known) {
            ++known;
            for (const std::string& p : contentProblems(image, d.symbols, eciUnreported))
                contents.push_back(image.name() + ": " + p);
        }
    }
    const std::string counts = std::to_string(images.size()) + " images, " + std::to_string(read) + " with symbols, " +
                               std::to_string(symbols) + " symbols";
    report.verdict("decode", failures, counts);
    report.verdict("symbols", malformed, std::to_string(symbols) + " symbols well-formed");
    if (known)
        report.verdict("sample-contents", contents,
                       "every symbol read from " + std::to_string(known) + " generated samples is one they hold" +
                           (eciUnreported ? " (" + std::to_string(eciUnreported) + " without the ECI it carries)" : ""));
    else
        report.skip("sample-contents", "no images with known contents");

    std::vector<std::string> slow;
    if (timedOut)
        slow.push_back(std::to_string(timedOut) + " decodes ran past the plug-in's time limit");
    if (options_.maxMilliseconds > 0 && slowest > options_.maxMilliseconds)
        slow.push_back(slowestName + " took " + milliseconds(slowest) + ", more than " +
                       milliseconds(options_.maxMilliseconds));
    const std::string timing = "mean " + milliseconds(images.empty() ? 0 : total / double(images.size())) +
                               " per image, slowest " + milliseconds(slowest) + " (" + slowestName + ")";
    if (!slow.empty())
        slow.push_back(timing);
    report.verdict("time", slow, timing);
}

void PluginChecker::checkOddImages(CheckReport& report) {
    std::vector<std::string> problems;
    const std::vector<CheckImage> bad = badImages();
    for (const CheckImage& image : bad) {
        const Decoded d = plugin_.decode(image);
        if (d.result != ZYR_OK && d.result != ZYR_ERR_BAD_ARGUMENT)
            problems.push_back(image.name() + ": " + resultText(d.result));
        for (const SymbolCopy& s : d.symbols)
            for (const std::string& p : symbolProblems(s, image.view()->Width, image.view()->Height))
                problems.push_back(image.name() + ": " + p);
    }
    report.verdict("bad-images", problems,
                   std::to_string(bad.size()) + " tiny, strip, noise and padded images answered or refused");

    problems.clear();
    const std::vector<CheckImage> empty = emptyImages();
    for (const CheckImage& image : empty) {
        const Decoded d = plugin_.decode(image);
        if (d.result != ZYR_OK)
            problems.push_back(image.name() + ": " + resultText(d.result));
        else if (!d.symbols.empty())
            problems.push_back(image.name() + ": " + std::to_string(d.symbols.size()) + " symbols, first \"" +
                               printable(d.symbols[0].bytes) + "\"");
    }
    report.verdict("empty-images", problems, std::to_string(empty.size()) + " blank images, no symbols");
}

void PluginChecker::checkPixelFormats(CheckReport& report, const std::vector<CheckImage>& images) {
    // The first grey image something was read from, given again in the other layouts.
    size_t index = 0;
    while (index < images.size() &&
           (decoded_[index].symbols.empty() || images[index].view()->PixelFormat != ZYR_PIXEL_GREY8))
        ++index;
    if (index == images.size()) {
        report.skip("pixel-formats", "nothing was read from a grey image");
        return;
    }
    auto bytesOf = [](const Decoded& d) {
        std::multiset<std::string> bytes;
        for (const SymbolCopy& s : d.symbols)
            bytes.insert(s.bytes);
        return bytes;
    };
    const auto expected = bytesOf(decoded_[index]);
    std::vector<std::string> problems;
    for (const CheckImage& variant : {padded(images[index]), asRgb(images[index]), asBgra(images[index])}) {
        const Decoded d = plugin_.decode(variant);
        if (d.result != ZYR_OK)
            problems.push_back(variant.name() + ": " + resultText(d.result));
        else if (bytesOf(d) != expected)
            problems.push_back(variant.name() + ": " + std::to_string(d.symbols.size()) + " symbols, not the " +
                               std::to_string(expected.size()) + " read from the packed grey image");
    }
    report.verdict("pixel-formats", problems, images[index].name() + " read alike as padded grey, RGB24 and BGRA32");
}

void PluginChecker::checkThreads(CheckReport& report) {
    std::string detail;
    if (probeThreads(options_.pluginPath, options_.settingsPath, options_.threads, imageArguments(), detail))
        report.pass("threads", detail);
    else
        report.fail("threads", detail);
}

std::vector<std::string> PluginChecker::imageArguments() const {
    std::vector<std::string> arguments = options_.imagePaths;
    if (arguments.empty() && options_.allSamples)
        arguments.push_back("--all-samples");
    return arguments;
}

} // namespace plugincheck
