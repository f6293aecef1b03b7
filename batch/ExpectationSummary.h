// Counts of the verdicts per plug-in, in the order the plug-ins first appear.
#pragma once

#include "ExpectationCheck.h"

#include <string>
#include <vector>

class ExpectationSummary {
public:
    struct Counts {
        std::string plugin;
        int passed = 0;
        int misread = 0;
        int missed = 0;
        int unchecked = 0;
    };

    void Add(const std::string& plugin, Verdict verdict);
    const std::vector<Counts>& PerPlugin() const { return m_counts; }

    // The summary as aligned lines: a heading, a column header and one line per plug-in.
    std::vector<std::string> TableLines() const;

private:
    std::vector<Counts> m_counts;
};
