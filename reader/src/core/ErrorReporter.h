// The client's error handler. Only errors a user must see go here (no reader at settings load,
// device failures during a capture); ordinary failures are returned and logged instead.
#ifndef ZYR_CORE_ERROR_REPORTER_H
#define ZYR_CORE_ERROR_REPORTER_H

#include "ZyrReaderLowLevelAPI.h"

namespace zyr {

class ErrorReporter {
public:
    static void setHandler(ZyrReaderErrorHandler handler);

    // Calls the handler (if any) with code and message; message null = the code's standard text.
    static void report(int32_t code, const char* message = nullptr);

    // Never null; "Unknown error" for codes outside the table.
    static const char* text(int32_t code);
};

} // namespace zyr

#endif
