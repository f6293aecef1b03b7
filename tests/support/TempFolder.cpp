#include "TempFolder.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

TempFolder::TempFolder() {
    std::string pattern = (fs::temp_directory_path() / "glyphor-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) != nullptr)
        path_ = fs::canonical(pattern).string();
}

TempFolder::~TempFolder() {
    if (path_.empty())
        return;
    std::error_code ignored;
    // A test may have taken its own rights away to provoke a write error.
    fs::permissions(path_, fs::perms::owner_all, fs::perm_options::add, ignored);
    fs::remove_all(path_, ignored);
}

std::string TempFolder::write(const std::string& name, const std::string& bytes) const {
    writeFile(file(name), bytes);
    return file(name);
}

void writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> readLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}
