// The reader session of one program run: the process-wide reader settings record, the
// scanner-connected flag, the library's error handler, and the start-up and shut-down orders.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <functional>
#include <string>

class ReaderSession {
public:
    // Shows a library error text to the user; called on whatever thread the library reports from.
    using MessageSink = std::function<void(const std::string& text)>;

    // The one reader settings record of the process, passed by address to the library.
    static ZyrReaderSettings& Settings();

    // True until the library reports error 9 (no reader) through the error handler.
    static bool ScannerConnected();
    static void SetScannerConnected(bool connected);

    static void SetMessageSink(MessageSink sink);

    // Registered with the library: error 9 clears the scanner-connected flag silently, any other
    // code goes to the message sink with the library's own text.
    static void ErrorHandler(int32_t code, const char* message);

    // Registers the handler, loads the settings (from "./ZyrReader.ini" without a reader), starts
    // logging, the camera (with a reader) and image processing.
    static void Startup();

    // Shuts down each service the library reports initialised, then frees the library's caches.
    static void Shutdown();

    // Back to the state of a fresh process (flag set, settings zeroed, no sink); for tests.
    static void Reset();
};
