// Entry points that start, stop and query the camera, image-processing, signal and parsing services.
#include "ZyrReaderLowLevelAPI.h"
#include "core/ReaderService.h"

using namespace zyr;

extern "C" {

// Starting and stopping the camera opens and closes the virtual device: see capture/CameraApi.cpp.

ZYRREADER_API bool ZyrReader_IsCameraInitialised(void) {
    return cameraService().running();
}

ZYRREADER_API int32_t ZyrReader_ImageProcessingInitialise(ZyrReaderSettings* settings, uint64_t device,
                                                          ZyrImageProcessingSettings* processing) {
    if (settings == nullptr && processing == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    // The sub-record is normally the settings' own; a separate one takes precedence.
    const ZyrImageProcessingSettings& chosen =
        processing != nullptr ? *processing : settings->ImageProcessing;
    return imageProcessingService().start({chosen, device});
}

ZYRREADER_API bool ZyrReader_IsImageProcessingInitialised(void) {
    return imageProcessingService().running();
}

ZYRREADER_API int32_t ZyrReader_ImageProcessingShutdown(void) {
    return imageProcessingService().stop();
}

ZYRREADER_API int32_t ZyrReader_SignalInitialise(ZyrReaderSettings* settings) {
    if (settings == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    return signalService().start();
}

ZYRREADER_API bool ZyrReader_IsSignalInitialised(void) {
    return signalService().running();
}

ZYRREADER_API int32_t ZyrReader_SignalShutdown(void) {
    return signalService().stop();
}

ZYRREADER_API int32_t ZyrReader_ParseInitialise(void) {
    return parseService().start();
}

ZYRREADER_API bool ZyrReader_IsParsingInitialised(void) {
    return parseService().running();
}

ZYRREADER_API int32_t ZyrReader_ParseShutdown(void) {
    return parseService().stop();
}

} // extern "C"
