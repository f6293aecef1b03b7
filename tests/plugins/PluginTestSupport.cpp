#include "PluginTestSupport.h"

#include "ImageFiles.h"
#include "SampleCatalogue.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <stdexcept>

namespace plugintest {

std::string pluginPath(const std::string& name) {
    return std::string(GLYPHOR_PLUGIN_DIR) + "/KVDECODE_" + name + ".so";
}

std::string settingsPath(const std::string& name) {
    return std::string(GLYPHOR_PLUGIN_DIR) + "/#KVDECODE_" + name + ".ini";
}

std::string samplePath(const std::string& sampleName) {
    const glyphor::samples::Sample* sample = glyphor::samples::findSample(sampleName);
    if (!sample)
        throw std::runtime_error("no sample named " + sampleName);
    return std::string(GLYPHOR_SAMPLES_DIR) + "/" + glyphor::samples::fileNameOf(*sample);
}

std::string fixturePath(const std::string& fileName) { return std::string(PLUGIN_FIXTURE_DIR) + "/" + fileName; }

std::string writeFile(const std::string& name, const std::string& text) {
    static const TempFolder folder; // removed with its files when the program ends
    return folder.write(name, text);
}

bool isLoaded(const std::string& libraryPath) {
    void* library = dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (!library)
        return false;
    dlclose(library); // drops the reference RTLD_NOLOAD took
    return true;
}

ImageFile::ImageFile(const std::string& path) {
    glyphor::samples::RasterImage raster;
    if (!glyphor::samples::readImageFile(path, raster))
        throw std::runtime_error("cannot read " + path);
    pixels_ = std::move(raster.pixels);
    image_.Width = raster.width;
    image_.Height = raster.height;
    image_.Stride = raster.width * raster.channels;
    image_.PixelFormat = raster.channels == 1 ? ZYR_PIXEL_GREY8 : ZYR_PIXEL_RGB24;
    image_.Pixels = pixels_.data();
}

uint64_t load(const std::string& plugin, const std::string& settings) {
    uint64_t handle = 0;
    const int32_t result = ZyrReader_ImagePluginLoad(plugin.c_str(), settings.c_str(), &handle, 0);
    EXPECT_EQ(result, ZYR_OK) << plugin << " with " << settings << ": " << ZyrReader_ErrorText(result);
    EXPECT_NE(handle, 0u) << plugin;
    return handle;
}

uint64_t loadPlugin(const std::string& name) { return load(pluginPath(name), settingsPath(name)); }

std::vector<std::string> Decoded::texts() const {
    std::vector<std::string> texts;
    for (const SeenSymbol& s : symbols)
        texts.push_back(s.data);
    return texts;
}

namespace {

void collect(void* context, int32_t tag, int32_t index, int32_t count, const ZyrSymbolResult* symbol) {
    SeenSymbol s;
    s.index = index;
    s.count = count;
    s.tag = tag;
    s.thread = std::this_thread::get_id();
    if (symbol) {
        s.symbology = symbol->Symbology;
        s.orientation = symbol->Orientation;
        s.dataType = symbol->DataType;
        s.eci = symbol->Eci;
        s.data.assign(reinterpret_cast<const char*>(symbol->Data), size_t(symbol->DataLength));
        s.zeroAfterData = symbol->Data[symbol->DataLength] == 0;
        s.releaseResult = ZyrReader_DestroyCachedObject(symbol);
    }
    static_cast<std::vector<SeenSymbol>*>(context)->push_back(s);
}

} // namespace

Decoded decode(uint64_t handle, const ZyrImage* image, int32_t tag) {
    Decoded decoded;
    decoded.result = ZyrReader_ImagePluginDecode(true, handle, image, "", 1, "", collect, &decoded.symbols, tag, 0, 0);
    return decoded;
}

std::vector<SeenSymbol> decodeSample(uint64_t handle, const std::string& sampleName) {
    ImageFile file(samplePath(sampleName));
    const Decoded decoded = decode(handle, file.image());
    EXPECT_EQ(decoded.result, ZYR_OK) << sampleName;
    return decoded.symbols;
}

} // namespace plugintest
