// One image to decode and the names it is reported and saved under.
#pragma once

#include <cstddef>
#include <string>

struct ImageInput {
    std::string path;       // as opened
    std::string display;    // file argument as given; folder entry relative to its folder
    std::string outputName; // relative name under an output folder: the file name for a file
                            // argument, the path within the folder for a folder entry
    size_t index = 0;       // place in the whole list, which a shard keeps for the merge
};
