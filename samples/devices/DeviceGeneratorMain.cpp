// Writes the virtual reader folders of the device catalogue: device.ini, and in documents/ each
// document's image(s), each with the exact bytes of its symbols beside it (NAME.txt and
// NAME.back.txt, one symbol per line), as for every other sample image.
#include "DeviceCatalogue.h"
#include "PlatenScene.h"
#include "SampleRenderer.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

using namespace glyphor::samples;

namespace {

bool writeText(const std::string& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    return bool(out);
}

bool writeSide(const std::string& path, const Sample& side, const DeviceDocument& document, uint32_t seed) {
    RasterImage cardImage;
    std::string error;
    if (!renderSample(side, cardImage, error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }
    const RasterImage scene = onPlaten(cardImage, kPlatenWidth, kPlatenHeight, kPlatenLevel, document.angle,
                                       document.offsetX, document.offsetY, seed);
    return writePng(path, scene);
}

std::string expected(const Sample& side) {
    std::string text;
    for (const SampleSymbol& symbol : side.symbols)
        text += (text.empty() ? "" : "\n") + symbol.payload;
    return text;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT_FOLDER\n", argv[0]);
        return 2;
    }
    namespace fs = std::filesystem;
    uint32_t seed = 1;
    for (const DeviceSample& device : deviceCatalogue()) {
        const std::string folder = std::string(argv[1]) + "/" + device.name + "/";
        const std::string documents = folder + "documents/";
        std::error_code error;
        fs::remove_all(folder, error); // documents of an older catalogue must not linger
        fs::create_directories(documents, error);
        if (error || !writeText(folder + "device.ini", deviceIni(device))) {
            std::fprintf(stderr, "cannot write %s\n", folder.c_str());
            return 1;
        }
        for (const DeviceDocument& document : device.documents) {
            const std::string stem = documents + document.name;
            const bool back = device.twoSided && document.back;
            if (!writeSide(stem + ".png", document.front, document, seed++) ||
                !writeText(stem + ".txt", expected(document.front)) ||
                (back && (!writeSide(stem + ".back.png", *document.back, document, seed++) ||
                          !writeText(stem + ".back.txt", expected(*document.back))))) {
                std::fprintf(stderr, "cannot write document %s in %s\n", document.name.c_str(),
                             folder.c_str());
                return 1;
            }
        }
    }
    return 0;
}
