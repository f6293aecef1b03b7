#include "CaptureOptions.h"

void CaptureOptions::ApplyVisibleOverride(ZyrImageSettings& copy, const ZyrReaderSettings& reader,
                                          bool crop) {
    if (reader.ExtraProcessing) {
        copy.ExtraProcessing = 1;
    }
    copy.CropWidth = crop ? 1 : 0;
    copy.CropHeight = crop ? 1 : 0;
    copy.Camera.CaptureResolution = reader.VisibleParameters.CaptureResolution;
    copy.Camera.Binning = reader.VisibleParameters.Binning;
}

float CaptureOptions::DetectionValue(const ZyrReaderSettings& reader, bool darkObjectDetect,
                                     uint8_t detectionFlag) {
    if (darkObjectDetect && detectionFlag != 0) {
        return reader.DarkObjectValue;
    }
    return reader.VisibleParameters.DetectThreshold;
}

uint32_t CaptureOptions::OptionWord(const ZyrImageSettings& r, const ZyrReaderSettings& reader, bool crop) {
    uint32_t word = 0;
    // A camera that straightens its images itself needs no deskew.
    if (r.Deskew && r.Camera.HardwareDeskew == 0) {
        word = ZYR_OPT_DESKEW;
    }
    if (r.Normalise) {
        word |= ZYR_OPT_NORMALISE;
    }
    if (crop) {
        word |= ZYR_OPT_CROP;
    } else {
        word |= (r.CropWidth ? ZYR_OPT_CROP_WIDTH : 0u) | (r.CropHeight ? ZYR_OPT_CROP_HEIGHT : 0u);
    }
    if (r.ProcessingMode >= 0) {
        word |= ZYR_OPT_LOCATE;
    }
    word |= (r.Rotate90 ? ZYR_OPT_ROTATE_90 : 0u) | (r.Rotate180 ? ZYR_OPT_ROTATE_180 : 0u) |
            (r.MirrorHorizontal ? ZYR_OPT_MIRROR_H : 0u) | (r.MirrorVertical ? ZYR_OPT_MIRROR_V : 0u);
    if (r.ExtraProcessing || reader.ExtraProcessing) {
        word |= ZYR_OPT_EXTRA;
    }
    if (r.Sharpen) {
        word |= ZYR_OPT_SHARPEN;
    }
    if (r.Greyscale) {
        word |= ZYR_OPT_GREYSCALE;
    }
    return word;
}

uint32_t CaptureOptions::OptionalValue(const ZyrImageSettings& record) {
    return record.UseBorder ? uint32_t(record.Camera.BorderPixels) : 0u;
}
