// The conversion writes libjpeg-turbo's output straight into the BMP's rows, so its cost should
// stay close to the decode alone (target: at most 1.3 times).
#include "ZyrReaderLowLevelAPI.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include <jpeglib.h>

namespace {

constexpr int kWidth = 2700;
constexpr int kHeight = 2000;

// A card-like scene: smooth shading, fine noise and sharp-edged blocks, so the file has the
// detail of a real capture rather than compressing to almost nothing.
std::vector<uint8_t> makeJpeg(bool grey) {
    jpeg_compress_struct cinfo{};
    jpeg_error_mgr errors{};
    cinfo.err = jpeg_std_error(&errors);
    jpeg_create_compress(&cinfo);
    unsigned char* buffer = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&cinfo, &buffer, &size);
    cinfo.image_width = kWidth;
    cinfo.image_height = kHeight;
    cinfo.input_components = grey ? 1 : 3;
    cinfo.in_color_space = grey ? JCS_GRAYSCALE : JCS_RGB;
    jpeg_set_defaults(&cinfo);
    jpeg_set_quality(&cinfo, 90, TRUE);
    jpeg_start_compress(&cinfo, TRUE);
    std::vector<uint8_t> row(size_t(kWidth) * 3);
    uint32_t noise = 12345;
    while (cinfo.next_scanline < cinfo.image_height) {
        const int y = int(cinfo.next_scanline);
        for (int x = 0; x < kWidth; ++x) {
            noise = noise * 1103515245u + 12345u;
            const int n = int(noise >> 27) - 16;
            const bool block = ((x / 90) + (y / 60)) % 3 == 0 && (x % 90) < 70;
            const int base = block ? 40 : 160 + (x * 60) / kWidth;
            for (int c = 0; c < 3; ++c) {
                const int v = base + n + c * (y * 30 / kHeight);
                row[size_t(3 * x + c)] = uint8_t(v < 0 ? 0 : v > 255 ? 255 : v);
            }
            if (grey)
                row[size_t(x)] = row[size_t(3 * x)];
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

const std::vector<uint8_t>& jpegFile(bool grey) {
    static const std::vector<uint8_t> colour = makeJpeg(false);
    static const std::vector<uint8_t> greyFile = makeJpeg(true);
    return grey ? greyFile : colour;
}

// libjpeg-turbo alone: header, decode of every row into one preallocated buffer.
void LibjpegDecode(benchmark::State& state) {
    const bool grey = state.range(0) != 0;
    const std::vector<uint8_t>& file = jpegFile(grey);
    std::vector<uint8_t> pixels(size_t(kWidth) * kHeight * (grey ? 1 : 3));
    std::vector<JSAMPROW> rows(kHeight);
    for (int y = 0; y < kHeight; ++y)
        rows[size_t(y)] = pixels.data() + size_t(y) * kWidth * (grey ? 1 : 3);
    for (auto _ : state) {
        jpeg_decompress_struct cinfo{};
        jpeg_error_mgr errors{};
        cinfo.err = jpeg_std_error(&errors);
        jpeg_create_decompress(&cinfo);
        jpeg_mem_src(&cinfo, file.data(), static_cast<unsigned long>(file.size()));
        jpeg_read_header(&cinfo, TRUE);
        cinfo.out_color_space = grey ? JCS_GRAYSCALE : JCS_RGB;
        jpeg_start_decompress(&cinfo);
        while (cinfo.output_scanline < cinfo.output_height)
            jpeg_read_scanlines(&cinfo, rows.data() + cinfo.output_scanline,
                                cinfo.output_height - cinfo.output_scanline);
        jpeg_finish_decompress(&cinfo);
        jpeg_destroy_decompress(&cinfo);
        benchmark::DoNotOptimize(pixels.data());
    }
}

// What the picture view does per load: size query, buffer of size + 1000, conversion.
void ConvertToBmp(benchmark::State& state) {
    const bool grey = state.range(0) != 0;
    const std::vector<uint8_t>& file = jpegFile(grey);
    for (auto _ : state) {
        uint32_t size = 0;
        if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, file.data(), uint32_t(file.size()), nullptr,
                                         &size) != 0) {
            state.SkipWithError("size query failed");
            break;
        }
        std::unique_ptr<uint8_t[]> bmp(new uint8_t[size + 1000]);
        if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, file.data(), uint32_t(file.size()), bmp.get(),
                                         &size) != 0) {
            state.SkipWithError("conversion failed");
            break;
        }
        benchmark::DoNotOptimize(bmp.get());
    }
}

BENCHMARK(LibjpegDecode)->ArgName("grey")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ConvertToBmp)->ArgName("grey")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
