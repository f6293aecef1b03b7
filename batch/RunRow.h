// One row of a batch run as the run's JSON keeps it: enough to compare runs, merge shards and draw
// reports, whether the row was just decoded or read back from a file.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

struct RunSymbol {
    std::string symbology;
    std::array<std::pair<double, double>, 4> corners{}; // top-left, top-right, bottom-right, bottom-left
};

struct RunRow {
    size_t index = 0;     // the image's place in the whole input list (before sharding)
    std::string relative; // path relative to the input it came from: what runs are matched by
    std::string file;     // as the rows show it
    std::string path;     // as opened
    std::string plugin;
    double timeMs = 0;
    double imageProcessMs = 0;
    std::string status; // "ok", "crashed", "timed out", "failed"
    size_t length = 0;  // bytes read
    std::string data;   // the bytes in base64, compared as they are
    std::vector<RunSymbol> symbols;
    std::string json; // the row's JSON text (rows read from a file)

    bool Read() const { return length > 0; }
};

struct RunExpectation {
    std::string plugin;
    long passed = 0, misread = 0, missed = 0, unchecked = 0;
};

struct BatchRun {
    std::vector<RunRow> rows;
    double averageTimeMs = 0;
    long imageCount = 0;
    long symbolsCount = 0;
    double averageImageProcessMs = 0;
    std::vector<RunExpectation> expectations; // empty when results were not compared
    int shardIndex = 0;                       // 1..shardCount; 0: not a shard
    int shardCount = 0;
};
