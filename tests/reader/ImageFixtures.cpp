#include "ImageFixtures.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>
#include <tuple>

#include <jpeglib.h>

namespace fixtures {
namespace {

void put16(std::vector<uint8_t>& out, size_t at, uint32_t v) {
    out[at] = uint8_t(v), out[at + 1] = uint8_t(v >> 8);
}
void put32(std::vector<uint8_t>& out, size_t at, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        out[at + size_t(i)] = uint8_t(v >> (8 * i));
}
uint32_t get16(const std::vector<uint8_t>& in, size_t at) {
    return uint32_t(in[at] | in[at + 1] << 8);
}
uint32_t get32(const std::vector<uint8_t>& in, size_t at) {
    return uint32_t(in[at]) | uint32_t(in[at + 1]) << 8 | uint32_t(in[at + 2]) << 16 |
           uint32_t(in[at + 3]) << 24;
}

uint8_t grey(const Rgba& c) {
    return c.r;
}

void appendPng(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}
void flushPng(png_structp) {}

bool writePngRows(png_structp png, png_infop info, std::vector<png_bytep>& rows) {
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_write_info(png, info);
    png_set_packing(png);
    if (png_get_interlace_type(png, info) != PNG_INTERLACE_NONE)
        png_set_interlace_handling(png);
    png_write_image(png, rows.data());
    png_write_end(png, info);
    return true;
}

} // namespace

Picture makePicture(int width, int height, Pattern pattern, int levels) {
    Picture p;
    p.width = width;
    p.height = height;
    p.pixels.resize(size_t(width) * size_t(height));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint8_t v = uint8_t((x * 37 + y * 71 + (x * y) % 13 * 11) & 255);
            const uint8_t a = uint8_t((x * 53 + y * 19) & 255);
            Rgba c{v, v, v, 255};
            switch (pattern) {
            case Pattern::Grey:
                break;
            case Pattern::Colour:
            case Pattern::ColourAlpha:
                c = {uint8_t((x * 29 + y * 7) & 255), uint8_t((x * 3 + y * 41 + 80) & 255),
                     uint8_t((x * x + y * 13 + 160) & 255),
                     pattern == Pattern::ColourAlpha ? a : uint8_t(255)};
                break;
            case Pattern::GreyAlpha:
                c.a = a;
                break;
            case Pattern::Levels: {
                const uint8_t level = uint8_t((x + 2 * y) % levels * 255 / (levels - 1));
                c = {level, level, level, 255};
                break;
            }
            }
            p.at(x, y) = c;
        }
    }
    return p;
}

Picture flattenedOverWhite(const Picture& picture) {
    Picture out = picture;
    for (Rgba& c : out.pixels) {
        auto over = [&](uint8_t v) { return uint8_t(std::lround((v * c.a + 255.0 * (255 - c.a)) / 255.0)); };
        c = {over(c.r), over(c.g), over(c.b), 255};
    }
    return out;
}

