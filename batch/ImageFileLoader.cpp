#include "ImageFileLoader.h"

#include "imagecodec/ImageDecoder.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
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
