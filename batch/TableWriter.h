// Aligned columns, one row per line, as the window's results list shows them.
#pragma once

#include "ResultWriter.h"

#include <ostream>

class TableWriter : public ResultWriter {
public:
    // The widths of the first two columns are fixed before the first row, from every file and
    // plug-in name of the run, so rows can be written as they come.
    TableWriter(std::ostream& out, const std::vector<ImageInput>& inputs,
                const std::vector<std::string>& plugins);

    void Begin() override;
    void Row(const ImageInput& input, const BatchRow& row, std::optional<Verdict> verdict) override;
    void End(const DecodeStatistics::Values& statistics, const ExpectationSummary* summary) override;

private:
    void WriteLine(const std::string& file, const std::string& plugin, const std::string& imageProcess,
                   const std::string& time, const std::string& results);

    std::ostream& m_out;
    size_t m_fileWidth = 0;
    size_t m_pluginWidth = 0;
};