std::vector<uint8_t> encodePng(const Picture& picture, int colourType, int bitDepth, bool interlaced) {
    const int w = picture.width;
    const int h = picture.height;
    std::vector<png_color> palette;
    std::vector<png_byte> alphas;
    std::map<std::tuple<int, int, int, int>, int> indexOf;
    if (colourType == PNG_COLOR_TYPE_PALETTE) {
        for (const Rgba& c : picture.pixels) {
            const auto key = std::make_tuple(c.r, c.g, c.b, c.a);
            if (indexOf.count(key) == 0) {
                indexOf[key] = int(palette.size());
                palette.push_back({c.r, c.g, c.b});
                alphas.push_back(c.a);
            }
        }
        if (palette.size() > (1u << bitDepth))
            return {};
    }
    const int bytesPerSample = bitDepth == 16 ? 2 : 1;
    int channels = 1;
    if (colourType == PNG_COLOR_TYPE_GRAY_ALPHA)
        channels = 2;
    else if (colourType == PNG_COLOR_TYPE_RGB)
        channels = 3;
    else if (colourType == PNG_COLOR_TYPE_RGB_ALPHA)
        channels = 4;
    // One byte per sample below 8 bits; png_set_packing packs them.
    std::vector<std::vector<png_byte>> data(size_t(h),
                                            std::vector<png_byte>(size_t(w * channels * bytesPerSample)));
    for (int y = 0; y < h; ++y) {
        png_byte* row = data[size_t(y)].data();
        for (int x = 0; x < w; ++x) {
            const Rgba& c = picture.at(x, y);
            std::vector<int> samples;
            switch (colourType) {
            case PNG_COLOR_TYPE_PALETTE:
                samples = {indexOf[std::make_tuple(c.r, c.g, c.b, c.a)]};
                break;
            case PNG_COLOR_TYPE_GRAY:
                samples = {bitDepth < 8 ? grey(c) * ((1 << bitDepth) - 1) / 255 : grey(c)};
                break;
            case PNG_COLOR_TYPE_GRAY_ALPHA:
                samples = {grey(c), c.a};
                break;
            case PNG_COLOR_TYPE_RGB:
                samples = {c.r, c.g, c.b};
                break;
            default:
                samples = {c.r, c.g, c.b, c.a};
                break;
            }
            for (size_t i = 0; i < samples.size(); ++i) {
                if (bytesPerSample == 2) {
                    *row++ = png_byte(samples[i]);
                    *row++ = png_byte((x * 7 + y + int(i)) & 255); // low byte: noise the reader drops
                } else {
                    *row++ = png_byte(samples[i]);
                }
            }
        }
    }
    std::vector<png_bytep> rows;
    for (auto& row : data)
        rows.push_back(row.data());

    std::vector<uint8_t> out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &out, appendPng, flushPng);
    png_set_IHDR(png, info, png_uint_32(w), png_uint_32(h), bitDepth, colourType,
                 interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (colourType == PNG_COLOR_TYPE_PALETTE) {
        png_set_PLTE(png, info, palette.data(), int(palette.size()));
        if (std::any_of(alphas.begin(), alphas.end(), [](png_byte a) { return a != 255; }))
            png_set_tRNS(png, info, alphas.data(), int(alphas.size()), nullptr);
    }
    const bool ok = writePngRows(png, info, rows);
    png_destroy_write_struct(&png, &info);
    return ok ? out : std::vector<uint8_t>{};
}

std::vector<uint8_t> encodeJpeg(const Picture& picture, bool greyImage, int quality, bool progressive) {
    jpeg_compress_struct cinfo{};
    jpeg_error_mgr errors{};
    cinfo.err = jpeg_std_error(&errors);
    jpeg_create_compress(&cinfo);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&cinfo, &buffer, &size);
    cinfo.image_width = JDIMENSION(picture.width);
    cinfo.image_height = JDIMENSION(picture.height);
    cinfo.input_components = greyImage ? 1 : 3;
    cinfo.in_color_space = greyImage ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&cinfo);
    jpeg_set_quality(&cinfo, quality, TRUE);
    if (progressive)
        jpeg_simple_progression(&cinfo);
    jpeg_start_compress(&cinfo, TRUE);
    std::vector<uint8_t> row(size_t(picture.width) * 3);
    while (cinfo.next_scanline < cinfo.image_height) {
        const int y = int(cinfo.next_scanline);
        for (int x = 0; x < picture.width; ++x) {
            const Rgba& c = picture.at(x, y);
            if (greyImage) {
                row[size_t(x)] = c.r;
            } else {
                row[size_t(3 * x)] = c.r, row[size_t(3 * x + 1)] = c.g, row[size_t(3 * x + 2)] = c.b;
            }
        }
        JSAMPROW rows[1] = {row.data()};
        jpeg_write_scanlines(&cinfo, rows, 1);
    }
    jpeg_finish_compress(&cinfo);
    jpeg_destroy_compress(&cinfo);
    std::vector<uint8_t> out(buffer, buffer + size);
    std::free(buffer);
    return out;
}

