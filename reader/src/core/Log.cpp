#include "core/Log.h"

#include "ZyrReaderLowLevelAPI.h"

#include <atomic>
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <mutex>

namespace zyr {
namespace {

std::mutex fileMutex;
std::FILE* file = nullptr; // guarded by fileMutex
// Read without the lock on every call site, so logging that is off costs two loads.
std::atomic<int32_t> currentLevel{0};
std::atomic<uint32_t> currentMask{0};

const char* categoryName(uint32_t category) {
    switch (category) {
    case ZYR_LOG_SETTINGS:
        return "settings";
    case ZYR_LOG_PLUGINS:
        return "plugins";
    case ZYR_LOG_DECODE:
        return "decode";
    case ZYR_LOG_IMAGES:
        return "images";
    case ZYR_LOG_CAMERA:
        return "camera";
    case ZYR_LOG_PARSE:
        return "parse";
    default:
        return "general";
    }
}

void writeLine(std::FILE* out, const char* category, const char* message) {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto millis =
        std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm local{};
    localtime_r(&seconds, &local);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S", &local);
    std::fprintf(out, "%s.%03d [%s] %s\n", stamp, static_cast<int>(millis), category, message);
    std::fflush(out);
}

} // namespace

int32_t Log::open(int32_t level, uint32_t mask, const char* fileName) {
    if (fileName == nullptr || fileName[0] == '\0')
        return ZYR_ERR_BAD_ARGUMENT;
    std::FILE* opened = std::fopen(fileName, "a");
    if (opened == nullptr)
        return ZYR_ERR_FILE;
    std::lock_guard<std::mutex> lock(fileMutex);
    if (file != nullptr)
        std::fclose(file);
    file = opened;
    currentLevel = level;
    currentMask = mask;
    // Always written, whatever the filter: marks where each session's lines begin.
    char message[96];
    std::snprintf(message, sizeof message, "logging started, level %d, mask 0x%X", level, mask);
    writeLine(file, "general", message);
    return ZYR_OK;
}

void Log::close() {
    std::lock_guard<std::mutex> lock(fileMutex);
    currentLevel = 0;
    currentMask = 0;
    if (file != nullptr)
        std::fclose(file);
    file = nullptr;
}

bool Log::enabled(uint32_t category, int32_t level) {
    const int32_t configured = currentLevel.load(std::memory_order_relaxed);
    return configured > 0 && level <= configured &&
           (category & currentMask.load(std::memory_order_relaxed)) != 0;
}

void Log::write(uint32_t category, int32_t level, const char* format, ...) {
    if (!enabled(category, level))
        return;
    char message[2048];
    va_list args;
    va_start(args, format);
    std::vsnprintf(message, sizeof message, format, args);
    va_end(args);

    std::lock_guard<std::mutex> lock(fileMutex);
    if (file != nullptr)
        writeLine(file, categoryName(category), message);
}

} // namespace zyr
