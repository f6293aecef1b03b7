// Test double of the reader library: a shared library exporting every ZyrReader_* call of
// ZyrReaderLowLevelAPI.h. Each call is recorded with its arguments; answers come from a script
// that a test sets up (return codes, errors pushed through the error handler, settings records,
// plug-ins with their required images, image settings and decoded symbols, capture images).
//
// Tests link zyrreader_double instead of the real library and drive it through this header.
// Reset() at the start of every test.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace readerdouble {

// One recorded call. Arguments are formatted as text: booleans "true"/"false", integers in
// decimal, floats with %g, strings in double quotes, pointers through Ptr(), callbacks as
// "callback" or "null".
struct Call {
    std::string name;
    std::vector<std::string> args;
    std::string Text() const; // name(arg, arg, ...)
};

// Text a pointer argument is recorded as, so a test can compare with the address it passed.
std::string Ptr(const void* p);

// A symbol delivered through the decode callback.
struct SymbolScript {
    int32_t symbology = ZYR_SYM_QRCODE;
    int32_t orientation = 0;
    int32_t dataType = ZYR_DATA_ASCII;
    std::string data; // DataLength = data.size(); the double adds the trailing zero byte
    int32_t eci = ZYR_ECI_NONE;
    std::array<ZyrPoint, 4> corners{};
};

// A plug-in the double pretends to load. Matched by the file name part of the plug-in path.
struct PluginScript {
    PluginScript() = default;
    PluginScript(std::string file) : fileName(std::move(file)) {} // NOLINT: implicit by design

    std::string fileName;   // e.g. "KVDECODE_A.so"
    int32_t loadResult = 0; // non-zero: the load fails with this code
    uint64_t handle = 0;    // 0: the double assigns one (1000, 1001, ...)
    std::string requiredImages;
    std::vector<ZyrImageSettings> imageSettings;
    // The n-th decode call of this plug-in delivers decodes[n]; past the end it delivers the last
    // entry again (none when the list is empty).
    std::vector<std::vector<SymbolScript>> decodes;
    int32_t decodeResult = 0;
};

// An image the double hands out (a library object, freed by ZyrReader_DestroyCachedObject).
struct ImageScript {
    int32_t width = 0;
    int32_t height = 0;
    int32_t pixelFormat = ZYR_PIXEL_GREY8;
    std::vector<uint8_t> pixels; // stride = width * bytes per pixel
};
ImageScript MakeImage(int32_t width, int32_t height, int32_t pixelFormat, uint8_t fill);

// Images and answers of the capture calls.
struct CaptureScript {
    std::vector<ImageScript> snapshots;      // n-th snapshot call delivers snapshots[n] (last repeats)
    std::vector<ImageScript> processed;      // n-th one-sided post-processing delivers processed[n]
    std::vector<ImageScript> sides;          // two-sided post-processing delivers sides[0], sides[1]
    std::vector<uint8_t> presentAfterLocate; // *documentPresent after the n-th locate (last repeats)
    uint8_t detectionFlag = 0;               // written by detection and location
};

// Services the Is*Initialised calls answer for.
enum class Service { Camera, ImageProcessing, Signal, Parsing };

// --- Script -----------------------------------------------------------------------------------
void Reset(); // forget calls, script, handler, objects and service states

void SetResult(const std::string& function, int32_t code);   // every later call returns code
void QueueResult(const std::string& function, int32_t code); // the next call returns code (FIFO)
// The next call of function reports (code, message) through the registered error handler.
void QueueError(const std::string& function, int32_t code, const std::string& message);
// Runs hook inside every later call of function, on the calling thread, after it is recorded.
void SetHook(const std::string& function, std::function<void()> hook);

// No reader: ZyrReader_LL_LoadSettings reports error 9 through the handler and returns 9.
void SetNoReader();
void SetReaderSettings(const ZyrReaderSettings& settings); // filled by ZyrReader_LL_LoadSettings
void SetIniSettings(const ZyrReaderSettings& settings);    // filled by ..._LoadSettingsFromIniFile
void SetInitialised(Service service, bool initialised);

void AddPlugin(const PluginScript& plugin);
void SetCapture(const CaptureScript& capture);
// What ZyrReader_ParseAAMVA hands out (a copy, with its own copy of items). Without a record a
// parse of non-empty bytes answers ZYR_ERR_NOT_AAMVA.
void SetParseRecord(const AAMVARecord& record, const std::vector<AAMVADataItem>& items);

// --- Observation ------------------------------------------------------------------------------
std::vector<Call> Calls();
std::vector<std::string> CallTexts();
std::vector<std::string> CallNames();
std::vector<Call> CallsNamed(const std::string& function);
// The pixel format of the image of every plug-in decode call, in order (-1: no image).
std::vector<int32_t> DecodedPixelFormats();
void ClearCalls();

int LiveObjects(); // symbols and images handed out and not yet destroyed

} // namespace readerdouble
