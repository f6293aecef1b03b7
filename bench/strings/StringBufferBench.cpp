// Costs of the exact-size string: appending one character at a time (every append reallocates
// and copies, so the total grows with the square of the length) and splitting a large text into
// lines.
#include "StringBuffer.h"
#include "StringBufferList.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void AppendOneCharAtATime(benchmark::State& state) {
    const int length = static_cast<int>(state.range(0));
    for (auto _ : state) {
        StringBuffer s;
        for (int i = 0; i < length; ++i)
            s += static_cast<char>('a' + i % 26);
        benchmark::DoNotOptimize(s.str());
        if (s.size() != length)
            state.SkipWithError("wrong length");
    }
    state.SetItemsProcessed(state.iterations() * length);
}
BENCHMARK(AppendOneCharAtATime)->RangeMultiplier(4)->Range(16, 16384);

// About 1 MiB of CR LF lines of varying length, built once.
const std::string& MebibyteOfLines(int* lineCount) {
    static int count = 0;
    static const std::string text = [] {
        std::string t;
        for (int i = 0; t.size() < (1u << 20); ++i) {
            std::string line =
                "line " + std::to_string(i) + " " + std::string(static_cast<size_t>(i % 70), 'x');
            t += line + "\r\n";
            ++count;
        }
        return t;
    }();
    *lineCount = count;
    return text;
}

void SplitMebibyteIntoLines(benchmark::State& state) {
    int lines = 0;
    const std::string& raw = MebibyteOfLines(&lines);
    const StringBuffer text(raw.data(), static_cast<int32_t>(raw.size()));
    const StringBuffer separators("\r\n");
    for (auto _ : state) {
        StringBufferList list;
        if (list.Split(text, separators) != lines)
            state.SkipWithError("wrong line count");
        benchmark::DoNotOptimize(list.GetCount());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(raw.size()));
    state.counters["lines"] = lines;
}
BENCHMARK(SplitMebibyteIntoLines)->Unit(benchmark::kMillisecond);

} // namespace
