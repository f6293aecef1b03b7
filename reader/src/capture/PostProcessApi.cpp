// Entry points that post-process a snapshot: one side, or both sides of a two-sided frame.
#include "ZyrReaderLowLevelAPI.h"
#include "capture/CaptureSettings.h"
#include "capture/PostProcessor.h"
#include "capture/SnapshotComposer.h"
#include "core/ReaderService.h"
#include "core/Log.h"

using namespace zyr;

namespace {

ProcessRequest requestOf(const ZyrReaderSettings& settings, const ZyrLocateSettings* locate,
                         const ZyrProcessSettings* process, bool colour, uint32_t options,
                         uint32_t borderPixels, float outputScale) {
    ProcessRequest request;
    const FindParameters find = CaptureSettings::find(settings, locate);
    request.options = options;
    request.colour = colour;
    request.borderPixels = borderPixels;
    request.outputScale = outputScale;
    request.threshold = find.threshold;
    request.minimumArea = find.minimumArea;
    request.denoiseRadius =
        process != nullptr ? int32_t(process->DenoiseRadius) : int32_t(settings.Process.DenoiseRadius);
    return request;
}

int32_t checkCall(const ZyrImage* snapshot, ZyrImageCallback callback, Raster& picture) {
    if (!imageProcessingService().running())
        return ZYR_ERR_NOT_INITIALISED;
    if (snapshot == nullptr || callback == nullptr || !Raster::fromView(*snapshot, picture))
        return ZYR_ERR_BAD_ARGUMENT;
    return ZYR_OK;
}

} // namespace

extern "C" {

ZYRREADER_API int32_t ZyrReader_ImagePostProcessImage(bool wait, const ZyrImage* snapshot, uint32_t lightMask,
                                                      uint32_t outputDpi, bool colour, uint32_t options,
                                                      int32_t processingMode, uint32_t borderPixels,
                                                      float outputScale, ZyrReaderSettings* settings,
                                                      ZyrLocateSettings* locate, ZyrLocation* side1,
                                                      ZyrImageCallback callback, void* user, int32_t reserved,
                                                      const char* debugName, ZyrProcessSettings* process) {
    (void)wait, (void)outputDpi, (void)processingMode, (void)reserved, (void)debugName;
    Raster picture;
    if (const int32_t result = checkCall(snapshot, callback, picture))
        return result;
    const ProcessRequest request = requestOf(CaptureSettings::effective(settings), locate, process, colour,
                                             options, borderPixels, outputScale);
    Raster processed;
    const Rect whole{0, 0, picture.width(), picture.height()};
    if (const int32_t result = PostProcessor::process(picture, whole, request, side1, processed)) {
        Log::write(ZYR_LOG_IMAGES, LogInfo, "post-processing (options 0x%X) failed: error %d", options,
                   result);
        return result;
    }
    ZyrImage* image = processed.toLibraryImage();
    if (image == nullptr)
        return ZYR_ERR_OUT_OF_MEMORY;
    callback(user, 0, 0, lightMask, image);
    return ZYR_OK;
}

ZYRREADER_API int32_t ZyrReader_ImagePostProcessImageTwoSided(
    bool wait, const ZyrImage* snapshot, uint32_t lightMask, uint32_t outputDpi, bool colour,
    uint32_t options, int32_t processingMode, uint32_t borderPixels, float outputScale,
    ZyrReaderSettings* settings, ZyrLocateSettings* locate, ZyrLocation* side1, ZyrLocation* side2,
    ZyrImageCallback callback, void* user, int32_t reserved, const char* debugName,
    ZyrProcessSettings* process, ZyrSideSettings* side) {
    (void)wait, (void)outputDpi, (void)processingMode, (void)reserved, (void)debugName;
    Raster picture;
    if (const int32_t result = checkCall(snapshot, callback, picture))
        return result;
    const ZyrReaderSettings effective = CaptureSettings::effective(settings);
    ProcessRequest request[2];
    request[0] = requestOf(effective, locate, process, colour, options, borderPixels, outputScale);
    request[1] = request[0];
    request[1].unmirror =
        (side != nullptr ? int32_t(side->MirrorBackSide) : int32_t(effective.Side.MirrorBackSide)) != 0;
    ZyrLocation* locations[2] = {side1, side2};

    Raster processed[2];
    int32_t result[2];
    for (int i = 0; i < 2; ++i)
        result[i] = PostProcessor::process(picture, SnapshotComposer::sideArea(picture, true, i + 1),
                                           request[i], locations[i], processed[i]);
    if (result[0] == ZYR_ERR_NO_DOCUMENT && result[1] == ZYR_ERR_NO_DOCUMENT)
        return ZYR_ERR_NO_DOCUMENT;
    for (int i = 0; i < 2; ++i) {
        if (result[i] == ZYR_ERR_NO_DOCUMENT) {
            // One side empty (a document without a back): that side's half, processed but not cut.
            request[i].options &= ~(ZYR_OPT_LOCATE | ZYR_OPT_DESKEW | ZYR_OPT_CROP);
            result[i] = PostProcessor::process(picture, SnapshotComposer::sideArea(picture, true, i + 1),
                                               request[i], nullptr, processed[i]);
        }
        if (result[i] != ZYR_OK)
            return result[i];
    }
    ZyrImage* images[2] = {processed[0].toLibraryImage(), processed[1].toLibraryImage()};
    if (images[0] == nullptr || images[1] == nullptr) {
        for (ZyrImage* image : images)
            if (image != nullptr)
                ZyrReader_DestroyCachedObject(image);
        return ZYR_ERR_OUT_OF_MEMORY;
    }
    for (int i = 0; i < 2; ++i)
        callback(user, i, i + 1, lightMask, images[i]);
    return ZYR_OK;
}

} // extern "C"
