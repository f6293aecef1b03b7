#include "DecodeRunner.h"

#include "JobContext.h"
#include "TestSession.h"

#include <chrono>

void DecodeRunner::Run(const ZyrImage* image, int32_t side) {
    TestSession& s = m_session;
    const std::vector<PluginEntry> selected = s.plugins.SelectedEntries();
    const bool fromCamera = s.files.Count() == 0;
    if (selected.empty() || !image) {
        if (fromCamera) {
            s.archive.Archive("Failed");
        }
        return;
    }
    ++s.stats.imageCount;
    bool archived = false;
    const std::string fileName = s.CurrentFileName();
    for (const PluginEntry& plugin : selected) {
        ++s.stats.decodeCount;
        const int32_t number = s.imageNumber.load();
        GLD_DecodeResult* record = s.results.Append(number, side, plugin.name, fileName);
        s.dataReceived = false;
        // Only the library call is timed.
        const auto start = std::chrono::steady_clock::now();
        const int32_t code = ZyrReader_ImagePluginDecode(true, plugin.handle, image, "", number, "",
                                                         &DecodeRunner::Callback, this, number, 0, 0);
        const std::chrono::nanoseconds elapsed = std::chrono::steady_clock::now() - start;
        s.results.Finish(record, elapsed, code);
        s.stats.totalDecodeMs +=
            static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count());
        s.view.PostShowNextResult();
        if (s.dataReceived && fromCamera) {
            s.archive.Archive(plugin.name);
            archived = true;
        }
    }
    if (!archived && fromCamera) {
        s.archive.Archive("Failed");
    }
}

void DecodeRunner::Callback(void* context, int32_t tag, int32_t, int32_t, const ZyrSymbolResult* symbol) {
    auto* self = static_cast<DecodeRunner*>(context);
    if (!self || !symbol || !self->m_session.results.AttachSymbol(tag, *symbol)) {
        return;
    }
    self->m_session.dataReceived = true;
    ++self->m_session.stats.symbolsCount;
    ZyrReader_DestroyCachedObject(symbol);
}

void DecodeRunner::RunOnMainPicture() {
    // Held until the run is over, whatever the picture shows next.
    const std::shared_ptr<const ZyrImage> image = m_session.Image(PictureId::Main);
    Run(image.get(), 0);
}

uint32_t DecodeRunner::DecodeImageJob(JobContext&) {
    RunOnMainPicture();
    return 0;
}

uint32_t DecodeRunner::DecodeMultiJob(JobContext& job) {
    job.SetStatusText("Decoding...");
    RunOnMainPicture();
    // The job steps through the files itself: the session loads and owns the pixels, the view
    // only follows what is shown.
    while (!job.IsStopped() && m_session.files.CurrentIndex() < m_session.files.Count() - 1) {
        m_session.StepNext();
        RunOnMainPicture();
    }
    return 0;
}

std::optional<ResultRow> DecodeRunner::TakeNextRow() {
    std::optional<DecodeOutcome> outcome = m_session.results.TakeNext();
    if (!outcome) {
        return std::nullopt;
    }
    outcome->imageProcess = std::chrono::milliseconds(m_session.stats.lastImageProcessMs.load());
    return ResultRowOf(std::move(*outcome));
}

void DecodeRunner::ClearResults() {
    m_session.results.ClearData();
    m_session.stats.Clear();
}
