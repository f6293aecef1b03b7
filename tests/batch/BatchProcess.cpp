#include "BatchProcess.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QProcess>

#include <sstream>

namespace batchtest {

RunResult RunBatch(const std::vector<std::string>& args, const std::string& cwd) {
    QProcess process;
    QStringList arguments;
    for (const std::string& arg : args)
        arguments << QString::fromStdString(arg);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("ZYRREADER_DEVICE");
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    if (!cwd.empty())
        process.setWorkingDirectory(QString::fromStdString(cwd));
    process.start(GLYPHOR_BATCH_EXE, arguments);
    RunResult result;
    if (process.waitForFinished(-1) && process.exitStatus() == QProcess::NormalExit)
        result.status = process.exitCode();
    result.out = process.readAllStandardOutput().toStdString();
    result.err = process.readAllStandardError().toStdString();
    return result;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::string Base64Decode(const std::string& text) {
    const auto decoded = QByteArray::fromBase64Encoding(QByteArray::fromStdString(text),
                                                        QByteArray::AbortOnBase64DecodingErrors);
    EXPECT_TRUE(decoded) << "not base64: " << text;
    return (*decoded).toStdString();
}

std::vector<std::vector<std::string>> ParseCsv(const std::string& text) {
    std::vector<std::vector<std::string>> records(1, std::vector<std::string>(1));
    bool quoted = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted && c == '"' && i + 1 < text.size() && text[i + 1] == '"')
            records.back().back() += text[i++];
        else if (c == '"')
            quoted = !quoted;
        else if (quoted || (c != ',' && c != '\r' && c != '\n'))
            records.back().back() += c;
        else if (c == ',')
            records.back().emplace_back();
        else if (c == '\n') // the CR of a CR LF outside quotes is dropped
            records.emplace_back(1);
    }
    if (records.back() == std::vector<std::string>(1))
        records.pop_back();
    return records;
}

QJsonObject ParseJson(const std::string& text) {
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(text), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString() << "\n" << text;
    return document.object();
}

QJsonArray TimelessRows(const std::string& json) {
    QJsonArray rows;
    for (const QJsonValue& value : ParseJson(json)["rows"].toArray()) {
        QJsonObject row = value.toObject();
        row.remove("time");
        row.remove("imgProcess");
        rows.append(row);
    }
    return rows;
}

std::string Str(const QJsonValue& value) { return value.toString().toStdString(); }

std::string SamplesDir() { return GLYPHOR_SAMPLES_DIR; }
std::string SamplePath(const std::string& fileName) { return SamplesDir() + "/" + fileName; }
std::string PluginDir() { return GLYPHOR_PLUGIN_DIR; }

} // namespace batchtest
