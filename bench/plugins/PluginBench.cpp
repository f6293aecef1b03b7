// Decoder plug-ins on the generated samples.
//  1. Detection rate of every plug-in per sample variant (printed before the benchmarks): a sample
//     counts when every symbol of a format the plug-in reads came back with its exact bytes.
//  2. Cost of the plug-in path: ZyrReader_ImagePluginDecode with KVDECODE_ZXing against zxing-cpp's
//     ReadBarcodes called directly with the same options, on the same images in the same run.
#include "ImageFiles.h"
#include "SampleCatalogue.h"

#include <ZXing/ReadBarcode.h>
#include <ZyrReaderLowLevelAPI.h>
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

using namespace glyphor::samples;
using ZXing::BarcodeFormat;

namespace {

struct LoadedSample {
    const Sample* sample;
    RasterImage raster;
    ZyrImage image;
};

std::vector<LoadedSample>& samples() {
    static std::vector<LoadedSample> loaded = [] {
        std::vector<LoadedSample> out;
        for (const Sample& s : sampleCatalogue()) {
            LoadedSample l{&s, {}, {}};
            if (!readImageFile(std::string(GLYPHOR_SAMPLES_DIR) + "/" + fileNameOf(s), l.raster)) {
                std::fprintf(stderr, "cannot read sample %s\n", s.name.c_str());
                std::exit(1);
            }
            out.push_back(std::move(l));
        }
        for (LoadedSample& l : out)
            l.image =
                ZyrImage{l.raster.width, l.raster.height, l.raster.width * l.raster.channels,
                         l.raster.channels == 1 ? ZYR_PIXEL_GREY8 : ZYR_PIXEL_RGB24, l.raster.pixels.data()};
        return out;
    }();
    return loaded;
}

struct PluginFormats {
    const char* name;
    ZXing::BarcodeFormats formats;
};

const PluginFormats kPlugins[] = {
    {"ZXing", BarcodeFormat::Any},
    {"Pdf417", BarcodeFormat::PDF417},
    {"QRCode", BarcodeFormat::QRCode | BarcodeFormat::MicroQRCode},
    {"DataMatrix", BarcodeFormat::DataMatrix},
    {"ZBar", BarcodeFormat::EAN13 | BarcodeFormat::EAN8 | BarcodeFormat::UPCA | BarcodeFormat::UPCE |
                 BarcodeFormat::Code128 | BarcodeFormat::Code39 | BarcodeFormat::ITF | BarcodeFormat::QRCode},
};

uint64_t load(const char* name) {
    const std::string dir = GLYPHOR_PLUGIN_DIR;
    const std::string library = dir + "/KVDECODE_" + name + ".so",
                      settings = dir + "/#KVDECODE_" + name + ".ini";
    uint64_t handle = 0;
    if (ZyrReader_ImagePluginLoad(library.c_str(), settings.c_str(), &handle, 0) != ZYR_OK) {
        std::fprintf(stderr, "cannot load %s\n", library.c_str());
        std::exit(1);
    }
    return handle;
}

void collect(void* context, int32_t, int32_t, int32_t, const ZyrSymbolResult* symbol) {
    static_cast<std::vector<std::string>*>(context)->emplace_back(reinterpret_cast<const char*>(symbol->Data),
                                                                  size_t(symbol->DataLength));
    ZyrReader_DestroyCachedObject(symbol);
}

void printDetectionRates() {
    std::printf("Detection rate per plug-in and variant (samples read / samples with a symbol it reads)\n");
    for (const PluginFormats& plugin : kPlugins) {
        const uint64_t handle = load(plugin.name);
        std::map<std::string, std::pair<int, int>> perVariant;
        double totalMs = 0;
        for (LoadedSample& l : samples()) {
            std::vector<std::string> expected;
            for (const SampleSymbol& s : l.sample->symbols)
                if (plugin.formats.testFlag(s.format))
                    expected.push_back(s.payload);
            if (expected.empty())
                continue;
            std::vector<std::string> found;
            auto start = std::chrono::steady_clock::now();
            ZyrReader_ImagePluginDecode(true, handle, &l.image, "", 0, "", collect, &found, 0, 0, 0);
            totalMs +=
                std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
            bool all = true;
            for (const std::string& e : expected) {
                bool seen = false;
                for (const std::string& f : found)
                    seen = seen || f == e;
                all = all && seen;
            }
            auto& counts = perVariant[l.sample->variant];
            counts.first += all ? 1 : 0;
            counts.second += 1;
        }
        std::printf("  %-10s", plugin.name);
        int read = 0, total = 0;
        for (const auto& [variant, counts] : perVariant) {
            std::printf(" %s %d/%d", variant.c_str(), counts.first, counts.second);
            read += counts.first;
            total += counts.second;
        }
        std::printf("  | all %d/%d, %.0f ms\n", read, total, totalMs);
    }
    ZyrReader_DestroyCachedData();
    std::fflush(stdout);
}

// The options of the shipped #KVDECODE_ZXing.ini, so both paths do the same work.
ZXing::DecodeHints shippedZXingHints() {
    ZXing::DecodeHints hints;
    hints.setFormats(BarcodeFormat::Any)
        .setTryHarder(true)
        .setTryRotate(true)
        .setTryDownscale(false)
        .setBinarizer(ZXing::Binarizer::LocalAverage)
        .setMaxNumberOfSymbols(16);
    return hints;
}

void BM_ZXingPluginDecode(benchmark::State& state) {
    const uint64_t handle = load("ZXing");
    size_t symbols = 0;
    for (auto _ : state) {
        for (LoadedSample& l : samples()) {
            std::vector<std::string> found;
            ZyrReader_ImagePluginDecode(true, handle, &l.image, "", 0, "", collect, &found, 0, 0, 0);
            symbols += found.size();
        }
    }
    state.counters["symbols/pass"] = double(symbols) / double(state.iterations());
    ZyrReader_DestroyCachedData();
}

void BM_ZXingReadBarcodesDirect(benchmark::State& state) {
    const ZXing::DecodeHints hints = shippedZXingHints();
    size_t symbols = 0;
    for (auto _ : state) {
        for (LoadedSample& l : samples()) {
            ZXing::ImageView view(l.image.Pixels, l.image.Width, l.image.Height,
                                  l.image.PixelFormat == ZYR_PIXEL_GREY8 ? ZXing::ImageFormat::Lum
                                                                         : ZXing::ImageFormat::RGB,
                                  l.image.Stride);
            ZXing::Results results = ZXing::ReadBarcodes(view, hints);
            for (const ZXing::Result& r : results)
                symbols += r.isValid() ? 1 : 0;
        }
    }
    state.counters["symbols/pass"] = double(symbols) / double(state.iterations());
}

// Alternating the two keeps drift of the machine (other jobs, clock) from favouring either.
BENCHMARK(BM_ZXingReadBarcodesDirect)->Unit(benchmark::kMillisecond)->Iterations(3)->Repetitions(3);
BENCHMARK(BM_ZXingPluginDecode)->Unit(benchmark::kMillisecond)->Iterations(3)->Repetitions(3);

// Prints the plug-in path's time as a multiple of the direct call's, from the repetition medians.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                medians_[run.run_name.function_name] = run.GetAdjustedRealTime();
    }
    void Finalize() override {
        ConsoleReporter::Finalize();
        const double direct = medians_["BM_ZXingReadBarcodesDirect"],
                     plugin = medians_["BM_ZXingPluginDecode"];
        if (direct > 0 && plugin > 0)
            std::printf("KVDECODE_ZXing through ZyrReader_ImagePluginDecode / ReadBarcodes direct: %.3fx\n",
                        plugin / direct);
    }

private:
    std::map<std::string, double> medians_;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    printDetectionRates();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}
