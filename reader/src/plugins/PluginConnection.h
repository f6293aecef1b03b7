// The host's view of one opened plug-in. The in-process implementation calls the plug-in's
// exports directly; a connection to a plug-in running in its own process can take its place
// without the host changing.
#ifndef ZYR_PLUGINS_PLUGIN_CONNECTION_H
#define ZYR_PLUGINS_PLUGIN_CONNECTION_H

#include "ZyrReaderLowLevelAPI.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zyr {

// A symbol as the plug-in reported it, copied out of the plug-in's memory.
struct DecodedSymbol {
    int32_t symbology = ZYR_SYM_UNKNOWN;
    int32_t dataType = ZYR_DATA_BINARY;
    int32_t eci = ZYR_ECI_NONE;
    std::vector<uint8_t> data;
    ZyrPoint corners[4] = {};
};

class PluginConnection {
public:
    virtual ~PluginConnection() = default; // closes the plug-in

    // Each returns a ZyrReaderError code.
    virtual int32_t requiredImages(std::string& names) = 0;
    virtual int32_t imageSettings(int32_t index,
                                  ZyrImageSettings& settings) = 0; // ZYR_ERR_BAD_ARGUMENT past the last
    virtual int32_t decode(const ZyrImage& image, const char* imageName,
                           std::vector<DecodedSymbol>& symbols) = 0;
};

} // namespace zyr

#endif
