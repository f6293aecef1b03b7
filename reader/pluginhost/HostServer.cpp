#include "HostServer.h"

#include "plugins/InProcessPlugin.h"
#include "plugins/SharedImageBuffer.h"

#include <new>

namespace zyr {

bool HostServer::open() {
    uint32_t type = 0;
    std::vector<uint8_t> payload;
    OpenRequest request;
    if (channel_.receive(type, payload) != FrameChannel::Status::Ok || type != HostOpen ||
        !decodeMessage(payload, request))
        return false;
    images_ = std::make_unique<SharedImageView>(channel_.takeReceivedFd());
    OpenReply reply;
    std::string reason;
    reply.code = InProcessPlugin::open(request.pluginPath.c_str(), request.settingsPath.c_str(),
                                       request.cameraDevice, plugin_, reason);
    reply.reason = reason;
    if (reply.code == ZYR_OK) {
        reply.namesCode = plugin_->requiredImages(reply.names);
        for (int32_t index = 0;; ++index) {
            ZyrImageSettings settings{};
            const int32_t code = plugin_->imageSettings(index, settings);
            if (code != ZYR_OK || reply.settings.size() == kMaxImageSettings) {
                reply.settingsEndCode = code == ZYR_OK ? ZYR_ERR_BAD_ARGUMENT : code;
                break;
            }
            reply.settings.push_back(settings);
        }
    }
    return channel_.send(HostOpened, encodeMessage(reply)) == FrameChannel::Status::Ok && plugin_;
}

DecodeReply HostServer::decode(const DecodeRequest& request) {
    DecodeReply reply;
    const int pixelSize = ZyrPixel_BytesPerPixel(request.pixelFormat);
    const uint8_t* pixels = nullptr;
    if (pixelSize == 0 || request.width <= 0 || request.height <= 0 ||
        int64_t(request.stride) != int64_t(request.width) * pixelSize ||
        request.bytes != uint64_t(request.stride) * uint64_t(request.height) ||
        !(pixels = images_->bytes(request.bytes))) {
        reply.code = ZYR_ERR_BAD_ARGUMENT;
        return reply;
    }
    ZyrImage image{};
    image.Width = request.width;
    image.Height = request.height;
    image.Stride = request.stride;
    image.PixelFormat = request.pixelFormat;
    image.Pixels = const_cast<uint8_t*>(pixels); // the interface's view type; the mapping is read-only
    try {
        reply.code = plugin_->decode(image, request.imageName.c_str(), reply.symbols);
    } catch (const std::bad_alloc&) {
        reply.symbols.clear();
        reply.code = ZYR_ERR_OUT_OF_MEMORY;
    }
    return reply;
}

int HostServer::run() {
    if (!open())
        return 0;
    for (;;) {
        uint32_t type = 0;
        std::vector<uint8_t> payload;
        const FrameChannel::Status status = channel_.receive(type, payload);
        if (status == FrameChannel::Status::Closed)
            break;
        DecodeRequest request;
        if (status != FrameChannel::Status::Ok || type != HostDecode || !decodeMessage(payload, request))
            return 3;
        if (channel_.send(HostDecoded, encodeMessage(decode(request))) != FrameChannel::Status::Ok)
            break;
    }
    plugin_.reset(); // closes the plug-in before the process ends
    return 0;
}

} // namespace zyr
