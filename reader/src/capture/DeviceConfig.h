// The virtual reader's configuration: its folder, where its documents come from, and the feed
// behaviour. The keys that have a place in the reader settings (two-sided, removal time, poll
// interval, mirrored back side) come from the settings the camera is started with; the others
// only the device has, and are read from its device.ini:
//   [Documents] Folder          folder the documents come from (default "documents", relative
//                               folders are taken from the device folder)
//   [Feed]      ArrivalDelayMs  how long a new document lies on the platen before it is
//                               detected (default 0)
#ifndef ZYR_CAPTURE_DEVICE_CONFIG_H
#define ZYR_CAPTURE_DEVICE_CONFIG_H

#include "ZyrReaderLowLevelAPI.h"

#include <string>

namespace zyr {

struct DeviceConfig {
    std::string deviceFolder;    // ends in "/"
    std::string documentsFolder; // ends in "/"
    bool twoSided = false;
    bool mirrorBack = false;
    int32_t removalTimeMs = 0;
    int32_t pollIntervalMs = 100;
    int32_t arrivalDelayMs = 0;

    // The device folder is the settings' DeviceFolder, else $ZYRREADER_DEVICE. On failure the
    // code is ZYR_ERR_NO_READER (no folder named) or ZYR_ERR_DEVICE, and problem says why.
    static int32_t read(const ZyrReaderSettings& settings, DeviceConfig& config, std::string& problem);
};

} // namespace zyr

#endif
