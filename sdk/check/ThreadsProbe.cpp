#include "Probes.h"

#include "CheckImage.h"
#include "DecodeRun.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <thread>
#include <unistd.h>

namespace plugincheck {
namespace {

constexpr size_t kImages = 8;
constexpr int kTimeoutSeconds = 300;

std::string lowerTrimmed(std::string s) {
    s.erase(0, s.find_first_not_of(" \t\r"));
    s.erase(s.find_last_not_of(" \t\r") + 1);
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return s;
}

// The settings with [Host] Isolated=0 in place of whatever they said about it.
bool writeInProcessCopy(const std::string& settingsPath, std::string& copyPath) {
    std::ifstream in(settingsPath, std::ios::binary);
    if (!in)
        return false;
    std::ostringstream text;
    std::string line, section;
    while (std::getline(in, line)) {
        const std::string key = lowerTrimmed(line);
        if (!key.empty() && key[0] == '[')
            section = key;
        else if (section == "[host]" && key.rfind("isolated", 0) == 0 &&
                 lowerTrimmed(key.substr(0, key.find('='))) == "isolated")
            continue;
        text << line << '\n';
    }
    text << "\n[Host]\nIsolated=0\n";
    const char* folder = std::getenv("TMPDIR");
    std::string pattern = std::string(folder && *folder ? folder : "/tmp") + "/glyphor-check-XXXXXX";
    const int fd = mkstemp(pattern.data());
    if (fd < 0)
        return false;
    const std::string bytes = text.str();
    const bool written = write(fd, bytes.data(), bytes.size()) == ssize_t(bytes.size());
    close(fd);
    copyPath = pattern;
    return written;
}

bool loadImages(const std::vector<std::string>& arguments, std::vector<CheckImage>& images, std::string& error) {
    const bool all = std::find(arguments.begin(), arguments.end(), "--all-samples") != arguments.end();
    std::vector<std::string> files;
    std::copy_if(arguments.begin(), arguments.end(), std::back_inserter(files),
                 [](const std::string& a) { return a != "--all-samples"; });
    if (!(files.empty() ? generatedSamples(all, images, error) : imageFiles(files, images, error)))
        return false;
    if (images.size() > kImages)
        images.erase(images.begin() + kImages, images.end());
    return true;
}

} // namespace

int runThreadsProbe(const std::string& pluginPath, const std::string& settingsPath, int threads,
                    const std::vector<std::string>& imageArguments) {
    std::vector<CheckImage> images;
    std::string error;
    if (!loadImages(imageArguments, images, error)) {
        std::printf("fail %s\n", error.c_str());
        return 0;
    }
    std::vector<LoadedPlugin> plugins{size_t(threads)};
    for (LoadedPlugin& plugin : plugins) {
        const int32_t result = plugin.load(pluginPath, settingsPath);
        if (result != ZYR_OK) {
            std::printf("fail loading it in the process: %s\n", resultText(result).c_str());
            return 0;
        }
    }
    std::vector<Decoded> alone;
    for (const CheckImage& image : images)
        alone.push_back(plugins[0].decode(image));

    // Each thread has its own instance and starts at another image, so that different images
    // are decoded at the same time.
    std::vector<std::vector<Decoded>> together(size_t(threads), std::vector<Decoded>(images.size()));
    std::vector<std::thread> workers;
    for (size_t t = 0; t < size_t(threads); ++t)
        workers.emplace_back([&, t] {
            for (size_t i = 0; i < images.size(); ++i) {
                const size_t k = (i + t) % images.size();
                together[t][k] = plugins[t].decode(images[k]);
            }
        });
    for (std::thread& worker : workers)
        worker.join();
    ZyrReader_DestroyCachedData();

    for (size_t t = 0; t < size_t(threads); ++t)
        for (size_t k = 0; k < images.size(); ++k)
            if (together[t][k].result != alone[k].result || together[t][k].symbols != alone[k].symbols) {
                const Decoded& a = alone[k];
                const Decoded& b = together[t][k];
                std::printf("fail %s: %zu symbols (%s) one at a time, %s with %d instances at once\n",
                            images[k].name().c_str(), a.symbols.size(), resultText(a.result).c_str(),
                            a.symbols.size() == b.symbols.size() && a.result == b.result
                                ? "other symbols"
                                : (std::to_string(b.symbols.size()) + " (" + resultText(b.result) + ")").c_str(),
                            threads);
                return 0;
            }
    std::printf("ok %d instances in one process decoded %zu images at once as they did one at a time\n", threads,
                images.size());
    return 0;
}

bool probeThreads(const std::string& pluginPath, const std::string& settingsPath, int threads,
                  const std::vector<std::string>& imageArguments, std::string& detail) {
    std::string copy;
    if (!writeInProcessCopy(settingsPath, copy)) {
        detail = "cannot write a copy of the settings file";
        if (!copy.empty())
            std::remove(copy.c_str());
        return false;
    }
    std::vector<std::string> arguments = {kThreadsProbe, std::to_string(threads), pluginPath, copy};
    arguments.insert(arguments.end(), imageArguments.begin(), imageArguments.end());
    const ChildOutcome outcome = runSelf(arguments, kTimeoutSeconds);
    std::remove(copy.c_str());
    std::string answer = outcome.output;
    while (!answer.empty() && (answer.back() == '\n' || answer.back() == '\r'))
        answer.pop_back();
    answer = answer.substr(answer.rfind('\n') == std::string::npos ? 0 : answer.rfind('\n') + 1);
    if (!outcome.finished || outcome.signal || outcome.exitCode != 0) {
        detail = "the process decoding with " + std::to_string(threads) + " instances ended with " +
                 outcome.describe(kTimeoutSeconds);
        return false;
    }
    if (answer.rfind("ok ", 0) == 0) {
        detail = answer.substr(3);
        return true;
    }
    detail = answer.rfind("fail ", 0) == 0 ? answer.substr(5) : "no answer from the process decoding with threads";
    return false;
}

} // namespace plugincheck
