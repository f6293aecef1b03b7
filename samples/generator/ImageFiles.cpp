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

namespace glyphor::samples {
namespace {

bool readPng(const std::string& path, RasterImage& image) {
    png_image png{};
    png.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&png, path.c_str()))
        return false;
    const bool grey = (png.format & PNG_FORMAT_FLAG_COLOR) == 0;
    png.format = grey ? PNG_FORMAT_GRAY : PNG_FORMAT_RGB;
    image.width = int(png.width);
    image.height = int(png.height);
    image.channels = grey ? 1 : 3;
    image.pixels.resize(PNG_IMAGE_SIZE(png));
    const bool ok = png_image_finish_read(&png, nullptr, image.pixels.data(), 0, nullptr) != 0;
    png_image_free(&png);
    return ok;
}

bool readJpeg(const std::string& path, RasterImage& image) {
    File file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return false;
    jpeg_decompress_struct cinfo{};
    jpeg_error_mgr jerr{};
    cinfo.err = jpeg_std_error(&jerr); // only our own files are read here
    jpeg_create_decompress(&cinfo);
    jpeg_stdio_src(&cinfo, file.get());
    jpeg_read_header(&cinfo, TRUE);
    cinfo.out_color_space = cinfo.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&cinfo);
    image.width = int(cinfo.output_width);
    image.height = int(cinfo.output_height);
    image.channels = int(cinfo.output_components);
    const size_t rowBytes = size_t(image.width) * size_t(image.channels);
    image.pixels.resize(rowBytes * size_t(image.height));
    while (cinfo.output_scanline < cinfo.output_height) {
        JSAMPROW row = image.pixels.data() + cinfo.output_scanline * rowBytes;
        jpeg_read_scanlines(&cinfo, &row, 1);
    }
    jpeg_finish_decompress(&cinfo);
    jpeg_destroy_decompress(&cinfo);
    return true;
}

uint32_t get32(const std::vector<uint8_t>& b, size_t at) {
    return uint32_t(b[at]) | uint32_t(b[at + 1]) << 8 | uint32_t(b[at + 2]) << 16 | uint32_t(b[at + 3]) << 24;
}

bool readBmp(const std::vector<uint8_t>& bytes, RasterImage& image) {
    if (bytes.size() < 54 || bytes[28] != 24)
        return false;
    const uint32_t offset = get32(bytes, 10);
    image.width = int(get32(bytes, 18));
    image.height = int(get32(bytes, 22));
    image.channels = 3;
    const size_t rowBytes = (size_t(image.width) * 3 + 3) & ~size_t(3);
    if (image.width <= 0 || image.height <= 0 || offset + rowBytes * size_t(image.height) > bytes.size())
        return false;
    image.pixels.resize(size_t(image.width) * size_t(image.height) * 3);
    for (int y = 0; y < image.height; ++y) {
        const uint8_t* in = bytes.data() + offset + rowBytes * size_t(image.height - 1 - y);
        uint8_t* out = image.pixels.data() + size_t(y) * size_t(image.width) * 3;
        for (int x = 0; x < image.width; ++x) {
            out[3 * x] = in[3 * x + 2];
            out[3 * x + 1] = in[3 * x + 1];
            out[3 * x + 2] = in[3 * x];
        }
    }
    return true;
}

} // namespace

bool readImageFile(const std::string& path, RasterImage& image) {
    File file(std::fopen(path.c_str(), "rb"));
    if (!file)
        return false;
    std::vector<uint8_t> bytes;
    uint8_t chunk[65536];
    for (size_t n; (n = std::fread(chunk, 1, sizeof chunk, file.get())) > 0;)
        bytes.insert(bytes.end(), chunk, chunk + n);
    if (bytes.size() >= 2 && bytes[0] == 'B' && bytes[1] == 'M')
        return readBmp(bytes, image);
    if (bytes.size() >= 2 && bytes[0] == 0xFF && bytes[1] == 0xD8)
        return readJpeg(path, image);
    return readPng(path, image);
}

} // namespace glyphor::samples
