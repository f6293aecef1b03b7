#pragma once

#include "Decoder.h"

#include <KVDecodePlugin.h>

#include <memory>

namespace kvdecode {

using DecoderFactory = std::unique_ptr<Decoder> (*)();

// The plug-in interface's functions for one decoder class; none lets an exception out.
void* openInstance(DecoderFactory factory, const char* settingsPath, char* error, int32_t errorSize);
int32_t requiredImages(void* instance, char* buffer, int32_t bufferSize);
int32_t imageSettings(void* instance, int32_t index, ZyrImageSettings* settings);
int32_t decodeImage(void* instance, const ZyrImage* image, const char* imageName, KVDecodeSink sink,
                    void* sinkContext);
void closeInstance(void* instance);

} // namespace kvdecode

// Defines a plug-in's exports for a Decoder subclass with a default constructor. Use once, in the
// plug-in's own sources (exports must live in the shared object, not in a static library).
#define KVDECODE_DEFINE_PLUGIN(DecoderClass)                                                                 \
    extern "C" KVDECODE_EXPORT uint32_t KVDecode_InterfaceVersion(void) {                                    \
        return KVDECODE_INTERFACE_VERSION;                                                                   \
    }                                                                                                        \
    extern "C" KVDECODE_EXPORT void* KVDecode_Open(const char* settingsPath, uint64_t, char* error,          \
                                                   int32_t errorSize) {                                      \
        return kvdecode::openInstance(                                                                       \
            []() -> std::unique_ptr<kvdecode::Decoder> { return std::make_unique<DecoderClass>(); },         \
            settingsPath, error, errorSize);                                                                 \
    }                                                                                                        \
    extern "C" KVDECODE_EXPORT int32_t KVDecode_GetRequiredImages(void* instance, char* buffer,              \
                                                                  int32_t bufferSize) {                      \
        return kvdecode::requiredImages(instance, buffer, bufferSize);                                       \
    }                                                                                                        \
    extern "C" KVDECODE_EXPORT int32_t KVDecode_GetImageSettings(void* instance, int32_t index,              \
                                                                 ZyrImageSettings* settings) {               \
        return kvdecode::imageSettings(instance, index, settings);                                           \
    }                                                                                                        \
    extern "C" KVDECODE_EXPORT int32_t KVDecode_Decode(void* instance, const ZyrImage* image,                \
                                                       const char* imageName, KVDecodeSink sink,             \
                                                       void* sinkContext) {                                  \
        return kvdecode::decodeImage(instance, image, imageName, sink, sinkContext);                         \
    }                                                                                                        \
    extern "C" KVDECODE_EXPORT void KVDecode_Close(void* instance) {                                         \
        kvdecode::closeInstance(instance);                                                                   \
    }
