#pragma once

#include <ZXing/BarcodeFormat.h>
#include <ZXing/CharacterSet.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace glyphor::samples {

enum class FileType { Png, Jpeg, Bmp };

// One symbol drawn into a sample image.
struct SampleSymbol {
    ZXing::BarcodeFormat format;
    std::string payload; // the exact bytes the symbol holds (and a decoder must give back)
    // How the writer encodes the payload: Unknown writes bytes as they are; UTF8 treats the payload
    // as UTF-8 text and marks it with ECI 26.
    ZXing::CharacterSet encoding = ZXing::CharacterSet::Unknown;
    // The ECI a reader reports: the designator the symbol carries, or the character set its bytes
    // are in (0 = none; 26 for content given back as UTF-8).
    int32_t eci = 0;
    // When set, the symbol's text as UTF-8: what the writer encodes in `encoding` and what the
    // expected-text file holds instead of the bytes.
    std::string text{};
    std::string addOn{}; // 2 or 5 digits drawn after an EAN/UPC symbol
    // When set, the symbol (a DataMatrix) is drawn from these segments, each under its own ECI.
    std::vector<std::pair<int, std::string>> eciSegments{};
};

// One generated image: its file, its drawing parameters and what it holds.
struct Sample {
    std::string name;    // base file name, without extension
    std::string variant; // plain, rotated, scaled, noisy, low-contrast, document, multi, empty, ...
    FileType type = FileType::Png;
    int width = 1012; // an ID-1 card at 300 dpi
    int height = 638;
    std::vector<SampleSymbol> symbols;
    double module = 4;      // pixels per module (per narrow bar for linear symbols)
    double barHeight = 120; // height of a linear symbol in pixels
    double angle = 0;       // clockwise degrees
    int noise = 0;          // +- grey levels
    int blur = 0;           // box blur radius in pixels, before the noise
    int jpegQuality = 90;
    uint8_t dark = 20;
    uint8_t light = 235;
    bool colour = false; // drawn in colour on a tinted card, written as RGB
    bool corner = false; // symbol in the lower right, as on the back of a licence, not centred
};

// Every sample the generator writes, in a fixed order.
const std::vector<Sample>& sampleCatalogue();
// Licence cards at 600 dpi for timing and read-rate runs (not part of the build's samples):
// AAMVA payloads of several versions in PDF417 of 3 to 5 pixel modules, tilted up to 3 degrees,
// blurred, noisy, JPEG quality 85.
std::vector<Sample> licenceCardSet();
// The sample of that name, or nullptr.
const Sample* findSample(const std::string& name);

std::string fileNameOf(const Sample& sample); // name plus .png, .jpg or .bmp
bool isLinear(ZXing::BarcodeFormat format);

} // namespace glyphor::samples
