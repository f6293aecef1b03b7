// One JSON document: {"rows": [...], "statistics": {...}, "expectations": [...]}. Each row has
// the list's five columns (times as numbers of milliseconds), the image's path relative to its
// input ("relative", what runs are matched by) and its place in the whole input list ("index",
// what a merge of shards orders by), the bytes in base64 with their length, the symbology and
// ECI of the last symbol, every symbol on its own with its corners and, when results are
// compared, "expected": the verdict.
// Rows are written as they come.
#pragma once

#include "ResultWriter.h"

#include <ostream>
#include <string>
#include <utility>
#include <vector>

class JsonWriter : public ResultWriter {
public:
    explicit JsonWriter(std::ostream& out) : m_out(out) {}

    void Begin() override;
    void Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) override;
    void End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) override;

    // A member written after the statistics, such as a baseline comparison; json is its value.
    void AddSection(const std::string& name, const std::string& json) { m_sections.emplace_back(name, json); }

private:
    std::ostream& m_out;
    bool m_first = true;
    std::vector<std::pair<std::string, std::string>> m_sections;
};
