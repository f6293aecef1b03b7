#include "core/SignalService.h"

#include "ZyrReaderLowLevelAPI.h"
#include "core/Log.h"

namespace zyr {

SignalService& SignalService::instance() {
    static SignalService service;
    return service;
}

int32_t SignalService::initialise() {
    std::lock_guard<std::mutex> lock(mutex_);
    initialised_ = true;
    Log::write(ZYR_LOG_CAMERA, LogInfo, "signal started");
    return ZYR_OK;
}

int32_t SignalService::shutdown() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!initialised_)
        return ZYR_ERR_NOT_INITIALISED;
    initialised_ = false;
    Log::write(ZYR_LOG_CAMERA, LogInfo, "signal stopped");
    return ZYR_OK;
}

bool SignalService::initialised() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return initialised_;
}

} // namespace zyr
