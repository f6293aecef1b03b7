#include "plugins/InProcessPlugin.h"

#include <dlfcn.h>

#include <new>

namespace zyr {
namespace {

template <class Fn> bool lookUp(void* library, const char* name, Fn& fn) {
    fn = reinterpret_cast<Fn>(dlsym(library, name));
    return fn != nullptr;
}

int32_t fromPluginCode(int32_t code) {
    switch (code) {
    case KVDECODE_OK:
        return ZYR_OK;
    case KVDECODE_ERR_BAD_ARGUMENT:
    case KVDECODE_ERR_UNKNOWN_IMAGE:
    case KVDECODE_ERR_NO_MORE:
        return ZYR_ERR_BAD_ARGUMENT;
    case KVDECODE_ERR_BUFFER_TOO_SMALL:
        return ZYR_ERR_BUFFER_TOO_SMALL;
    default:
        return ZYR_ERR_PLUGIN_DECODE;
    }
}

int32_t collect(void* context, const KVDecodeSymbol* symbol) {
    auto* symbols = static_cast<std::vector<DecodedSymbol>*>(context);
    if (!symbol || symbol->DataLength < 0 || (symbol->DataLength > 0 && !symbol->Data))
        return 0; // a malformed report is dropped, the decode goes on
    try {
        DecodedSymbol copy;
        copy.symbology = symbol->Symbology;
        copy.dataType = symbol->DataType;
        copy.eci = symbol->Eci;
        copy.data.assign(symbol->Data, symbol->Data + symbol->DataLength);
        for (int i = 0; i < 4; ++i)
            copy.corners[i] = symbol->Corners[i];
        symbols->push_back(std::move(copy));
        return 0;
    } catch (const std::bad_alloc&) {
        return 1; // out of memory: stop the plug-in, keep what arrived
    }
}

} // namespace

int32_t InProcessPlugin::open(const char* pluginPath, const char* settingsPath, uint64_t cameraDevice,
                              std::unique_ptr<PluginConnection>& plugin, std::string& reason) {
    void* library = dlopen(pluginPath, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* error = dlerror();
        reason = error ? error : "dlopen failed";
        return ZYR_ERR_PLUGIN_LOAD;
    }
    Exports fns;
    if (!lookUp(library, "KVDecode_InterfaceVersion", fns.version) ||
        !lookUp(library, "KVDecode_Open", fns.open) ||
        !lookUp(library, "KVDecode_GetRequiredImages", fns.requiredImages) ||
        !lookUp(library, "KVDecode_GetImageSettings", fns.imageSettings) ||
        !lookUp(library, "KVDecode_Decode", fns.decode) || !lookUp(library, "KVDecode_Close", fns.close)) {
        dlclose(library);
        reason = "not a decoder plug-in (exports missing)";
        return ZYR_ERR_PLUGIN_LOAD;
    }
    const uint32_t version = fns.version();
    if (version != KVDECODE_INTERFACE_VERSION) {
        dlclose(library);
        reason = "plug-in interface version " + std::to_string(version) + ", expected " +
                 std::to_string(KVDECODE_INTERFACE_VERSION);
        return ZYR_ERR_PLUGIN_VERSION;
    }
    char error[256] = "";
    void* instance = fns.open(settingsPath ? settingsPath : "", cameraDevice, error, int32_t(sizeof error));
    if (!instance) {
        dlclose(library);
        error[sizeof error - 1] = '\0';
        reason = std::string("open refused: ") + error;
        return ZYR_ERR_PLUGIN_OPEN;
    }
    plugin.reset(new InProcessPlugin(library, fns, instance));
    return ZYR_OK;
}

InProcessPlugin::~InProcessPlugin() {
    exports_.close(instance_);
    dlclose(library_);
}

int32_t InProcessPlugin::requiredImages(std::string& names) {
    // Image names are short; a list that does not fit 64 KiB is not an answer we want.
    for (int32_t size = 1024; size <= 65536; size *= 4) {
        std::string buffer(size_t(size), '\0');
        const int32_t code = exports_.requiredImages(instance_, buffer.data(), size);
        if (code == KVDECODE_ERR_BUFFER_TOO_SMALL)
            continue;
        if (code != KVDECODE_OK)
            return fromPluginCode(code);
        buffer[size_t(size) - 1] = '\0';
        names = buffer.c_str();
        return ZYR_OK;
    }
    return ZYR_ERR_BUFFER_TOO_SMALL;
}

int32_t InProcessPlugin::imageSettings(int32_t index, ZyrImageSettings& settings) {
    return fromPluginCode(exports_.imageSettings(instance_, index, &settings));
}

int32_t InProcessPlugin::decode(const ZyrImage& image, const char* imageName,
                                std::vector<DecodedSymbol>& symbols) {
    return fromPluginCode(exports_.decode(instance_, &image, imageName ? imageName : "", collect, &symbols));
}

} // namespace zyr
