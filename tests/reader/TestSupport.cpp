#include "TestSupport.h"

#include "ZyrReaderLowLevelAPI.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <stdexcept>

namespace support {

namespace fs = std::filesystem;

ScopedEnvironment::ScopedEnvironment(const char* name, const char* value) : name_(name) {
    const char* old = std::getenv(name);
    hadValue_ = old != nullptr;
    if (hadValue_)
        oldValue_ = old;
    if (value != nullptr)
        setenv(name, value, 1);
    else
        unsetenv(name);
}

ScopedEnvironment::~ScopedEnvironment() {
    if (hadValue_)
        setenv(name_.c_str(), oldValue_.c_str(), 1);
    else
        unsetenv(name_.c_str());
}

namespace {

std::mutex recordMutex;
std::vector<int32_t> recordedCodes;
std::vector<std::string> recordedMessages;

void record(int32_t code, const char* message) {
    std::lock_guard<std::mutex> lock(recordMutex);
    recordedCodes.push_back(code);
    recordedMessages.emplace_back(message != nullptr ? message : "(null)");
}

} // namespace

RecordingErrorHandler::RecordingErrorHandler() {
    recordedCodes.clear();
    recordedMessages.clear();
    ZyrReader_SetErrorHandler(record, 0);
}

RecordingErrorHandler::~RecordingErrorHandler() {
    ZyrReader_SetErrorHandler(nullptr, 0);
}

const std::vector<int32_t>& RecordingErrorHandler::codes() const {
    return recordedCodes;
}
const std::vector<std::string>& RecordingErrorHandler::messages() const {
    return recordedMessages;
}

std::string readerLibraryPath() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&ZyrReader_ErrorText), &info) == 0 || info.dli_fname == nullptr)
        return {};
    return fs::canonical(info.dli_fname).string();
}

std::string folderOf(const std::string& path) {
    return fs::path(path).parent_path().string() + "/";
}

std::string executableFolder() {
    return folderOf(fs::read_symlink("/proc/self/exe").string());
}

} // namespace support
