#include "plugins/IsolatedPlugin.h"

#include "core/DefaultFolders.h"
#include "core/Log.h"

#include <sys/stat.h>

#include <map>
#include <mutex>

#ifndef ZYR_PLUGIN_HOST_NAME
#define ZYR_PLUGIN_HOST_NAME "zyrreader-pluginhost"
#endif

namespace zyr {
namespace {

bool knownResult(int32_t code) {
    return code >= ZYR_OK && code <= ZYR_ERR_ALREADY_INITIALISED;
}

// What a plug-in answered at open, by what it was opened from, so that loading it again (each
// batch job loads every plug-in) needs no host. The files' identity and change time are part of
// the key: an edited settings file is opened afresh.
class OpenReplies {
public:
    static OpenReplies& instance() {
        static OpenReplies replies;
        return replies;
    }

    static std::string keyOf(const OpenRequest& request) {
        std::string key = std::to_string(request.cameraDevice);
        for (const std::string& path : {request.pluginPath, request.settingsPath}) {
            struct stat info {};
            if (stat(path.c_str(), &info) != 0)
                return ""; // nothing to recognise it by: not kept
            key += '\n' + path + '\n' + std::to_string(info.st_dev) + ':' + std::to_string(info.st_ino) +
                   ':' + std::to_string(info.st_size) + ':' + std::to_string(info.st_mtim.tv_sec) + '.' +
                   std::to_string(info.st_mtim.tv_nsec);
        }
        return key;
    }

    bool find(const std::string& key, OpenReply& reply) {
        std::lock_guard<std::mutex> lock(mutex_);
        auto it = replies_.find(key);
        if (key.empty() || it == replies_.end())
            return false;
        reply = it->second;
        return true;
    }
    void keep(const std::string& key, const OpenReply& reply) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!key.empty())
            replies_[key] = reply;
    }
    void clear() {
        std::lock_guard<std::mutex> lock(mutex_);
        replies_.clear();
    }

private:
    std::mutex mutex_;
    std::map<std::string, OpenReply> replies_;
};

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
    const std::string key = OpenReplies::keyOf(request);
    std::unique_ptr<IsolatedPlugin> isolated(new IsolatedPlugin(executable, std::move(request), timeLimit));
    if (!isolated->images_.create(reason))
        return ZYR_ERR_PLUGIN_LOAD;
    if (!OpenReplies::instance().find(key, isolated->opened_)) {
        // A host that only opens the plug-in, for its answers and load errors; the host that
        // decodes starts with the first decode, so plug-ins loaded but never used cost no process.
        const int32_t result = isolated->startHost(reason, false);
        if (result != ZYR_OK)
            return result;
        isolated->host_.reset();
        OpenReplies::instance().keep(key, isolated->opened_);
    }
    plugin = std::move(isolated);
    return ZYR_OK;
}

void IsolatedPlugin::forgetOpenReplies() {
    OpenReplies::instance().clear();
}

IsolatedPlugin::~IsolatedPlugin() = default; // the host closes the plug-in on the socket's end

int32_t IsolatedPlugin::startHost(std::string& reason, bool toDecode) {
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
    Log::write(ZYR_LOG_PLUGINS, LogDetail,
               toDecode ? "plug-in %s runs in host process %d"
                        : "plug-in %s opened in host process %d to load it",
               request_.pluginPath.c_str(), int(host_->pid()));
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
        const int32_t started = startHost(reason, true);
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
