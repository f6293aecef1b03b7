#include "MergeCommand.h"

#include "BatchApp.h"
#include "RunFile.h"
#include "RunMerge.h"
#include "RunReview.h"

#include <cstdio>
#include <fstream>

namespace {

struct MergeOptions {
    std::string output;
    std::string baseline;
    std::string report;
    std::vector<std::string> files;
    bool help = false;
};

bool Parse(const std::vector<std::string>& args, MergeOptions& options, std::string& error) {
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        std::string* target = arg == "-o" || arg == "--output" ? &options.output
                              : arg == "--baseline"            ? &options.baseline
                                                               : nullptr;
        if (target) {
            if (i + 1 >= args.size() || args[i + 1].empty()) {
                error = "option '" + arg + "' needs a value";
                return false;
            }
            *target = args[++i];
        } else if (arg == "-h" || arg == "--help") {
            options.help = true;
        } else if (arg.size() > 1 && arg[0] == '-') {
            error = "unknown option '" + arg + "' for merge (see merge --help)";
            return false;
        } else {
            options.files.push_back(arg);
        }
    }
    if (!options.help && options.files.empty()) {
        error = "merge needs at least one JSON run (see merge --help)";
        return false;
    }
    return true;
}

// Writes beside the target and renames, so a failed write leaves an earlier file as it was.
bool WriteFile(const std::string& path, const std::string& text, std::string& error) {
    const std::string temporary = path + ".part";
    {
        std::ofstream file(temporary, std::ios::binary | std::ios::trunc);
        file << text;
        file.close();
        if (!file) {
            std::remove(temporary.c_str());
            error = "cannot write '" + path + "'";
            return false;
        }
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        std::remove(temporary.c_str());
        error = "cannot write '" + path + "'";
        return false;
    }
    return true;
}

} // namespace

int MergeCommand::Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    MergeOptions options;
    std::string error;
    if (!Parse(args, options, error)) {
        err << BatchApp::kPrefix << error << '\n';
        return BatchApp::kExitUsage;
    }
    if (options.help) {
        out << HelpText();
        return BatchApp::kExitOk;
    }
    RunReview review;
    if (!review.Open(options.baseline, options.report, error)) {
        err << BatchApp::kPrefix << error << '\n';
        return BatchApp::kExitUsage;
    }
    std::vector<RunMerge::Part> parts(options.files.size());
    for (size_t i = 0; i < options.files.size(); ++i) {
        parts[i].first = options.files[i];
        if (!RunFile::Read(options.files[i], parts[i].second, error)) {
            err << BatchApp::kPrefix << error << '\n';
            return BatchApp::kExitUsage;
        }
    }
    BatchRun merged;
    std::vector<std::string> warnings;
    if (!RunMerge::Merge(parts, merged, warnings, error)) {
        err << BatchApp::kPrefix << error << '\n';
        return BatchApp::kExitUsage;
    }
    for (const std::string& warning : warnings) {
        err << BatchApp::kPrefix << warning << '\n';
    }
    std::vector<std::string> relatives;
    relatives.reserve(merged.rows.size());
    for (const RunRow& row : merged.rows) {
        relatives.push_back(row.relative);
    }
    if (!review.CheckInputs(relatives, error)) {
        err << BatchApp::kPrefix << error << '\n';
        return BatchApp::kExitUsage;
    }
    const std::optional<Baseline::Comparison> comparison = review.Compare(merged.rows);
    std::vector<std::pair<std::string, std::string>> sections;
    if (comparison) {
        sections.emplace_back("baseline", Baseline::Json(*comparison));
        for (const std::string& line : Baseline::TextLines(*comparison)) {
            err << line << '\n';
        }
    }
    const std::string document = RunMerge::Json(merged, sections);
    if (options.output.empty()) {
        out << document;
        out.flush();
    } else if (!WriteFile(options.output, document, error)) {
        err << BatchApp::kPrefix << error << '\n';
        return BatchApp::kExitUnreadable;
    }
    if (!review.WriteReport(merged.rows, comparison ? &*comparison : nullptr, error)) {
        err << BatchApp::kPrefix << error << '\n';
        return BatchApp::kExitUnreadable;
    }
    return comparison && comparison->Regressed() ? RunReview::kExitRegressed : BatchApp::kExitOk;
}

const char* MergeCommand::HelpText() {
    return R"(Usage: glyphor-batch merge [OPTION]... RUN.json...
Joins JSON runs (the outputs of --shard K/N runs) into one run, in the order one run over all
the inputs has, and writes it as JSON. Runs that share an image and plug-in, or shards of
different splits, are refused.

Options:
  -o, --output FILE     write the merged run to FILE (default: standard output)
      --baseline RUN    compare the merged run with an earlier JSON run (summary on standard error)
      --report DIR      write an HTML report of the merged run to DIR/index.html
  -h, --help            show this help and exit

Exit status: 0 merged, 1 the output could not be written, 2 a run could not be read or the runs
overlap, 3 something the baseline read is lost or reads other bytes.
)";
}
