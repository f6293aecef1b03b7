// The decode run on a worker, stepping through the files itself, while this thread plays the
// user-interface thread taking rows, as in the program. Meant to run under ThreadSanitizer too
// (preset tsan).
#include "FakeView.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace rd = readerdouble;

namespace {

class DecodeConcurrency : public SessionFixture {};

TEST_F(DecodeConcurrency, DecodeMultiWithTheInterfaceServedConcurrently) {
    std::vector<rd::PluginScript> scripts;
    for (const char* name : {"KVDECODE_A.so", "KVDECODE_B.so", "KVDECODE_C.so"}) {
        rd::SymbolScript symbol;
        symbol.data = std::string(name).substr(9, 1);
        scripts.emplace_back(name);
        scripts.back().decodes = {{symbol, symbol}};
    }
    Install(scripts);
    std::vector<uint8_t> pixels(64, 1);
    const ZyrImage image{8, 8, 8, ZYR_PIXEL_GREY8, pixels.data()};
    session.loadImage = [&image](const std::string&, std::string&) {
        return std::shared_ptr<const ZyrImage>(&image, [](const ZyrImage*) {});
    };
    const int kImages = 40;
    std::vector<std::string> files;
    for (int i = 0; i < kImages; ++i)
        files.push_back("image" + std::to_string(i) + ".png");
    session.OpenImages(files, 1);

    std::atomic<bool> done{false};
    std::thread worker([&] {
        session.decode.DecodeMultiJob(job);
        done = true;
    });
    // Each posted row is taken here; the statistics line and the caption's file are read meanwhile.
    std::vector<ResultRow> rows;
    for (int taken = 0;; std::this_thread::yield()) {
        const bool finished = done; // read first: every row posted before the end is counted below
        int posted = 0;
        {
            std::lock_guard<std::mutex> lock(view.mutex);
            posted = view.resultPosts;
        }
        for (; taken < posted; ++taken) {
            if (auto row = session.decode.TakeNextRow())
                rows.push_back(*row);
            session.stats.Format();
            (void)session.CurrentFileName();
        }
        if (finished)
            break;
    }
    worker.join();

    ASSERT_EQ(rows.size(), size_t(3 * kImages));
    for (size_t i = 0; i < rows.size(); ++i) // each row belongs to the image it was decoded from
        EXPECT_EQ(rows[i].fileName, "image" + std::to_string(i / 3) + ".png") << i;
    EXPECT_EQ(session.stats.imageCount, kImages);
    EXPECT_EQ(session.stats.symbolsCount, 2 * 3 * kImages);
    EXPECT_EQ(session.results.DataCount(), 3 * kImages);
    EXPECT_EQ(rd::LiveObjects(), 0);
}

} // namespace
