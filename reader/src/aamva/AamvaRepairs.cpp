#include "AamvaRepairs.h"

#include <cstdarg>
#include <cstdio>

namespace zyr {

void AamvaRepairs::note(const char* format, ...) {
    char line[160];
    va_list args;
    va_start(args, format);
    std::vsnprintf(line, sizeof line, format, args);
    va_end(args);
    lines_.emplace_back(line);
}

} // namespace zyr
