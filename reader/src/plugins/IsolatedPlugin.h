// A plug-in running in a plug-in host process of its own, started at its first decode. A crash,
// hang or garbage reply of the plug-in costs that one call and the process; the next call starts a
// fresh host.
#ifndef ZYR_PLUGINS_ISOLATED_PLUGIN_H
#define ZYR_PLUGINS_ISOLATED_PLUGIN_H

#include "plugins/FrameChannel.h"
#include "plugins/HostMessages.h"
#include "plugins/HostProcess.h"
#include "plugins/PluginConnection.h"
#include "plugins/SharedImageBuffer.h"

#include <chrono>
#include <memory>
#include <string>

namespace zyr {

class IsolatedPlugin : public PluginConnection {
public:
    // The host executable beside this library.
    static std::string hostExecutable();

    // Has a host load and open the plug-in, keeps its answers and ends it (a plug-in opened before
    // from the same unchanged files needs no host); the first decode starts the host that stays.
    // Fails with the plug-in's own load codes
    // (ZYR_ERR_PLUGIN_LOAD, _VERSION, _OPEN), or ZYR_ERR_PLUGIN_CRASHED / _TIMEOUT when the host
    // died or hung while opening it; reason gets a line for the log.
    static int32_t open(const std::string& executable, const char* pluginPath, const char* settingsPath,
                        uint64_t cameraDevice, std::chrono::milliseconds timeLimit,
                        std::unique_ptr<PluginConnection>& plugin, std::string& reason);

    // Forgets the answers kept from earlier opens.
    static void forgetOpenReplies();

    ~IsolatedPlugin() override;

    // Answered from what the host reported at open.
    int32_t requiredImages(std::string& names) override;
    int32_t imageSettings(int32_t index, ZyrImageSettings& settings) override;

    // ZYR_ERR_PLUGIN_CRASHED when the host died during the call, ZYR_ERR_PLUGIN_TIMEOUT when it ran
    // past the time limit (it is killed), ZYR_ERR_PLUGIN_DECODE for a reply that makes no sense.
    // No symbols in any of these cases.
    int32_t decode(const ZyrImage& image, const char* imageName,
                   std::vector<DecodedSymbol>& symbols) override;

    pid_t hostPid() const { return host_ ? host_->pid() : -1; }

private:
    IsolatedPlugin(std::string executable, OpenRequest request, std::chrono::milliseconds timeLimit)
        : executable_(std::move(executable)), request_(std::move(request)), timeLimit_(timeLimit) {}

    // toDecode: the host stays for decodes (else it only answers the open; the log says which).
    int32_t startHost(std::string& reason, bool toDecode);
    // Ends the host after a failed exchange and turns the failure into the call's result.
    int32_t lose(FrameChannel::Status status, const char* during, std::string& reason);

    std::string executable_;
    OpenRequest request_;
    std::chrono::milliseconds timeLimit_;
    SharedImageBuffer images_;
    std::unique_ptr<HostProcess> host_;
    OpenReply opened_;
};

} // namespace zyr

#endif
