#include "core/LibraryImage.h"

#include "ZyrPixelFormat.h"
#include "core/Log.h"
#include "core/ObjectRegistry.h"
#include "imagecodec/ImageDecoder.h"
#include "imagecodec/ImageInfo.h"
#include "imagecodec/PngWriter.h"
#include "imagecodec/RowConverter.h"

#include <cstring>
#include <memory>
#include <new>

namespace zyr {
namespace {

// The ZyrImage is the first member, so the pointer the client holds is the registered object.
struct OwnedImage {
    ZyrImage image{};
    std::vector<uint8_t> pixels;
};

ZyrImage* registerImage(std::unique_ptr<OwnedImage> owned) {
    owned->image.Pixels = owned->pixels.data();
    return &ObjectRegistry::instance().adopt(std::move(owned))->image;
}

} // namespace

PixelLayout LibraryImage::layoutOf(ZyrPixelFormat format) {
    switch (format) {
    case ZYR_PIXEL_GREY8:
        return PixelLayout::Grey8;
    case ZYR_PIXEL_RGB24:
        return PixelLayout::RGB;
    case ZYR_PIXEL_BGRA32:
        break;
    }
    return PixelLayout::BGRA;
}

bool LibraryImage::isValidView(const ZyrImage* image) {
    if (image == nullptr || image->Pixels == nullptr || image->Width <= 0 || image->Height <= 0)
        return false;
    const int bpp = ZyrPixel_BytesPerPixel(image->PixelFormat);
    return bpp != 0 && int64_t(image->Stride) >= int64_t(image->Width) * bpp;
}

ZyrImage* LibraryImage::create(int32_t width, int32_t height, ZyrPixelFormat format) {
    const int bpp = ZyrPixel_BytesPerPixel(format);
    if (bpp == 0 || width <= 0 || height <= 0 || width > kMaxImageDimension || height > kMaxImageDimension ||
        int64_t(width) * height > kMaxImagePixels)
        return nullptr;
    try {
        auto owned = std::make_unique<OwnedImage>();
        owned->pixels.assign(size_t(width) * size_t(height) * size_t(bpp), 0);
        owned->image = {width, height, width * bpp, format, nullptr};
        return registerImage(std::move(owned));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

ZyrImage* LibraryImage::adopt(RawImage&& raw) {
    ZyrPixelFormat format;
    switch (raw.layout) {
    case PixelLayout::Grey8:
        format = ZYR_PIXEL_GREY8;
        break;
    case PixelLayout::RGB:
        format = ZYR_PIXEL_RGB24;
        break;
    case PixelLayout::BGRA:
        format = ZYR_PIXEL_BGRA32;
        break;
    default: { // convert the layouts a ZyrImage cannot describe
        ZyrImage* converted =
            create(raw.width, raw.height, hasAlpha(raw.layout) ? ZYR_PIXEL_BGRA32 : ZYR_PIXEL_RGB24);
        if (converted == nullptr)
            return nullptr;
        for (int32_t y = 0; y < raw.height; ++y)
            RowConverter::convert(raw.layout, raw.row(y), layoutOf(ZyrPixelFormat(converted->PixelFormat)),
                                  converted->Pixels + size_t(y) * size_t(converted->Stride), raw.width);
        return converted;
    }
    }
    try {
        auto owned = std::make_unique<OwnedImage>();
        owned->image = {raw.width, raw.height, raw.stride, format, nullptr};
        owned->pixels = std::move(raw.pixels);
        return registerImage(std::move(owned));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

ZyrImage* LibraryImage::copy(const ZyrImage& view) {
    if (!isValidView(&view))
        return nullptr;
    ZyrImage* image = create(view.Width, view.Height, static_cast<ZyrPixelFormat>(view.PixelFormat));
    if (image == nullptr)
        return nullptr;
    for (int32_t y = 0; y < view.Height; ++y)
        std::memcpy(image->Pixels + size_t(y) * size_t(image->Stride),
                    view.Pixels + size_t(y) * size_t(view.Stride), size_t(image->Stride));
    return image;
}

int32_t LibraryImage::decode(const uint8_t* data, size_t size, ZyrImage** image) {
    if (data == nullptr || image == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    RawImage raw;
    if (const int32_t result = ImageDecoder::decode(data, size, raw)) {
        Log::write(ZYR_LOG_IMAGES, LogError, "image of %zu bytes not decoded: error %d", size, result);
        return result;
    }
    ZyrImage* adopted = adopt(std::move(raw));
    if (adopted == nullptr)
        return ZYR_ERR_OUT_OF_MEMORY;
    *image = adopted;
    return ZYR_OK;
}

int32_t LibraryImage::decodeFile(const std::string& path, ZyrImage** image) {
    if (image == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    RawImage raw;
    if (const int32_t result = ImageDecoder::decodeFile(path, raw)) {
        Log::write(ZYR_LOG_IMAGES, LogError, "image file %s not decoded: error %d", path.c_str(), result);
        return result;
    }
    ZyrImage* adopted = adopt(std::move(raw));
    if (adopted == nullptr)
        return ZYR_ERR_OUT_OF_MEMORY;
    *image = adopted;
    return ZYR_OK;
}

int32_t LibraryImage::writePng(const ZyrImage& image, const std::string& path) {
    if (!isValidView(&image))
        return ZYR_ERR_BAD_ARGUMENT;
    return PngWriter::writeFile(path, image.Width, image.Height, layoutOf(ZyrPixelFormat(image.PixelFormat)),
                                image.Pixels, image.Stride);
}

} // namespace zyr
