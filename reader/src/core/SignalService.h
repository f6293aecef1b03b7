// State of the signal service (beeper and lamps; the virtual reader has none, so it only keeps its state).
#ifndef ZYR_CORE_SIGNAL_SERVICE_H
#define ZYR_CORE_SIGNAL_SERVICE_H

#include <cstdint>
#include <mutex>

namespace zyr {

class SignalService {
public:
    static SignalService& instance();

    int32_t initialise(); // starting twice is accepted
    int32_t shutdown();   // ZYR_ERR_NOT_INITIALISED when not running
    bool initialised() const;

private:
    mutable std::mutex mutex_;
    bool initialised_ = false;
};

} // namespace zyr

#endif
