// Internal logging of the reader library: every area writes through here.
#ifndef ZYR_CORE_LOG_H
#define ZYR_CORE_LOG_H

#include <cstdint>

namespace zyr {

// Message levels: a line is written when its level is at or below the configured level.
enum LogLevel : int32_t { LogError = 1, LogInfo = 2, LogDetail = 3 };

// One process-wide log file, shared by all threads. Categories are the ZYR_LOG_* bits.
class Log {
public:
    // Opens (appends to) the file; replaces an open one. Returns a ZyrReaderError code.
    static int32_t open(int32_t level, uint32_t mask, const char* fileName);
    static void close();

    // Cheap test to skip building a message nobody reads.
    static bool enabled(uint32_t category, int32_t level);

    // printf-style; the line gets a time stamp and the category name.
    static void write(uint32_t category, int32_t level, const char* format, ...)
        __attribute__((format(printf, 3, 4)));
};

} // namespace zyr

#endif
