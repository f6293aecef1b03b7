// --shard K/N: which of the inputs one of N machines decodes. An image belongs to a part by a
// hash of its path relative to its input, so every machine that lists the same inputs picks
// the same images, whatever the order of the listing.
#pragma once

#include "ImageInput.h"

#include <string>
#include <vector>

struct ShardSelection {
    int index = 0; // 1..count; 0: no sharding
    int count = 0;

    // "K/N" with 1 <= K <= N <= kMaxCount.
    static bool Parse(const std::string& text, ShardSelection& spec);
    bool Active() const { return count > 0; }
    bool Owns(const std::string& relative) const;
    std::vector<ImageInput> Select(const std::vector<ImageInput>& inputs) const;

    static constexpr int kMaxCount = 100000;
};
