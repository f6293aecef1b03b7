#include "plugins/IsolatedPlugin.h"

#include "core/DefaultFolders.h"
#include "core/Log.h"

#ifndef ZYR_PLUGIN_HOST_NAME
#define ZYR_PLUGIN_HOST_NAME "zyrreader-pluginhost"
#endif

namespace zyr {
namespace {

bool knownResult(int32_t code) {
    return code >= ZYR_OK && code <= ZYR_ERR_ALREADY_INITIALISED;
}

} // namespace

std::string IsolatedPlugin::hostExecutable() {
    return DefaultFolders::withSlash(DefaultFolders::libraryFolder()) + ZYR_PLUGIN_HOST_NAME;
}

int32_t IsolatedPlugin::open(const std::string& executable, const char* pluginPath, const char* settingsPath,
                             uint64_t cameraDevice, std::chrono::milliseconds timeLimit,
                             std::unique_ptr<PluginConnection>& plugin, std::string& reason) {
    OpenRequest request;
    request.pluginPath = pluginPath;
    request.settingsPath = settingsPath ? settingsPath : "";
    request.cameraDevice = cameraDevice;
    if (request.pluginPath.size() > kMaxHostPath || request.settingsPath.size() > kMaxHostPath) {
        reason = "path too long";
        return ZYR_ERR_BAD_ARGUMENT;
    }
    std::unique_ptr<IsolatedPlugin> isolated(new IsolatedPlugin(executable, std::move(request), timeLimit));
    if (!isolated->images_.create(reason))
        return ZYR_ERR_PLUGIN_LOAD;
    const int32_t result = isolated->startHost(reason);
    if (result == ZYR_OK)
        plugin = std::move(isolated);
    return result;
}

IsolatedPlugin::~IsolatedPlugin() = default; // the host closes the plug-in on the socket's end

int32_t IsolatedPlugin::startHost(std::string& reason) {
    if (!HostProcess::start(executable_, host_, reason))
        return ZYR_ERR_PLUGIN_LOAD;
    const auto deadline = FrameChannel::Clock::now() + timeLimit_;
    FrameChannel::Status status = host_->channel().send(HostOpen, encodeMessage(request_), images_.fd());
    uint32_t type = 0;
    std::vector<uint8_t> payload;
    if (status == FrameChannel::Status::Ok)
        status = host_->channel().receive(type, payload, &deadline, host_->exitFd());
    OpenReply reply;
    if (status == FrameChannel::Status::Ok &&
        (type != HostOpened || !decodeMessage(payload, reply) || !knownResult(reply.code)))
        status = FrameChannel::Status::Malformed;
    if (status != FrameChannel::Status::Ok) {
        const int32_t result = lose(status, "open", reason);
        return result == ZYR_ERR_PLUGIN_DECODE ? ZYR_ERR_PLUGIN_LOAD : result;
    }
    if (reply.code != ZYR_OK) {
        reason = reply.reason;
        host_.reset(); // it exits by itself after a failed open
        return reply.code;
    }
    opened_ = std::move(reply);
    Log::write(ZYR_LOG_PLUGINS, LogDetail, "plug-in %s runs in host process %d", request_.pluginPath.c_str(),
               int(host_->pid()));
    return ZYR_OK;
}

int32_t IsolatedPlugin::lose(FrameChannel::Status status, const char* during, std::string& reason) {
    const pid_t pid = host_->pid();
    const std::string ending = host_->stop();
    host_.reset();
    int32_t result;
    switch (status) {
    case FrameChannel::Status::TimedOut:
        reason = "ran past its time limit of " + std::to_string(timeLimit_.count()) + " ms; host " +
                 std::to_string(pid) + " stopped";
        result = ZYR_ERR_PLUGIN_TIMEOUT;
        break;
    case FrameChannel::Status::Malformed:
        reason = "host " + std::to_string(pid) + " sent a malformed reply and was stopped";
        result = ZYR_ERR_PLUGIN_DECODE;
        break;
    default:
        reason = "host " + std::to_string(pid) + " " + ending;
        result = ZYR_ERR_PLUGIN_CRASHED;
        break;
    }
    Log::write(ZYR_LOG_PLUGINS, LogError, "plug-in %s during %s: %s", request_.pluginPath.c_str(), during,
               reason.c_str());
    return result;
}

int32_t IsolatedPlugin::requiredImages(std::string& names) {
    names = opened_.names;
    return opened_.namesCode;
}

int32_t IsolatedPlugin::imageSettings(int32_t index, ZyrImageSettings& settings) {
    if (index < 0)
        return ZYR_ERR_BAD_ARGUMENT;
    if (size_t(index) >= opened_.settings.size())
        return opened_.settingsEndCode;
    settings = opened_.settings[size_t(index)];
    return ZYR_OK;
}

int32_t IsolatedPlugin::decode(const ZyrImage& image, const char* imageName,
                               std::vector<DecodedSymbol>& symbols) {
    std::string reason;
    if (host_ && !host_->running()) {
        Log::write(ZYR_LOG_PLUGINS, LogError, "plug-in %s: host %d %s while idle",
                   request_.pluginPath.c_str(), int(host_->pid()), host_->stop().c_str());
        host_.reset();
    }
    if (!host_) {
        const int32_t started = startHost(reason);
        if (started != ZYR_OK) {
            Log::write(ZYR_LOG_PLUGINS, LogError, "plug-in %s: no new host: %s", request_.pluginPath.c_str(),
                       reason.c_str());
            return started;
        }
    }
    DecodeRequest request;
    if (!images_.hold(image, request.stride, request.bytes))
        return ZYR_ERR_OUT_OF_MEMORY;
    request.width = image.Width;
    request.height = image.Height;
    request.pixelFormat = image.PixelFormat;
    request.imageName = imageName ? imageName : "";
    if (request.imageName.size() > kMaxHostText)
        return ZYR_ERR_BAD_ARGUMENT;

    host_->moveToCallersProcessor();
    const auto deadline = FrameChannel::Clock::now() + timeLimit_;
    FrameChannel::Status status = host_->channel().send(HostDecode, encodeMessage(request));
    uint32_t type = 0;
    std::vector<uint8_t> payload;
    if (status == FrameChannel::Status::Ok)
        status = host_->channel().receive(type, payload, &deadline, host_->exitFd());
    DecodeReply reply;
    if (status == FrameChannel::Status::Ok &&
        (type != HostDecoded || !decodeMessage(payload, reply) || !knownResult(reply.code)))
        status = FrameChannel::Status::Malformed;
    if (status != FrameChannel::Status::Ok)
        return lose(status, "decode", reason);
    symbols = std::move(reply.symbols);
    return reply.code;
}

} // namespace zyr
