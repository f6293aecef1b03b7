// Entry points that start, stop and query the camera, image-processing, signal and parsing services.
#include "ZyrReaderLowLevelAPI.h"
#include "core/CameraService.h"
#include "core/ImageProcessingService.h"
#include "core/ParseService.h"
#include "core/SignalService.h"

using namespace zyr;

extern "C" {

// Starting and stopping the camera opens and closes the virtual device: see capture/CameraApi.cpp.

ZYRREADER_API bool ZyrReader_IsCameraInitialised(void) {
    return CameraService::instance().initialised();
}

ZYRREADER_API int32_t ZyrReader_ImageProcessingInitialise(ZyrReaderSettings* settings, uint64_t device,
                                                          ZyrImageProcessingSettings* processing) {
    if (settings == nullptr && processing == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    // The sub-record is normally the settings' own; a separate one takes precedence.
    const ZyrImageProcessingSettings& chosen =
        processing != nullptr ? *processing : settings->ImageProcessing;
    return ImageProcessingService::instance().initialise(device, chosen);
}

ZYRREADER_API bool ZyrReader_IsImageProcessingInitialised(void) {
    return ImageProcessingService::instance().initialised();
}

ZYRREADER_API int32_t ZyrReader_ImageProcessingShutdown(void) {
    return ImageProcessingService::instance().shutdown();
}

ZYRREADER_API int32_t ZyrReader_SignalInitialise(ZyrReaderSettings* settings) {
    if (settings == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    return SignalService::instance().initialise();
}

ZYRREADER_API bool ZyrReader_IsSignalInitialised(void) {
    return SignalService::instance().initialised();
}

ZYRREADER_API int32_t ZyrReader_SignalShutdown(void) {
    return SignalService::instance().shutdown();
}

ZYRREADER_API int32_t ZyrReader_ParseInitialise(void) {
    return ParseService::instance().initialise();
}

ZYRREADER_API bool ZyrReader_IsParsingInitialised(void) {
    return ParseService::instance().initialised();
}

ZYRREADER_API int32_t ZyrReader_ParseShutdown(void) {
    return ParseService::instance().shutdown();
}

} // extern "C"
