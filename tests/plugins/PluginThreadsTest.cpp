// Different plug-ins decode on different threads at the same time, and one plug-in shared by two
// threads gives each caller its own symbols.
#include "PluginTestSupport.h"

#include <gtest/gtest.h>

#include <thread>
#include <tuple>

using namespace plugintest;

namespace {

TEST(PluginThreads, ConcurrentDecodesEachGetTheirOwnSymbols) {
    struct Job { const char* plugin; const char* sample; const char* payload; };
    const Job jobs[] = {{"ZXing", "qrcode-plain", "GLYPHOR QR SAMPLE 42"},
                        {"Pdf417", "pdf417-plain", "GLYPHOR PDF417 SAMPLE 0001"},
                        {"ZBar", "code128-plain", "GLY-128-0042"},
                        {"ZXing", "code128-plain", "GLY-128-0042"}};
    const uint64_t zxing = loadPlugin("ZXing");
    const uint64_t handles[] = {zxing, loadPlugin("Pdf417"), loadPlugin("ZBar"), zxing};
    std::vector<std::vector<SeenSymbol>> seen(4);
    std::vector<ImageFile> files;
    for (const Job& job : jobs)
        files.emplace_back(samplePath(job.sample));
    std::vector<std::thread> threads;
    for (int round = 0; round < 2; ++round) {
        for (size_t i = 0; i < 4; ++i)
            threads.emplace_back([&, i] {
                const std::vector<SeenSymbol> symbols = decode(handles[i], files[i].image(), int32_t(i)).symbols;
                seen[i].insert(seen[i].end(), symbols.begin(), symbols.end());
            });
        for (std::thread& t : threads)
            t.join();
        threads.clear();
    }
    for (size_t i = 0; i < 4; ++i) {
        ASSERT_EQ(seen[i].size(), 2u) << jobs[i].plugin;
        for (const SeenSymbol& s : seen[i])
            EXPECT_EQ(std::make_tuple(s.data, s.tag, s.releaseResult), std::make_tuple(std::string(jobs[i].payload), int32_t(i), int32_t{ZYR_OK}));
    }
    ZyrReader_DestroyCachedData();
}

} // namespace
