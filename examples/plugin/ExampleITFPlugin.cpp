// KVDECODE_ExampleITF: a small, complete decoder plug-in. It reads Interleaved 2 of 5 symbols
// lying level (or upside down) in the image, one scan line every few rows.
//
// The kit does the interface's work: KVDECODE_DEFINE_PLUGIN exports the six KVDecode_* functions
// for a kvdecode::Decoder subclass, reads the settings file (the [Images] section and one section
// per required image become the image-settings records), checks every image view before decode()
// sees it, and keeps exceptions from crossing into the host.
#include "InterleavedTwoOfFive.h"

#include <Decoder.h>
#include <GreyImage.h>
#include <PluginBoundary.h>

#include <algorithm>
#include <tuple>

namespace {

class ExampleITFDecoder : public kvdecode::Decoder {
public:
    void configure(kvdecode::SettingsReader& settings) override {
        rowStep_ = int(settings.integer("Decoder", "RowStep", rowStep_, 1, 256));
        minDigits_ = int(settings.integer("Decoder", "MinDigits", minDigits_, 2, 80));
        if (minDigits_ % 2)
            settings.fail("[Decoder] MinDigits must be even: the digits come in pairs");
    }

    void decode(const ZyrImage& image, kvdecode::SymbolSink& sink) override {
        const kvdecode::GreyImage grey(image);
        std::vector<std::string> found;
        for (int y = rowStep_ / 2; y < grey.height() && !sink.stopped(); y += rowStep_) {
            std::string digits;
            int first = 0, last = 0;
            if (!readRow(grey, y, digits, first, last) ||
                std::find(found.begin(), found.end(), digits) != found.end())
                continue;
            found.push_back(digits);
            // The symbol's height: the rows above and below that read the same digits.
            int top = y, bottom = y;
            std::string again;
            int a = 0, b = 0;
            while (top > 0 && readRow(grey, top - 1, again, a, b) && again == digits)
                --top;
            while (bottom + 1 < grey.height() && readRow(grey, bottom + 1, again, a, b) && again == digits)
                ++bottom;
            const ZyrPoint corners[4] = {{first, top}, {last, top}, {last, bottom}, {first, bottom}};
            sink.emit(ZYR_SYM_ITF, reinterpret_cast<const uint8_t*>(digits.data()), digits.size(), ZYR_ECI_NONE,
                      corners);
        }
    }

private:
    // Reads the row left to right, then right to left for a symbol lying upside down; first and
    // last are the symbol's left and right pixel.
    bool readRow(const kvdecode::GreyImage& grey, int y, std::string& digits, int& first, int& last) const {
        const unsigned char* row = grey.data() + size_t(y) * size_t(grey.width());
        if (example::readSymbol(example::runsOf(row, grey.width(), 1), minDigits_, digits, first, last))
            return true;
        const unsigned char* end = row + grey.width() - 1;
        if (!example::readSymbol(example::runsOf(end, grey.width(), -1), minDigits_, digits, first, last))
            return false;
        std::tie(first, last) = std::make_pair(grey.width() - 1 - last, grey.width() - 1 - first);
        return true;
    }

    int rowStep_ = 8;
    int minDigits_ = 4;
};

} // namespace

KVDECODE_DEFINE_PLUGIN(ExampleITFDecoder)