Picture decodeJpegReference(const std::vector<uint8_t>& jpeg) {
    jpeg_decompress_struct cinfo{};
    jpeg_error_mgr errors{};
    cinfo.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&cinfo);
    jpeg_mem_src(&cinfo, jpeg.data(), static_cast<unsigned long>(jpeg.size()));
    jpeg_read_header(&cinfo, TRUE);
    cinfo.out_color_space = cinfo.num_components == 1 ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_start_decompress(&cinfo);
    Picture p;
    p.width = int(cinfo.output_width);
    p.height = int(cinfo.output_height);
    p.pixels.resize(size_t(p.width) * size_t(p.height));
    std::vector<uint8_t> row(size_t(p.width) * size_t(cinfo.output_components));
    while (cinfo.output_scanline < cinfo.output_height) {
        const int y = int(cinfo.output_scanline);
        JSAMPROW rows[1] = {row.data()};
        jpeg_read_scanlines(&cinfo, rows, 1);
        for (int x = 0; x < p.width; ++x) {
            if (cinfo.output_components == 1)
                p.at(x, y) = {row[size_t(x)], row[size_t(x)], row[size_t(x)], 255};
            else
                p.at(x, y) = {row[size_t(3 * x)], row[size_t(3 * x + 1)], row[size_t(3 * x + 2)], 255};
        }
    }
    jpeg_finish_decompress(&cinfo);
    jpeg_destroy_decompress(&cinfo);
    return p;
}

namespace {

// Run-length encodes one row of palette indices; even rows use repeated runs, odd rows literal runs.
void appendRleRow(std::vector<uint8_t>& out, const std::vector<uint8_t>& indices, bool rle4, bool literal) {
    size_t x = 0;
    const size_t w = indices.size();
    while (x < w) {
        const size_t remaining = w - x;
        if (literal && remaining >= 3) {
            const size_t n = std::min<size_t>(remaining, 255);
            out.push_back(0);
            out.push_back(uint8_t(n));
            size_t bytes = 0;
            if (rle4) {
                for (size_t i = 0; i < n; i += 2, ++bytes)
                    out.push_back(uint8_t(indices[x + i] << 4 | (i + 1 < n ? indices[x + i + 1] : 0)));
            } else {
                for (size_t i = 0; i < n; ++i, ++bytes)
                    out.push_back(indices[x + i]);
            }
            if (bytes % 2 != 0)
                out.push_back(0);
            x += n;
            continue;
        }
        size_t n = 1;
        while (x + n < w && n < 255 && indices[x + n] == indices[x])
            ++n;
        out.push_back(uint8_t(n));
        out.push_back(rle4 ? uint8_t(indices[x] << 4 | indices[x]) : indices[x]);
        x += n;
    }
    out.push_back(0);
    out.push_back(0); // end of line
}

int maskBits(uint32_t mask) {
    int n = 0;
    for (; mask != 0; mask >>= 1)
        n += int(mask & 1);
    return n;
}
int maskShift(uint32_t mask) {
    int s = 0;
    while (mask != 0 && (mask & 1) == 0)
        mask >>= 1, ++s;
    return s;
}

} // namespace

void bmpMasks(const BmpOptions& o, uint32_t masks[4]) {
    const uint32_t given[4] = {o.masks[0], o.masks[1], o.masks[2], o.masks[3]};
    const uint32_t rgb555[4] = {0x7C00, 0x03E0, 0x001F, 0}, rgb888[4] = {0xFF0000, 0xFF00, 0xFF, 0};
    const uint32_t* chosen = o.bitfields ? given : o.bitsPerPixel == 16 ? rgb555 : rgb888;
    std::copy(chosen, chosen + 4, masks);
}

