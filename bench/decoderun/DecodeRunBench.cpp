// Decode Multi over 200 generated images with KVDECODE_ZXing, driven through the main window as
// a user would (offscreen), and the results list with 10,000 rows.
//
// Reported per run: images per second, and the shares of wall time spent inside plug-in calls
// (ZyrReader_ImagePluginDecode, timed by a link-time wrapper) and inside image loads (the main
// picture's file load: read, reader conversion, decode). The rest is the bench's own work:
// records, posted events, rows, statistics, stepping.
#include "BenchImages.h"
#include "CGlyphorDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"

#include <QApplication>
#include <QListWidget>
#include <QTreeWidget>
#include <QWindow>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <filesystem>

namespace {

using Clock = std::chrono::steady_clock;
std::chrono::nanoseconds g_pluginTime{0};

// A main window that times its image loads: the session reading the file into pixels and handing
// them to the picture view (both on the job's thread, as Decode Multi steps on it).
class TimedDialog : public CGlyphorDlg {
public:
    TimedDialog() {
        Session().loadImage = [this](const std::string& path, std::string& error) {
            const auto start = Clock::now();
            auto image = ImageFileLoader::Load(path, error);
            loadTime += Clock::now() - start;
            return image;
        };
    }
    std::chrono::nanoseconds loadTime{0};
    void SetPictureImage(PictureId picture, std::shared_ptr<const ZyrImage> image) override {
        const auto start = Clock::now();
        CGlyphorDlg::SetPictureImage(picture, std::move(image));
        loadTime += Clock::now() - start;
    }
};

std::string TempFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "glyphor-bench-XXXXXX").string();
    return mkdtemp(pattern.data()) ? pattern : std::string(".");
}

const std::vector<std::string>& Images() {
    static const std::vector<std::string> images = WriteBenchImages(TempFolder(), 200);
    return images;
}

void UseZXingOnly(TimedDialog& dialog) {
    ZyrReaderSettings& settings = ReaderSession::Settings();
    std::snprintf(settings.PluginFolder, ZYR_PATH_SIZE, "%s", GLYPHOR_PLUGIN_DIR);
    std::snprintf(settings.PluginSettingsFolder, ZYR_PATH_SIZE, "%s", GLYPHOR_PLUGIN_DIR);
    dialog.OnInitDialog();
    auto* list = Control<QListWidget>(&dialog, IDC_PLUGINS);
    for (int i = 0; i < list->count(); ++i) {
        list->item(i)->setSelected(list->item(i)->text() == QLatin1String("ZXing"));
    }
}

