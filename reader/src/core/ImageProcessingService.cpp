#include "core/ImageProcessingService.h"

#include "core/Log.h"

namespace zyr {

ImageProcessingService& ImageProcessingService::instance() {
    static ImageProcessingService service;
    return service;
}

int32_t ImageProcessingService::initialise(uint64_t device, const ZyrImageProcessingSettings& processing) {
    std::lock_guard<std::mutex> lock(mutex_);
    device_ = device;
    processing_ = processing;
    initialised_ = true;
    Log::write(ZYR_LOG_IMAGES, LogInfo, "image processing started, device %llu",
               static_cast<unsigned long long>(device));
    return ZYR_OK;
}

int32_t ImageProcessingService::shutdown() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!initialised_)
        return ZYR_ERR_NOT_INITIALISED;
    initialised_ = false;
    Log::write(ZYR_LOG_IMAGES, LogInfo, "image processing stopped");
    return ZYR_OK;
}

bool ImageProcessingService::initialised() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return initialised_;
}

ZyrImageProcessingSettings ImageProcessingService::processing() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return processing_;
}

uint64_t ImageProcessingService::device() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return device_;
}

} // namespace zyr
