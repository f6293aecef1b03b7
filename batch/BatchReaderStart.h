// The reader session of a headless run: the window's error handler and settings rules, without
// the camera and image processing, which nothing here uses.
#pragma once

#include <string>

class BatchReaderStart {
public:
    // Registers the error handler, whose messages go to report, then loads the reader settings:
    // from settingsFile when it is given, else the connected reader's own, and without a reader
    // "./ZyrReader.ini" (as the window does). Starts logging to "Glyphor.log" when the settings
    // ask for it. False, with error set, when the given settings file cannot be read.
    static bool Start(const std::string& settingsFile, void (*report)(const std::string& text),
                      std::string& error);

    // Ends whatever the library reports running and frees its objects.
    static void Stop();
};
