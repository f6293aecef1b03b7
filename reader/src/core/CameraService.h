// State of the camera service: whether it is up, and the settings and device it was started with.
// The capture area builds the virtual reader on this state.
#ifndef ZYR_CORE_CAMERA_SERVICE_H
#define ZYR_CORE_CAMERA_SERVICE_H

#include "ZyrReaderLowLevelAPI.h"

#include <mutex>

namespace zyr {

class CameraService {
public:
    static CameraService& instance();

    // Starting twice is accepted (returns ZYR_OK) and takes the new settings.
    int32_t initialise(const ZyrReaderSettings& settings, uint64_t device);
    int32_t shutdown(); // ZYR_ERR_NOT_INITIALISED when not running
    bool initialised() const;

    // Copies of what initialise() was given (zeroed before the first start).
    ZyrReaderSettings settings() const;
    uint64_t device() const;
    void updateSettings(const ZyrReaderSettings& settings);

private:
    mutable std::mutex mutex_;
    bool initialised_ = false;
    ZyrReaderSettings settings_{};
    uint64_t device_ = 0;
};

} // namespace zyr

#endif
