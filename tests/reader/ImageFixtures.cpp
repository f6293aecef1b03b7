#include "ImageFixtures.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "TempFolder.h"

namespace fixtures {
namespace {

void put(std::vector<uint8_t>& out, size_t at, uint32_t v, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out[at + size_t(i)] = uint8_t(v >> (8 * i));
}

// The picture's distinct colours in the order they first appear.
std::vector<Rgba> paletteOf(const Picture& picture) {
    std::vector<Rgba> palette;
    for (const Rgba& c : picture.pixels)
        if (std::find(palette.begin(), palette.end(), c) == palette.end())
            palette.push_back(c);
    return palette;
}
int indexIn(const std::vector<Rgba>& palette, const Rgba& c) {
    return int(std::find(palette.begin(), palette.end(), c) - palette.begin());
}

int maskBits(uint32_t mask) {
    return __builtin_popcount(mask);
}
int maskShift(uint32_t mask) { // of a mask that is not zero
    return __builtin_ctz(mask);
}
// The channel masks a 16- or 32-bit file uses: the given ones, or the format's defaults.
std::vector<uint32_t> masksOf(const BmpOptions& o) {
    if (o.bitfields)
        return {o.masks[0], o.masks[1], o.masks[2], o.masks[3]};
    return o.bitsPerPixel == 16 ? std::vector<uint32_t>{0x7C00, 0x03E0, 0x001F, 0}
                                : std::vector<uint32_t>{0xFF0000, 0xFF00, 0xFF, 0};
}
uint32_t storedValue(uint8_t v, int bits) {
    return uint32_t(std::lround(v * ((1 << bits) - 1) / 255.0));
}

void appendPng(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<std::vector<uint8_t>*>(png_get_io_ptr(png));
    out->insert(out->end(), data, data + length);
}

} // namespace

Picture makePicture(int width, int height, Pattern pattern, int levels) {
    Picture p{width, height, std::vector<Rgba>(size_t(width) * size_t(height))};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint8_t v = uint8_t((x * 37 + y * 71 + (x * y) % 13 * 11) & 255);
            const uint8_t a = uint8_t((x * 53 + y * 19) & 255);
            const uint8_t level = uint8_t((x + 2 * y) % levels * 255 / std::max(levels - 1, 1));
            Rgba c{v, v, v, 255};
            if (pattern == Pattern::Colour || pattern == Pattern::ColourAlpha)
                c = {uint8_t((x * 29 + y * 7) & 255), uint8_t((x * 3 + y * 41 + 80) & 255),
                     uint8_t((x * x + y * 13 + 160) & 255), pattern == Pattern::ColourAlpha ? a : uint8_t(255)};
            else if (pattern == Pattern::GreyAlpha)
                c.a = a;
            else if (pattern == Pattern::Levels)
                c = {level, level, level, 255};
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
    const bool indexed = colourType == PNG_COLOR_TYPE_PALETTE;
    const bool colour = !indexed && (colourType & PNG_COLOR_MASK_COLOR);
    const bool alpha = colourType & PNG_COLOR_MASK_ALPHA;
    const std::vector<Rgba> palette = indexed ? paletteOf(picture) : std::vector<Rgba>();
    if (palette.size() > (1u << bitDepth))
        return {};
    // One byte per sample below 8 bits (png_set_packing packs them), two at 16 bits.
    std::vector<std::vector<png_byte>> data(size_t(picture.height));
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const Rgba& c = picture.at(x, y);
            const int first = indexed ? indexIn(palette, c) : c.r * ((1 << std::min(bitDepth, 8)) - 1) / 255;
            std::vector<int> samples = {colour ? c.r : first};
            if (colour)
                samples.insert(samples.end(), {c.g, c.b});
            if (alpha)
                samples.push_back(c.a);
            for (size_t i = 0; i < samples.size(); ++i) {
                data[size_t(y)].push_back(png_byte(samples[i]));
                if (bitDepth == 16) // low byte: noise the reader drops
                    data[size_t(y)].push_back(png_byte((x * 7 + y + int(i)) & 255));
            }
        }
    }
    std::vector<png_bytep> rows;
    for (auto& row : data)
        rows.push_back(row.data());

    std::vector<uint8_t> out;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &out, appendPng, nullptr);
    png_set_IHDR(png, info, png_uint_32(picture.width), png_uint_32(picture.height), bitDepth, colourType,
                 interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (indexed) {
        std::vector<png_color> colours;
        std::vector<png_byte> alphas;
        for (const Rgba& c : palette)
            colours.push_back({c.r, c.g, c.b}), alphas.push_back(c.a);
        png_set_PLTE(png, info, colours.data(), int(colours.size()));
        if (std::any_of(alphas.begin(), alphas.end(), [](png_byte a) { return a != 255; }))
            png_set_tRNS(png, info, alphas.data(), int(alphas.size()), nullptr);
    }
    // The fixtures' own data is valid: a libpng error here is a broken test, and aborts it.
    png_write_info(png, info);
    png_set_packing(png);
    if (interlaced)
        png_set_interlace_handling(png);
    png_write_image(png, rows.data());
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return out;
}

