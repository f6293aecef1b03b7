#include "ImageFileLoader.h"

#include "ZyrPixelFormat.h"
#include "imagecodec/ImageDecoder.h"
#include "imagecodec/PngWriter.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <limits>
#include <vector>

namespace {

bool ReadFile(const std::string& path, std::vector<uint8_t>& bytes, std::string& error) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) {
        error = std::strerror(errno);
        return false;
    }
    bytes.clear();
    uint8_t chunk[1 << 16];
    size_t got = 0;
    while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0) {
        if (bytes.size() + got > std::numeric_limits<uint32_t>::max()) {
            std::fclose(file);
            error = "file too large";
            return false;
        }
        bytes.insert(bytes.end(), chunk, chunk + got);
    }
    const bool failed = std::ferror(file) != 0;
    const int readErrno = errno;
    std::fclose(file);
    if (failed) {
        // A folder opens but does not read (EISDIR).
        error = std::strerror(readErrno);
        return false;
    }
    return true;
}

std::string LibraryError(int32_t code) {
    std::string text = ZyrReader_ErrorText(code);
    return text.empty() ? "error " + std::to_string(code) : text;
}

// The decoded pixels and the view of them the plug-ins get.
struct LoadedImage {
    zyr::RawImage raw;
    ZyrImage view{};
};

} // namespace

std::shared_ptr<const ZyrImage> ImageFileLoader::Load(const std::string& path, std::string& error) {
    std::vector<uint8_t> encoded;
    if (!ReadFile(path, encoded, error)) {
        return nullptr;
    }
    if (encoded.empty()) {
        error = "empty file";
        return nullptr;
    }
    zyr::ImageInfo info;
    int32_t result = zyr::ImageDecoder::readInfo(encoded.data(), encoded.size(), info);
    auto image = std::make_shared<LoadedImage>();
    if (result == ZYR_OK) {
        result = zyr::ImageDecoder::decode(encoded.data(), encoded.size(),
                                           info.colour ? zyr::PixelLayout::RGB : zyr::PixelLayout::Grey8,
                                           image->raw);
    }
    if (result != ZYR_OK) {
        error = LibraryError(result);
        return nullptr;
    }
    zyr::RawImage& raw = image->raw;
    image->view = ZyrImage{raw.width, raw.height, raw.stride, info.colour ? ZYR_PIXEL_RGB24 : ZYR_PIXEL_GREY8,
                           raw.pixels.data()};
    return std::shared_ptr<const ZyrImage>(image, &image->view);
}

std::shared_ptr<const ZyrImage> ImageFileLoader::Copy(const ZyrImage* image) {
    const int32_t bytesPerPixel = image ? ZyrPixel_BytesPerPixel(image->PixelFormat) : 0;
    if (bytesPerPixel == 0 || !image->Pixels || image->Width <= 0 || image->Height <= 0 ||
        int64_t(image->Stride) < int64_t(image->Width) * bytesPerPixel) {
        return nullptr;
    }
    auto copy = std::make_shared<LoadedImage>();
    const size_t row = size_t(image->Width) * size_t(bytesPerPixel);
    copy->raw.width = image->Width;
    copy->raw.height = image->Height;
    copy->raw.stride = static_cast<int32_t>(row);
    copy->raw.pixels.resize(row * size_t(image->Height));
    for (int32_t y = 0; y < image->Height; ++y) {
        std::memcpy(copy->raw.pixels.data() + size_t(y) * row, image->Pixels + size_t(y) * size_t(image->Stride), row);
    }
    copy->view = ZyrImage{image->Width, image->Height, copy->raw.stride, image->PixelFormat, copy->raw.pixels.data()};
    return std::shared_ptr<const ZyrImage>(copy, &copy->view);
}

bool ImageFileLoader::SavePng(const ZyrImage& image, const std::string& path) {
    zyr::PixelLayout layout = zyr::PixelLayout::Grey8;
    switch (image.PixelFormat) {
    case ZYR_PIXEL_GREY8:
        break;
    case ZYR_PIXEL_RGB24:
        layout = zyr::PixelLayout::RGB;
        break;
    case ZYR_PIXEL_BGRA32:
        layout = zyr::PixelLayout::BGRA;
        break;
    default:
        return false;
    }
    if (!image.Pixels || image.Width <= 0 || image.Height <= 0 ||
        int64_t(image.Stride) < int64_t(image.Width) * ZyrPixel_BytesPerPixel(image.PixelFormat)) {
        return false;
    }
    return zyr::PngWriter::writeFile(path, image.Width, image.Height, layout, image.Pixels, image.Stride) == ZYR_OK;
}
