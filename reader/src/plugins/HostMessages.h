// The messages between the reader library and a plug-in host process. The library sends Open once
// (with the shared image memory attached), then one Decode per image; the host answers each with
// one reply. Images never travel over the socket: they sit in the shared memory, packed row after row.
#ifndef ZYR_PLUGINS_HOST_MESSAGES_H
#define ZYR_PLUGINS_HOST_MESSAGES_H

#include "plugins/PluginConnection.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zyr {

enum HostMessageType : uint32_t {
    HostOpen = 1,    // library -> host: OpenRequest, the shared memory's descriptor attached
    HostOpened = 2,  // host -> library: OpenReply
    HostDecode = 3,  // library -> host: DecodeRequest
    HostDecoded = 4, // host -> library: DecodeReply
};

// Upper bounds a reader enforces, so that a broken peer cannot make the other side allocate freely.
constexpr size_t kMaxHostPath = 4096;
constexpr size_t kMaxHostText = 65536;
constexpr size_t kMaxImageSettings = 256;
constexpr size_t kMaxSymbolBytes = 16u << 20;
constexpr size_t kMaxSymbols = 100000;

struct OpenRequest {
    std::string pluginPath;
    std::string settingsPath;
    uint64_t cameraDevice = 0;
};

// What the plug-in said at open, and its answers to the queries that never change afterwards.
struct OpenReply {
    int32_t code = 0; // ZyrReaderError of the open; the rest is meaningful only when it is ZYR_OK
    std::string reason;
    int32_t namesCode = 0;
    std::string names;
    std::vector<ZyrImageSettings> settings; // index 0, 1, ... while the plug-in answered ZYR_OK
    int32_t settingsEndCode = 0;            // what it answered for the index after the last
};

struct DecodeRequest {
    int32_t width = 0;
    int32_t height = 0;
    int32_t stride = 0; // width times the pixel size: rows are packed
    int32_t pixelFormat = 0;
    uint64_t bytes = 0; // stride times height, the part of the shared memory the image takes
    std::string imageName;
};

struct DecodeReply {
    int32_t code = 0;
    std::vector<DecodedSymbol> symbols;
};

std::vector<uint8_t> encodeMessage(const OpenRequest& message);
std::vector<uint8_t> encodeMessage(const OpenReply& message);
std::vector<uint8_t> encodeMessage(const DecodeRequest& message);
std::vector<uint8_t> encodeMessage(const DecodeReply& message);

// Each is false when the bytes are not exactly one well-formed message of that kind.
bool decodeMessage(const std::vector<uint8_t>& bytes, OpenRequest& message);
bool decodeMessage(const std::vector<uint8_t>& bytes, OpenReply& message);
bool decodeMessage(const std::vector<uint8_t>& bytes, DecodeRequest& message);
bool decodeMessage(const std::vector<uint8_t>& bytes, DecodeReply& message);

} // namespace zyr

#endif