glyphor::samples::RasterImage rasterOf(const Picture& picture, bool colour) {
    glyphor::samples::RasterImage raster{picture.width, picture.height, colour ? 3 : 1, {}};
    for (const Rgba& c : picture.pixels) {
        if (colour)
            raster.pixels.insert(raster.pixels.end(), {c.r, c.g, c.b});
        else
            raster.pixels.push_back(c.r);
    }
    return raster;
}

// Through files in a temporary folder: the sample writer and reader work on paths.
std::vector<uint8_t> encodeJpeg(const Picture& picture, bool grey) {
    const TempFolder folder;
    glyphor::samples::writeJpeg(folder.file("fixture.jpg"), rasterOf(picture, !grey), 90);
    const std::string bytes = readFile(folder.file("fixture.jpg"));
    return {bytes.begin(), bytes.end()};
}

Picture decodeJpegReference(const std::vector<uint8_t>& jpeg) {
    const TempFolder folder;
    glyphor::samples::RasterImage raster;
    glyphor::samples::readImageFile(folder.write("reference.jpg", std::string(jpeg.begin(), jpeg.end())), raster);
    Picture p{raster.width, raster.height, {}};
    const size_t n = size_t(raster.channels);
    for (size_t i = 0; i + n <= raster.pixels.size(); i += n)
        p.pixels.push_back({raster.pixels[i], raster.pixels[i + (n - 1) / 2], raster.pixels[i + n - 1], 255});
    return p;
}

namespace {

// Run-length encodes one row of palette indices; odd rows use literal runs, even rows repeats.
void appendRleRow(std::vector<uint8_t>& out, const std::vector<uint8_t>& indices, bool rle4, bool literal) {
    for (size_t x = 0, w = indices.size(); x < w;) {
        size_t n = 1;
        if (literal && w - x >= 3) {
            n = std::min<size_t>(w - x, 255);
            out.insert(out.end(), {0, uint8_t(n)});
            const size_t start = out.size();
            for (size_t i = 0; i < n; i += rle4 ? 2 : 1)
                out.push_back(rle4 ? uint8_t(indices[x + i] << 4 | (i + 1 < n ? indices[x + i + 1] : 0))
                                   : indices[x + i]);
            if ((out.size() - start) % 2 != 0)
                out.push_back(0);
        } else {
            while (x + n < w && n < 255 && indices[x + n] == indices[x])
                ++n;
            out.insert(out.end(), {uint8_t(n), rle4 ? uint8_t(indices[x] << 4 | indices[x]) : indices[x]});
        }
        x += n;
    }
    out.insert(out.end(), {0, 0}); // end of line
}

} // namespace

Picture storedInBmp(Picture picture, const BmpOptions& options) {
    if (options.bitsPerPixel != 16 && options.bitsPerPixel != 32)
        return picture;
    const std::vector<uint32_t> masks = masksOf(options);
    auto stored = [](uint8_t v, int bits) {
        return uint8_t(std::lround(storedValue(v, bits) * 255.0 / ((1 << bits) - 1)));
    };
    for (Rgba& c : picture.pixels)
        c = {stored(c.r, maskBits(masks[0])), stored(c.g, maskBits(masks[1])), stored(c.b, maskBits(masks[2])),
             masks[3] != 0 ? stored(c.a, maskBits(masks[3])) : uint8_t(255)};
    return picture;
}

