#pragma once

#include "ImageRequirements.h"
#include "SettingsReader.h"

#include <KVDecodePlugin.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvdecode {

// Hands found symbols on to the host's sink and remembers when the host asked to stop.
class SymbolSink {
public:
    SymbolSink(KVDecodeSink sink, void* context) : sink_(sink), context_(context) {}

    // False once the host wants no more symbols.
    bool emit(int32_t symbology, const uint8_t* data, size_t length, int32_t eci,
              const ZyrPoint (&corners)[4]);
    bool stopped() const { return stopped_; }
    int count() const { return count_; }

private:
    KVDecodeSink sink_;
    void* context_;
    bool stopped_ = false;
    int count_ = 0;
};

// One decoder behind the plug-in interface. The boundary functions (PluginBoundary.h) turn the C
// calls into these and keep exceptions inside the plug-in.
class Decoder {
public:
    virtual ~Decoder() = default;

    // Reads the decoder's own settings; failures go to the reader.
    virtual void configure(SettingsReader& reader) = 0;
    // Decodes a checked image view; throwing is allowed and reported as a decoder failure.
    virtual void decode(const ZyrImage& image, SymbolSink& sink) = 0;

    virtual const char* defaultImage() const { return "VISIBLE_DOC"; }
    virtual const char* defaultLight() const { return "IMAGE_VISIBLE"; }

    ImageRequirements& requirements() { return requirements_; }

private:
    ImageRequirements requirements_;
};

} // namespace kvdecode
