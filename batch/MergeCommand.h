// glyphor-batch merge: joins the JSON runs of shards into one run, optionally compared with a
// baseline and reported, without decoding anything.
#pragma once

#include <ostream>
#include <string>
#include <vector>

class MergeCommand {
public:
    // args: what follows "merge". Returns the exit status.
    static int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

    static const char* HelpText();
};
