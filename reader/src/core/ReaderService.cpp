#include "core/ReaderService.h"

namespace zyr {

ReaderService<CameraState>& cameraService() {
    static ReaderService<CameraState> service(ZYR_LOG_CAMERA, "camera");
    return service;
}

ReaderService<ProcessingState>& imageProcessingService() {
    static ReaderService<ProcessingState> service(ZYR_LOG_IMAGES, "image processing");
    return service;
}

ReaderService<NoServiceState>& signalService() {
    static ReaderService<NoServiceState> service(ZYR_LOG_CAMERA, "signal");
    return service;
}

ReaderService<NoServiceState>& parseService() {
    static ReaderService<NoServiceState> service(ZYR_LOG_PARSE, "parsing");
    return service;
}

} // namespace zyr
