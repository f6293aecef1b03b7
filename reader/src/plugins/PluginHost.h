// The loaded plug-ins of the process, by handle. Calls for one plug-in are serialised; different
// plug-ins run in parallel on different threads.
#ifndef ZYR_PLUGINS_PLUGIN_HOST_H
#define ZYR_PLUGINS_PLUGIN_HOST_H

#include "plugins/PluginConnection.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace zyr {

class PluginHost {
public:
    static PluginHost& instance();

    // Each returns a ZyrReaderError code; ZYR_ERR_UNKNOWN_HANDLE for a handle not (or no longer) held.
    int32_t load(const char* pluginPath, const char* settingsPath, uint64_t cameraDevice, uint64_t& handle);
    int32_t requiredImages(uint64_t handle, std::string& names);
    int32_t imageSettings(uint64_t handle, int32_t index, ZyrImageSettings& settings);
    int32_t decode(uint64_t handle, const ZyrImage& image, const char* imageName,
                   std::vector<DecodedSymbol>& symbols);

    // Closes every plug-in. A decode running meanwhile finishes on its plug-in, which closes after it.
    void closeAll();
    size_t loadedCount() const;

private:
    struct Entry {
        std::mutex callMutex;
        std::unique_ptr<PluginConnection> connection;
        std::string path;
    };
    std::shared_ptr<Entry> find(uint64_t handle) const;

    mutable std::mutex mutex_;
    std::map<uint64_t, std::shared_ptr<Entry>> plugins_;
    uint64_t nextHandle_ = 1;
};

} // namespace zyr

#endif
