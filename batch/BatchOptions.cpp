#include "BatchOptions.h"

#include <cerrno>
#include <cstdlib>

namespace {

enum class Key {
    Settings,
    Plugins,
    Format,
    OutputDir,
    Expect,
    Jobs,
    Progress,
    NoProgress,
    Baseline,
    Report,
    Shard,
    Help
};

struct OptionSpec {
    const char* shortName; // null: none
    const char* longName;
    Key key;
    bool takesValue;
};

const OptionSpec kOptions[] = {
    {"-s", "--settings", Key::Settings, true},     {"-p", "--plugins", Key::Plugins, true},
    {"-f", "--format", Key::Format, true},         {"-o", "--output-dir", Key::OutputDir, true},
    {"-e", "--expect", Key::Expect, false},        {"-j", "--jobs", Key::Jobs, true},
    {nullptr, "--progress", Key::Progress, false}, {nullptr, "--no-progress", Key::NoProgress, false},
    {nullptr, "--baseline", Key::Baseline, true},  {nullptr, "--report", Key::Report, true},
    {nullptr, "--shard", Key::Shard, true},        {"-h", "--help", Key::Help, false},
};

const OptionSpec* FindOption(const std::string& name) {
    for (const OptionSpec& spec : kOptions) {
        if (name == spec.longName || (spec.shortName && name == spec.shortName)) {
            return &spec;
        }
    }
    return nullptr;
}

bool ParseJobs(const std::string& text, int& jobs) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) {
        return false;
    }
    errno = 0;
    const long value = std::strtol(text.c_str(), nullptr, 10);
    if (errno != 0 || value < 1 || value > BatchOptions::kMaxJobs) {
        return false;
    }
    jobs = static_cast<int>(value);
    return true;
}

// Applies one option; false with error set when its value is not acceptable.
bool Apply(const OptionSpec& spec, const std::string& value, BatchOptions& options, std::string& error) {
    switch (spec.key) {
    case Key::Settings:
        if (value.empty()) {
            error = "option '--settings' needs a file name";
            return false;
        }
        options.settingsFile = value;
        return true;
    case Key::Plugins: {
        size_t added = 0;
        size_t start = 0;
        while (start <= value.size()) {
            const size_t comma = value.find(',', start);
            const size_t end = comma == std::string::npos ? value.size() : comma;
            if (end > start) {
                options.plugins.push_back(value.substr(start, end - start));
                ++added;
            }
            start = end + 1;
        }
        if (added == 0) {
            error = "option '--plugins' needs at least one plug-in name";
            return false;
        }
        return true;
    }
    case Key::Format:
        if (value == "table") {
            options.format = OutputFormat::Table;
        } else if (value == "csv") {
            options.format = OutputFormat::Csv;
        } else if (value == "json") {
            options.format = OutputFormat::Json;
        } else {
            error = "unknown format '" + value + "' (use table, csv or json)";
            return false;
        }
        return true;
    case Key::OutputDir:
        if (value.empty()) {
            error = "option '--output-dir' needs a folder name";
            return false;
        }
        options.outputFolder = value;
        return true;
    case Key::Expect:
        options.expect = true;
        return true;
    case Key::Jobs:
        if (!ParseJobs(value, options.jobs)) {
            error = "option '--jobs' needs a whole number from 1 to " +
                    std::to_string(BatchOptions::kMaxJobs) + ", not '" + value + "'";
            return false;
        }
        return true;
    case Key::Progress:
        options.progress = ProgressMode::On;
        return true;
    case Key::NoProgress:
        options.progress = ProgressMode::Off;
        return true;
    case Key::Baseline:
        if (value.empty()) {
            error = "option '--baseline' needs a file name";
            return false;
        }
        options.baseline = value;
        return true;
    case Key::Report:
        if (value.empty()) {
            error = "option '--report' needs a folder name";
            return false;
        }
        options.report = value;
        return true;
    case Key::Shard:
        if (!ShardSelection::Parse(value, options.shard)) {
            error = "option '--shard' needs K/N with 1 <= K <= N, not '" + value + "'";
            return false;
        }
        return true;
    case Key::Help:
        return true;
    }
    return true;
}

} // namespace

