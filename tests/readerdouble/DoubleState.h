// Internal state of the reader double, shared by the script functions and the exported calls.
#pragma once

#include "ReaderDouble.h"

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <type_traits>

namespace readerdouble {

// An object the double handed out: a symbol result or an image, with storage for its bytes.
struct HeldObject {
    ZyrSymbolResult symbol{};
    ZyrImage image{};
    std::vector<uint8_t> bytes;
    std::unique_ptr<AAMVARecord> record;
    std::vector<AAMVADataItem> items;
};

struct PluginState {
    PluginScript script;
    size_t decodeCalls = 0;
};

// Everything Reset() forgets.
struct DoubleData {
    std::vector<Call> calls;
    std::vector<int32_t> decodedPixelFormats; // of each plug-in decode call, -1 for no image
    std::map<std::string, int32_t> results;
    std::map<std::string, std::deque<int32_t>> queuedResults;
    std::map<std::string, std::deque<std::pair<int32_t, std::string>>> queuedErrors;
    std::map<std::string, std::function<void()>> hooks;

    ZyrReaderErrorHandler handler = nullptr;
    bool noReader = false;
    ZyrReaderSettings readerSettings{};
    ZyrReaderSettings iniSettings{};
    std::map<Service, bool> initialised;

    std::vector<PluginScript> pluginScripts;
    std::map<uint64_t, PluginState> plugins;
    uint64_t nextHandle = 1000;

    CaptureScript capture;
    size_t snapshotCalls = 0;
    size_t processCalls = 0;
    size_t locateCalls = 0;
    bool cancelPending = false;

    std::unique_ptr<AAMVARecord> parseRecord;
    std::vector<AAMVADataItem> parseItems;
    std::map<const void*, std::unique_ptr<HeldObject>> objects;
};

struct DoubleState : DoubleData {
    std::mutex mutex;
};

DoubleState& State();

// Records a call, runs its hook and queued error, and answers the scripted result, if any.
std::optional<int32_t> Enter(const char* function, std::vector<std::string> args);

// Argument formatting used by the recorded calls.
std::string Arg(bool v);
template <class T, std::enable_if_t<std::is_integral_v<T>, int> = 0> std::string Arg(T v) {
    return std::to_string(v);
}
std::string Arg(float v);
std::string Arg(const char* text);
std::string Arg(const void* p);
std::string CallbackArg(const void* fn);
inline std::string Arg(const std::string& text) {
    return text;
} // already formatted
template <class R, class... A> std::string Arg(R (*fn)(A...)) {
    return CallbackArg(reinterpret_cast<const void*>(fn));
}
template <class T> std::string Arg(T* p) {
    return Ptr(p);
}
// Enter() with each argument formatted by its type.
template <class... Args> std::optional<int32_t> Record(const char* function, const Args&... args) {
    return Enter(function, {Arg(args)...});
}

// Hands out a library-owned image copied from a script entry; the caller must hold the lock.
ZyrImage* HoldImage(DoubleState& s, const ImageScript& script);

} // namespace readerdouble
