#pragma once

#include <map>
#include <string>
#include <vector>

namespace kvdecode {

// The plug-ins' settings file: "[Section]" lines and "Key=Value" lines; ';' or '#' starts a
// comment line. Section and key names compare without regard to case, values keep theirs.
class IniFile {
public:
    // Reads path; false (and error set) when the file cannot be read or a line is malformed.
    bool load(const std::string& path, std::string& error);
    bool parse(const std::string& text, std::string& error);

    bool hasSection(const std::string& section) const;
    // The value, or nullptr when the key is absent.
    const std::string* find(const std::string& section, const std::string& key) const;
    // Keys of a section in file order.
    std::vector<std::string> keys(const std::string& section) const;

private:
    struct Section {
        std::vector<std::string> order;
        std::map<std::string, std::string> values; // lower-case key -> value
    };
    std::map<std::string, Section> sections_; // lower-case name -> section
};

} // namespace kvdecode
