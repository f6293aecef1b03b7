#include "PluginBoundary.h"

#include "GreyImage.h"
#include "IniFile.h"

#include <cstring>
#include <exception>
#include <string>

namespace kvdecode {
namespace {

void copyError(const std::string& message, char* error, int32_t errorSize) {
    if (!error || errorSize <= 0)
        return;
    size_t n = std::min(message.size(), size_t(errorSize - 1));
    std::memcpy(error, message.data(), n);
    error[n] = '\0';
}

Decoder* decoderOf(void* instance) {
    return static_cast<Decoder*>(instance);
}

} // namespace

void* openInstance(DecoderFactory factory, const char* settingsPath, char* error, int32_t errorSize) {
    try {
        if (!settingsPath || !*settingsPath) {
            copyError("no settings file", error, errorSize);
            return nullptr;
        }
        IniFile ini;
        std::string message;
        if (!ini.load(settingsPath, message)) {
            copyError(message, error, errorSize);
            return nullptr;
        }
        std::unique_ptr<Decoder> decoder = factory();
        SettingsReader reader(ini);
        decoder->requirements().load(reader, decoder->defaultImage(), decoder->defaultLight());
        decoder->configure(reader);
        if (!reader.ok()) {
            copyError(reader.error(), error, errorSize);
            return nullptr;
        }
        return decoder.release();
    } catch (const std::exception& e) {
        copyError(std::string("open failed: ") + e.what(), error, errorSize);
    } catch (...) {
        copyError("open failed", error, errorSize);
    }
    return nullptr;
}

int32_t requiredImages(void* instance, char* buffer, int32_t bufferSize) {
    if (!instance || !buffer || bufferSize <= 0)
        return KVDECODE_ERR_BAD_ARGUMENT;
    try {
        std::string names = decoderOf(instance)->requirements().joinedNames();
        if (names.size() + 1 > size_t(bufferSize)) {
            buffer[0] = '\0';
            return KVDECODE_ERR_BUFFER_TOO_SMALL;
        }
        std::memcpy(buffer, names.c_str(), names.size() + 1);
        return KVDECODE_OK;
    } catch (...) {
        buffer[0] = '\0';
        return KVDECODE_ERR_DECODER;
    }
}

int32_t imageSettings(void* instance, int32_t index, ZyrImageSettings* settings) {
    if (!instance || !settings)
        return KVDECODE_ERR_BAD_ARGUMENT;
    const auto& images = decoderOf(instance)->requirements().images();
    if (index < 0 || size_t(index) >= images.size())
        return KVDECODE_ERR_NO_MORE;
    *settings = images[size_t(index)];
    return KVDECODE_OK;
}

int32_t decodeImage(void* instance, const ZyrImage* image, const char* imageName, KVDecodeSink sink,
                    void* sinkContext) {
    std::string reason;
    if (!instance || !sink || !validImage(image, reason))
        return KVDECODE_ERR_BAD_ARGUMENT;
    Decoder* decoder = decoderOf(instance);
    if (!decoder->requirements().accepts(imageName))
        return KVDECODE_ERR_UNKNOWN_IMAGE;
    try {
        SymbolSink symbols(sink, sinkContext);
        decoder->decode(*image, symbols);
        return KVDECODE_OK;
    } catch (...) {
        return KVDECODE_ERR_DECODER;
    }
}

void closeInstance(void* instance) {
    delete decoderOf(instance);
}

} // namespace kvdecode
