#include "IniFile.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <sstream>

namespace kvdecode {
namespace {

std::string lower(std::string s) {
    std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return char(std::tolower(c)); });
    return s;
}

std::string trim(const std::string& s) {
    const char* space = " \t\r\n";
    auto first = s.find_first_not_of(space);
    if (first == std::string::npos)
        return {};
    return s.substr(first, s.find_last_not_of(space) - first + 1);
}

} // namespace

bool IniFile::load(const std::string& path, std::string& error) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot read settings file " + path;
        return false;
    }
    std::ostringstream text;
    text << in.rdbuf();
    return parse(text.str(), error);
}

bool IniFile::parse(const std::string& text, std::string& error) {
    sections_.clear();
    std::istringstream in(text);
    std::string line;
    std::string current;
    sections_[current];
    for (int number = 1; std::getline(in, line); ++number) {
        line = trim(line);
        if (line.empty() || line[0] == ';' || line[0] == '#')
            continue;
        if (line[0] == '[') {
            if (line.back() != ']' || line.size() < 3) {
                error = "malformed section header on line " + std::to_string(number);
                return false;
            }
            current = lower(trim(line.substr(1, line.size() - 2)));
            sections_[current];
            continue;
        }
        auto equals = line.find('=');
        if (equals == std::string::npos || equals == 0) {
            error = "line " + std::to_string(number) + " is not Key=Value";
            return false;
        }
        std::string key = trim(line.substr(0, equals));
        Section& section = sections_[current];
        std::string lowerKey = lower(key);
        if (!section.values.count(lowerKey))
            section.order.push_back(key);
        section.values[lowerKey] = trim(line.substr(equals + 1));
    }
    return true;
}

bool IniFile::hasSection(const std::string& section) const {
    return sections_.count(lower(section)) != 0;
}

const std::string* IniFile::find(const std::string& section, const std::string& key) const {
    auto s = sections_.find(lower(section));
    if (s == sections_.end())
        return nullptr;
    auto v = s->second.values.find(lower(key));
    return v == s->second.values.end() ? nullptr : &v->second;
}

std::vector<std::string> IniFile::keys(const std::string& section) const {
    auto s = sections_.find(lower(section));
    return s == sections_.end() ? std::vector<std::string>{} : s->second.order;
}

} // namespace kvdecode
