#include "core/CameraService.h"

#include "core/Log.h"

namespace zyr {

CameraService& CameraService::instance() {
    static CameraService service;
    return service;
}

int32_t CameraService::initialise(const ZyrReaderSettings& settings, uint64_t device) {
    std::lock_guard<std::mutex> lock(mutex_);
    settings_ = settings;
    device_ = device;
    initialised_ = true;
    Log::write(ZYR_LOG_CAMERA, LogInfo, "camera started, device %llu",
               static_cast<unsigned long long>(device));
    return ZYR_OK;
}

int32_t CameraService::shutdown() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!initialised_)
        return ZYR_ERR_NOT_INITIALISED;
    initialised_ = false;
    Log::write(ZYR_LOG_CAMERA, LogInfo, "camera stopped");
    return ZYR_OK;
}

bool CameraService::initialised() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return initialised_;
}

ZyrReaderSettings CameraService::settings() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return settings_;
}

uint64_t CameraService::device() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return device_;
}

void CameraService::updateSettings(const ZyrReaderSettings& settings) {
    std::lock_guard<std::mutex> lock(mutex_);
    settings_ = settings;
}

} // namespace zyr
