// Writes every sample image of the catalogue (or, with --licence-cards, the licence card set), the
// expected contents beside each image, and a reader settings file that points at the build's
// plug-ins, into the folder given as argument.
#include "SampleCatalogue.h"
#include "SampleRenderer.h"

#include <cstdio>
#include <fstream>
#include <string>

using namespace glyphor::samples;

namespace {

// The expected text: the symbols' exact bytes (or their text, when the catalogue gives it), one
// symbol per line.
bool writeExpected(const std::string& path, const Sample& sample) {
    std::ofstream out(path, std::ios::binary);
    for (size_t i = 0; i < sample.symbols.size(); ++i) {
        if (i > 0)
            out << '\n';
        const SampleSymbol& symbol = sample.symbols[i];
        out << (symbol.text.empty() ? symbol.payload : symbol.text);
    }
    return bool(out);
}

bool writeReaderSettings(const std::string& path) {
    std::ofstream out(path, std::ios::binary);
    out << "; Reader settings for running Glyphor on the generated samples.\n"
           "[Folders]\n"
           "PluginFolder=../plugins\n"
           "PluginSettingsFolder=../plugins\n";
    return bool(out);
}

} // namespace

int main(int argc, char** argv) {
    const bool cards = argc == 3 && std::string(argv[2]) == "--licence-cards";
    if (argc != 2 && !cards) {
        std::fprintf(stderr, "usage: %s OUTPUT_FOLDER [--licence-cards]\n", argv[0]);
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    for (const Sample& sample : cards ? licenceCardSet() : sampleCatalogue()) {
        RasterImage image;
        std::string error;
        if (!renderSample(sample, image, error)) {
            std::fprintf(stderr, "%s\n", error.c_str());
            return 1;
        }
        if (!writeSample(folder + fileNameOf(sample), sample, image) ||
            !writeExpected(folder + sample.name + ".txt", sample)) {
            std::fprintf(stderr, "cannot write %s in %s\n", sample.name.c_str(), folder.c_str());
            return 1;
        }
    }
    if (!writeReaderSettings(folder + "ZyrReader.ini")) {
        std::fprintf(stderr, "cannot write ZyrReader.ini in %s\n", folder.c_str());
        return 1;
    }
    return 0;
}
