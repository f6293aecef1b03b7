#include "core/ParseService.h"

#include "ZyrReaderLowLevelAPI.h"
#include "core/Log.h"

namespace zyr {

ParseService& ParseService::instance() {
    static ParseService service;
    return service;
}

int32_t ParseService::initialise() {
    std::lock_guard<std::mutex> lock(mutex_);
    initialised_ = true;
    Log::write(ZYR_LOG_PARSE, LogInfo, "parsing started");
    return ZYR_OK;
}

int32_t ParseService::shutdown() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!initialised_)
        return ZYR_ERR_NOT_INITIALISED;
    initialised_ = false;
    Log::write(ZYR_LOG_PARSE, LogInfo, "parsing stopped");
    return ZYR_OK;
}

bool ParseService::initialised() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return initialised_;
}

} // namespace zyr
