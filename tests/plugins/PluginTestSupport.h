#pragma once

#include <ZyrReaderLowLevelAPI.h>

#include <cstdint>
#include <string>
#include <vector>

namespace plugintest {

std::string pluginPath(const std::string& name);       // KVDECODE_<name>.so in the build's plug-in folder
std::string settingsPath(const std::string& name);     // its #KVDECODE_<name>.ini
std::string samplePath(const std::string& sampleName); // the generated image of a catalogue sample
std::string fixturePath(const std::string& fileName);  // test-only plug-ins and files
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

uint64_t loadPlugin(const std::string& name); // fails the test when the plug-in does not load

// Decodes with ZyrReader_ImagePluginDecode, releasing each symbol in the callback as the bench does.
int32_t decode(uint64_t handle, const ZyrImage* image, std::vector<SeenSymbol>& seen, int32_t tag = 7);
std::vector<SeenSymbol> decodeSample(uint64_t handle, const std::string& sampleName);

} // namespace plugintest
