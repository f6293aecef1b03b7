#include "BatchProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace batchtest {

RunResult RunBatch(const std::vector<std::string>& args, const std::string& cwd) {
    // Test programs may run side by side: each run gets files of its own.
    static int runs = 0;
    const fs::path folder =
        fs::path(testing::TempDir()) / ("batch-run-" + std::to_string(getpid()) + "-" + std::to_string(++runs));
    fs::create_directories(folder);
    const std::string outPath = (folder / "stdout").string();
    const std::string errPath = (folder / "stderr").string();
    std::vector<std::string> argv{GLYPHOR_BATCH_EXE};
    argv.insert(argv.end(), args.begin(), args.end());
    std::vector<char*> pointers;
    for (std::string& arg : argv) {
        pointers.push_back(arg.data());
    }
    pointers.push_back(nullptr);

    const pid_t pid = fork();
    if (pid == 0) {
        const int out = open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int err = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        const int in = open("/dev/null", O_RDONLY);
        if (out < 0 || err < 0 || in < 0 || dup2(out, 1) < 0 || dup2(err, 2) < 0 || dup2(in, 0) < 0 ||
            (!cwd.empty() && chdir(cwd.c_str()) != 0)) {
            _exit(126);
        }
        unsetenv("ZYRREADER_DEVICE");
        execv(pointers[0], pointers.data());
        _exit(127);
    }
    RunResult result;
    int status = 0;
    if (pid > 0 && waitpid(pid, &status, 0) == pid && WIFEXITED(status)) {
        result.status = WEXITSTATUS(status);
    }
    result.out = ReadFile(outPath);
    result.err = ReadFile(errPath);
    fs::remove_all(folder);
    return result;
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string Base64Decode(const std::string& text) {
    const std::string alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string bytes;
    uint32_t bits = 0;
    int count = 0;
    for (const char c : text) {
        if (c == '=') {
            break;
        }
        const size_t value = alphabet.find(c);
        if (value == std::string::npos) {
            ADD_FAILURE() << "not base64: " << text;
            return bytes;
        }
        bits = bits << 6 | uint32_t(value);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += char((bits >> count) & 0xFF);
        }
    }
    return bytes;
}

std::vector<std::vector<std::string>> ParseCsv(const std::string& text) {
    std::vector<std::vector<std::string>> records;
    std::vector<std::string> record;
    std::string field;
    bool quoted = false;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            if (c == '"' && i + 1 < text.size() && text[i + 1] == '"') {
                field += '"';
                ++i;
            } else if (c == '"') {
                quoted = false;
            } else {
                field += c;
            }
        } else if (c == '"') {
            quoted = true;
        } else if (c == ',') {
            record.push_back(field);
            field.clear();
        } else if (c == '\r' || c == '\n') {
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                ++i;
            }
            record.push_back(field);
            field.clear();
            records.push_back(record);
            record.clear();
        } else {
            field += c;
        }
    }
    if (!field.empty() || !record.empty()) {
        record.push_back(field);
        records.push_back(record);
    }
    return records;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

void WriteFile(const std::string& path, const std::string& bytes) {
    fs::create_directories(fs::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string SamplesDir() {
    return GLYPHOR_SAMPLES_DIR;
}
std::string SamplePath(const std::string& fileName) {
    return SamplesDir() + "/" + fileName;
}
std::string PluginDir() {
    return GLYPHOR_PLUGIN_DIR;
}

std::vector<std::string> SampleImageNames() {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(SamplesDir())) {
        const std::string extension = entry.path().extension().string();
        if (entry.is_regular_file() && (extension == ".png" || extension == ".jpg" || extension == ".bmp")) {
            names.push_back(entry.path().lexically_relative(SamplesDir()).generic_string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace batchtest
