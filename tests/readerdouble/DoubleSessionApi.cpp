// Exported calls of the double: session, settings, services, conversion, plug-ins, objects.
#include "DoubleState.h"

#include <algorithm>
#include <cstring>

using namespace readerdouble;

namespace {

int32_t InitialiseService(Service service, std::optional<int32_t> scripted) {
    const int32_t result = scripted.value_or(ZYR_OK);
    if (result == ZYR_OK) {
        std::lock_guard<std::mutex> lock(State().mutex);
        State().initialised[service] = true;
    }
    return result;
}

int32_t ShutdownService(Service service, std::optional<int32_t> scripted) {
    std::lock_guard<std::mutex> lock(State().mutex);
    State().initialised[service] = false;
    return scripted.value_or(ZYR_OK);
}

bool IsInitialised(const char* function, Service service) {
    Record(function);
    std::lock_guard<std::mutex> lock(State().mutex);
    return State().initialised[service];
}

std::string FileName(const char* path) {
    std::string p = path ? path : "";
    const size_t slash = p.find_last_of('/');
    return slash == std::string::npos ? p : p.substr(slash + 1);
}

PluginState* FindPlugin(DoubleState& s, uint64_t handle) {
    auto it = s.plugins.find(handle);
    return it == s.plugins.end() ? nullptr : &it->second;
}

} // namespace

// The query and the shutdown of a service, which every service answers alike.
#define QUERY_AND_SHUTDOWN(query, shutdown, service)                                                       \
    bool query(void) { return IsInitialised(__func__, Service::service); }                                 \
    int32_t shutdown(void) { return ShutdownService(Service::service, Record(__func__)); }

