// Reviewing a run of 10,000 rows: reading the baseline run, comparing, and writing the report
// (thumbnails of the generated samples included); merging 16 shard runs.
#include "Baseline.h"
#include "ReportPage.h"
#include "ReportStats.h"
#include "RunFile.h"
#include "RunMerge.h"
#include "TextEncoding.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>
#include <vector>

namespace {

constexpr size_t kRows = 10000;
const char* const kPlugins[] = {"ZXing", "QRCode"};

std::vector<std::string> SampleImages() {
    std::vector<std::string> images;
    for (const auto& entry : std::filesystem::directory_iterator(GLYPHOR_SAMPLES_DIR)) {
        if (entry.path().extension() == ".png") {
            images.push_back(entry.path().string());
        }
    }
    return images;
}

// A row as glyphor-batch writes it; seed varies what was read.
std::string RowJson(size_t i, const std::string& path, unsigned seed) {
    const size_t image = i / 2;
    const std::string plugin = kPlugins[i % 2];
    const bool read = (image * 7 + seed + i % 2) % 5 != 0;
    const std::string bytes = read ? "payload " + std::to_string(image % (seed + 50)) : "";
    const std::string relative = "folder" + std::to_string(image % 20) + "/image" + std::to_string(image) + ".png";
    std::string json = "{\"file\": \"" + relative + "\", \"path\": \"" + path + "\", \"relative\": \"" + relative +
                       "\", \"index\": " + std::to_string(image) + ", \"plugin\": \"" + plugin +
                       "\", \"imgProcess\": 0, \"time\": " + std::to_string(1 + (i * 37 + seed) % 90) +
                       ".25, \"results\": \"" + bytes + "\", \"text\": \"" + bytes +
                       "\", \"status\": \"ok\", \"symbology\": null, \"eci\": null, \"length\": " +
                       std::to_string(bytes.size()) + ", \"data\": \"" + TextEncoding::Base64(bytes) +
                       "\", \"symbols\": [";
    if (read) {
        json += "{\"symbology\": \"QR Code\", \"dataType\": 1, \"eci\": 0, \"text\": \"" + bytes +
                "\", \"length\": " + std::to_string(bytes.size()) + ", \"data\": \"" + TextEncoding::Base64(bytes) +
                "\", \"corners\": [[10, 12], [200, 12], [200, 210], [10, 210]]}";
    }
    return json + "]}";
}

std::string RunJson(size_t from, size_t to, unsigned seed, const std::vector<std::string>& images,
                    const std::string& shard = "") {
    std::string json = "{\n  \"rows\": [";
    for (size_t i = from; i < to; ++i) {
        json += (i == from ? "\n    " : ",\n    ") + RowJson(i, images[(i / 2) % images.size()], seed);
    }
    json += "\n  ],\n  \"statistics\": {\"averageTime\": 12.5, \"imageCount\": " + std::to_string((to - from) / 2) +
            ", \"symbolsCount\": 100, \"averageImageProcessTime\": 0}";
    return json + shard + "\n}\n";
}

void BM_BaselineAndReport(benchmark::State& state) {
    const std::vector<std::string> images = SampleImages();
    const std::string before = RunJson(0, kRows, 1, images);
    const std::string now = RunJson(0, kRows, 2, images);
    const std::string folder = std::filesystem::temp_directory_path() / "glyphor-review-bench";
    const std::string library = ReportPage::ChartLibrary();
    for (auto _ : state) {
        BatchRun baseline, run;
        std::string error;
        if (!RunFile::Parse(before, "before", baseline, error) || !RunFile::Parse(now, "now", run, error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        const Baseline::Comparison comparison = Baseline::Compare(baseline.rows, run.rows);
        ReportPage::Options options;
        options.chartLibrary = library;
        options.comparison = &comparison;
        const std::string html = ReportPage::Html(ReportStats::Compute(run.rows, &comparison), options);
        if (!ReportPage::Write(folder, html, error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        benchmark::DoNotOptimize(html.size());
    }
    std::filesystem::remove_all(folder);
    state.counters["rows"] = kRows;
}
BENCHMARK(BM_BaselineAndReport)->Unit(benchmark::kMillisecond);

// 16 shards of 10,000 rows in all (range 0 == 1) or of 10,000 rows each (range 0 == 16).
void BM_MergeShards(benchmark::State& state) {
    const std::vector<std::string> images = SampleImages();
    const size_t total = kRows * static_cast<size_t>(state.range(0));
    std::vector<std::string> shards;
    for (size_t k = 0; k < 16; ++k) {
        shards.push_back(RunJson(total * k / 16 / 2 * 2, total * (k + 1) / 16 / 2 * 2, 1, images,
                                 ",\n  \"shard\": {\"index\": " + std::to_string(k + 1) + ", \"count\": 16}"));
    }
    for (auto _ : state) {
        std::vector<RunMerge::Part> parts(shards.size());
        std::string error;
        for (size_t k = 0; k < shards.size(); ++k) {
            if (!RunFile::Parse(shards[k], "shard", parts[k].second, error)) {
                state.SkipWithError(error.c_str());
                return;
            }
        }
        BatchRun merged;
        std::vector<std::string> warnings;
        if (!RunMerge::Merge(parts, merged, warnings, error)) {
            state.SkipWithError(error.c_str());
            return;
        }
        benchmark::DoNotOptimize(RunMerge::Json(merged).size());
    }
    state.counters["rows"] = static_cast<double>(total);
}
BENCHMARK(BM_MergeShards)->Arg(1)->Arg(16)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
