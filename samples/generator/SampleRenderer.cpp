#include "SampleRenderer.h"

#include "GreyCanvas.h"
#include "SymbolExtras.h"

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include <cmath>
#include <exception>

namespace glyphor::samples {
namespace {

// The writer takes wide characters: UTF-8 text is decoded (the payload marked UTF-8, or the text
// when the writer encodes it in a character set), raw bytes map one to one (Latin-1).
std::wstring writerText(const SampleSymbol& symbol) {
    std::wstring out;
    const bool fromText = !symbol.text.empty() && symbol.encoding != ZXing::CharacterSet::Unknown;
    const std::string& s = fromText ? symbol.text : symbol.payload;
    if (!fromText && symbol.encoding != ZXing::CharacterSet::UTF8) {
        for (unsigned char c : s)
            out.push_back(wchar_t(c));
        return out;
    }
    for (size_t i = 0; i < s.size();) {
        unsigned char c = static_cast<unsigned char>(s[i]);
        int extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
        uint32_t cp = extra == 0 ? c : c & (0x3F >> extra);
        for (int k = 1; k <= extra && i + size_t(k) < s.size(); ++k)
            cp = (cp << 6) | (static_cast<unsigned char>(s[i + size_t(k)]) & 0x3F);
        out.push_back(wchar_t(cp));
        i += size_t(extra) + 1;
    }
    return out;
}

ZXing::BitMatrix encode(const SampleSymbol& symbol) {
    if (!symbol.eciSegments.empty())
        return dataMatrixFromCodewords(dataMatrixEciCodewords(symbol.eciSegments));
    if (!symbol.addOn.empty()) {
        SampleSymbol main = symbol;
        main.payload = symbol.payload.substr(0, symbol.payload.find(' '));
        main.addOn.clear();
        return withAddOn(encode(main), symbol.addOn);
    }
    return ZXing::MultiFormatWriter(symbol.format)
        .setEncoding(symbol.encoding)
        .setMargin(isLinear(symbol.format) ? 10 : 4)
        .encode(writerText(symbol), 0, 0);
}

} // namespace

bool renderSample(const Sample& sample, RasterImage& image, std::string& error) {
    GreyCanvas canvas(sample.width, sample.height, 232);
    canvas.addCardTexture(uint32_t(sample.name.size() * 7919 + sample.width));
    const size_t count = sample.symbols.size();
    for (size_t i = 0; i < count; ++i) {
        const SampleSymbol& symbol = sample.symbols[i];
        const bool linear = isLinear(symbol.format);
        ZXing::BitMatrix matrix;
        try {
            matrix = encode(symbol);
        } catch (const std::exception& e) {
            error = sample.name + ": cannot encode: " + e.what();
            return false;
        }
        const double moduleHeight = linear ? sample.barHeight : sample.module;
        const double w = matrix.width() * sample.module, h = matrix.height() * moduleHeight;
        const double a = sample.angle * M_PI / 180;
        const double spanX = std::fabs(w * std::cos(a)) + std::fabs(h * std::sin(a));
        const double spanY = std::fabs(w * std::sin(a)) + std::fabs(h * std::cos(a));
        double cx = sample.width / 2.0;
        double cy = sample.height * double(i + 1) / double(count + 1);
        if (sample.corner) {
            cx = sample.width - spanX / 2 - sample.width * 0.05;
            cy = sample.height - spanY / 2 - sample.height * 0.06;
        }
        if (cx - spanX / 2 < 0 || cy - spanY / 2 < 0 || cx + spanX / 2 > sample.width ||
            cy + spanY / 2 > sample.height || spanY * double(count) > sample.height) {
            error = sample.name + ": symbol does not fit the card";
            return false;
        }
        canvas.drawSymbol(matrix, sample.module, moduleHeight, cx, cy, sample.angle, sample.dark,
                          sample.light);
    }
    canvas.blur(sample.blur);
    if (sample.noise > 0)
        canvas.addNoise(sample.noise, uint32_t(sample.name.size() * 104729));

    image.width = canvas.width();
    image.height = canvas.height();
    image.channels = sample.colour ? 3 : 1;
    if (!sample.colour) {
        image.pixels = canvas.pixels();
        return true;
    }
    // A warm card tint with the print in a dark blue-grey.
    image.pixels.clear();
    image.pixels.reserve(canvas.pixels().size() * 3);
    for (uint8_t p : canvas.pixels()) {
        image.pixels.push_back(uint8_t(std::min(255, p + 10)));
        image.pixels.push_back(uint8_t(p * 0.93));
        image.pixels.push_back(uint8_t(p * 0.78 + 30));
    }
    return true;
}

bool writeSample(const std::string& path, const Sample& sample, const RasterImage& image) {
    switch (sample.type) {
    case FileType::Jpeg:
        return writeJpeg(path, image, sample.jpegQuality);
    case FileType::Bmp:
        return writeBmp(path, image);
    default:
        return writePng(path, image);
    }
}

} // namespace glyphor::samples
