// Writes the rows of a batch run in one output format, then the statistics and, when results
// were compared with expected texts, the summary.
#pragma once

#include "BatchRow.h"
#include "DecodeStatistics.h"
#include "ExpectationSummary.h"
#include "ImageInput.h"

#include <optional>
#include <string>
#include <vector>

class ResultWriter {
public:
    virtual ~ResultWriter() = default;

    virtual void Begin() = 0;
    // Rows arrive in input order, and for one image in plug-in list order. verdict: how the row
    // compares with the expected text; none when results are not compared.
    virtual void Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) = 0;
    // summary: null when results were not compared.
    virtual void End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) = 0;

    // The four statistics lines, labelled as in the window.
    static std::vector<std::string> StatisticsLines(const DecodeStatistics::Values& statistics);
};
