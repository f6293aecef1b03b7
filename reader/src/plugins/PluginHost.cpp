#include "plugins/PluginHost.h"

#include "core/Log.h"
#include "core/ShutdownHooks.h"
#include "plugins/InProcessPlugin.h"
#include "plugins/IsolatedPlugin.h"
#include "plugins/IsolationSettings.h"

namespace zyr {
namespace {

ShutdownHookRegistration closePlugins{[] { PluginHost::instance().closeAll(); }};

} // namespace

PluginHost& PluginHost::instance() {
    static PluginHost host;
    return host;
}

int32_t PluginHost::load(const char* pluginPath, const char* settingsPath, uint64_t cameraDevice,
                         uint64_t& handle) {
    auto entry = std::make_shared<Entry>();
    std::string reason;
    IsolationSettings isolation;
    int32_t result = ZYR_ERR_PLUGIN_OPEN;
    if (isolation.read(settingsPath ? settingsPath : "", reason))
        result =
            isolation.isolated
                ? IsolatedPlugin::open(IsolatedPlugin::hostExecutable(), pluginPath, settingsPath,
                                       cameraDevice, isolation.timeLimit, entry->connection, reason)
                : InProcessPlugin::open(pluginPath, settingsPath, cameraDevice, entry->connection, reason);
    if (result != ZYR_OK) {
        Log::write(ZYR_LOG_PLUGINS, LogError, "plug-in %s not loaded: %s", pluginPath, reason.c_str());
        return result;
    }
    entry->path = pluginPath;
    std::lock_guard<std::mutex> lock(mutex_);
    handle = nextHandle_++;
    plugins_[handle] = std::move(entry);
    Log::write(ZYR_LOG_PLUGINS, LogInfo, "plug-in %s loaded with %s as handle %llu (%s)", pluginPath,
               settingsPath ? settingsPath : "", static_cast<unsigned long long>(handle),
               isolation.isolated ? "own process" : "in process");
    return ZYR_OK;
}

std::shared_ptr<PluginHost::Entry> PluginHost::find(uint64_t handle) const {
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = plugins_.find(handle);
    return it == plugins_.end() ? nullptr : it->second;
}

int32_t PluginHost::requiredImages(uint64_t handle, std::string& names) {
    std::shared_ptr<Entry> entry = find(handle);
    if (!entry)
        return ZYR_ERR_UNKNOWN_HANDLE;
    std::lock_guard<std::mutex> lock(entry->callMutex);
    return entry->connection->requiredImages(names);
}

int32_t PluginHost::imageSettings(uint64_t handle, int32_t index, ZyrImageSettings& settings) {
    std::shared_ptr<Entry> entry = find(handle);
    if (!entry)
        return ZYR_ERR_UNKNOWN_HANDLE;
    std::lock_guard<std::mutex> lock(entry->callMutex);
    return entry->connection->imageSettings(index, settings);
}

int32_t PluginHost::decode(uint64_t handle, const ZyrImage& image, const char* imageName,
                           std::vector<DecodedSymbol>& symbols) {
    std::shared_ptr<Entry> entry = find(handle);
    if (!entry)
        return ZYR_ERR_UNKNOWN_HANDLE;
    std::lock_guard<std::mutex> lock(entry->callMutex);
    return entry->connection->decode(image, imageName, symbols);
}

void PluginHost::closeAll() {
    std::map<uint64_t, std::shared_ptr<Entry>> closing;
    {
        std::lock_guard<std::mutex> lock(mutex_);
        closing.swap(plugins_);
    }
    IsolatedPlugin::forgetOpenReplies();
    for (auto& [handle, entry] : closing)
        Log::write(ZYR_LOG_PLUGINS, LogInfo, "plug-in %s (handle %llu) closed", entry->path.c_str(),
                   static_cast<unsigned long long>(handle));
    // Entries still in use by a decode close when that decode lets go of them.
}

size_t PluginHost::loadedCount() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return plugins_.size();
}

} // namespace zyr
