#include "imagecodec/PngWriter.h"

#include "ZyrReaderLowLevelAPI.h"
#include "imagecodec/RowConverter.h"

#include <png.h>

#include <csetjmp>
#include <cstdio>
#include <new>

namespace zyr {
namespace {

void appendToVector(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    bool stored = true;
    try {
        out->insert(out->end(), data, data + length);
    } catch (const std::bad_alloc&) {
        stored = false;
    }
    if (!stored) // outside the handler: png_error does not return
        png_error(png, "out of memory");
}
void noFlush(png_structp) {}
void onError(png_structp png, png_const_charp) {
    png_longjmp(png, 1);
}
void onWarning(png_structp, png_const_charp) {}

// The rows libpng reads: each converted to a layout PNG stores.
struct RowSource {
    int32_t width;
    int32_t height;
    PixelLayout from;
    PixelLayout to;
    const uint8_t* pixels;
    int32_t stride;
    uint8_t* scratch;
};

// Only plain data in this frame: libpng may longjmp out of it.
bool writeRows(png_structp png, png_infop info, const RowSource& s, int colourType) {
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_IHDR(png, info, png_uint_32(s.width), png_uint_32(s.height), 8, colourType, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, 6);
    png_write_info(png, info);
    for (int32_t y = 0; y < s.height; ++y) {
        const uint8_t* row = s.pixels + size_t(y) * size_t(s.stride);
        if (s.from != s.to) {
            RowConverter::convert(s.from, row, s.to, s.scratch, s.width);
            row = s.scratch;
        }
        png_write_row(png, row);
    }
    png_write_end(png, info);
    return true;
}

} // namespace

int32_t PngWriter::encode(int32_t width, int32_t height, PixelLayout layout, const uint8_t* pixels,
                          int32_t stride, std::vector<uint8_t>& out) {
    if (width <= 0 || height <= 0 || pixels == nullptr || stride < width * bytesPerPixel(layout))
        return ZYR_ERR_BAD_ARGUMENT;
    PixelLayout stored;
    int colourType;
    switch (layout) {
    case PixelLayout::Grey8:
        stored = PixelLayout::Grey8, colourType = PNG_COLOR_TYPE_GRAY;
        break;
    case PixelLayout::GreyAlpha:
        stored = PixelLayout::GreyAlpha, colourType = PNG_COLOR_TYPE_GRAY_ALPHA;
        break;
    case PixelLayout::RGB:
    case PixelLayout::BGR:
        stored = PixelLayout::RGB, colourType = PNG_COLOR_TYPE_RGB;
        break;
    default:
        stored = PixelLayout::RGBA, colourType = PNG_COLOR_TYPE_RGB_ALPHA;
        break;
    }
    std::vector<uint8_t> scratch(size_t(width) * 4);
    std::vector<uint8_t> encoded;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, onError, onWarning);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr) {
        png_destroy_write_struct(&png, nullptr);
        return ZYR_ERR_OUT_OF_MEMORY;
    }
    png_set_write_fn(png, &encoded, appendToVector, noFlush);
    const RowSource source{width, height, layout, stored, pixels, stride, scratch.data()};
    const bool written = writeRows(png, info, source, colourType);
    png_destroy_write_struct(&png, &info);
    if (!written)
        return ZYR_ERR_OUT_OF_MEMORY;
    out = std::move(encoded);
    return ZYR_OK;
}

int32_t PngWriter::writeFile(const std::string& path, int32_t width, int32_t height, PixelLayout layout,
                             const uint8_t* pixels, int32_t stride) {
    std::vector<uint8_t> png;
    if (const int32_t result = encode(width, height, layout, pixels, stride, png))
        return result;
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        return ZYR_ERR_FILE;
    const bool complete = std::fwrite(png.data(), 1, png.size(), file) == png.size();
    const bool closed = std::fclose(file) == 0;
    return complete && closed ? ZYR_OK : ZYR_ERR_FILE;
}

} // namespace zyr
