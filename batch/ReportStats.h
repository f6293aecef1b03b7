// The figures of a run's report: detection per folder and plug-in, the spread of decode times,
// which images one plug-in reads and another does not, and the images worth a look (plug-ins
// disagree, or the baseline read them otherwise).
#pragma once

#include "Baseline.h"
#include "RunRow.h"

#include <string>
#include <vector>

struct ReportStats {
    struct Folder {
        std::string name;         // the relative path's folder; "." for the top
        std::vector<long> images; // per plug-in: rows
        std::vector<long> read;   // per plug-in: rows with bytes
    };
    struct Spread {
        long count = 0;
        double min = 0, q1 = 0, median = 0, q3 = 0, max = 0; // milliseconds
    };
    struct Image {
        std::vector<const RunRow*> rows; // one per plug-in that ran on it, in list order
        std::string reason;              // "plug-ins disagree", "baseline: lost", ...
    };

    std::vector<std::string> plugins;        // in list order
    std::vector<Folder> folders;             // sorted by name
    std::vector<Spread> times;               // per plug-in
    std::vector<long> readImages;            // per plug-in
    std::vector<std::vector<long>> onlyRead; // [a][b]: images a reads and b does not
    std::vector<Image> flagged;              // in run order
    long imageCount = 0;

    static ReportStats Compute(const std::vector<RunRow>& rows, const Baseline::Comparison* comparison);
    size_t PluginIndex(const std::string& plugin) const;
};
