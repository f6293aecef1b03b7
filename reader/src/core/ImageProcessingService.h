// State of the image-processing service (post-processing of snapshots and conversions).
#ifndef ZYR_CORE_IMAGE_PROCESSING_SERVICE_H
#define ZYR_CORE_IMAGE_PROCESSING_SERVICE_H

#include "ZyrReaderLowLevelAPI.h"

#include <mutex>

namespace zyr {

class ImageProcessingService {
public:
    static ImageProcessingService& instance();

    int32_t initialise(uint64_t device, const ZyrImageProcessingSettings& processing);
    int32_t shutdown(); // ZYR_ERR_NOT_INITIALISED when not running
    bool initialised() const;

    ZyrImageProcessingSettings processing() const;
    uint64_t device() const;

private:
    mutable std::mutex mutex_;
    bool initialised_ = false;
    ZyrImageProcessingSettings processing_{};
    uint64_t device_ = 0;
};

} // namespace zyr

#endif