BatchOptions::ParseOutcome BatchOptions::Parse(const std::vector<std::string>& args, BatchOptions& options,
                                               std::string& error) {
    options = BatchOptions();
    bool help = false;
    bool onlyPaths = false;
    for (size_t i = 0; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (onlyPaths || arg.size() < 2 || arg[0] != '-') {
            options.inputs.push_back(arg);
            continue;
        }
        if (arg == "--") {
            onlyPaths = true;
            continue;
        }
        std::string name = arg;
        std::string value;
        bool inlineValue = false;
        const size_t equals = arg.find('=');
        if (arg.compare(0, 2, "--") == 0 && equals != std::string::npos) {
            name = arg.substr(0, equals);
            value = arg.substr(equals + 1);
            inlineValue = true;
        }
        const OptionSpec* spec = FindOption(name);
        if (!spec) {
            error = "unknown option '" + name + "' (see --help)";
            return ParseOutcome::Error;
        }
        if (!spec->takesValue && inlineValue) {
            error = "option '" + std::string(spec->longName) + "' takes no value";
            return ParseOutcome::Error;
        }
        if (spec->takesValue && !inlineValue) {
            if (i + 1 >= args.size()) {
                error = "option '" + std::string(spec->longName) + "' needs a value";
                return ParseOutcome::Error;
            }
            value = args[++i];
        }
        if (spec->key == Key::Help) {
            help = true;
        }
        if (!Apply(*spec, value, options, error)) {
            return ParseOutcome::Error;
        }
    }
    if (help) {
        return ParseOutcome::Help;
    }
    if (options.inputs.empty()) {
        error = "no image files or folders given (see --help)";
        return ParseOutcome::Error;
    }
    return ParseOutcome::Run;
}

const char* BatchOptions::HelpText() {
    return R"(Usage: glyphor-batch [OPTION]... PATH...
Decodes image files with the reader's decoder plug-ins, without a window, and prints one row per
image and plug-in (File name, Plugin, Img Process, Time, Results), then the statistics.

PATH is a PNG, JPEG or BMP file, or a folder searched recursively for *.png, *.jpg, *.jpeg and
*.bmp files (sorted by path). Images are reported in the order given.

Options:
  -s, --settings FILE   reader settings file; default: the connected reader's own settings,
                        and without a reader ./ZyrReader.ini (as the window does)
  -p, --plugins NAMES   plug-ins to run, by display name, separated by commas (ZXing,Pdf417);
                        default: the selection saved in Glyphor.ini, else every plug-in
  -f, --format FORMAT   table (default: aligned columns), csv or json; CSV and JSON carry each
                        result's decoded bytes exactly (base64), its symbology and ECI, and
                        its text as UTF-8
  -o, --output-dir DIR  write each result's bytes to DIR/<image>.<plug-in>.bin and, when they
                        are AAMVA card data, the text and XML exports .aamva.txt and .aamva.xml
  -e, --expect          compare each result with the expected-text file beside its image (same
                        base name, .txt: the symbols' bytes, one symbol per line) and print a
                        summary per plug-in of passes, misreads and misses
  -j, --jobs N          decode N images at the same time (1 to 64, default 1); the rows keep
                        the input order
      --progress        show a progress line on standard error
      --no-progress     never show it (default: shown on a terminal when a run takes a while)
      --baseline RUN    compare with RUN, an earlier --format json run of the same files,
                        matched by path relative to the inputs: per image and plug-in what is
                        newly read, lost or reads other bytes, and the time change, then a
                        summary per plug-in (after the statistics; in JSON as "baseline")
      --report DIR      write an HTML report to DIR/index.html: detection per folder and
                        plug-in, decode times, which images one plug-in reads and another does
                        not, and thumbnails with the symbols outlined where plug-ins disagree
                        or the baseline read otherwise (one file; opens offline)
      --shard K/N       decode only the K-th of N parts of the images (split by a hash of each
                        path relative to its input); "glyphor-batch merge" joins the JSON runs
  -h, --help            show this help and exit

Output: the table and its statistics go to standard output. With csv, standard output holds
only the CSV (a header line, then one line per row) and the statistics and expected-result
summary go to standard error; json writes one document with "rows", "statistics" and, with
--expect, "expectations".

Exit status: 0 when every input was read, 1 when an image or folder could not be read or a
result file could not be written, 2 for a usage or set-up error (bad option, unknown plug-in,
unreadable settings file, no plug-ins, a baseline that is not a JSON run of these files), 3 when
something the baseline read is lost or reads other bytes.

       glyphor-batch merge [-o FILE] [--baseline RUN] [--report DIR] RUN.json...   (see merge --help)
)";
}
