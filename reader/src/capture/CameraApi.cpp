// Entry points of the camera and the document feed: start and stop, detection, location,
// snapshot, cancel and the end of a document's processing.
#include "ZyrReaderLowLevelAPI.h"
#include "capture/CaptureSettings.h"
#include "capture/DeviceConfig.h"
#include "capture/VirtualReader.h"
#include "core/ReaderService.h"
#include "core/ErrorReporter.h"
#include "core/Log.h"
#include "core/ShutdownHooks.h"

#include <algorithm>
#include <cmath>

using namespace zyr;

namespace {

// ZyrReader_DestroyCachedData ends the camera; the device goes with it.
const ShutdownHookRegistration closeDevice{[] { VirtualReader::instance().close(); }};

int32_t removalOf(const ZyrFeedSettings* feed) {
    return feed != nullptr ? std::max(0, int32_t(feed->RemovalTimeMs)) : -1;
}

void report(const PlatenState& where, bool bothSides, ZyrLocation* side1, ZyrLocation* side2) {
    if (side1 != nullptr)
        *side1 = where.side1;
    if (side2 != nullptr)
        *side2 = bothSides ? where.side2 : ZyrLocation{};
}

uint8_t darkObjectFlag() {
    return cameraService().state().settings.DarkObjectDetect ? 1 : 0;
}

bool cameraReady() {
    return cameraService().running() && VirtualReader::instance().isOpen();
}

} // namespace

extern "C" {

ZYRREADER_API int32_t ZyrReader_CameraInitialise(ZyrReaderSettings* settings, uint64_t device,
                                                 uint32_t flags) {
    (void)flags; // reserved
    if (settings == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    DeviceConfig config;
    std::string problem;
    if (const int32_t result = DeviceConfig::read(*settings, config, problem)) {
        ErrorReporter::report(result, problem.c_str());
        return result;
    }
    cameraService().start({*settings, device});
    VirtualReader::instance().open(config);
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_CameraShutdown(void) {
    VirtualReader::instance().close();
    return cameraService().stop();
}

ZYRREADER_API int32_t ZyrReader_CameraUpdateSettings(ZyrReaderSettings* settings) {
    if (settings == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    auto& camera = cameraService();
    if (!camera.running())
        return ZYR_ERR_NOT_INITIALISED;
    CameraState state = camera.state();
    ZyrReaderSettings& running = state.settings;
    running.DarkObjectDetect = settings->DarkObjectDetect ? 1 : 0;
    if (std::isfinite(settings->DarkObjectValue))
        running.DarkObjectValue = settings->DarkObjectValue;
    camera.update(state);
    Log::write(ZYR_LOG_CAMERA, LogInfo, "dark-object detection %s, value %.1f",
               running.DarkObjectDetect ? "on" : "off", double(running.DarkObjectValue));
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_CameraCancelQueue(void) {
    return VirtualReader::instance().cancel();
}

ZYRREADER_API int32_t ZyrReader_LocateDocumentTwoSidedEx(
    uint32_t lightMask, int32_t timeoutMs, ZyrLocation* side1, ZyrLocation* side2, uint8_t* documentPresent,
    ZyrReaderSettings* settings, ZyrDetectSettings* detect, ZyrLocateSettings* locate, bool bothSides,
    int32_t reserved1, ZyrProcessSettings* process, ZyrSideSettings* side, ZyrFeedSettings* feed,
    int32_t reserved2, bool debugImages, bool hiRes, uint8_t* detectionFlag) {
    (void)lightMask, (void)settings, (void)detect, (void)locate, (void)reserved1, (void)process, (void)side;
    (void)reserved2, (void)debugImages, (void)hiRes;
    if (documentPresent == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    if (!cameraReady())
        return ZYR_ERR_NOT_INITIALISED;
    bool present = false;
    PlatenState where;
    if (const int32_t result = VirtualReader::instance().locate(timeoutMs, removalOf(feed), present, where))
        return result;
    *documentPresent = present ? 1 : 0;
    if (present)
        report(where, bothSides, side1, side2);
    if (detectionFlag != nullptr)
        *detectionFlag = present ? darkObjectFlag() : 0;
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_InsertDocument(void) {
    if (!cameraReady())
        return ZYR_ERR_NOT_INITIALISED;
    return VirtualReader::instance().insert();
}

ZYRREADER_API int32_t ZyrReader_CameraDetectDocumentTwoSidedEx(
    bool wait, int32_t timeoutMs, uint32_t lightMask, ZyrLocation* side1, ZyrLocation* side2,
    ZyrReaderSettings* settings, ZyrDetectSettings* detect, ZyrLocateSettings* locate, int32_t reserved1,
    int32_t reserved2, int32_t reserved3, int32_t reserved4, int32_t reserved5, ZyrProcessSettings* process,
    ZyrSideSettings* side, ZyrFeedSettings* feed, int32_t reserved6, const char* debugName, bool bothSides,
    bool findDocument, uint8_t* detectionFlag) {
    (void)lightMask, (void)settings, (void)detect, (void)reserved1, (void)reserved2, (void)reserved3;
    (void)reserved4, (void)reserved5, (void)process, (void)side, (void)reserved6, (void)debugName;
    if (!cameraReady())
        return ZYR_ERR_NOT_INITIALISED;
    // The camera looks with its own settings, which carry the dark-object choice.
    const FindParameters find = CaptureSettings::find(cameraService().state().settings, locate);
    PlatenState where;
    if (const int32_t result =
            VirtualReader::instance().detect(wait, timeoutMs, removalOf(feed), find, where))
        return result;
    if (findDocument)
        report(where, bothSides, side1, side2);
    if (detectionFlag != nullptr)
        *detectionFlag = darkObjectFlag();
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_CameraTakeSnapshot(bool wait, uint32_t lightMask, int32_t frames,
                                                   ZyrCameraParameters* camera, ZyrReaderSettings* settings,
                                                   ZyrImageCallback callback, void* user, int32_t reserved,
                                                   const char* debugName) {
    (void)wait, (void)frames, (void)camera, (void)settings, (void)reserved, (void)debugName;
    if (callback == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    if (!cameraReady())
        return ZYR_ERR_NOT_INITIALISED;
    Raster frame;
    if (const int32_t result = VirtualReader::instance().snapshot(lightMask, frame))
        return result;
    ZyrImage* image = frame.toLibraryImage();
    if (image == nullptr)
        return ZYR_ERR_OUT_OF_MEMORY;
    Log::write(ZYR_LOG_CAMERA, LogDetail, "snapshot %dx%d, lights 0x%X", image->Width, image->Height,
               lightMask);
    callback(user, 0, 0, lightMask, image);
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_DocumentProcessingComplete(void) {
    if (!cameraReady())
        return ZYR_ERR_NOT_INITIALISED;
    return VirtualReader::instance().complete();
}

} // extern "C"
