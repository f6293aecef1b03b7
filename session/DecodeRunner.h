// The decode run: hands one image to every selected plug-in in turn, times each call, collects
// the symbols the callback reports, and queues one result per plug-in for the user-interface
// thread. Also the bodies of the Decode Image and Decode Multi jobs and the row hand-over.
#pragma once

#include "ResultStore.h"
#include "ResultText.h"
#include "ZyrReaderLowLevelAPI.h"

#include <optional>

class JobContext;
class TestSession;

class DecodeRunner {
public:
    explicit DecodeRunner(TestSession& session) : m_session(session) {}

    // Job's thread. A null image or an empty selection decodes nothing (a camera image is then
    // filed as "Failed"). The rows name the file on show now.
    void Run(const ZyrImage* image, int32_t side);

    // Receives the symbols of ZyrReader_ImagePluginDecode; context is the runner, tag the image
    // number of the record the symbol belongs to.
    static void Callback(void* context, int32_t tag, int32_t symbolIndex, int32_t symbolCount,
                         const ZyrSymbolResult* symbol);

    uint32_t DecodeImageJob(JobContext& job);
    uint32_t DecodeMultiJob(JobContext& job);

    // User-interface thread, on "show next result": the next row to append, if any, with the
    // last image-process time.
    std::optional<ResultRow> TakeNextRow();

    // Clear Results: the decode data list and the counters (not the last image-process time).
    void ClearResults();

private:
    void RunOnMainPicture();

    TestSession& m_session;
};