void BM_DecodeMulti(benchmark::State& state) {
    const std::vector<std::string>& images = Images();
    QStringList paths;
    for (const std::string& p : images) {
        paths << QString::fromStdString(p);
    }
    TimedDialog dialog;
    dialog.SetOpenFileChooser([&](uint32_t&, QStringList& chosen) {
        chosen = paths;
        return true;
    });
    UseZXingOnly(dialog);
    dialog.show();
    std::chrono::nanoseconds wall{0}, plugin{0}, load{0};
    int decoded = 0, rows = 0;
    for (auto _ : state) {
        state.PauseTiming();
        dialog.OnClearResults();
        dialog.OnOpenImage(); // loads the first image: not part of the run
        g_pluginTime = {};
        dialog.loadTime = {};
        state.ResumeTiming();

        const auto start = Clock::now();
        dialog.OnDecodeMulti();
        while (dialog.JobRunning()) { // the rows are shown by the time the job has ended
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        wall += Clock::now() - start;

        plugin += g_pluginTime;
        load += dialog.loadTime;
        auto* results = Control<QTreeWidget>(&dialog, IDC_RESULTS);
        rows = results->topLevelItemCount();
        decoded = 0;
        for (int r = 0; r < rows; ++r) {
            decoded += results->topLevelItem(r)->text(4).startsWith(QLatin1String("GLYPHOR-BENCH-"));
        }
    }
    const double wallNs = double(wall.count());
    state.counters["images_per_s"] =
        benchmark::Counter(double(images.size()) * state.iterations() / (wallNs / 1e9));
    state.counters["plugin_share"] = double(plugin.count()) / wallNs;
    state.counters["load_share"] = double(load.count()) / wallNs;
    state.counters["plugin_plus_load_share"] = double(plugin.count() + load.count()) / wallNs;
    state.counters["rows"] = rows;
    state.counters["decoded_rows"] = decoded;
}
BENCHMARK(BM_DecodeMulti)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

// Rows reach the list as in a run: a pending record and a posted "show next result" each. In a
// burst the window sees them all at once; one by one it handles each (and repaints) before the
// next arrives, as when every decode takes longer than showing its row.
void AppendRows(CGlyphorDlg& dialog, int count, bool oneByOne = false) {
    for (int i = 0; i < count; ++i) {
        GLD_DecodeResult* record = dialog.Session().results.Append(i, 0, "ZXing");
        dialog.Session().results.Finish(record, std::chrono::milliseconds(3));
        dialog.PostShowNextResult();
        if (oneByOne) {
            QCoreApplication::processEvents();
        }
    }
    QCoreApplication::sendPostedEvents();
}

// Time per row for the thousand rows after the first argument's count, in a burst (second
// argument 0) or one by one (1).
void BM_AppendThousandRowsAfter(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        CGlyphorDlg dialog;
        dialog.OnInitDialog();
        dialog.show();
        AppendRows(dialog, int(state.range(0)));
        QCoreApplication::processEvents();
        state.ResumeTiming();
        AppendRows(dialog, 1000, state.range(1) != 0);
        QCoreApplication::processEvents();
    }
    state.counters["us_per_row"] = benchmark::Counter(
        1000.0 * state.iterations(), benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_AppendThousandRowsAfter)
    ->ArgsProduct({{0, 9000}, {0, 1}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

class PaintCounter : public QObject {
public:
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        count += event->type() == QEvent::Paint;
        return false;
    }
};

// One page of scrolling through a list of the argument's rows, painted.
void BM_ScrollPageInRows(benchmark::State& state) {
    const int rows = int(state.range(0));
    CGlyphorDlg dialog;
    dialog.OnInitDialog();
    dialog.show();
    AppendRows(dialog, rows);
    auto* results = Control<QTreeWidget>(&dialog, IDC_RESULTS);
    // Painting only happens once the window is exposed; count the paints to be sure they do.
    PaintCounter paints;
    results->viewport()->installEventFilter(&paints);
    while (!dialog.windowHandle() || !dialog.windowHandle()->isExposed()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    int row = 0;
    for (auto _ : state) {
        row = (row + 37) % rows;
        results->scrollToItem(results->topLevelItem(row));
        results->viewport()->repaint();
    }
    state.counters["paints_per_scroll"] = double(paints.count) / double(state.iterations());
}
BENCHMARK(BM_ScrollPageInRows)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace

extern "C" int32_t __real_ZyrReader_ImagePluginDecode(bool, uint64_t, const ZyrImage*, const char*, int32_t,
                                                      const char*, ZyrDecodeCallback, void*, int32_t, int32_t,
                                                      int32_t);

extern "C" int32_t __wrap_ZyrReader_ImagePluginDecode(bool wait, uint64_t handle, const ZyrImage* image,
                                                      const char* imageName, int32_t imageNumber,
                                                      const char* options, ZyrDecodeCallback callback,
                                                      void* context, int32_t tag, int32_t reserved1,
                                                      int32_t reserved2) {
    const auto start = Clock::now();
    const int32_t result = __real_ZyrReader_ImagePluginDecode(
        wait, handle, image, imageName, imageNumber, options, callback, context, tag, reserved1, reserved2);
    g_pluginTime += Clock::now() - start;
    return result;
}

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    ReaderSession::Startup();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    ReaderSession::Shutdown();
    return 0;
}