std::vector<uint8_t> encodeBmp(const Picture& picture, const BmpOptions& o) {
    const int w = picture.width, h = picture.height, bpp = o.bitsPerPixel;
    const bool core = o.headerSize == 12;
    std::vector<Rgba> palette = bpp <= 8 && !o.greyPalette ? paletteOf(picture) : std::vector<Rgba>();
    for (int i = 0; o.greyPalette && i < 256; ++i)
        palette.push_back({uint8_t(i), uint8_t(i), uint8_t(i), 255});
    if (bpp <= 8 && palette.size() > (1u << bpp))
        return {};
    const std::vector<uint32_t> masks = masksOf(o);
    const size_t masksAfterHeader = o.bitfields && o.headerSize == 40 ? 12 : 0;
    // An OS/2 core header has no colour count: its palette always has 2^bits entries.
    const size_t paletteEntries = core && bpp <= 8 ? size_t(1) << bpp : palette.size();
    const size_t offset = 14 + size_t(o.headerSize) + masksAfterHeader + paletteEntries * (core ? 3 : 4);
    const size_t stride = (size_t(w) * size_t(bpp) + 31) / 32 * 4;

    std::vector<uint8_t> pixels; // rows in file order
    for (int fileRow = 0; fileRow < h; ++fileRow) {
        const int y = o.topDown ? fileRow : h - 1 - fileRow;
        std::vector<uint8_t> row(o.rle ? size_t(w) : stride, 0);
        for (int x = 0; x < w; ++x) {
            const Rgba& c = picture.at(x, y);
            if (o.rle) {
                row[size_t(x)] = uint8_t(indexIn(palette, c));
            } else if (bpp <= 8) {
                row[size_t(x * bpp / 8)] |= uint8_t(indexIn(palette, c) << (8 - bpp - x * bpp % 8));
            } else if (bpp == 24) {
                put(row, size_t(3 * x), uint32_t(c.b | c.g << 8 | c.r << 16), 3);
            } else {
                uint32_t value = bpp == 32 && masks[3] == 0 ? 0x5Au << 24 : 0; // unused byte: not alpha
                const uint8_t channel[4] = {c.r, c.g, c.b, c.a};
                for (int i = 0; i < 4; ++i)
                    value |= masks[i] ? storedValue(channel[i], maskBits(masks[i])) << maskShift(masks[i]) : 0;
                put(row, size_t(x * bpp / 8), value, bpp / 8);
            }
        }
        if (o.rle)
            appendRleRow(pixels, row, bpp == 4, fileRow % 2 == 1);
        else
            pixels.insert(pixels.end(), row.begin(), row.end());
    }
    if (o.rle)
        pixels.insert(pixels.end(), {0, 1}); // end of bitmap
    else if (o.omitLastPadding)
        pixels.resize(pixels.size() - (stride - (size_t(w) * size_t(bpp) + 7) / 8));

    std::vector<uint8_t> out(offset, 0);
    out[0] = 'B', out[1] = 'M';
    put(out, 2, uint32_t(offset + pixels.size()), 4);
    put(out, 10, uint32_t(offset), 4);
    put(out, 14, uint32_t(o.headerSize), 4);
    if (core) {
        put(out, 18, uint32_t(w | h << 16), 4);
        put(out, 22, uint32_t(1 | bpp << 16), 4);
    } else {
        put(out, 18, uint32_t(w), 4);
        put(out, 22, uint32_t(o.topDown ? -h : h), 4);
        put(out, 26, uint32_t(1 | bpp << 16), 4);
        put(out, 30, o.rle ? (bpp == 8 ? 1 : 2) : o.bitfields ? 3 : 0, 4);
        put(out, 34, uint32_t(pixels.size()), 4);
        put(out, 38, 2835, 4); // 72 dpi, as the library writes
        put(out, 42, 2835, 4);
        put(out, 46, uint32_t(palette.size()), 4);
        for (int i = 0; o.bitfields && i < (o.headerSize >= 56 ? 4 : 3); ++i)
            put(out, 54 + size_t(4 * i), masks[size_t(i)], 4);
        if (o.headerSize >= 108)
            put(out, 14 + 56, 0x73524742, 4); // 'sRGB'
    }
    size_t at = 14 + size_t(o.headerSize) + masksAfterHeader;
    for (const Rgba& c : palette)
        put(out, at, uint32_t(c.b | c.g << 8 | c.r << 16), 3), at += core ? 3 : 4;
    out.insert(out.end(), pixels.begin(), pixels.end());
    return out;
}

} // namespace fixtures
