// TEMPORARY placeholders so the library links (and clients load it) before every area has landed.
// Each returns ZYR_ERR_NOT_INITIALISED and does nothing else. They are NOT implementations.
//
// When you land the real implementation of a function below, delete its placeholder here in the
// same commit. When this file is empty, delete the whole reader/src/pending/ folder.

#include "ZyrReaderLowLevelAPI.h"

extern "C" {

// ---- Virtual reader and capture (reader/src/capture/): delete these nine when capture lands. ----

ZYRREADER_API int32_t ZyrReader_CameraUpdateSettings(ZyrReaderSettings*) { return ZYR_ERR_NOT_INITIALISED; }

ZYRREADER_API int32_t ZyrReader_CameraCancelQueue(void) { return ZYR_ERR_NOT_INITIALISED; }

ZYRREADER_API int32_t ZyrReader_LocateDocumentTwoSidedEx(uint32_t, int32_t, ZyrLocation*, ZyrLocation*, uint8_t*,
                                                         ZyrReaderSettings*, ZyrDetectSettings*, ZyrLocateSettings*,
                                                         bool, int32_t, ZyrProcessSettings*, ZyrSideSettings*,
                                                         ZyrFeedSettings*, int32_t, bool, bool, uint8_t*) {
    return ZYR_ERR_NOT_INITIALISED;
}

ZYRREADER_API int32_t ZyrReader_InsertDocument(void) { return ZYR_ERR_NOT_INITIALISED; }

ZYRREADER_API int32_t ZyrReader_CameraDetectDocumentTwoSidedEx(bool, int32_t, uint32_t, ZyrLocation*, ZyrLocation*,
                                                               ZyrReaderSettings*, ZyrDetectSettings*,
                                                               ZyrLocateSettings*, int32_t, int32_t, int32_t, int32_t,
                                                               int32_t, ZyrProcessSettings*, ZyrSideSettings*,
                                                               ZyrFeedSettings*, int32_t, const char*, bool, bool,
                                                               uint8_t*) {
    return ZYR_ERR_NOT_INITIALISED;
}

ZYRREADER_API int32_t ZyrReader_CameraTakeSnapshot(bool, uint32_t, int32_t, ZyrCameraParameters*, ZyrReaderSettings*,
                                                   ZyrImageCallback, void*, int32_t, const char*) {
    return ZYR_ERR_NOT_INITIALISED;
}

ZYRREADER_API int32_t ZyrReader_ImagePostProcessImage(bool, const ZyrImage*, uint32_t, uint32_t, bool, uint32_t,
                                                      int32_t, uint32_t, float, ZyrReaderSettings*,
                                                      ZyrLocateSettings*, ZyrLocation*, ZyrImageCallback, void*,
                                                      int32_t, const char*, ZyrProcessSettings*) {
    return ZYR_ERR_NOT_INITIALISED;
}

ZYRREADER_API int32_t ZyrReader_ImagePostProcessImageTwoSided(bool, const ZyrImage*, uint32_t, uint32_t, bool,
                                                              uint32_t, int32_t, uint32_t, float, ZyrReaderSettings*,
                                                              ZyrLocateSettings*, ZyrLocation*, ZyrLocation*,
                                                              ZyrImageCallback, void*, int32_t, const char*,
                                                              ZyrProcessSettings*, ZyrSideSettings*) {
    return ZYR_ERR_NOT_INITIALISED;
}

ZYRREADER_API int32_t ZyrReader_DocumentProcessingComplete(void) { return ZYR_ERR_NOT_INITIALISED; }

} // extern "C"
