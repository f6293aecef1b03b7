// Compares a run with an earlier run of the same files: per image and plug-in what is newly read,
// lost or reads other bytes, and how the decode time moved; a summary per plug-in.
#pragma once

#include "RunRow.h"

#include <string>
#include <vector>

class Baseline {
public:
    enum class Change { Same, NewlyRead, Lost, Changed, OnlyBefore, OnlyNow };

    struct Entry {
        const RunRow* before = nullptr; // null: only in this run
        const RunRow* now = nullptr;    // null: only in the baseline
        Change change = Change::Same;
    };

    struct PluginSummary {
        std::string plugin;
        long matched = 0, same = 0, newlyRead = 0, lost = 0, changed = 0, onlyBefore = 0, onlyNow = 0;
        double timeBeforeMs = 0, timeNowMs = 0; // over the matched rows
    };

    struct Comparison {
        std::vector<Entry> entries; // in this run's order, then the baseline's rows not in it
        std::vector<PluginSummary> plugins;
        bool Regressed() const; // something that was read is lost or reads other bytes
    };

    // Rows are matched by relative path and plug-in; a path given twice matches in order.
    static Comparison Compare(const std::vector<RunRow>& before, const std::vector<RunRow>& now);

    // Whether the baseline holds any of these relative paths; a baseline of other files is an error.
    static bool SharesFiles(const std::vector<RunRow>& before, const std::vector<std::string>& relatives);

    static const char* Name(Change change);
    // The changed rows and the summary table, as lines.
    static std::vector<std::string> TextLines(const Comparison& comparison);
    // {"plugins": [...], "rows": [...]}: every row with its change and both times.
    static std::string Json(const Comparison& comparison);
};