std::vector<uint8_t> encodeBmp(const Picture& picture, const BmpOptions& o) {
    const int w = picture.width;
    const int h = picture.height;
    const int bpp = o.bitsPerPixel;
    const bool core = o.headerSize == 12;

    std::vector<Rgba> palette;
    std::map<std::tuple<int, int, int>, int> indexOf;
    if (bpp <= 8) {
        for (const Rgba& c : picture.pixels) {
            const auto key = std::make_tuple(c.r, c.g, c.b);
            if (indexOf.count(key) == 0) {
                indexOf[key] = int(palette.size());
                palette.push_back(c);
            }
        }
        if (palette.size() > (1u << bpp))
            return {};
    }
    uint32_t masks[4];
    bmpMasks(o, masks);

    const size_t masksAfterHeader = o.bitfields && o.headerSize == 40 ? 12 : 0;
    // An OS/2 core header has no colour count: its palette always has 2^bits entries.
    const size_t paletteEntries = core && bpp <= 8 ? size_t(1) << bpp : palette.size();
    const size_t paletteBytes = paletteEntries * (core ? 3 : 4);
    const size_t offset = 14 + size_t(o.headerSize) + masksAfterHeader + paletteBytes;
    const size_t stride = (size_t(w) * size_t(bpp) + 31) / 32 * 4;

    // Pixel data, rows in file order.
    std::vector<uint8_t> pixels;
    for (int fileRow = 0; fileRow < h; ++fileRow) {
        const int y = o.topDown ? fileRow : h - 1 - fileRow;
        if (o.rle) {
            std::vector<uint8_t> indices(static_cast<size_t>(w));
            for (int x = 0; x < w; ++x) {
                const Rgba& c = picture.at(x, y);
                indices[size_t(x)] = uint8_t(indexOf[std::make_tuple(c.r, c.g, c.b)]);
            }
            appendRleRow(pixels, indices, bpp == 4, fileRow % 2 == 1);
            continue;
        }
        std::vector<uint8_t> row(stride, 0);
        for (int x = 0; x < w; ++x) {
            const Rgba& c = picture.at(x, y);
            if (bpp <= 8) {
                const int index = indexOf[std::make_tuple(c.r, c.g, c.b)];
                const int bit = x * bpp;
                row[size_t(bit / 8)] |= uint8_t(index << (8 - bpp - bit % 8));
            } else if (bpp == 24) {
                row[size_t(3 * x)] = c.b, row[size_t(3 * x + 1)] = c.g, row[size_t(3 * x + 2)] = c.r;
            } else {
                uint32_t value = 0;
                const uint8_t channel[4] = {c.r, c.g, c.b, c.a};
                for (int i = 0; i < 4; ++i) {
                    if (masks[i] == 0)
                        continue;
                    const int bits = maskBits(masks[i]);
                    const uint32_t q = uint32_t(std::lround(channel[i] * ((1 << bits) - 1) / 255.0));
                    value |= q << maskShift(masks[i]);
                }
                if (bpp == 32 && masks[3] == 0)
                    value |= 0x5Au << 24; // unused byte: must not be read as alpha
                for (int i = 0; i < bpp / 8; ++i)
                    row[size_t(x * bpp / 8 + i)] = uint8_t(value >> (8 * i));
            }
        }
        pixels.insert(pixels.end(), row.begin(), row.end());
    }
    if (o.rle) {
        pixels.push_back(0);
        pixels.push_back(1); // end of bitmap
    } else if (o.omitLastPadding) {
        pixels.resize(pixels.size() - (stride - (size_t(w) * size_t(bpp) + 7) / 8));
    }

    std::vector<uint8_t> out(offset, 0);
    out[0] = 'B', out[1] = 'M';
    put32(out, 2, uint32_t(offset + pixels.size()));
    put32(out, 10, uint32_t(offset));
    put32(out, 14, uint32_t(o.headerSize));
    uint32_t compression = 0;
    if (o.rle)
        compression = bpp == 8 ? 1 : 2;
    else if (o.bitfields)
        compression = 3;
    if (core) {
        put16(out, 18, uint32_t(w));
        put16(out, 20, uint32_t(h));
        put16(out, 22, 1);
        put16(out, 24, uint32_t(bpp));
    } else {
        put32(out, 18, uint32_t(w));
        put32(out, 22, uint32_t(o.topDown ? -h : h));
        put16(out, 26, 1);
        put16(out, 28, uint32_t(bpp));
        put32(out, 30, compression);
        put32(out, 34, uint32_t(pixels.size()));
        put32(out, 46, uint32_t(palette.size()));
        if (o.bitfields) {
            for (int i = 0; i < (o.headerSize >= 56 ? 4 : 3); ++i)
                put32(out, 54 + size_t(4 * i), masks[i]);
        }
        if (o.headerSize >= 108)
            put32(out, 14 + 56, 0x73524742); // 'sRGB'
    }
    size_t at = 14 + size_t(o.headerSize) + masksAfterHeader;
    for (const Rgba& c : palette) {
        out[at] = c.b, out[at + 1] = c.g, out[at + 2] = c.r;
        at += core ? 3 : 4;
    }
    out.insert(out.end(), pixels.begin(), pixels.end());
    return out;
}

