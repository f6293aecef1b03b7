// Writes a measurement set for Data Matrix readers into a folder: document-size images (an ID-1
// card at 600 dpi, a letter page at 200 dpi) with printed-text clutter, form lines and a photo,
// half of them holding one Data Matrix (several module sizes, turns, noise levels and file types)
// and half holding none. Each image has a .txt beside it with the symbol's bytes (empty: none).
#include "GreyCanvas.h"
#include "ImageFiles.h"

#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>

using namespace glyphor::samples;

namespace {

class Lcg {
public:
    explicit Lcg(uint32_t seed) : state_(seed * 2654435761u + 7) {}
    int range(int lo, int hi) {
        state_ = state_ * 1664525u + 1013904223u;
        return lo + int((state_ >> 8) % uint32_t(hi - lo + 1));
    }

private:
    uint32_t state_;
};

struct Page {
    int width, height;
    std::vector<uint8_t> pixels;
    uint8_t& at(int x, int y) { return pixels[size_t(y) * size_t(width) + size_t(x)]; }
    void fill(int x0, int y0, int x1, int y1, uint8_t value) {
        for (int y = std::max(0, y0); y < std::min(height, y1); ++y)
            for (int x = std::max(0, x0); x < std::min(width, x1); ++x)
                at(x, y) = value;
    }
};

// Lines of dark "glyphs" (a few strokes each), ruled form lines and boxes, and a noisy photo.
void addClutter(Page& page, uint32_t seed, int glyphHeight) {
    Lcg rng(seed);
    const int stroke = std::max(2, glyphHeight / 9);
    for (int y = glyphHeight; y + glyphHeight < page.height; y += glyphHeight * 2) {
        if (rng.range(0, 3) == 0)
            continue;
        int x = rng.range(glyphHeight, page.width / 3);
        const int end = std::min(page.width - glyphHeight, x + rng.range(page.width / 4, page.width));
        while (x < end) {
            const int w = rng.range(glyphHeight / 2, glyphHeight);
            for (int s = rng.range(2, 4); s > 0; --s) {
                if (rng.range(0, 1))
                    page.fill(x + rng.range(0, w - stroke), y, x + rng.range(0, w - stroke) + stroke,
                              y + glyphHeight, uint8_t(rng.range(25, 70)));
                else {
                    const int yy = y + rng.range(0, glyphHeight - stroke);
                    page.fill(x, yy, x + w, yy + stroke, uint8_t(rng.range(25, 70)));
                }
            }
            x += w + rng.range(stroke, stroke * 3) + (rng.range(0, 5) == 0 ? glyphHeight : 0);
        }
    }
    for (int i = 0; i < 6; ++i) { // form boxes: corners that look like a finder's L
        const int x = rng.range(0, page.width - 200), y = rng.range(0, page.height - 100);
        const int w = rng.range(100, page.width / 2), h = rng.range(40, page.height / 4);
        page.fill(x, y, x + w, y + stroke, 40);
        page.fill(x, y + h, x + w, y + h + stroke, 40);
        page.fill(x, y, x + stroke, y + h + stroke, 40);
        page.fill(x + w, y, x + w + stroke, y + h + stroke, 40);
    }
    const int px = rng.range(0, page.width * 2 / 3), py = rng.range(0, page.height * 2 / 3);
    const int pw = page.width / 4, ph = page.height / 4;
    for (int y = py; y < std::min(page.height, py + ph); ++y)
        for (int x = px; x < std::min(page.width, px + pw); ++x)
            page.at(x, y) = uint8_t(
                std::clamp(90 + (x - px) * 80 / pw + (y - py) * 40 / ph + rng.range(-40, 40), 0, 255));
}

void addNoise(Page& page, int amplitude, uint32_t seed) {
    Lcg rng(seed);
    for (uint8_t& p : page.pixels)
        p = uint8_t(std::clamp(int(p) + rng.range(-amplitude, amplitude), 0, 255));
}

// The symbol drawn by the sample canvas, copied over the page inside its square.
void placeSymbol(Page& page, const std::string& payload, double module, double angle, uint32_t seed) {
    std::wstring text(payload.begin(), payload.end());
    const ZXing::BitMatrix matrix =
        ZXing::MultiFormatWriter(ZXing::BarcodeFormat::DataMatrix).setMargin(2).encode(text, 0, 0);
    const double side = std::max(matrix.width(), matrix.height()) * module * 1.42 + 8;
    Lcg rng(seed);
    const int cx = rng.range(int(side / 2), int(page.width - side / 2));
    const int cy = rng.range(int(side / 2), int(page.height - side / 2));
    GreyCanvas canvas(page.width, page.height, 232);
    canvas.drawSymbol(matrix, module, module, cx, cy, angle, 20, 235);
    const int half = int(side / 2);
    page.fill(cx - half, cy - half, cx + half, cy + half, 232);
    for (int y = std::max(0, cy - half); y < std::min(page.height, cy + half); ++y)
        for (int x = std::max(0, cx - half); x < std::min(page.width, cx + half); ++x)
            page.at(x, y) = canvas.pixels()[size_t(y) * size_t(page.width) + size_t(x)];
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s OUTPUT_FOLDER\n", argv[0]);
        return 2;
    }
    const std::string folder = std::string(argv[1]) + "/";
    const double modules[] = {3, 4, 5, 7};
    const double angles[] = {0, 8, 23, 45, 90, 137, 180, 284};
    const char* payloads[] = {"DM0001", "GLYPHOR DATA MATRIX 0002",
                              "https://example.org/glyphor/measurement/set/0003?id=1234567890",
                              "LICENCE 0004 DOE JANE 1985-04-01 123 MAIN STREET SPRINGFIELD 12345 CLASS C "
                              "ENDORSEMENTS NONE RESTRICTIONS B"};
    int written = 0;
    for (int i = 0; i < 48; ++i) {
        const bool withSymbol = i % 3 != 2; // 32 with a symbol, 16 without
        const bool card = i % 2 == 0;
        Page page{card ? 2024 : 1700, card ? 1276 : 2200, {}};
        page.pixels.assign(size_t(page.width) * size_t(page.height), uint8_t(232));
        addClutter(page, uint32_t(i * 7919 + 13), card ? 36 : 24);
        std::string payload;
        if (withSymbol) {
            payload = payloads[i % 4];
            placeSymbol(page, payload, modules[(i / 3) % 4], angles[(i * 5) % 8], uint32_t(i + 101));
        }
        const int noise = i % 4 == 1 ? 30 : i % 4 == 3 ? 12 : 0;
        if (noise > 0)
            addNoise(page, noise, uint32_t(i * 31 + 5));
        char name[64];
        std::snprintf(name, sizeof name, "%s-%02d", withSymbol ? "dm" : "none", i);
        RasterImage image{page.width, page.height, 1, std::move(page.pixels)};
        const bool jpeg = i % 5 == 1;
        const std::string path = folder + name + (jpeg ? ".jpg" : ".png");
        if (!(jpeg ? writeJpeg(path, image, 85) : writePng(path, image))) {
            std::fprintf(stderr, "cannot write %s\n", path.c_str());
            return 1;
        }
        std::ofstream(folder + name + ".txt", std::ios::binary) << payload;
        ++written;
    }
    std::printf("%d images in %s\n", written, folder.c_str());
    return 0;
}
