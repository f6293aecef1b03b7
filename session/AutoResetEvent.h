// An auto-reset event: Set() releases one wait (or the next one), then the event is clear again.
// Sets do not count: two sets before a wait release one wait.
#pragma once

#include <condition_variable>
#include <mutex>

class AutoResetEvent {
public:
    void Set();
    // True when the event was set within the time; the event is then clear again.
    bool WaitFor(int milliseconds);

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_signalled = false;
};
