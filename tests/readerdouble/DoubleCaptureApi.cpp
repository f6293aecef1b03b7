// Exported capture calls of the double: detection, location, snapshot, post-processing, cancel.
#include "DoubleState.h"

#include <algorithm>

using namespace readerdouble;

namespace {

// The entry for the n-th call of a list whose last entry repeats; null when the list is empty.
template <typename T> const T* Nth(const std::vector<T>& list, size_t n) {
    return list.empty() ? nullptr : &list[std::min(n, list.size() - 1)];
}

// Takes a pending cancel; true when there was one.
bool TakeCancel(DoubleState& s) {
    const bool pending = s.cancelPending;
    s.cancelPending = false;
    return pending;
}

// Hands the image of the n-th call of a list (the last repeats, none when empty) to the callback.
int32_t DeliverNth(std::optional<int32_t> scripted, const std::vector<ImageScript> CaptureScript::*list,
                   size_t DoubleData::*calls, ZyrImageCallback callback, void* user, uint32_t lightMask) {
    if (scripted && *scripted != ZYR_OK)
        return *scripted;
    ZyrImage* image = nullptr;
    {
        DoubleState& s = State();
        std::lock_guard<std::mutex> lock(s.mutex);
        const ImageScript* script = Nth(s.capture.*list, (s.*calls)++);
        if (script)
            image = HoldImage(s, *script);
    }
    if (image && callback)
        callback(user, 0, 0, lightMask, image);
    return ZYR_OK;
}

} // namespace

extern "C" {

int32_t ZyrReader_CameraUpdateSettings(ZyrReaderSettings* settings) {
    const std::string darkObject =
        settings ? Arg(static_cast<uint32_t>(settings->DarkObjectDetect)) : std::string("null");
    return Record(__func__, settings, darkObject).value_or(ZYR_OK);
}

int32_t ZyrReader_CameraCancelQueue(void) {
    auto scripted = Record(__func__);
    std::lock_guard<std::mutex> lock(State().mutex);
    State().cancelPending = true;
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_LocateDocumentTwoSidedEx(uint32_t, int32_t, ZyrLocation*, ZyrLocation*,
                                           uint8_t* documentPresent, ZyrReaderSettings*, ZyrDetectSettings*,
                                           ZyrLocateSettings*, bool, int32_t, ZyrProcessSettings*,
                                           ZyrSideSettings*, ZyrFeedSettings*, int32_t, bool, bool,
                                           uint8_t* detectionFlag) {
    auto scripted = Record(__func__); // no test looks at the arguments
    DoubleState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    if (TakeCancel(s))
        return ZYR_ERR_CANCELLED;
    const uint8_t* present = Nth(s.capture.presentAfterLocate, s.locateCalls++);
    if (documentPresent && present)
        *documentPresent = *present;
    if (detectionFlag)
        *detectionFlag = s.capture.detectionFlag;
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_InsertDocument(void) {
    return Record(__func__).value_or(ZYR_OK);
}

int32_t ZyrReader_CameraDetectDocumentTwoSidedEx(bool wait, int32_t timeoutMs, uint32_t lightMask,
                                                 ZyrLocation* side1, ZyrLocation*, ZyrReaderSettings*,
                                                 ZyrDetectSettings*, ZyrLocateSettings*, int32_t, int32_t,
                                                 int32_t, int32_t, int32_t, ZyrProcessSettings*,
                                                 ZyrSideSettings*, ZyrFeedSettings*, int32_t, const char*,
                                                 bool, bool, uint8_t* detectionFlag) {
    auto scripted = Record(__func__, wait, timeoutMs, lightMask, side1); // tests look at these only
    DoubleState& s = State();
    std::lock_guard<std::mutex> lock(s.mutex);
    if (TakeCancel(s))
        return ZYR_ERR_CANCELLED;
    if (detectionFlag)
        *detectionFlag = s.capture.detectionFlag;
    return scripted.value_or(ZYR_OK);
}

int32_t ZyrReader_CameraTakeSnapshot(bool wait, uint32_t lightMask, int32_t frames,
                                     ZyrCameraParameters* camera, ZyrReaderSettings* settings,
                                     ZyrImageCallback callback, void* user, int32_t reserved,
                                     const char* debugName) {
    auto scripted =
        Record(__func__, wait, lightMask, frames, camera, settings, callback, user, reserved, debugName);
    return DeliverNth(scripted, &CaptureScript::snapshots, &DoubleData::snapshotCalls, callback, user, lightMask);
}

int32_t ZyrReader_ImagePostProcessImage(bool wait, const ZyrImage* snapshot, uint32_t lightMask,
                                        uint32_t outputDpi, bool colour, uint32_t options,
                                        int32_t processingMode, uint32_t borderPixels, float outputScale,
                                        ZyrReaderSettings* settings, ZyrLocateSettings* locate,
                                        ZyrLocation* side1, ZyrImageCallback callback, void* user,
                                        int32_t reserved, const char* debugName,
                                        ZyrProcessSettings* process) {
    auto scripted =
        Record(__func__, wait, snapshot, lightMask, outputDpi, colour, options, processingMode, borderPixels,
               outputScale, settings, locate, side1, callback, user, reserved, debugName, process);
    return DeliverNth(scripted, &CaptureScript::processed, &DoubleData::processCalls, callback, user, lightMask);
}

int32_t ZyrReader_ImagePostProcessImageTwoSided(bool wait, const ZyrImage* snapshot, uint32_t lightMask,
                                                uint32_t outputDpi, bool colour, uint32_t options,
                                                int32_t processingMode, uint32_t borderPixels,
                                                float outputScale, ZyrReaderSettings* settings,
                                                ZyrLocateSettings* locate, ZyrLocation* side1,
                                                ZyrLocation* side2, ZyrImageCallback callback, void* user,
                                                int32_t reserved, const char* debugName,
                                                ZyrProcessSettings* process, ZyrSideSettings* side) {
    auto scripted = Record(__func__, wait, snapshot, lightMask, outputDpi, colour, options, processingMode,
                           borderPixels, outputScale, settings, locate, side1, side2, callback, user,
                           reserved, debugName, process, side);
    if (scripted && *scripted != ZYR_OK)
        return *scripted;
    std::vector<ZyrImage*> images;
    {
        DoubleState& s = State();
        std::lock_guard<std::mutex> lock(s.mutex);
        for (size_t i = 0; i < s.capture.sides.size() && i < 2; ++i)
            images.push_back(HoldImage(s, s.capture.sides[i]));
    }
    for (size_t i = 0; i < images.size() && callback; ++i)
        callback(user, static_cast<int32_t>(i), static_cast<int32_t>(i + 1), lightMask, images[i]);
    return ZYR_OK;
}

int32_t ZyrReader_DocumentProcessingComplete(void) {
    return Record(__func__).value_or(ZYR_OK);
}

} // extern "C"
