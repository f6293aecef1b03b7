// Runs this program again with other arguments, for the checks that load the plug-in into a
// process (its exports, its threads): a plug-in that crashes or hangs there costs that child only.
#pragma once

#include <string>
#include <vector>

namespace plugincheck {

struct ChildOutcome {
    bool finished = false; // ended by itself within the time allowed
    int exitCode = -1;     // when it exited
    int signal = 0;        // when a signal ended it
    std::string output;    // its standard output

    // "exit code 3", "signal 6 (Aborted)", "no answer within 120 s"
    std::string describe(int timeoutSeconds) const;
};

ChildOutcome runSelf(const std::vector<std::string>& arguments, int timeoutSeconds);

} // namespace plugincheck
