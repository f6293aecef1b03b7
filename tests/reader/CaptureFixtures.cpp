#include "CaptureFixtures.h"
#include "ZyrPixelFormat.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

namespace capture {

namespace fs = std::filesystem;

fixtures::Picture scene(int width, int height, const std::vector<Card>& cards, uint8_t platen) {
    fixtures::Picture p;
    p.width = width;
    p.height = height;
    p.pixels.assign(size_t(width) * size_t(height), fixtures::Rgba{platen, platen, platen, 255});
    for (const Card& card : cards) {
        const double cx = card.left + card.width / 2.0, cy = card.top + card.height / 2.0;
        const double a = card.angle * M_PI / 180, c = std::cos(a), s = std::sin(a);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                // Into the card's own frame: turn back by the angle.
                const double dx = x + 0.5 - cx, dy = y + 0.5 - cy;
                const double u = dx * c + dy * s + card.width / 2.0, v = -dx * s + dy * c + card.height / 2.0;
                if (u < 0 || v < 0 || u >= card.width || v >= card.height)
                    continue;
                const bool marker = u >= kMarkerInset && u < kMarkerInset + kMarkerSize &&
                                    v >= kMarkerInset && v < kMarkerInset + kMarkerSize;
                const uint8_t level = marker ? kMarker : card.level;
                p.at(x, y) = fixtures::Rgba{level, level, level, 255};
            }
    }
    return p;
}

GreyView::GreyView(const fixtures::Picture& picture) {
    for (const fixtures::Rgba& c : picture.pixels)
        pixels_.push_back(c.r);
    image_ = ZyrImage{picture.width, picture.height, picture.width, ZYR_PIXEL_GREY8, pixels_.data()};
}

namespace {

double level(const ZyrImage& image, int x, int y) {
    const int bytes = ZyrPixel_BytesPerPixel(image.PixelFormat);
    const uint8_t* p = image.Pixels + size_t(y) * size_t(image.Stride) + x * bytes;
    return bytes == 1 ? p[0] : (p[0] + p[1] + p[2]) / 3.0;
}

} // namespace

const char* cornerName(Corner corner) {
    static const char* const names[] = {"top-left", "top-right", "bottom-left", "bottom-right", "none"};
    return names[int(corner)];
}

Corner markerCorner(const ZyrImage& image) {
    const int block = 8;
    double darkest = 1e9;
    int bestX = -1, bestY = -1;
    for (int y = 0; y + block <= image.Height; y += 2)
        for (int x = 0; x + block <= image.Width; x += 2) {
            double sum = 0;
            for (int j = 0; j < block; ++j)
                for (int i = 0; i < block; ++i)
                    sum += level(image, x + i, y + j);
            if (sum < darkest)
                darkest = sum, bestX = x + block / 2, bestY = y + block / 2;
        }
    // The marker is darker than the platen; a darkest block at platen level means no marker.
    if (bestX < 0 || darkest / (block * block) > (kPlaten + kMarker) / 2.0)
        return Corner::None;
    const bool right = bestX >= image.Width / 2, bottom = bestY >= image.Height / 2;
    return bottom ? (right ? Corner::BottomRight : Corner::BottomLeft)
                  : (right ? Corner::TopRight : Corner::TopLeft);
}

Device::Device(const std::string& deviceIni) {
    writeFile(folder_.file("device.ini"), deviceIni);
    fs::create_directory(folder_.file("documents"));
}

void Device::add(const std::string& file, const fixtures::Picture& picture, bool colour) const {
    const std::string temporary = documents() + "/." + file + ".part";
    glyphor::samples::writePng(temporary, fixtures::rasterOf(picture, colour));
    fs::rename(temporary, documents() + "/" + file);
}

void Device::addBytes(const std::string& file, const std::string& bytes) const {
    const std::string temporary = documents() + "/." + file + ".part";
    writeFile(temporary, bytes);
    fs::rename(temporary, documents() + "/" + file);
}

ZyrReaderSettings Device::settings() const {
    ZyrReaderSettings settings{};
    support::ScopedEnvironment device("ZYRREADER_DEVICE", path().c_str());
    ZyrReader_LL_LoadSettings(&settings);
    return settings;
}

const std::string& emptyDevice() {
    static const Device device("");
    return device.path();
}

Delivered::~Delivered() {
    for (const Entry& entry : images)
        EXPECT_EQ(ZyrReader_DestroyCachedObject(entry.image), ZYR_OK) << "delivered images are library objects";
}

void Delivered::callback(void* user, int32_t index, int32_t side, uint32_t lightMask, ZyrImage* image) {
    static_cast<Delivered*>(user)->images.push_back({index, side, lightMask, image});
}

} // namespace capture
