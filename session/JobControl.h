// The session's control of its running job: the stop request and the progress text. The stop
// dialog only shows the text and asks for the stop; the job reads the flag here.
#pragma once

#include "JobContext.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <string>

class JobControl : public JobContext {
public:
    using StatusSink = std::function<void(const std::string& text)>;

    // Before a job starts: not stopped, its progress text going nowhere yet.
    void Begin();
    // Where the progress text goes from now on (empty: nowhere); any thread.
    void SetStatusSink(StatusSink sink);
    // After it ended: the text goes nowhere any more.
    void End() { SetStatusSink(nullptr); }

    // Any thread: asks the job to stop and makes a pending capture call of the reader return.
    void Stop();

    bool IsStopped() const override { return m_stopped.load(); }
    void SetStatusText(const std::string& text) override;

private:
    std::atomic<bool> m_stopped{false};
    std::mutex m_sinkLock;
    StatusSink m_sink;
};
