#pragma once

#include <ZyrReaderLowLevelAPI.h>

#include <cstdint>
#include <string>
#include <thread>
#include <vector>

// Shared by the plug-in tests and the isolation tests: paths, loading and decoding through the
// public reader calls.
namespace plugintest {

std::string pluginPath(const std::string& name);       // KVDECODE_<name>.so in the build's plug-in folder
std::string settingsPath(const std::string& name);     // its #KVDECODE_<name>.ini
std::string samplePath(const std::string& sampleName); // the generated image of a catalogue sample
std::string fixturePath(const std::string& fileName);  // test-only plug-ins and files
std::string writeFile(const std::string& name, const std::string& text); // in a folder of its own
bool isLoaded(const std::string& libraryPath);         // the library is mapped in this process

// A symbol as the callback saw it, copied before the symbol result was released.
struct SeenSymbol {
    int32_t index = -1;
    int32_t count = -1;
    int32_t tag = 0;
    int32_t symbology = 0;
    int32_t orientation = 0;
    int32_t dataType = 0;
    int32_t eci = 0;
    std::string data;
    bool zeroAfterData = false; // the byte after the data was 0
    int32_t releaseResult = -1; // what ZyrReader_DestroyCachedObject answered
    std::thread::id thread;     // the callback's
};

struct Decoded {
    int32_t result = -1;
    std::vector<SeenSymbol> symbols;
    std::vector<std::string> texts() const; // the symbols' data in the order delivered
};

// An image file held in memory as the library's image view.
class ImageFile {
public:
    explicit ImageFile(const std::string& path); // throws std::runtime_error when unreadable
    const ZyrImage* image() const { return &image_; }

private:
    std::vector<uint8_t> pixels_;
    ZyrImage image_{};
};

// Both fail the test when the plug-in does not load.
uint64_t load(const std::string& plugin, const std::string& settings);
uint64_t loadPlugin(const std::string& name); // with its own settings file

// Decodes with ZyrReader_ImagePluginDecode, releasing each symbol in the callback as the bench does.
Decoded decode(uint64_t handle, const ZyrImage* image, int32_t tag = 7);
std::vector<SeenSymbol> decodeSample(uint64_t handle, const std::string& sampleName);

} // namespace plugintest
