// The command line: what each option sets, and the one-line errors for what it refuses.
#include "BatchOptions.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Args = std::vector<std::string>;
using Outcome = BatchOptions::ParseOutcome;

// Every field of the options in one line, so that a case shows all it sets.
std::string Describe(const BatchOptions& o) {
    auto join = [](const Args& items) {
        std::string out;
        for (const std::string& item : items)
            out += (out.empty() ? "" : ",") + item;
        return out;
    };
    const char* formats[] = {"table", "csv", "json"};
    const char* progress[] = {"auto", "on", "off"};
    return "in=" + join(o.inputs) + " s=" + o.settingsFile + " p=" + join(o.plugins) + " f=" +
           formats[int(o.format)] + " o=" + o.outputFolder + " e=" + std::to_string(o.expect) +
           " j=" + std::to_string(o.jobs) + " progress=" + progress[int(o.progress)] + " shard=" +
           std::to_string(o.shard.index) + "/" + std::to_string(o.shard.count) + " b=" + o.baseline;
}

TEST(BatchOptions, AcceptedCommandLines) {
    const std::pair<Args, std::string> cases[] = {
        {{"img"}, "in=img s= p= f=table o= e=0 j=1 progress=auto shard=0/0 b="},
        {{"--settings", "r.ini", "--plugins", "ZXing,Pdf417", "--format", "csv", "--output-dir", "out", "--jobs", "2",
          "--expect", "--shard", "2/3", "--baseline", "b.json", "a", "b"},
         "in=a,b s=r.ini p=ZXing,Pdf417 f=csv o=out e=1 j=2 progress=auto shard=2/3 b=b.json"},
        {{"-s", "r.ini", "-p", "QRCode", "-f", "json", "-o", "d", "-j", "64", "-e", "--plugins=ZBar", "x"},
         "in=x s=r.ini p=QRCode,ZBar f=json o=d e=1 j=64 progress=auto shard=0/0 b="},
        {{"-p", ",A,,B,", "x"}, "in=x s= p=A,B f=table o= e=0 j=1 progress=auto shard=0/0 b="},
        {{"--no-progress", "--progress", "x"}, "in=x s= p= f=table o= e=0 j=1 progress=on shard=0/0 b="},
        {{"-", "--", "-p", "--help"}, "in=-,-p,--help s= p= f=table o= e=0 j=1 progress=auto shard=0/0 b="}};
    for (const auto& [args, described] : cases) {
        BatchOptions options;
        std::string error;
        ASSERT_EQ(BatchOptions::Parse(args, options, error), Outcome::Run) << described << ": " << error;
        EXPECT_EQ(Describe(options), described);
    }
    BatchOptions options;
    std::string error;
    EXPECT_EQ(BatchOptions::Parse({"-p", "A", "-h"}, options, error), Outcome::Help) << "help wins";
}

TEST(BatchOptions, RefusedCommandLines) {
    struct Case { Args args; const char* error; };
    const Case cases[] = {
        {{}, "no image files or folders given (see --help)"},
        {{"--bogus", "x"}, "unknown option '--bogus' (see --help)"},
        {{"--bogus=1", "x"}, "unknown option '--bogus' (see --help)"},
        {{"x", "--jobs"}, "option '--jobs' needs a value"},
        {{"--jobs", "0", "x"}, "option '--jobs' needs a whole number from 1 to 64, not '0'"},
        {{"--jobs", "65", "x"}, "option '--jobs' needs a whole number from 1 to 64, not '65'"},
        {{"--format", "xml", "x"}, "unknown format 'xml' (use table, csv or json)"},
        {{"--plugins", ",", "x"}, "option '--plugins' needs at least one plug-in name"},
        {{"--settings=", "x"}, "option '--settings' needs a file name"},
        {{"--output-dir", "", "x"}, "option '--output-dir' needs a folder name"},
        {{"--expect=yes", "x"}, "option '--expect' takes no value"},
        {{"--shard", "0/2", "x"}, "option '--shard' needs K/N with 1 <= K <= N, not '0/2'"},
        {{"--baseline=", "x"}, "option '--baseline' needs a file name"},
    };
    for (const Case& c : cases) {
        BatchOptions options;
        std::string error;
        EXPECT_EQ(BatchOptions::Parse(c.args, options, error), Outcome::Error) << c.error;
        EXPECT_EQ(error, c.error);
    }
}

} // namespace
