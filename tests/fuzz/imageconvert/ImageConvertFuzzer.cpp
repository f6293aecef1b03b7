// Any bytes given to the converter must end in a result code: never a crash, hang or leak.
#include "ZyrReaderLowLevelAPI.h"
#include "core/LibraryImage.h"

#include <cstdint>
#include <cstdlib>
#include <vector>

// Headers may promise any size; pixels are decoded only for images that fit this comfortably.
constexpr uint32_t kLargestOutput = 32u << 20;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > 0xFFFFFFFFu)
        return 0;
    const uint32_t length = static_cast<uint32_t>(size);
    uint32_t needed = 0;
    if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, data, length, nullptr, &needed) != ZYR_OK)
        return 0;
    if (needed > kLargestOutput)
        return 0;

    std::vector<uint8_t> bmp(needed);
    uint32_t small = needed - 1;
    if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, data, length, bmp.data(), &small) !=
            ZYR_ERR_BUFFER_TOO_SMALL ||
        small != needed)
        std::abort(); // a short buffer must be refused with the size it needs
    uint32_t written = needed;
    if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, data, length, bmp.data(), &written) == ZYR_OK) {
        if (written != needed)
            std::abort();
        // The BMP the library wrote must read back as an image of its own.
        uint32_t again = 0;
        if (ZyrReader_ImageConvertFormat(ZYR_FORMAT_BMP, bmp.data(), written, nullptr, &again) != ZYR_OK)
            std::abort();
    }

    ZyrImage* image = nullptr;
    if (zyr::LibraryImage::decode(data, size, &image) == ZYR_OK)
        ZyrReader_DestroyCachedObject(image);
    return 0;
}
