// Entry points for the error handler, logging and the release of library objects.
#include "ZyrReaderLowLevelAPI.h"
#include "core/ReaderService.h"
#include "core/ErrorReporter.h"
#include "core/Log.h"
#include "core/ObjectRegistry.h"
#include "core/ShutdownHooks.h"

using namespace zyr;

extern "C" {

ZYRREADER_API const char* ZyrReader_ErrorText(int32_t code) {
    return ErrorReporter::text(code);
}

ZYRREADER_API int32_t ZyrReader_SetErrorHandler(ZyrReaderErrorHandler handler, uint32_t options) {
    (void)options; // reserved
    ErrorReporter::setHandler(handler);
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_InitialiseLogging(bool enable, int32_t level, uint32_t mask,
                                                  const char* fileName) {
    if (!enable || level <= 0) {
        Log::close();
        return ZYR_OK;
    }
    return Log::open(level, mask, fileName);
}

ZYRREADER_API int32_t ZyrReader_DestroyCachedObject(const void* object) {
    const int32_t result = ObjectRegistry::instance().destroy(object);
    if (result != ZYR_OK)
        Log::write(ZYR_LOG_ALL, LogError, "release of %p refused: %s", object, ErrorReporter::text(result));
    return result;
}

ZYRREADER_API int32_t ZyrReader_DestroyCachedData(void) {
    const std::size_t freed = ObjectRegistry::instance().destroyAll();
    ShutdownHooks::instance().runAll();
    // Shut-downs of services that are not running answer "not initialised"; that is expected here.
    cameraService().stop();
    imageProcessingService().stop();
    signalService().stop();
    parseService().stop();
    Log::write(ZYR_LOG_ALL, LogInfo, "cached data destroyed, %zu objects freed", freed);
    return ZYR_OK;
}

} // extern "C"
