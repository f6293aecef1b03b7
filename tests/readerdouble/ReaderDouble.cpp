// Script and observation side of the reader double.
#include "DoubleState.h"

#include <cstdio>

namespace readerdouble {

DoubleState& State() {
    static DoubleState state;
    return state;
}

std::string Call::Text() const {
    std::string text = name + "(";
    for (size_t i = 0; i < args.size(); ++i)
        text += (i ? ", " : "") + args[i];
    return text + ")";
}

std::string Ptr(const void* p) {
    if (!p)
        return "null";
    char text[32];
    std::snprintf(text, sizeof text, "ptr(%p)", p);
    return text;
}

std::string Arg(bool v) {
    return v ? "true" : "false";
}
std::string Arg(float v) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", static_cast<double>(v));
    return text;
}
std::string Arg(const char* text) {
    return text ? "\"" + std::string(text) + "\"" : "null";
}
std::string Arg(const void* p) {
    return Ptr(p);
}
std::string CallbackArg(const void* fn) {
    return fn ? "callback" : "null";
}

std::optional<int32_t> Enter(const char* function, std::vector<std::string> args) {
    DoubleState& s = State();
    std::function<void()> hook;
    std::optional<std::pair<int32_t, std::string>> error;
    ZyrReaderErrorHandler handler = nullptr;
    std::optional<int32_t> result;
    {
        std::lock_guard<std::mutex> lock(s.mutex);
        s.calls.push_back(Call{function, std::move(args)});
        auto h = s.hooks.find(function);
        if (h != s.hooks.end())
            hook = h->second;
        auto& errors = s.queuedErrors[function];
        if (!errors.empty()) {
            error = errors.front();
            errors.pop_front();
        }
        handler = s.handler;
        auto& queued = s.queuedResults[function];
        if (!queued.empty()) {
            result = queued.front();
            queued.pop_front();
        } else if (s.results.count(function)) {
            result = s.results[function];
        }
    }
    // Hooks and the handler run unlocked: they may call back into the library.
    if (hook)
        hook();
    if (error && handler)
        handler(error->first, error->second.c_str());
    return result;
}

ZyrImage* HoldImage(DoubleState& s, const ImageScript& script) {
    auto object = std::make_unique<HeldObject>();
    object->bytes = script.pixels;
    const int32_t stride = script.height > 0 ? static_cast<int32_t>(script.pixels.size() / script.height) : 0;
    object->image = ZyrImage{script.width, script.height, stride, script.pixelFormat, object->bytes.data()};
    ZyrImage* handle = &object->image;
    s.objects[handle] = std::move(object);
    return handle;
}

ImageScript MakeImage(int32_t width, int32_t height, int32_t pixelFormat, uint8_t fill) {
    const int32_t bytesPerPixel = pixelFormat == ZYR_PIXEL_BGRA32 ? 4 : pixelFormat == ZYR_PIXEL_RGB24 ? 3 : 1;
    return {width, height, pixelFormat, std::vector<uint8_t>(static_cast<size_t>(width) * height * bytesPerPixel, fill)};
}

namespace {

// Runs a change of the script under the double's lock.
template <class Change> void Locked(Change change) {
    std::lock_guard<std::mutex> lock(State().mutex);
    change(State());
}

} // namespace

void Reset() {
    Locked([](DoubleState& s) { static_cast<DoubleData&>(s) = DoubleData{}; });
}
void SetResult(const std::string& function, int32_t code) {
    Locked([&](DoubleState& s) { s.results[function] = code; });
}
void QueueResult(const std::string& function, int32_t code) {
    Locked([&](DoubleState& s) { s.queuedResults[function].push_back(code); });
}
void QueueError(const std::string& function, int32_t code, const std::string& message) {
    Locked([&](DoubleState& s) { s.queuedErrors[function].emplace_back(code, message); });
}
void SetHook(const std::string& function, std::function<void()> hook) {
    Locked([&](DoubleState& s) { s.hooks[function] = std::move(hook); });
}
void SetNoReader() {
    Locked([](DoubleState& s) { s.noReader = true; });
}
void SetReaderSettings(const ZyrReaderSettings& settings) {
    Locked([&](DoubleState& s) { s.readerSettings = settings; });
}
void SetIniSettings(const ZyrReaderSettings& settings) {
    Locked([&](DoubleState& s) { s.iniSettings = settings; });
}
void SetInitialised(Service service, bool initialised) {
    Locked([&](DoubleState& s) { s.initialised[service] = initialised; });
}
void AddPlugin(const PluginScript& plugin) {
    Locked([&](DoubleState& s) { s.pluginScripts.push_back(plugin); });
}
void SetCapture(const CaptureScript& capture) {
    Locked([&](DoubleState& s) { s.capture = capture; });
}
void SetParseRecord(const AAMVARecord& record, const std::vector<AAMVADataItem>& items) {
    Locked([&](DoubleState& s) {
        s.parseRecord = std::make_unique<AAMVARecord>(record);
        s.parseItems = items;
    });
}

std::vector<Call> Calls() {
    std::lock_guard<std::mutex> lock(State().mutex);
    return State().calls;
}

std::vector<std::string> CallTexts() {
    std::vector<std::string> texts;
    for (const Call& call : Calls())
        texts.push_back(call.Text());
    return texts;
}

std::vector<std::string> CallNames() {
    std::vector<std::string> names;
    for (const Call& call : Calls())
        names.push_back(call.name);
    return names;
}

std::vector<Call> CallsNamed(const std::string& function) {
    std::vector<Call> named;
    for (const Call& call : Calls())
        if (call.name == function)
            named.push_back(call);
    return named;
}

std::vector<int32_t> DecodedPixelFormats() {
    std::lock_guard<std::mutex> lock(State().mutex);
    return State().decodedPixelFormats;
}

void ClearCalls() {
    Locked([](DoubleState& s) { s.calls.clear(); });
}

int LiveObjects() {
    std::lock_guard<std::mutex> lock(State().mutex);
    return static_cast<int>(State().objects.size());
}

} // namespace readerdouble