extern "C" {

const char* ZyrReader_ErrorText(int32_t code) {
    Record(__func__, code);
    return code == ZYR_OK ? "Success" : "Reader double error";
}

int32_t ZyrReader_SetErrorHandler(ZyrReaderErrorHandler handler, uint32_t options) {
    auto scripted = Record(__func__, handler, options);
    std::lock_guard<std::mutex> lock(State().mutex);
    State().handler = handler;
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_LL_LoadSettings(ZyrReaderSettings* settings) {
    auto scripted = Record(__func__, settings);
    ZyrReaderErrorHandler handler = nullptr;
    bool noReader = false;
    {
        std::lock_guard<std::mutex> lock(State().mutex);
        if (settings)
            *settings = State().readerSettings;
        noReader = State().noReader;
        handler = State().handler;
    }
    if (noReader) {
        if (handler)
            handler(ZYR_ERR_NO_READER, "No reader is connected");
        return scripted.value_or(ZYR_ERR_NO_READER);
    }
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_LL_LoadSettingsFromIniFile(ZyrReaderSettings* settings, const char* path) {
    auto scripted = Record(__func__, settings, path);
    std::lock_guard<std::mutex> lock(State().mutex);
    if (settings)
        *settings = State().iniSettings;
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_InitialiseLogging(bool enable, int32_t level, uint32_t mask, const char* fileName) {
    return Record(__func__, enable, level, mask, fileName).value_or(ZYR_OK);
}

int32_t ZyrReader_DestroyCachedData(void) {
    auto scripted = Record(__func__);
    std::lock_guard<std::mutex> lock(State().mutex);
    State().objects.clear();
    State().plugins.clear();
    State().initialised.clear();
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_DestroyCachedObject(const void* object) {
    auto scripted = Record(__func__, object);
    std::lock_guard<std::mutex> lock(State().mutex);
    const bool held = State().objects.erase(object) > 0;
    return scripted.value_or(held ? ZYR_OK : ZYR_ERR_UNKNOWN_HANDLE);
}

int32_t ZyrReader_CameraInitialise(ZyrReaderSettings* settings, uint64_t device, uint32_t flags) {
    return InitialiseService(Service::Camera, Record(__func__, settings, device, flags));
}
QUERY_AND_SHUTDOWN(ZyrReader_IsCameraInitialised, ZyrReader_CameraShutdown, Camera)

int32_t ZyrReader_ImageProcessingInitialise(ZyrReaderSettings* settings, uint64_t device,
                                            ZyrImageProcessingSettings* processing) {
    return InitialiseService(Service::ImageProcessing, Record(__func__, settings, device, processing));
}
QUERY_AND_SHUTDOWN(ZyrReader_IsImageProcessingInitialised, ZyrReader_ImageProcessingShutdown, ImageProcessing)

QUERY_AND_SHUTDOWN(ZyrReader_IsSignalInitialised, ZyrReader_SignalShutdown, Signal)

int32_t ZyrReader_ParseInitialise(void) {
    return InitialiseService(Service::Parsing, Record(__func__));
}
QUERY_AND_SHUTDOWN(ZyrReader_IsParsingInitialised, ZyrReader_ParseShutdown, Parsing)

int32_t ZyrReader_ParseAAMVA(const uint8_t* data, int32_t length, AAMVARecord** record, int32_t reserved) {
    auto scripted = Record(__func__, data, length, record, reserved);
    if (scripted)
        return *scripted;
    DoubleState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    if (!s.initialised[Service::Parsing])
        return ZYR_ERR_NOT_INITIALISED;
    if (!s.parseRecord)
        return ZYR_ERR_NOT_AAMVA;
    auto object = std::make_unique<HeldObject>();
    object->record = std::make_unique<AAMVARecord>(*s.parseRecord);
    object->items = s.parseItems;
    object->record->DataItemCount = static_cast<int32_t>(object->items.size());
    object->record->DataItems = object->items.empty() ? nullptr : object->items.data();
    *record = object->record.get();
    s.objects[*record] = std::move(object);
    return ZYR_OK;
}

int32_t ZyrReader_ImageConvertFormat(int32_t format, const uint8_t* input, uint32_t inputLength,
                                     uint8_t* output, uint32_t* outputSize) {
    auto scripted = Record(__func__, format, input, inputLength, output,
                           outputSize ? Arg(*outputSize) : std::string("null"));
    if (scripted)
        return *scripted;
    // The input passes through unchanged.
    if (output)
        std::copy(input, input + inputLength, output);
    *outputSize = inputLength;
    return ZYR_OK;
}

int32_t ZyrReader_ImagePluginLoad(const char* pluginPath, const char* settingsPath, uint64_t* handle,
                                  uint64_t cameraDevice) {
    auto scripted =
        Record(__func__, pluginPath, settingsPath, handle ? Arg(*handle) : std::string("null"), cameraDevice);
    DoubleState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    const std::string name = FileName(pluginPath);
    auto script = std::find_if(s.pluginScripts.begin(), s.pluginScripts.end(),
                               [&](const PluginScript& p) { return p.fileName == name; });
    if (scripted && *scripted != ZYR_OK)
        return *scripted;
    if (script == s.pluginScripts.end())
        return ZYR_ERR_PLUGIN_LOAD;
    if (script->loadResult != ZYR_OK)
        return script->loadResult;
    const uint64_t h = script->handle ? script->handle : s.nextHandle++;
    s.plugins[h] = PluginState{*script, 0};
    *handle = h;
    return ZYR_OK;
}

int32_t ZyrReader_ImagePluginGetRequiredImages(uint64_t handle, const char* reserved, char* buffer,
                                               int32_t bufferSize) {
    auto scripted = Record(__func__, handle, reserved, buffer, bufferSize);
    DoubleState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    PluginState* plugin = FindPlugin(s, handle);
    if (!plugin)
        return scripted.value_or(ZYR_ERR_UNKNOWN_HANDLE);
    const std::string& names = plugin->script.requiredImages;
    const size_t n = std::min(names.size(), static_cast<size_t>(bufferSize - 1));
    std::memcpy(buffer, names.data(), n);
    buffer[n] = '\0';
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_ImagePluginGetImageSettings(uint64_t handle, ZyrImageSettings* settings, int32_t index) {
    auto scripted = Record(__func__, handle, settings, index);
    if (scripted)
        return *scripted;
    DoubleState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    PluginState* plugin = FindPlugin(s, handle);
    if (!plugin)
        return ZYR_ERR_UNKNOWN_HANDLE;
    const auto& records = plugin->script.imageSettings;
    if (!settings || index < 0 || static_cast<size_t>(index) >= records.size())
        return ZYR_ERR_BAD_ARGUMENT;
    *settings = records[static_cast<size_t>(index)];
    return ZYR_OK;
}

int32_t ZyrReader_ImagePluginDecode(bool wait, uint64_t handle, const ZyrImage* image, const char* imageName,
                                    int32_t imageNumber, const char* options, ZyrDecodeCallback callback,
                                    void* context, int32_t callbackTag, int32_t reserved1,
                                    int32_t reserved2) {
    auto scripted = Record(__func__, wait, handle, image, imageName, imageNumber, options, callback, context,
                           callbackTag, reserved1, reserved2);
    std::vector<const ZyrSymbolResult*> symbols;
    int32_t result = ZYR_OK;
    {
        DoubleState& s = State();
        std::lock_guard<std::mutex> lock(s.mutex);
        s.decodedPixelFormats.push_back(image ? image->PixelFormat : -1);
        PluginState* plugin = FindPlugin(s, handle);
        if (!plugin)
            return scripted.value_or(ZYR_ERR_UNKNOWN_HANDLE);
        const auto& decodes = plugin->script.decodes;
        const size_t call = plugin->decodeCalls++;
        result = plugin->script.decodeResult;
        if (!decodes.empty()) {
            for (const SymbolScript& script : decodes[std::min(call, decodes.size() - 1)]) {
                auto object = std::make_unique<HeldObject>();
                object->bytes.assign(script.data.begin(), script.data.end());
                object->bytes.push_back(0);
                ZyrSymbolResult& symbol = object->symbol;
                symbol.Symbology = script.symbology, symbol.Orientation = script.orientation;
                symbol.DataType = script.dataType, symbol.Eci = script.eci;
                symbol.Data = object->bytes.data(), symbol.DataLength = static_cast<int32_t>(script.data.size());
                std::copy(script.corners.begin(), script.corners.end(), symbol.Corners);
                symbols.push_back(&symbol);
                s.objects[&symbol] = std::move(object);
            }
        }
    }
    const int32_t count = static_cast<int32_t>(symbols.size());
    for (int32_t i = 0; i < count && callback; ++i)
        callback(context, callbackTag, i, count, symbols[static_cast<size_t>(i)]);
    return scripted.value_or(result);
}

} // extern "C"
