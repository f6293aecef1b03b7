// Entry points of the decoder plug-in host.
#include "ZyrReaderLowLevelAPI.h"
#include "ZyrPixelFormat.h"
#include "core/Log.h"
#include "plugins/PluginHost.h"
#include "plugins/SymbolResults.h"

#include <cstring>
#include <new>

using namespace zyr;

namespace {

bool usableImage(const ZyrImage* image) {
    if (!image || !image->Pixels || image->Width <= 0 || image->Height <= 0)
        return false;
    const int32_t bytesPerPixel = ZyrPixel_BytesPerPixel(image->PixelFormat);
    return bytesPerPixel != 0 && image->Stride >= int64_t(image->Width) * bytesPerPixel;
}

} // namespace

extern "C" {

ZYRREADER_API int32_t ZyrReader_ImagePluginLoad(const char* pluginPath, const char* settingsPath,
                                                uint64_t* handle, uint64_t cameraDevice) {
    if (!handle)
        return ZYR_ERR_BAD_ARGUMENT;
    *handle = 0;
    if (!pluginPath || !*pluginPath)
        return ZYR_ERR_BAD_ARGUMENT;
    try {
        return PluginHost::instance().load(pluginPath, settingsPath, cameraDevice, *handle);
    } catch (const std::bad_alloc&) {
        return ZYR_ERR_OUT_OF_MEMORY;
    }
}

ZYRREADER_API int32_t ZyrReader_ImagePluginGetRequiredImages(uint64_t handle, const char* reserved,
                                                             char* buffer, int32_t bufferSize) {
    (void)reserved;
    if (!buffer || bufferSize <= 0)
        return ZYR_ERR_BAD_ARGUMENT;
    buffer[0] = '\0';
    try {
        std::string names;
        const int32_t result = PluginHost::instance().requiredImages(handle, names);
        if (result != ZYR_OK)
            return result;
        if (names.size() >= size_t(bufferSize))
            return ZYR_ERR_BUFFER_TOO_SMALL;
        std::memcpy(buffer, names.c_str(), names.size() + 1);
        return ZYR_OK;
    } catch (const std::bad_alloc&) {
        return ZYR_ERR_OUT_OF_MEMORY;
    }
}

ZYRREADER_API int32_t ZyrReader_ImagePluginGetImageSettings(uint64_t handle, ZyrImageSettings* settings,
                                                            int32_t index) {
    if (!settings)
        return ZYR_ERR_BAD_ARGUMENT;
    ZyrImageSettings filled;
    std::memset(&filled, 0, sizeof filled);
    const int32_t result = PluginHost::instance().imageSettings(handle, index, filled);
    if (result == ZYR_OK)
        *settings = filled;
    return result;
}

ZYRREADER_API int32_t ZyrReader_ImagePluginDecode(bool wait, uint64_t handle, const ZyrImage* image,
                                                  const char* imageName, int32_t imageNumber,
                                                  const char* options, ZyrDecodeCallback callback,
                                                  void* context, int32_t callbackTag, int32_t reserved1,
                                                  int32_t reserved2) {
    // Decoding is always synchronous: wait only documents what the caller expects.
    (void)wait, (void)options, (void)reserved1, (void)reserved2;
    if (!callback || !usableImage(image))
        return ZYR_ERR_BAD_ARGUMENT;
    try {
        std::vector<DecodedSymbol> symbols;
        const int32_t result = PluginHost::instance().decode(handle, *image, imageName, symbols);
        Log::write(ZYR_LOG_DECODE, result == ZYR_OK ? LogInfo : LogError,
                   "image %d (%dx%d) plug-in %llu: result %d, %zu symbols", imageNumber, image->Width,
                   image->Height, static_cast<unsigned long long>(handle), result, symbols.size());
        if (result != ZYR_OK)
            return result;
        // The plug-in's lock is released: a callback may call into the library, this plug-in included.
        const int32_t count = int32_t(symbols.size());
        for (int32_t i = 0; i < count; ++i)
            callback(context, callbackTag, i, count, makeSymbolResult(symbols[size_t(i)]));
        return ZYR_OK;
    } catch (const std::bad_alloc&) {
        return ZYR_ERR_OUT_OF_MEMORY;
    }
}

} // extern "C"
