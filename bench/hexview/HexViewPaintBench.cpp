#include "CHexEdit.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <QScrollBar>

#include <cstdint>
#include <vector>

namespace {

// One full paint of an 800 x 600 view into an off-screen image, top of the view in the middle
// of the buffer and a selection crossing it. The buffer is filled before timing starts.
void BM_PaintHexView(benchmark::State& state) {
    const auto length = static_cast<int32_t>(state.range(0));
    std::vector<uint8_t> data(static_cast<size_t>(length));
    for (size_t i = 0; i < data.size(); ++i)
        data[i] = static_cast<uint8_t>(i * 31 + (i >> 8));

    CHexEdit view;
    view.resize(800, 600);
    view.SetData(data.data(), length);
    QImage image(view.size(), QImage::Format_ARGB32_Premultiplied);
    view.render(&image); // lays out the view
    QScrollBar* bar = view.verticalScrollBar();
    bar->setSliderPosition(bar->maximum() / 2);
    const int32_t top = view.Editor().Top();
    view.SetSelection(top + 5, top + 300);

    for (auto _ : state) {
        view.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.counters["top"] = top;
    state.counters["bytes_per_row"] = view.Editor().Layout().BytesPerRow();
}

BENCHMARK(BM_PaintHexView)->Arg(1024)->Arg(64 << 20)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
