// What a run is reviewed with after its rows: the comparison with a baseline run and the HTML
// report.
#pragma once

#include "Baseline.h"
#include "BatchRow.h"
#include "ImageInput.h"
#include "RunRow.h"

#include <optional>
#include <string>
#include <vector>

class RunReview {
public:
    // Reads the baseline (when a path is given) and checks the report folder can be made; false
    // with error set. Nothing is written yet.
    bool Open(const std::string& baselinePath, const std::string& reportFolder, std::string& error);
    bool Wanted() const { return m_hasBaseline || !m_reportFolder.empty(); }
    bool HasBaseline() const { return m_hasBaseline; }

    // A baseline that holds none of these images is one of other files.
    bool CheckInputs(const std::vector<std::string>& relatives, std::string& error) const;

    // Compares the run's rows with the baseline; nothing without one.
    std::optional<Baseline::Comparison> Compare(const std::vector<RunRow>& rows) const;
    // Writes the report when one was asked for; false with error set when it could not be.
    bool WriteReport(const std::vector<RunRow>& rows, const Baseline::Comparison* comparison,
                     std::string& error) const;

    static RunRow MakeRow(const ImageInput& input, const BatchRow& row);

    static constexpr int kExitRegressed = 3; // something that was read is lost or reads other bytes

private:
    BatchRun m_baseline;
    bool m_hasBaseline = false;
    std::string m_baselinePath;
    std::string m_reportFolder;
};
