// How a capture turns an image-settings record and the check boxes into what the reader library
// is asked for: the record used (the plug-in's, or a copy with the visible-light camera values),
// the detection value, the option word and the optional border value.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

class CaptureOptions {
public:
    // "Use Visible Img" on a document not found by dark-object detection: byte 138 set when the
    // reader always wants extra processing, bytes 136 and 137 follow "Crop", and the two common
    // camera fields take the visible-light block's values.
    static void ApplyVisibleOverride(ZyrImageSettings& copy, const ZyrReaderSettings& reader, bool crop);

    // The value for record position 104: the dark-object value when "Dark object detect" is on
    // and the document was found that way, else the visible-light block's, whatever the light.
    static float DetectionValue(const ZyrReaderSettings& reader, bool darkObjectDetect,
                                uint8_t detectionFlag);

    // The post-processing option word (ZYR_OPT_* bits) from the record's switches.
    static uint32_t OptionWord(const ZyrImageSettings& record, const ZyrReaderSettings& reader, bool crop);

    // The border passed to post-processing: the record's border when it asks for one, else 0.
    static uint32_t OptionalValue(const ZyrImageSettings& record);
};
