// Small helpers shared by the reader tests: temporary folders, files, environment variables and
// a recording error handler.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "TempFolder.h"

namespace support {

// Sets (or, with null, removes) an environment variable and restores it afterwards.
class ScopedEnvironment {
public:
    ScopedEnvironment(const char* name, const char* value);
    ~ScopedEnvironment();
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;

private:
    std::string name_;
    bool hadValue_;
    std::string oldValue_;
};

// Installs an error handler that records every call; removes it afterwards.
class RecordingErrorHandler {
public:
    RecordingErrorHandler();
    ~RecordingErrorHandler();
    RecordingErrorHandler(const RecordingErrorHandler&) = delete;
    RecordingErrorHandler& operator=(const RecordingErrorHandler&) = delete;

    const std::vector<int32_t>& codes() const;
    const std::vector<std::string>& messages() const;
};

// Folder of the loaded reader library and of the test program, each ending in "/".
std::string readerLibraryPath();
std::string folderOf(const std::string& path);
std::string executableFolder();

} // namespace support

