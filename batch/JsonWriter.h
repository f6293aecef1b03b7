// One JSON document: {"rows": [...], "statistics": {...}, "expectations": [...]}. Each row has
// the list's five columns (times as numbers of milliseconds), the bytes in base64 with their
// length, the symbology and ECI of the last symbol, every symbol on its own with its corners and, when results are compared, "expected": the verdict.
// Rows are written as they come.
#pragma once

#include "ResultWriter.h"

#include <ostream>

class JsonWriter : public ResultWriter {
public:
    explicit JsonWriter(std::ostream& out) : m_out(out) {}

    void Begin() override;
    void Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) override;
    void End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) override;

private:
    std::ostream& m_out;
    bool m_first = true;
};
