// The library's services (camera, image processing, signal, parsing): each is up or down and
// keeps what it was last started with. Starting twice is accepted and takes the new state;
// stopping one that is down answers ZYR_ERR_NOT_INITIALISED.
#ifndef ZYR_CORE_READER_SERVICE_H
#define ZYR_CORE_READER_SERVICE_H

#include "ZyrReaderLowLevelAPI.h"
#include "core/Log.h"

#include <mutex>
#include <type_traits>

namespace zyr {

struct NoServiceState {};

struct CameraState {
    ZyrReaderSettings settings{};
    uint64_t device = 0;
};

struct ProcessingState {
    ZyrImageProcessingSettings processing{};
    uint64_t device = 0;
};

template <typename State>
class ReaderService {
public:
    ReaderService(uint32_t category, const char* name) : category_(category), name_(name) {}

    int32_t start(const State& state = State{}) {
        std::lock_guard<std::mutex> lock(mutex_);
        state_ = state;
        up_ = true;
        if constexpr (HasDevice)
            Log::write(category_, LogInfo, "%s started, device %llu", name_,
                       static_cast<unsigned long long>(state.device));
        else
            Log::write(category_, LogInfo, "%s started", name_);
        return ZYR_OK;
    }

    int32_t stop() {
        std::lock_guard<std::mutex> lock(mutex_);
        if (!up_)
            return ZYR_ERR_NOT_INITIALISED;
        up_ = false;
        Log::write(category_, LogInfo, "%s stopped", name_);
        return ZYR_OK;
    }

    bool running() const {
        std::lock_guard<std::mutex> lock(mutex_);
        return up_;
    }

    // A copy of what start() was given (default-constructed before the first start).
    State state() const {
        std::lock_guard<std::mutex> lock(mutex_);
        return state_;
    }

    void update(const State& state) {
        std::lock_guard<std::mutex> lock(mutex_);
        state_ = state;
    }

private:
    static constexpr bool HasDevice = !std::is_same_v<State, NoServiceState>;

    mutable std::mutex mutex_;
    const uint32_t category_;
    const char* const name_;
    bool up_ = false;
    State state_{};
};

ReaderService<CameraState>& cameraService();
ReaderService<ProcessingState>& imageProcessingService();
ReaderService<NoServiceState>& signalService();
ReaderService<NoServiceState>& parseService();

} // namespace zyr

#endif
