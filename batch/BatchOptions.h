// The command line of glyphor-batch and its help text.
#pragma once

#include "ShardSelection.h"

#include <string>
#include <vector>

enum class OutputFormat { Table, Csv, Json };
enum class ProgressMode { Auto, On, Off };

struct BatchOptions {
    enum class ParseOutcome { Run, Help, Error };

    std::string settingsFile;         // empty: the reader's own settings, else ./ZyrReader.ini
    std::vector<std::string> plugins; // display names; empty: the saved selection, else all
    std::vector<std::string> inputs;  // image files and folders, in the order given
    OutputFormat format = OutputFormat::Table;
    std::string outputFolder; // empty: no result files are written
    bool expect = false;      // compare with the .txt file beside each image
    int jobs = 1;             // images decoded at the same time
    ProgressMode progress = ProgressMode::Auto;
    std::string baseline; // an earlier JSON run to compare with; empty: none
    std::string report;   // folder for the HTML report; empty: none
    ShardSelection shard;      // the part of the inputs to decode; inactive: all

    // Fills options from the arguments (without the program name). On Error, error holds one
    // line without the program name.
    static ParseOutcome Parse(const std::vector<std::string>& args, BatchOptions& options,
                              std::string& error);

    static const char* HelpText();

    static constexpr int kMaxJobs = 64;
};
