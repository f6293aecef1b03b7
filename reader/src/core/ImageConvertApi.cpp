// Entry point for converting encoded images.
#include "ZyrReaderLowLevelAPI.h"
#include "core/Log.h"
#include "imagecodec/BmpConverter.h"

using namespace zyr;

extern "C" {

ZYRREADER_API int32_t ZyrReader_ImageConvertFormat(int32_t format, const uint8_t* input, uint32_t inputLength,
                                                   uint8_t* output, uint32_t* outputSize) {
    if (format != ZYR_FORMAT_BMP || input == nullptr || outputSize == nullptr)
        return ZYR_ERR_BAD_ARGUMENT;
    int32_t result;
    if (output == nullptr) {
        result = BmpConverter::requiredSize(input, inputLength, *outputSize);
    } else {
        uint32_t written = 0;
        result = BmpConverter::convert(input, inputLength, output, *outputSize, written);
        if (result == ZYR_OK || result == ZYR_ERR_BUFFER_TOO_SMALL)
            *outputSize = written;
    }
    if (result != ZYR_OK)
        Log::write(ZYR_LOG_IMAGES, LogError, "conversion of %u bytes to format %d failed: error %d",
                   inputLength, format, result);
    else
        Log::write(ZYR_LOG_IMAGES, LogDetail, "converted %u bytes to %u bytes of format %d", inputLength,
                   *outputSize, format);
    return result;
}

} // extern "C"
