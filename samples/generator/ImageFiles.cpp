#include "ImageFiles.h"

#include <png.h>

#include <cstdio>
#include <jpeglib.h>
#include <memory>

namespace glyphor::samples {
namespace {

struct FileCloser {
    void operator()(FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<FILE, FileCloser>;

void put16(std::vector<uint8_t>& out, uint32_t v) {
    out.push_back(uint8_t(v));
    out.push_back(uint8_t(v >> 8));
}
void put32(std::vector<uint8_t>& out, uint32_t v) {
    put16(out, v & 0xFFFF);
    put16(out, v >> 16);
}

} // namespace

bool writePng(const std::string& path, const RasterImage& image) {
    File file(std::fopen(path.c_str(), "wb"));
    if (!file)
        return false;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        return false;
    }
    if (setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file.get());
    png_set_IHDR(png, info, png_uint_32(image.width), png_uint_32(image.height), 8,
                 image.channels == 1 ? PNG_COLOR_TYPE_GRAY : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    const size_t rowBytes = size_t(image.width) * size_t(image.channels);
    for (int y = 0; y < image.height; ++y)
        png_write_row(png, image.pixels.data() + size_t(y) * rowBytes);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

bool writeJpeg(const std::string& path, const RasterImage& image, int quality) {
    File file(std::fopen(path.c_str(), "wb"));
    if (!file)
        return false;
    jpeg_compress_struct cinfo{};
    jpeg_error_mgr jerr{};
    cinfo.err = jpeg_std_error(&jerr); // errors here are programming errors: libjpeg exits
    jpeg_create_compress(&cinfo);
    jpeg_stdio_dest(&cinfo, file.get());
    cinfo.image_width = JDIMENSION(image.width);
    cinfo.image_height = JDIMENSION(image.height);
    cinfo.input_components = image.channels;
    cinfo.in_color_space = image.channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&cinfo);
    jpeg_set_quality(&cinfo, quality, TRUE);
    jpeg_start_compress(&cinfo, TRUE);
    const size_t rowBytes = size_t(image.width) * size_t(image.channels);
    while (cinfo.next_scanline < cinfo.image_height) {
        JSAMPROW row = const_cast<JSAMPROW>(image.pixels.data() + cinfo.next_scanline * rowBytes);
        jpeg_write_scanlines(&cinfo, &row, 1);
    }
    jpeg_finish_compress(&cinfo);
    jpeg_destroy_compress(&cinfo);
    return true;
}

bool writeBmp(const std::string& path, const RasterImage& image) {
    const uint32_t rowBytes = (uint32_t(image.width) * 3 + 3) & ~3u;
    const uint32_t dataBytes = rowBytes * uint32_t(image.height);
    std::vector<uint8_t> out;
    out.reserve(54 + dataBytes);
    out.push_back('B');
    out.push_back('M');
    put32(out, 54 + dataBytes);
    put32(out, 0);
    put32(out, 54);
    put32(out, 40); // BITMAPINFOHEADER
    put32(out, uint32_t(image.width));
    put32(out, uint32_t(image.height)); // positive: rows stored bottom-up
    put16(out, 1);
    put16(out, 24);
    put32(out, 0); // no compression
    put32(out, dataBytes);
    put32(out, 11811); // 300 dpi in pixels per metre
    put32(out, 11811);
    put32(out, 0);
    put32(out, 0);
    for (int y = image.height - 1; y >= 0; --y) {
        const uint8_t* row = image.pixels.data() + size_t(y) * size_t(image.width) * size_t(image.channels);
        for (int x = 0; x < image.width; ++x) {
            const uint8_t* p = row + size_t(x) * size_t(image.channels);
            uint8_t r = p[0], g = image.channels == 3 ? p[1] : p[0], b = image.channels == 3 ? p[2] : p[0];
            out.push_back(b);
            out.push_back(g);
            out.push_back(r);
        }
        for (uint32_t pad = uint32_t(image.width) * 3; pad < rowBytes; ++pad)
            out.push_back(0);
    }
    File file(std::fopen(path.c_str(), "wb"));
    return file && std::fwrite(out.data(), 1, out.size(), file.get()) == out.size();
}

} // namespace glyphor::samples
