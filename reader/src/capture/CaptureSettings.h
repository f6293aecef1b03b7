// The reader settings a capture call works with: the caller's record when it passes one, else
// the camera's, else the defaults; and what the virtual reader takes from them.
#ifndef ZYR_CAPTURE_CAPTURE_SETTINGS_H
#define ZYR_CAPTURE_CAPTURE_SETTINGS_H

#include "ZyrReaderLowLevelAPI.h"
#include "capture/VirtualReader.h"

namespace zyr {

class CaptureSettings {
public:
    static ZyrReaderSettings effective(const ZyrReaderSettings* given);

    // With dark-object detection on, its own value separates document from platen.
    static double threshold(const ZyrReaderSettings& settings);
    static FindParameters find(const ZyrReaderSettings& settings, const ZyrLocateSettings* locate);
};

} // namespace zyr

#endif
