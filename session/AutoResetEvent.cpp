#include "AutoResetEvent.h"

#include <chrono>

void AutoResetEvent::Set() {
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_signalled = true;
    }
    m_changed.notify_one();
}

bool AutoResetEvent::WaitFor(int milliseconds) {
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds), [this] { return m_signalled; })) {
        return false;
    }
    m_signalled = false;
    return true;
}
