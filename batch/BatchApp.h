// glyphor-batch: decodes image files with the reader's plug-ins through the test session logic
// and writes the rows, the statistics and optionally an expected-result summary and result files.
#pragma once

#include <ostream>
#include <string>
#include <vector>

class BatchApp {
public:
    struct Terminals {
        bool out = false; // standard output is a terminal
        bool err = false; // standard error is a terminal (where the progress line goes)
    };

    // args: the command line after the program name. Returns the exit status.
    static int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                   Terminals terminals);

    static constexpr int kExitOk = 0;
    static constexpr int kExitUnreadable = 1; // an input or an output file failed
    static constexpr int kExitUsage = 2;      // bad command line or set-up
    static constexpr const char* kPrefix = "glyphor-batch: ";
};
