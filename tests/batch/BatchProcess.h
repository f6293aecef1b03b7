// Runs the glyphor-batch executable for the command tests and takes its output apart.
#pragma once

#include <QJsonArray>
#include <QJsonObject>

#include <map>
#include <string>
#include <vector>

namespace batchtest {

struct RunResult {
    int status = -1; // exit status; -1 when it did not exit normally
    std::string out;
    std::string err;
};

// Runs glyphor-batch with args in cwd (the test's own folder when empty), without a reader.
RunResult RunBatch(const std::vector<std::string>& args, const std::string& cwd = "");

std::vector<std::string> Lines(const std::string& text); // split at "\n", no final empty line
std::string Base64Decode(const std::string& text);       // standard alphabet with padding
// RFC 4180 records (CR LF or LF ends, quoted fields with doubled quotes and line ends inside).
std::vector<std::vector<std::string>> ParseCsv(const std::string& text);

// A JSON run's document (a failed check when it does not parse) and its rows without the times,
// which differ from run to run.
QJsonObject ParseJson(const std::string& text);
QJsonArray TimelessRows(const std::string& json);
std::string Str(const QJsonValue& value);

std::string SamplesDir();
std::string SamplePath(const std::string& fileName);
std::string PluginDir();

} // namespace batchtest
