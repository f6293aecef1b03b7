// Reads a run that glyphor-batch wrote with --format json (or merged) back into values.
#pragma once

#include "RunRow.h"

#include <string>

class RunFile {
public:
    // False with error set ("FILE: reason") when the file cannot be read or is not such a run.
    static bool Read(const std::string& path, BatchRun& run, std::string& error);
    // The same from the document's text; name is what errors call it.
    static bool Parse(const std::string& text, const std::string& name, BatchRun& run, std::string& error);
};
