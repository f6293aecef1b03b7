#include "CheckImage.h"

#include "ImageFileLoader.h"
#include "SampleRenderer.h"
#include "ZyrPixelFormat.h"

#include <cstring>
#include <random>

namespace plugincheck {
namespace {

bool selected(const glyphor::samples::Sample& sample) {
    static const char* const kVariants[] = {"plain", "multi", "empty", "eci", "binary", "aamva", "colour"};
    for (const char* variant : kVariants)
        if (sample.variant == variant)
            return true;
    return false;
}

CheckImage fromRaster(const std::string& name, const glyphor::samples::RasterImage& raster) {
    const int32_t format = raster.channels == 3 ? ZYR_PIXEL_RGB24 : ZYR_PIXEL_GREY8;
    const int row = raster.width * raster.channels;
    CheckImage image(name, raster.width, raster.height, format, row);
    for (int y = 0; y < raster.height; ++y)
        std::memcpy(image.row(y), raster.pixels.data() + size_t(y) * size_t(row), size_t(row));
    return image;
}

// Grey level of one pixel of a grey or RGB image.
uint8_t greyAt(const CheckImage& image, int x, int y) {
    const ZyrImage* v = image.view();
    const uint8_t* p = v->Pixels + size_t(y) * size_t(v->Stride) + size_t(x) * size_t(ZyrPixel_BytesPerPixel(v->PixelFormat));
    if (v->PixelFormat == ZYR_PIXEL_GREY8)
        return p[0];
    return ZyrPixel_Grey(p[0], p[1], p[2]);
}

CheckImage uniform(const std::string& name, int width, int height, int32_t format, uint8_t level) {
    CheckImage image(name, width, height, format, width * ZyrPixel_BytesPerPixel(format));
    for (int y = 0; y < height; ++y)
        std::memset(image.row(y), level, size_t(width) * size_t(ZyrPixel_BytesPerPixel(format)));
    return image;
}

CheckImage noise(const std::string& name, int width, int height, int32_t format, int stride, uint32_t seed) {
    CheckImage image(name, width, height, format, stride);
    std::mt19937 random(seed);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < stride; ++x)
            image.row(y)[x] = uint8_t(random());
    return image;
}

} // namespace

CheckImage::CheckImage(std::string name, int width, int height, int32_t format, int stride)
    : name_(std::move(name)), pixels_(size_t(stride) * size_t(height)) {
    view_ = ZyrImage{width, height, stride, format, pixels_.data()};
}

bool generatedSamples(bool all, std::vector<CheckImage>& images, std::string& error) {
    using namespace glyphor::samples;
    for (const Sample& sample : sampleCatalogue()) {
        if (!all && !selected(sample))
            continue;
        RasterImage raster;
        if (!renderSample(sample, raster, error)) {
            error = sample.name + ": " + error;
            return false;
        }
        CheckImage image = fromRaster(sample.name, raster);
        image.known = true;
        for (const SampleSymbol& symbol : sample.symbols)
            image.expected.push_back({symbol.payload, symbol.eci});
        images.push_back(std::move(image));
    }
    return true;
}

bool imageFiles(const std::vector<std::string>& paths, std::vector<CheckImage>& images, std::string& error) {
    for (const std::string& path : paths) {
        std::string reason;
        std::shared_ptr<const ZyrImage> loaded = ImageFileLoader::Load(path, reason);
        if (!loaded) {
            error = path + ": " + reason;
            return false;
        }
        const int row = loaded->Width * ZyrPixel_BytesPerPixel(loaded->PixelFormat);
        CheckImage image(path, loaded->Width, loaded->Height, loaded->PixelFormat, row);
        for (int y = 0; y < loaded->Height; ++y)
            std::memcpy(image.row(y), loaded->Pixels + size_t(y) * size_t(loaded->Stride), size_t(row));
        images.push_back(std::move(image));
    }
    return true;
}

CheckImage padded(const CheckImage& source) {
    const ZyrImage* v = source.view();
    const int stride = v->Width + 61;
    CheckImage image(source.name() + " (grey, padded rows)", v->Width, v->Height, ZYR_PIXEL_GREY8, stride);
    for (int y = 0; y < v->Height; ++y) {
        for (int x = 0; x < v->Width; ++x)
            image.row(y)[x] = greyAt(source, x, y);
        // Dark padding: a decoder that reads past the row sees bars that are not there.
        std::memset(image.row(y) + v->Width, 0, size_t(stride - v->Width));
    }
    return image;
}

CheckImage asRgb(const CheckImage& source) {
    const ZyrImage* v = source.view();
    CheckImage image(source.name() + " (RGB24)", v->Width, v->Height, ZYR_PIXEL_RGB24, v->Width * 3);
    for (int y = 0; y < v->Height; ++y)
        for (int x = 0; x < v->Width; ++x)
            std::memset(image.row(y) + x * 3, greyAt(source, x, y), 3);
    return image;
}

CheckImage asBgra(const CheckImage& source) {
    const ZyrImage* v = source.view();
    CheckImage image(source.name() + " (BGRA32)", v->Width, v->Height, ZYR_PIXEL_BGRA32, v->Width * 4);
    for (int y = 0; y < v->Height; ++y)
        for (int x = 0; x < v->Width; ++x) {
            std::memset(image.row(y) + x * 4, greyAt(source, x, y), 3);
            image.row(y)[x * 4 + 3] = 255;
        }
    return image;
}

std::vector<CheckImage> badImages() {
    std::vector<CheckImage> images;
    images.push_back(uniform("1x1 grey", 1, 1, ZYR_PIXEL_GREY8, 128));
    images.push_back(noise("2x2 BGRA32 noise", 2, 2, ZYR_PIXEL_BGRA32, 8, 1));
    images.push_back(noise("2000x1 grey noise", 2000, 1, ZYR_PIXEL_GREY8, 2000, 2));
    images.push_back(noise("1x2000 RGB24 noise", 1, 2000, ZYR_PIXEL_RGB24, 3, 3));
    images.push_back(noise("640x480 grey noise", 640, 480, ZYR_PIXEL_GREY8, 640, 4));
    images.push_back(noise("333x222 RGB24 noise, padded rows", 333, 222, ZYR_PIXEL_RGB24, 1024, 5));
    images.push_back(noise("300x200 BGRA32 noise", 300, 200, ZYR_PIXEL_BGRA32, 1200, 6));
    return images;
}

std::vector<CheckImage> emptyImages() {
    std::vector<CheckImage> images;
    images.push_back(uniform("white grey", 640, 480, ZYR_PIXEL_GREY8, 255));
    images.push_back(uniform("black grey", 640, 480, ZYR_PIXEL_GREY8, 0));
    images.push_back(uniform("mid-grey RGB24", 640, 480, ZYR_PIXEL_RGB24, 128));
    images.push_back(uniform("white BGRA32", 640, 480, ZYR_PIXEL_BGRA32, 255));
    return images;
}

} // namespace plugincheck
