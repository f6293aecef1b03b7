#include "BatchApp.h"

#include "BatchOptions.h"
#include "BatchReaderStart.h"
#include "BatchRunner.h"
#include "CsvWriter.h"
#include "DecodeLane.h"
#include "ExpectationSummary.h"
#include "ImageInputs.h"
#include "JsonWriter.h"
#include "MergeCommand.h"
#include "ProgressLine.h"
#include "ReaderSession.h"
#include "ResultFileWriter.h"
#include "RunReview.h"
#include "SessionPaths.h"
#include "TableWriter.h"

#include <algorithm>
#include <iostream>
#include <memory>
#include <mutex>

namespace {

std::mutex g_reportMutex;

// Library errors arrive on whatever thread the library reports from.
void ReportLibraryMessage(const std::string& text) {
    std::lock_guard<std::mutex> lock(g_reportMutex);
    std::cerr << BatchApp::kPrefix << "reader: " << text << '\n';
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

std::vector<std::string> AllNames(const PluginCatalogue& plugins) {
    std::vector<std::string> names;
    for (const PluginEntry& entry : plugins.Entries()) {
        names.push_back(entry.name);
    }
    return names;
}

std::unique_ptr<ResultWriter> MakeWriter(const BatchOptions& options, const std::vector<ImageInput>& inputs,
                                         const std::vector<std::string>& plugins, std::ostream& out,
                                         std::ostream& err) {
    switch (options.format) {
    case OutputFormat::Csv:
        return std::make_unique<CsvWriter>(out, err, options.expect);
    case OutputFormat::Json:
        return std::make_unique<JsonWriter>(out);
    case OutputFormat::Table:
        break;
    }
    return std::make_unique<TableWriter>(out, inputs, plugins);
}

DecodeStatistics::Values TotalStatistics(const std::vector<std::unique_ptr<DecodeLane>>& lanes) {
    DecodeStatistics total;
    for (const auto& lane : lanes) {
        const DecodeStatistics& s = lane->Statistics();
        total.symbolsCount += s.symbolsCount.load();
        total.decodeCount += s.decodeCount.load();
        total.imageCount += s.imageCount.load();
        total.totalDecodeMs += s.totalDecodeMs.load();
        total.totalImageProcessMs += s.totalImageProcessMs.load();
    }
    return total.Read();
}

// Everything between the reader's start and its shut-down; the lanes end before the library.
int RunSession(const BatchOptions& options, const std::vector<ImageInput>& inputs, bool inputFailed,
               const RunReview& review, std::ostream& out, std::ostream& err, BatchApp::Terminals terminals) {
    std::vector<std::unique_ptr<DecodeLane>> lanes;
    lanes.push_back(std::make_unique<DecodeLane>());
    DecodeLane& first = *lanes.front();
    first.LoadPlugins();
    if (first.Plugins().Entries().empty()) {
        const ZyrReaderSettings& reader = ReaderSession::Settings();
        std::string folder =
            SessionPaths::FolderWithSeparator(reader.PluginFolder, sizeof reader.PluginFolder);
        err << BatchApp::kPrefix << "no decoder plug-ins could be loaded from '"
            << (folder.empty() ? "." : folder) << "'\n";
        return BatchApp::kExitUsage;
    }
    std::vector<std::string> names = options.plugins;
    if (names.empty()) {
        first.LoadSavedSettings();
        names = first.SelectedNames();
    }
    if (names.empty()) {
        names = AllNames(first.Plugins());
    }
    std::string unknown;
    if (!first.Select(names, unknown)) {
        err << BatchApp::kPrefix << "unknown plug-in '" << unknown
            << "' (loaded: " << Joined(AllNames(first.Plugins())) << ")\n";
        return BatchApp::kExitUsage;
    }
    const size_t laneCount =
        std::max<size_t>(1, std::min<size_t>(static_cast<size_t>(options.jobs), inputs.size()));
    while (lanes.size() < laneCount) {
        auto lane = std::make_unique<DecodeLane>();
        lane->LoadPlugins();
        lane->Select(names, unknown);
        lanes.push_back(std::move(lane));
    }

    std::unique_ptr<ResultWriter> writer = MakeWriter(options, inputs, first.SelectedNames(), out, err);
    std::vector<RunRow> runRows;
    std::unique_ptr<ResultFileWriter> files;
    if (!options.outputFolder.empty()) {
        files = std::make_unique<ResultFileWriter>(options.outputFolder);
    }
    const bool progressWanted =
        options.progress == ProgressMode::On || (options.progress == ProgressMode::Auto && terminals.err);
    ProgressLine progress(err, progressWanted, inputs.size());
    ExpectationSummary summary;
    bool failed = inputFailed;
    size_t done = 0;

    writer->Begin();
    std::vector<DecodeLane*> lanePointers;
    for (const auto& lane : lanes) {
        lanePointers.push_back(lane.get());
    }
    BatchRunner::Run(lanePointers, inputs, [&](ImageOutcome&& outcome) {
        // The progress line shares the terminal with the error lines, and maybe with the rows.
        const bool speaks = !outcome.error.empty() || !outcome.messages.empty();
        if (speaks || terminals.out) {
            progress.Clear();
        }
        for (const std::string& message : outcome.messages) {
            err << BatchApp::kPrefix << message << '\n';
        }
        if (!outcome.error.empty()) {
            err << BatchApp::kPrefix << "cannot read image '" << outcome.input.path << "': " << outcome.error
                << '\n';
            failed = true;
        }
        std::optional<std::string> expected;
        if (options.expect) {
            expected = ExpectationCheck::ReadExpected(outcome.input.path);
        }
        for (const BatchRow& row : outcome.rows) {
            std::optional<Verdict> verdict;
            if (options.expect) {
                verdict = ExpectationCheck::Judge(expected, row.outcome().symbols);
                summary.Add(row.row.pluginName, *verdict);
            }
            writer->Row(outcome.input, row, verdict);
            if (review.Wanted()) {
                runRows.push_back(RunReview::MakeRow(outcome.input, row));
            }
            if (files) {
                for (const std::string& error : files->Write(outcome.input, row)) {
                    progress.Clear();
                    err << BatchApp::kPrefix << error << '\n';
                    failed = true;
                }
            }
        }
        progress.Update(++done, outcome.input.display);
    });
    progress.Clear();
    const std::optional<Baseline::Comparison> comparison = review.Compare(runRows);
    if (auto* json = dynamic_cast<JsonWriter*>(writer.get())) {
        if (options.shard.Active()) {
            json->AddSection("shard", "{\"index\": " + std::to_string(options.shard.index) +
                                          ", \"count\": " + std::to_string(options.shard.count) + "}");
        }
        if (comparison) {
            json->AddSection("baseline", Baseline::Json(*comparison));
        }
    }
    writer->End(TotalStatistics(lanes), options.expect ? &summary : nullptr);
    if (comparison && options.format != OutputFormat::Json) {
        // Beside the statistics: after the table, on standard error with CSV.
        std::ostream& to = options.format == OutputFormat::Table ? out : err;
        to << '\n';
        for (const std::string& line : Baseline::TextLines(*comparison)) {
            to << line << '\n';
        }
        to.flush();
    }
    std::string error;
    if (!review.WriteReport(runRows, comparison ? &*comparison : nullptr, error)) {
        err << BatchApp::kPrefix << error << '\n';
        failed = true;
    }
    if (comparison && comparison->Regressed()) {
        return RunReview::kExitRegressed;
    }
    return failed ? BatchApp::kExitUnreadable : BatchApp::kExitOk;
}

} // namespace

int BatchApp::Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                  Terminals terminals) {
    if (!args.empty() && args.front() == "merge") {
        return MergeCommand::Run(std::vector<std::string>(args.begin() + 1, args.end()), out, err);
    }
    BatchOptions options;
    std::string error;
    switch (BatchOptions::Parse(args, options, error)) {
    case BatchOptions::ParseOutcome::Help:
        out << BatchOptions::HelpText();
        return kExitOk;
    case BatchOptions::ParseOutcome::Error:
        err << kPrefix << error << '\n';
        return kExitUsage;
    case BatchOptions::ParseOutcome::Run:
        break;
    }
    RunReview review;
    if (!review.Open(options.baseline, options.report, error)) {
        err << kPrefix << error << '\n';
        return kExitUsage;
    }
    std::vector<std::string> inputErrors;
    std::vector<ImageInput> inputs = ImageInputs::Expand(options.inputs, inputErrors);
    for (const std::string& inputError : inputErrors) {
        err << kPrefix << inputError << '\n';
    }
    std::vector<std::string> relatives;
    for (const ImageInput& input : inputs) {
        relatives.push_back(input.outputName);
    }
    if (!review.CheckInputs(relatives, error)) {
        err << kPrefix << error << '\n';
        return kExitUsage;
    }
    inputs = options.shard.Select(inputs);
    int status = kExitUsage;
    if (BatchReaderStart::Start(options.settingsFile, &ReportLibraryMessage, error)) {
        status = RunSession(options, inputs, !inputErrors.empty(), review, out, err, terminals);
    } else {
        err << kPrefix << error << '\n';
    }
    BatchReaderStart::Stop();
    return status;
}
