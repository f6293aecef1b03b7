#include "RunReview.h"

#include "DecodeStatus.h"
#include "ReportPage.h"
#include "RunFile.h"
#include "SymbologyNames.h"
#include "TextEncoding.h"

#include <chrono>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

double Ms(std::chrono::nanoseconds time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

} // namespace

bool RunReview::Open(const std::string& baselinePath, const std::string& reportFolder, std::string& error) {
    if (!reportFolder.empty()) {
        std::error_code code;
        if (fs::exists(reportFolder, code) && !fs::is_directory(reportFolder, code)) {
            error = "report folder '" + reportFolder + "' is a file";
            return false;
        }
        m_reportFolder = reportFolder;
    }
    if (!baselinePath.empty()) {
        if (!RunFile::Read(baselinePath, m_baseline, error)) {
            error = "baseline " + error;
            return false;
        }
        m_hasBaseline = true;
        m_baselinePath = baselinePath;
    }
    return true;
}

bool RunReview::CheckInputs(const std::vector<std::string>& relatives, std::string& error) const {
    if (!m_hasBaseline || relatives.empty() || Baseline::SharesFiles(m_baseline.rows, relatives)) {
        return true;
    }
    error = "baseline '" + m_baselinePath + "' is a run of other files (none of these images is in it)";
    return false;
}

RunRow RunReview::MakeRow(const ImageInput& input, const BatchRow& row) {
    RunRow out;
    const DecodeOutcome& outcome = row.outcome();
    out.index = input.index;
    out.relative = input.outputName;
    out.file = input.display;
    out.path = input.path;
    out.plugin = row.row.pluginName;
    out.timeMs = Ms(outcome.decode);
    out.imageProcessMs = Ms(outcome.imageProcess);
    out.status = DecodeStatus::Name(outcome);
    out.length = row.data.size();
    out.data = TextEncoding::Base64(row.data);
    for (const DecodedSymbol& symbol : outcome.symbols) {
        RunSymbol s;
        s.symbology = SymbologyNames::Name(symbol.symbology);
        for (size_t i = 0; i < s.corners.size(); ++i) {
            s.corners[i] = {static_cast<double>(symbol.corners[i].X),
                            static_cast<double>(symbol.corners[i].Y)};
        }
        out.symbols.push_back(std::move(s));
    }
    return out;
}

std::optional<Baseline::Comparison> RunReview::Compare(const std::vector<RunRow>& rows) const {
    if (!m_hasBaseline) {
        return std::nullopt;
    }
    return Baseline::Compare(m_baseline.rows, rows);
}

bool RunReview::WriteReport(const std::vector<RunRow>& rows, const Baseline::Comparison* comparison,
                            std::string& error) const {
    if (m_reportFolder.empty()) {
        return true;
    }
    ReportPage::Options options;
    options.chartLibrary = ReportPage::ChartLibrary();
    options.comparison = comparison;
    return ReportPage::Write(m_reportFolder,
                             ReportPage::Html(ReportStats::Compute(rows, comparison), options), error);
}
