#include "core/IniReader.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zyr {
namespace {

std::string trim(const std::string& s) {
    const auto first = s.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return {};
    const auto last = s.find_last_not_of(" \t\r\n");
    return s.substr(first, last - first + 1);
}

std::string lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return s;
}

} // namespace

bool IniReader::load(const std::string& path) {
    values_.clear();
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return false;
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return false;
    std::ostringstream text;
    text << file.rdbuf();
    if (file.bad())
        return false;
    parse(text.str());
    return true;
}

void IniReader::parse(const std::string& text) {
    values_.clear();
    std::istringstream lines(text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? text.substr(3) : text);
    std::string section;
    std::string line;
    while (std::getline(lines, line)) {
        line = trim(line);
        if (line.empty() || line[0] == ';' || line[0] == '#')
            continue;
        if (line[0] == '[') {
            const auto close = line.find(']');
            section = lower(trim(line.substr(1, close == std::string::npos ? std::string::npos : close - 1)));
            continue;
        }
        const auto equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        const std::string key = lower(trim(line.substr(0, equals)));
        std::string value = trim(line.substr(equals + 1));
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
            value = value.substr(1, value.size() - 2);
        if (!key.empty())
            values_[{section, key}] = value;
    }
}

const std::string* IniReader::find(const std::string& section, const std::string& key) const {
    const auto it = values_.find({lower(section), lower(key)});
    return it == values_.end() ? nullptr : &it->second;
}

} // namespace zyr
