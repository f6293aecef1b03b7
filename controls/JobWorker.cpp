#include "JobWorker.h"

JobWorker::JobWorker(Job job, std::function<void()> stop, QObject* parent)
    : QObject(parent), m_job(std::move(job)), m_stop(std::move(stop)) {}

JobWorker::~JobWorker() {
    if (!m_thread.joinable()) {
        return;
    }
    if (!m_jobEnded && m_stop) {
        m_stop();
    }
    m_thread.join();
}

void JobWorker::Start() {
    if (m_thread.joinable() || !m_job) {
        return;
    }
    m_running = true;
    m_thread = std::thread([this] {
        const uint32_t result = m_job();
        m_jobEnded = true;
        // Dropped by Qt when the worker is destroyed before the event is delivered.
        QMetaObject::invokeMethod(
            this,
            [this, result] {
                m_running = false;
                emit Finished(result);
            },
            Qt::QueuedConnection);
    });
}

#include "moc_JobWorker.cpp"
