// Joins the JSON runs of shards (or of any runs over different files) into one run, in the order
// one run over all the inputs would have had.
#pragma once

#include "RunRow.h"

#include <string>
#include <utility>
#include <vector>

class RunMerge {
public:
    using Part = std::pair<std::string, BatchRun>; // file name, run

    // False with error set when parts overlap (an image and plug-in in two parts, a shard given
    // twice) or are shards of different splits. warnings: shards missing from a complete split.
    static bool Merge(std::vector<Part>& parts, BatchRun& merged, std::vector<std::string>& warnings,
                      std::string& error);

    // The merged run as glyphor-batch's JSON document; rows keep their text. sections: members
    // after the statistics (name, JSON value).
    static std::string Json(const BatchRun& run,
                            const std::vector<std::pair<std::string, std::string>>& sections = {});
};
