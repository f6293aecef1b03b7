// What running a plug-in in its own process costs: KVDECODE_ZXing isolated against in-process, on
// the generated samples (card-size images) and on A4 pages at 300 dpi with a card pasted on, in one
// run. The paired benchmarks alternate the modes image by image and report the overhead; the others
// decode the whole set once per iteration in one mode, and a third pair times the round trip alone
// on a small blank image. The symbol count per iteration is checked against in-process decoding, so a
// mode that loses symbols cannot look fast.
#include "ImageFiles.h"
#include "SampleCatalogue.h"

#include <ZyrReaderLowLevelAPI.h>
#include <algorithm>
#include <benchmark/benchmark.h>

#include <stdlib.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using namespace glyphor::samples;

namespace {

struct OwnedImage {
    std::vector<uint8_t> pixels;
    ZyrImage image{};
};

OwnedImage fromRaster(RasterImage raster) {
    OwnedImage owned;
    owned.pixels = std::move(raster.pixels);
    owned.image = ZyrImage{raster.width, raster.height, raster.width * raster.channels,
                           raster.channels == 1 ? ZYR_PIXEL_GREY8 : ZYR_PIXEL_RGB24, owned.pixels.data()};
    return owned;
}

RasterImage readSample(const Sample& sample) {
    RasterImage raster;
    if (!readImageFile(std::string(GLYPHOR_SAMPLES_DIR) + "/" + fileNameOf(sample), raster)) {
        std::fprintf(stderr, "cannot read sample %s\n", sample.name.c_str());
        std::exit(1);
    }
    return raster;
}

const std::vector<OwnedImage>& sampleImages() {
    static const std::vector<OwnedImage> images = [] {
        std::vector<OwnedImage> out;
        for (const Sample& sample : sampleCatalogue())
            out.push_back(fromRaster(readSample(sample)));
        return out;
    }();
    return images;
}

// A white A4 page at 300 dpi, grey, with the sample's card pasted on at a third of the way down.
OwnedImage page(const char* sampleName) {
    const Sample* sample = findSample(sampleName);
    if (!sample) {
        std::fprintf(stderr, "no sample %s\n", sampleName);
        std::exit(1);
    }
    const RasterImage card = readSample(*sample);
    RasterImage sheet;
    sheet.width = 2480;
    sheet.height = 3508;
    sheet.channels = 1;
    sheet.pixels.assign(size_t(sheet.width) * size_t(sheet.height), 250);
    const int left = (sheet.width - card.width) / 2, top = sheet.height / 3;
    for (int y = 0; y < card.height && top + y < sheet.height; ++y)
        for (int x = 0; x < card.width && left + x < sheet.width; ++x) {
            const uint8_t* p =
                &card.pixels[(size_t(y) * size_t(card.width) + size_t(x)) * size_t(card.channels)];
            const int grey = card.channels == 1 ? p[0] : (p[0] + p[1] + p[2]) / 3;
            sheet.pixels[size_t(top + y) * size_t(sheet.width) + size_t(left + x)] = uint8_t(grey);
        }
    return fromRaster(std::move(sheet));
}

const std::vector<OwnedImage>& pageImages() {
    static const std::vector<OwnedImage> images = [] {
        std::vector<OwnedImage> out;
        for (const char* name : {"aamva-pdf417", "qrcode-plain", "code128-plain", "datamatrix-plain"})
            out.push_back(page(name));
        return out;
    }();
    return images;
}

const std::vector<OwnedImage>& blankImages() {
    static const std::vector<OwnedImage> images = [] {
        RasterImage blank;
        blank.width = 64;
        blank.height = 64;
        blank.channels = 1;
        blank.pixels.assign(64 * 64, 255);
        std::vector<OwnedImage> out;
        out.push_back(fromRaster(std::move(blank)));
        return out;
    }();
    return images;
}

// KVDECODE_ZXing with its own settings plus the mode, in a settings file of the run's own.
uint64_t loadZXing(bool isolated) {
    static const std::string folder = [] {
        char path[] = "/tmp/glyphor-bench-XXXXXX";
        return std::string(mkdtemp(path));
    }();
    const std::string dir = GLYPHOR_PLUGIN_DIR;
    std::ifstream base(dir + "/#KVDECODE_ZXing.ini");
    std::stringstream text;
    text << base.rdbuf() << "\n[Host]\nIsolated=" << (isolated ? 1 : 0) << "\nTimeLimitSeconds=600\n";
    const std::string settings = folder + (isolated ? "/#isolated.ini" : "/#in-process.ini");
    std::ofstream(settings) << text.str();
    uint64_t handle = 0;
    if (ZyrReader_ImagePluginLoad((dir + "/KVDECODE_ZXing.so").c_str(), settings.c_str(), &handle, 0) !=
        ZYR_OK) {
        std::fprintf(stderr, "cannot load KVDECODE_ZXing (%s)\n", isolated ? "isolated" : "in-process");
        std::exit(1);
    }
    std::remove(settings.c_str());
    return handle;
}

void count(void* context, int32_t, int32_t, int32_t, const ZyrSymbolResult* symbol) {
    ++*static_cast<int64_t*>(context);
    ZyrReader_DestroyCachedObject(symbol);
}

// Symbols found in the set; a failed decode counts as minus a million, so it cannot go unnoticed.
int64_t decodeAll(uint64_t handle, const std::vector<OwnedImage>& images) {
    int64_t symbols = 0;
    for (const OwnedImage& image : images)
        if (ZyrReader_ImagePluginDecode(true, handle, &image.image, "", 0, "", count, &symbols, 0, 0, 0) !=
            ZYR_OK)
            symbols -= 1000000;
    return symbols;
}

void decodeSet(benchmark::State& state, const std::vector<OwnedImage>& (*images)(), bool isolated) {
    static const uint64_t handles[2] = {loadZXing(false), loadZXing(true)};
    static std::map<const void*, int64_t> expected; // per set, from in-process decoding
    const uint64_t handle = handles[isolated ? 1 : 0];
    if (!expected.count(&images()))
        expected[&images()] = decodeAll(handles[0], images());
    if (decodeAll(handle, images()) != expected[&images()] || expected[&images()] < 0) {
        state.SkipWithError("a decode failed, or the symbol count differs from in-process decoding");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeAll(handle, images()));
    state.counters["images"] = double(images().size());
    state.counters["symbols"] = double(expected[&images()]);
}

// Both modes image by image, alternating which goes first, so that a change in the machine's load
// during the run hits both alike; reports each mode's total and the overhead of isolation. On a
// shared machine single decodes vary by 10-20 %, so the overhead is also given from each image's
// fastest decode in each mode (best_*), which load on the machine can only slow down.
void pairedSet(benchmark::State& state, const std::vector<OwnedImage>& (*images)()) {
    static const uint64_t handles[2] = {loadZXing(false), loadZXing(true)};
    using Clock = std::chrono::steady_clock;
    Clock::duration spent[2] = {};
    std::vector<Clock::duration> best[2] = {
        std::vector<Clock::duration>(images().size(), Clock::duration::max()),
        std::vector<Clock::duration>(images().size(), Clock::duration::max())};
    int64_t symbols[2] = {0, 0};
    size_t turn = 0;
    for (auto _ : state) {
        for (size_t i = 0; i < images().size(); ++i) {
            for (int k = 0; k < 2; ++k) {
                const int mode = int((turn + size_t(k)) % 2);
                const auto start = Clock::now();
                if (ZyrReader_ImagePluginDecode(true, handles[mode], &images()[i].image, "", 0, "", count,
                                                &symbols[mode], 0, 0, 0) != ZYR_OK)
                    symbols[mode] -= 1000000;
                const Clock::duration took = Clock::now() - start;
                spent[mode] += took;
                best[mode][i] = std::min(best[mode][i], took);
            }
            ++turn;
        }
    }
    if (symbols[0] != symbols[1])
        state.SkipWithError("the modes found different symbols");
    const auto ms = [](Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); };
    const double inProcess = ms(spent[0]);
    const double isolated = ms(spent[1]);
    const double decodes = double(state.iterations()) * double(images().size());
    state.counters["in_process_ms_per_image"] = inProcess / decodes;
    state.counters["isolated_ms_per_image"] = isolated / decodes;
    state.counters["overhead_pct"] = (isolated / inProcess - 1) * 100;
    double bestSum[2] = {0, 0};
    for (int mode = 0; mode < 2; ++mode)
        for (Clock::duration d : best[mode])
            bestSum[mode] += ms(d);
    state.counters["best_in_process_ms_per_image"] = bestSum[0] / double(images().size());
    state.counters["best_isolated_ms_per_image"] = bestSum[1] / double(images().size());
    state.counters["best_overhead_pct"] = (bestSum[1] / bestSum[0] - 1) * 100;
}

void BM_Paired_Samples(benchmark::State& state) {
    pairedSet(state, sampleImages);
}
void BM_Paired_A4Pages(benchmark::State& state) {
    pairedSet(state, pageImages);
}
BENCHMARK(BM_Paired_Samples)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(BM_Paired_A4Pages)->Unit(benchmark::kMillisecond)->Iterations(20);

void BM_Samples_InProcess(benchmark::State& state) {
    decodeSet(state, sampleImages, false);
}
void BM_Samples_Isolated(benchmark::State& state) {
    decodeSet(state, sampleImages, true);
}
void BM_A4Pages_InProcess(benchmark::State& state) {
    decodeSet(state, pageImages, false);
}
void BM_A4Pages_Isolated(benchmark::State& state) {
    decodeSet(state, pageImages, true);
}
void BM_Blank64_InProcess(benchmark::State& state) {
    decodeSet(state, blankImages, false);
}
void BM_Blank64_Isolated(benchmark::State& state) {
    decodeSet(state, blankImages, true);
}

BENCHMARK(BM_Samples_InProcess)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Samples_Isolated)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_A4Pages_InProcess)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_A4Pages_Isolated)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Blank64_InProcess)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_Blank64_Isolated)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
