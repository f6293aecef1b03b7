// Where glyphor-batch spends its time per image: loading (the reader library's codec decoding the
// file into pixels) against the whole session path (load and the ZXing plug-in's decode).
#include "BatchReaderStart.h"
#include "DecodeLane.h"
#include "ImageFileLoader.h"
#include "ImageInputs.h"

#include <benchmark/benchmark.h>

#include <cstdio>

namespace {

std::vector<ImageInput> Samples() {
    std::vector<std::string> errors;
    return ImageInputs::Expand({GLYPHOR_SAMPLES_DIR}, errors);
}

void BM_LoadImage(benchmark::State& state) {
    const std::vector<ImageInput> inputs = Samples();
    size_t i = 0;
    for (auto _ : state) {
        std::string error;
        benchmark::DoNotOptimize(ImageFileLoader::Load(inputs[i++ % inputs.size()].path, error));
    }
    state.SetItemsProcessed(int64_t(state.iterations()));
}
BENCHMARK(BM_LoadImage)->Unit(benchmark::kMillisecond);

void BM_LoadAndDecodeWithZXing(benchmark::State& state) {
    const std::vector<ImageInput> inputs = Samples();
    DecodeLane lane;
    lane.LoadPlugins();
    std::string unknown;
    if (!lane.Select({"ZXing"}, unknown)) {
        state.SkipWithError("no ZXing plug-in");
        return;
    }
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lane.Decode(inputs[i++ % inputs.size()]));
    }
    state.SetItemsProcessed(int64_t(state.iterations()));
}
BENCHMARK(BM_LoadAndDecodeWithZXing)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    std::string error;
    if (!BatchReaderStart::Start(GLYPHOR_SAMPLES_DIR "/ZyrReader.ini", nullptr, error)) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    BatchReaderStart::Stop();
    return 0;
}
