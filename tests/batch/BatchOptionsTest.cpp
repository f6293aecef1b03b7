// The command line: what each option sets, and the one-line errors for what it refuses.
#include "BatchOptions.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

using Args = std::vector<std::string>;
using Outcome = BatchOptions::ParseOutcome;

TEST(BatchOptions, AcceptedCommandLines) {
    struct Case {
        const char* name;
        Args args;
        std::function<void(const BatchOptions&)> check;
    };
    const Case cases[] = {
        {"defaults",
         {"img"},
         [](const BatchOptions& o) {
             EXPECT_EQ(o.inputs, Args{"img"});
             EXPECT_TRUE(o.settingsFile.empty());
             EXPECT_TRUE(o.plugins.empty());
             EXPECT_EQ(o.format, OutputFormat::Table);
             EXPECT_TRUE(o.outputFolder.empty());
             EXPECT_FALSE(o.expect);
             EXPECT_EQ(o.jobs, 1);
             EXPECT_EQ(o.progress, ProgressMode::Auto);
         }},
        {"long options with separate values",
         {"--settings", "r.ini", "--plugins", "ZXing,Pdf417", "--format", "csv", "--output-dir", "out",
          "--jobs", "2", "--expect", "a", "b"},
         [](const BatchOptions& o) {
             EXPECT_EQ(o.settingsFile, "r.ini");
             EXPECT_EQ(o.plugins, (Args{"ZXing", "Pdf417"}));
             EXPECT_EQ(o.format, OutputFormat::Csv);
             EXPECT_EQ(o.outputFolder, "out");
             EXPECT_EQ(o.jobs, 2);
             EXPECT_TRUE(o.expect);
             EXPECT_EQ(o.inputs, (Args{"a", "b"}));
         }},
        {"short options and inline values",
         {"-s", "r.ini", "-p", "QRCode", "-f", "json", "-o", "d", "-j", "64", "-e", "--plugins=ZBar", "x"},
         [](const BatchOptions& o) {
             EXPECT_EQ(o.plugins, (Args{"QRCode", "ZBar"}));
             EXPECT_EQ(o.format, OutputFormat::Json);
             EXPECT_EQ(o.jobs, 64);
             EXPECT_TRUE(o.expect);
         }},
        {"empty names between commas are dropped",
         {"-p", ",A,,B,", "x"},
         [](const BatchOptions& o) {
             EXPECT_EQ(o.plugins, (Args{"A", "B"}));
         }},
        {"the last progress option wins",
         {"--no-progress", "--progress", "x"},
         [](const BatchOptions& o) { EXPECT_EQ(o.progress, ProgressMode::On); }},
        {"-- ends the options",
         {"--", "-p", "--help"},
         [](const BatchOptions& o) {
             EXPECT_EQ(o.inputs, (Args{"-p", "--help"}));
             EXPECT_TRUE(o.plugins.empty());
         }},
        {"a lone dash is a path", {"-"}, [](const BatchOptions& o) { EXPECT_EQ(o.inputs, Args{"-"}); }},
    };
    for (const Case& c : cases) {
        BatchOptions options;
        std::string error;
        ASSERT_EQ(BatchOptions::Parse(c.args, options, error), Outcome::Run) << c.name << ": " << error;
        c.check(options);
    }
}

TEST(BatchOptions, RefusedCommandLines) {
    struct Case {
        Args args;
        const char* error;
    };
    const Case cases[] = {
        {{}, "no image files or folders given (see --help)"},
        {{"-p", "ZXing"}, "no image files or folders given (see --help)"},
        {{"--bogus", "x"}, "unknown option '--bogus' (see --help)"},
        {{"-x", "x"}, "unknown option '-x' (see --help)"},
        {{"--bogus=1", "x"}, "unknown option '--bogus' (see --help)"},
        {{"x", "--jobs"}, "option '--jobs' needs a value"},
        {{"--jobs", "0", "x"}, "option '--jobs' needs a whole number from 1 to 64, not '0'"},
        {{"--jobs", "65", "x"}, "option '--jobs' needs a whole number from 1 to 64, not '65'"},
        {{"--jobs", "-1", "x"}, "option '--jobs' needs a whole number from 1 to 64, not '-1'"},
        {{"--jobs", "2x", "x"}, "option '--jobs' needs a whole number from 1 to 64, not '2x'"},
        {{"--jobs", "99999999999999999999", "x"},
         "option '--jobs' needs a whole number from 1 to 64, not '99999999999999999999'"},
        {{"--format", "xml", "x"}, "unknown format 'xml' (use table, csv or json)"},
        {{"--plugins", ",", "x"}, "option '--plugins' needs at least one plug-in name"},
        {{"--settings=", "x"}, "option '--settings' needs a file name"},
        {{"--output-dir", "", "x"}, "option '--output-dir' needs a folder name"},
        {{"--expect=yes", "x"}, "option '--expect' takes no value"},
        {{"--shard", "0/2", "x"}, "option '--shard' needs K/N with 1 <= K <= N, not '0/2'"},
        {{"--shard", "3/2", "x"}, "option '--shard' needs K/N with 1 <= K <= N, not '3/2'"},
        {{"--shard", "1/", "x"}, "option '--shard' needs K/N with 1 <= K <= N, not '1/'"},
        {{"--shard", "-1/2", "x"}, "option '--shard' needs K/N with 1 <= K <= N, not '-1/2'"},
        {{"--baseline=", "x"}, "option '--baseline' needs a file name"},
    };
    for (const Case& c : cases) {
        BatchOptions options;
        std::string error;
        EXPECT_EQ(BatchOptions::Parse(c.args, options, error), Outcome::Error) << c.error;
        EXPECT_EQ(error, c.error);
    }
}

TEST(BatchOptions, HelpWinsOverMissingPathsAndDocumentsEveryOption) {
    BatchOptions options;
    std::string error;
    EXPECT_EQ(BatchOptions::Parse({"--help"}, options, error), Outcome::Help);
    EXPECT_EQ(BatchOptions::Parse({"-p", "A", "-h"}, options, error), Outcome::Help);
    const std::string help = BatchOptions::HelpText();
    for (const char* option :
         {"--settings", "--plugins", "--format", "--output-dir", "--expect", "--jobs", "--progress",
          "--no-progress", "--baseline", "--shard", "merge", "--help", "Exit status"}) {
        EXPECT_NE(help.find(option), std::string::npos) << option;
    }
}

} // namespace