bool readOutputBmp(const std::vector<uint8_t>& bmp, BmpFile& file, std::string& problem) {
    auto fail = [&](const std::string& why) {
        problem = why;
        return false;
    };
    if (bmp.size() < 54)
        return fail("shorter than the headers");
    if (bmp[0] != 'B' || bmp[1] != 'M')
        return fail("no BM signature");
    if (get32(bmp, 2) != bmp.size())
        return fail("file size field " + std::to_string(get32(bmp, 2)) + " != " + std::to_string(bmp.size()));
    if (get32(bmp, 6) != 0 || get32(bmp, 14) != 40 || get16(bmp, 26) != 1 || get32(bmp, 30) != 0)
        return fail("unexpected reserved, header size, planes or compression");
    const int w = int(get32(bmp, 18));
    const int h = int(get32(bmp, 22));
    const int bpp = int(get16(bmp, 28));
    if (w <= 0 || h <= 0)
        return fail("not a positive, bottom-up size");
    if (bpp != 8 && bpp != 24)
        return fail("bit count " + std::to_string(bpp));
    const size_t offset = 54 + (bpp == 8 ? 1024 : 0);
    if (get32(bmp, 10) != offset)
        return fail("pixel offset " + std::to_string(get32(bmp, 10)));
    if (bpp == 8) {
        if (get32(bmp, 46) != 256)
            return fail("palette size");
        for (int i = 0; i < 256; ++i) {
            const size_t e = 54 + size_t(4 * i);
            if (bmp[e] != i || bmp[e + 1] != i || bmp[e + 2] != i || bmp[e + 3] != 0)
                return fail("palette entry " + std::to_string(i) + " is not grey");
        }
    }
    const size_t used = size_t(w) * size_t(bpp / 8);
    const size_t stride = (used + 3) & ~size_t(3);
    if (bmp.size() != offset + stride * size_t(h))
        return fail("size does not match rows");
    file.width = w;
    file.height = h;
    file.bitsPerPixel = bpp;
    file.picture.width = w;
    file.picture.height = h;
    file.picture.pixels.assign(size_t(w) * size_t(h), Rgba{0, 0, 0, 255});
    for (int y = 0; y < h; ++y) {
        const size_t row = offset + size_t(h - 1 - y) * stride;
        for (size_t pad = used; pad < stride; ++pad)
            if (bmp[row + pad] != 0)
                return fail("row padding not zero");
        for (int x = 0; x < w; ++x) {
            if (bpp == 8) {
                const uint8_t v = bmp[row + size_t(x)];
                file.picture.at(x, y) = {v, v, v, 255};
            } else {
                const size_t p = row + size_t(3 * x);
                file.picture.at(x, y) = {bmp[p + 2], bmp[p + 1], bmp[p], 255};
            }
        }
    }
    return true;
}

std::string firstDifference(const Picture& expected, const Picture& actual, int tolerance) {
    std::ostringstream out;
    if (expected.width != actual.width || expected.height != actual.height) {
        out << "size " << actual.width << "x" << actual.height << ", expected " << expected.width << "x"
            << expected.height;
        return out.str();
    }
    for (int y = 0; y < expected.height; ++y) {
        for (int x = 0; x < expected.width; ++x) {
            const Rgba& e = expected.at(x, y);
            const Rgba& a = actual.at(x, y);
            if (std::abs(e.r - a.r) > tolerance || std::abs(e.g - a.g) > tolerance ||
                std::abs(e.b - a.b) > tolerance || std::abs(e.a - a.a) > tolerance) {
                out << "pixel (" << x << "," << y << ") is " << int(a.r) << "," << int(a.g) << "," << int(a.b)
                    << "," << int(a.a) << ", expected " << int(e.r) << "," << int(e.g) << "," << int(e.b)
                    << "," << int(e.a);
                return out.str();
            }
        }
    }
    return {};
}

} // namespace fixtures
