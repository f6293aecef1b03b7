#include "core/ErrorReporter.h"

#include "core/Log.h"

#include <atomic>

namespace zyr {
namespace {

std::atomic<ZyrReaderErrorHandler> currentHandler{nullptr};

} // namespace

void ErrorReporter::setHandler(ZyrReaderErrorHandler handler) {
    currentHandler = handler;
}

void ErrorReporter::report(int32_t code, const char* message) {
    if (message == nullptr)
        message = text(code);
    Log::write(ZYR_LOG_SETTINGS | ZYR_LOG_CAMERA, LogError, "error %d reported: %s", code, message);
    if (ZyrReaderErrorHandler handler = currentHandler.load())
        handler(code, message);
}

const char* ErrorReporter::text(int32_t code) {
    switch (code) {
    case ZYR_OK:
        return "Success";
    case ZYR_ERR_NOT_INITIALISED:
        return "The service needed by this call is not initialised";
    case ZYR_ERR_BAD_ARGUMENT:
        return "Invalid argument";
    case ZYR_ERR_UNKNOWN_HANDLE:
        return "Unknown or already released handle";
    case ZYR_ERR_FILE:
        return "File could not be opened, read or written";
    case ZYR_ERR_UNSUPPORTED_IMAGE:
        return "Unsupported image format";
    case ZYR_ERR_CORRUPT_IMAGE:
        return "Image data is truncated or corrupt";
    case ZYR_ERR_PLUGIN_LOAD:
        return "The file is not a loadable decoder plug-in";
    case ZYR_ERR_PLUGIN_VERSION:
        return "The plug-in was built for another interface version";
    case ZYR_ERR_NO_READER:
        return "No reader is connected";
    case ZYR_ERR_PLUGIN_OPEN:
        return "The plug-in could not be opened with its settings";
    case ZYR_ERR_CANCELLED:
        return "The operation was cancelled";
    case ZYR_ERR_BUFFER_TOO_SMALL:
        return "The buffer is too small for the result";
    case ZYR_ERR_NOT_AAMVA:
        return "The data is not in an AAMVA format";
    case ZYR_ERR_AAMVA_TRUNCATED:
        return "The AAMVA data is truncated";
    case ZYR_ERR_AAMVA_EMPTY:
        return "No AAMVA data was given";
    case ZYR_ERR_OUT_OF_MEMORY:
        return "Out of memory";
    case ZYR_ERR_PLUGIN_DECODE:
        return "The plug-in failed while decoding";
    case ZYR_ERR_PLUGIN_CRASHED:
        return "The plug-in's host process stopped during the call";
    case ZYR_ERR_PLUGIN_TIMEOUT:
        return "The plug-in ran past its time limit";
    case ZYR_ERR_DEVICE:
        return "The reader device failed";
    case ZYR_ERR_NO_DOCUMENT:
        return "No document was found on the reader";
    case ZYR_ERR_ALREADY_INITIALISED:
        return "Already initialised";
    default:
        return "Unknown error";
    }
}

} // namespace zyr
