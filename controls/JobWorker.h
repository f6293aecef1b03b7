// Runs one job on a thread of its own and reports its end on the thread that made the worker,
// through a queued signal, so the caller never waits in an event loop of its own. Destroying a
// worker whose job still runs asks the job to stop and waits for its thread.
#pragma once

#include <QObject>
#include <atomic>
#include <cstdint>
#include <functional>
#include <thread>

class JobWorker : public QObject {
    Q_OBJECT
public:
    using Job = std::function<uint32_t()>;

    // stop: any thread; makes the job end soon (it is called at most once, from the destructor).
    JobWorker(Job job, std::function<void()> stop, QObject* parent = nullptr);
    ~JobWorker() override;
    JobWorker(const JobWorker&) = delete;
    JobWorker& operator=(const JobWorker&) = delete;

    // Starts the job; a second call does nothing.
    void Start();
    // Started and Finished not delivered yet.
    bool IsRunning() const { return m_running; }

signals:
    // On the thread the worker belongs to, once, after the job returned.
    void Finished(uint32_t result);

private:
    Job m_job;
    std::function<void()> m_stop;
    std::thread m_thread;
    std::atomic<bool> m_jobEnded{false};
    bool m_running = false;
};
