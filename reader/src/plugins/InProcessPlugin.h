// A plug-in loaded into the library's own process with dlopen.
#ifndef ZYR_PLUGINS_IN_PROCESS_PLUGIN_H
#define ZYR_PLUGINS_IN_PROCESS_PLUGIN_H

#include "KVDecodePlugin.h"
#include "plugins/PluginConnection.h"

#include <memory>

namespace zyr {

class InProcessPlugin : public PluginConnection {
public:
    // Loads the library, checks its interface version and opens an instance. On failure nothing
    // stays loaded and the result says why: ZYR_ERR_PLUGIN_LOAD (not a loadable plug-in),
    // ZYR_ERR_PLUGIN_VERSION, ZYR_ERR_PLUGIN_OPEN. reason gets a line for the log.
    static int32_t open(const char* pluginPath, const char* settingsPath, uint64_t cameraDevice,
                        std::unique_ptr<PluginConnection>& plugin, std::string& reason);

    ~InProcessPlugin() override;
    InProcessPlugin(const InProcessPlugin&) = delete;
    InProcessPlugin& operator=(const InProcessPlugin&) = delete;

    int32_t requiredImages(std::string& names) override;
    int32_t imageSettings(int32_t index, ZyrImageSettings& settings) override;
    int32_t decode(const ZyrImage& image, const char* imageName,
                   std::vector<DecodedSymbol>& symbols) override;

private:
    struct Exports {
        KVDecode_InterfaceVersionFn version = nullptr;
        KVDecode_OpenFn open = nullptr;
        KVDecode_GetRequiredImagesFn requiredImages = nullptr;
        KVDecode_GetImageSettingsFn imageSettings = nullptr;
        KVDecode_DecodeFn decode = nullptr;
        KVDecode_CloseFn close = nullptr;
    };

    InProcessPlugin(void* library, const Exports& exports, void* instance)
        : library_(library), exports_(exports), instance_(instance) {}

    void* library_;
    Exports exports_;
    void* instance_;
};

} // namespace zyr

#endif
