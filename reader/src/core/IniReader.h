// Reads the reader's settings files: "[Section]" lines, "Key=Value" lines, comment lines starting
// with ';' or '#'. Names compare case-insensitively; a value may be wrapped in double quotes to
// keep surrounding spaces. There are no inline comments, since paths may contain ';' and '#'.
#ifndef ZYR_CORE_INI_READER_H
#define ZYR_CORE_INI_READER_H

#include <map>
#include <string>
#include <utility>

namespace zyr {

class IniReader {
public:
    // False when the file cannot be read; the reader is then empty.
    bool load(const std::string& path);
    void parse(const std::string& text);

    // The value, or null when the key is absent. A key given twice keeps the last value.
    const std::string* find(const std::string& section, const std::string& key) const;

private:
    std::map<std::pair<std::string, std::string>, std::string> values_;
};

} // namespace zyr

#endif
