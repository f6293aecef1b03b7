// A plug-in loaded through the reader library, and what one decode call gave back.
#pragma once

#include "CheckImage.h"

#include <ZyrReaderLowLevelAPI.h>

#include <cstdint>
#include <string>
#include <vector>

namespace plugincheck {

// A symbol copied out of the library's result before it is released.
struct SymbolCopy {
    int32_t symbology = 0;
    int32_t dataType = 0;
    int32_t eci = 0;
    int32_t length = 0;
    std::string bytes;
    bool terminated = false; // the byte after the data was 0
    ZyrPoint corners[4] = {};

    bool operator==(const SymbolCopy& other) const;
};

struct Decoded {
    int32_t result = ZYR_OK;
    std::vector<SymbolCopy> symbols;
    double milliseconds = 0;
};

// One loaded plug-in; unloaded (with everything the library holds) by ZyrReader_DestroyCachedData.
class LoadedPlugin {
public:
    // ZYR_OK or the library's error code.
    int32_t load(const std::string& pluginPath, const std::string& settingsPath);
    uint64_t handle() const { return handle_; }

    // Decodes the image as the plug-in's first required image, on the calling thread.
    Decoded decode(const CheckImage& image) const;

private:
    uint64_t handle_ = 0;
};

// "OK", or the library's text for a result code with the code.
std::string resultText(int32_t result);

} // namespace plugincheck
