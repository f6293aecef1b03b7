// Small helpers shared by the reader tests: temporary folders, files, environment variables and
// a recording error handler.
#ifndef GLYPHOR_TESTS_READER_TEST_SUPPORT_H
#define GLYPHOR_TESTS_READER_TEST_SUPPORT_H

#include <cstdint>
#include <string>
#include <vector>

namespace support {

// A fresh folder under the system's temporary folder, removed with everything in it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

void writeText(const std::string& path, const std::string& text);
std::string readText(const std::string& path);
std::vector<std::string> readLines(const std::string& path);

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

#endif
