// The decode run on a worker, stepping through the files itself, while this thread plays the
// user-interface thread taking rows, as in the program. Meant to run under
// ThreadSanitizer too (preset tsan).
#include "FakeView.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <thread>

namespace rd = readerdouble;

namespace {

// Posted events go into a queue that the test thread serves, like the window's event loop.
class QueuedView : public SessionView {
public:
    void PostShowNextResult() override {
        {
            std::lock_guard<std::mutex> lock(m_mutex);
            ++m_events;
        }
        m_posted.notify_all();
    }
    void SetCaption(const std::string&) override {}
    void SetPictureImage(PictureId, std::shared_ptr<const ZyrImage>) override {}
    void ShowSideViews(bool) override {}
    void RedrawAll() override {}
    void ShowMessage(MessageKind, const std::string&) override {}
    void UpdateButtons() override {}

    // Serves events until the worker is done and the queue is empty.
    void Serve(TestSession& session, const std::atomic<bool>& done, std::vector<ResultRow>& rows) {
        for (;;) {
            {
                std::unique_lock<std::mutex> lock(m_mutex);
                m_posted.wait(lock, [&] { return m_events > 0 || done; });
                if (m_events == 0)
                    return;
                --m_events;
            }
            if (auto row = session.decode.TakeNextRow())
                rows.push_back(*row);
            session.stats.Format(); // the statistics line is read while the job writes
            (void)session.CurrentFileName(); // and the caption's file while the job steps
        }
    }
    void Wake() { m_posted.notify_all(); }

private:
    std::mutex m_mutex;
    std::condition_variable m_posted;
    int m_events = 0;
};

TEST(DecodeConcurrency, DecodeMultiWithTheInterfaceServedConcurrently) {
    rd::Reset();
    ReaderSession::Reset();
    TempFolder plugins;
    std::snprintf(ReaderSession::Settings().PluginFolder, ZYR_PATH_SIZE, "%s", plugins.path().c_str());
    for (const char* name : {"KVDECODE_A.so", "KVDECODE_B.so", "KVDECODE_C.so"}) {
        plugins.write(name, "");
        rd::PluginScript script{name};
        rd::SymbolScript symbol;
        symbol.data = std::string(name).substr(9, 1);
        script.decodes = {{symbol, symbol}};
        rd::AddPlugin(script);
    }
    std::vector<uint8_t> pixels(64, 1);
    const ZyrImage image{8, 8, 8, ZYR_PIXEL_GREY8, pixels.data()};
    QueuedView view;
    TestSession session(view);
    session.loadImage = [&image](const std::string&, std::string&) {
        return std::shared_ptr<const ZyrImage>(&image, [](const ZyrImage*) {});
    };
    session.LoadPlugins();
    for (size_t i = 0; i < 3; ++i)
        session.plugins.SetSelected(i, true);
    const int kImages = 40;
    std::vector<std::string> files;
    for (int i = 0; i < kImages; ++i)
        files.push_back("image" + std::to_string(i) + ".png");
    session.OpenImages(files, 1);

    std::atomic<bool> done{false};
    std::vector<ResultRow> rows;
    std::thread worker([&] {
        FakeJob job;
        session.decode.DecodeMultiJob(job);
        done = true;
        view.Wake();
    });
    view.Serve(session, done, rows);
    worker.join();

    ASSERT_EQ(rows.size(), size_t(3 * kImages));
    for (size_t i = 0; i < rows.size(); ++i) // each row belongs to the image it was decoded from
        EXPECT_EQ(rows[i].fileName, "image" + std::to_string(i / 3) + ".png") << i;
    EXPECT_EQ(session.stats.imageCount, kImages);
    EXPECT_EQ(session.stats.symbolsCount, 2 * 3 * kImages);
    EXPECT_EQ(session.results.DataCount(), 3 * kImages);
    EXPECT_EQ(rd::LiveObjects(), 0);
    ReaderSession::Reset();
}

} // namespace
