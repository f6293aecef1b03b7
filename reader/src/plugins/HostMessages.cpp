#include "plugins/HostMessages.h"

#include "plugins/WireBuffer.h"

namespace zyr {

std::vector<uint8_t> encodeMessage(const OpenRequest& message) {
    WireWriter w;
    w.text(message.pluginPath);
    w.text(message.settingsPath);
    w.u64(message.cameraDevice);
    return std::move(w.buffer());
}

bool decodeMessage(const std::vector<uint8_t>& bytes, OpenRequest& message) {
    WireReader r(bytes.data(), bytes.size());
    return r.text(message.pluginPath, kMaxHostPath) && r.text(message.settingsPath, kMaxHostPath) &&
           r.u64(message.cameraDevice) && r.finished();
}

std::vector<uint8_t> encodeMessage(const OpenReply& message) {
    WireWriter w;
    w.i32(message.code);
    w.text(message.reason);
    w.i32(message.namesCode);
    w.text(message.names);
    w.u32(uint32_t(message.settings.size()));
    for (const ZyrImageSettings& settings : message.settings)
        w.raw(&settings, sizeof settings);
    w.i32(message.settingsEndCode);
    return std::move(w.buffer());
}

bool decodeMessage(const std::vector<uint8_t>& bytes, OpenReply& message) {
    WireReader r(bytes.data(), bytes.size());
    uint32_t count = 0;
    if (!r.i32(message.code) || !r.text(message.reason, kMaxHostText) || !r.i32(message.namesCode) ||
        !r.text(message.names, kMaxHostText) || !r.u32(count) || count > kMaxImageSettings)
        return false;
    message.settings.resize(count);
    for (ZyrImageSettings& settings : message.settings)
        if (!r.raw(&settings, sizeof settings))
            return false;
    return r.i32(message.settingsEndCode) && r.finished();
}

std::vector<uint8_t> encodeMessage(const DecodeRequest& message) {
    WireWriter w;
    w.i32(message.width);
    w.i32(message.height);
    w.i32(message.stride);
    w.i32(message.pixelFormat);
    w.u64(message.bytes);
    w.text(message.imageName);
    return std::move(w.buffer());
}

bool decodeMessage(const std::vector<uint8_t>& bytes, DecodeRequest& message) {
    WireReader r(bytes.data(), bytes.size());
    return r.i32(message.width) && r.i32(message.height) && r.i32(message.stride) &&
           r.i32(message.pixelFormat) && r.u64(message.bytes) && r.text(message.imageName, kMaxHostText) &&
           r.finished();
}

std::vector<uint8_t> encodeMessage(const DecodeReply& message) {
    WireWriter w;
    w.i32(message.code);
    w.u32(uint32_t(message.symbols.size()));
    for (const DecodedSymbol& symbol : message.symbols) {
        w.i32(symbol.symbology);
        w.i32(symbol.dataType);
        w.i32(symbol.eci);
        for (const ZyrPoint& corner : symbol.corners) {
            w.i32(corner.X);
            w.i32(corner.Y);
        }
        w.bytes(symbol.data.data(), symbol.data.size());
    }
    return std::move(w.buffer());
}

bool decodeMessage(const std::vector<uint8_t>& bytes, DecodeReply& message) {
    WireReader r(bytes.data(), bytes.size());
    uint32_t count = 0;
    if (!r.i32(message.code) || !r.u32(count) || count > kMaxSymbols)
        return false;
    message.symbols.clear();
    for (uint32_t i = 0; i < count; ++i) {
        DecodedSymbol symbol;
        if (!r.i32(symbol.symbology) || !r.i32(symbol.dataType) || !r.i32(symbol.eci))
            return false;
        for (ZyrPoint& corner : symbol.corners)
            if (!r.i32(corner.X) || !r.i32(corner.Y))
                return false;
        if (!r.bytes(symbol.data, kMaxSymbolBytes))
            return false;
        message.symbols.push_back(std::move(symbol));
    }
    return r.finished();
}

} // namespace zyr
