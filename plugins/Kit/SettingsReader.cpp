#include "SettingsReader.h"

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <strings.h>

namespace kvdecode {

void SettingsReader::fail(const std::string& message) {
    if (error_.empty())
        error_ = message;
}

bool SettingsReader::boolean(const std::string& section, const std::string& key, bool fallback) {
    const std::string* value = ini_.find(section, key);
    if (!value || value->empty())
        return fallback;
    for (const char* yes : {"1", "true", "yes", "on"})
        if (strcasecmp(value->c_str(), yes) == 0)
            return true;
    for (const char* no : {"0", "false", "no", "off"})
        if (strcasecmp(value->c_str(), no) == 0)
            return false;
    fail("[" + section + "] " + key + " is not a boolean: " + *value);
    return fallback;
}

int64_t SettingsReader::integer(const std::string& section, const std::string& key, int64_t fallback,
                                int64_t min, int64_t max) {
    const std::string* value = ini_.find(section, key);
    if (!value || value->empty())
        return fallback;
    errno = 0;
    char* end = nullptr;
    long long parsed = std::strtoll(value->c_str(), &end, 0);
    if (errno != 0 || *end != '\0' || parsed < min || parsed > max) {
        fail("[" + section + "] " + key + " must be a whole number from " + std::to_string(min) + " to " +
             std::to_string(max) + ": " + *value);
        return fallback;
    }
    return parsed;
}

double SettingsReader::real(const std::string& section, const std::string& key, double fallback) {
    const std::string* value = ini_.find(section, key);
    if (!value || value->empty())
        return fallback;
    errno = 0;
    char* end = nullptr;
    double parsed = std::strtod(value->c_str(), &end);
    if (errno != 0 || *end != '\0') {
        fail("[" + section + "] " + key + " is not a number: " + *value);
        return fallback;
    }
    return parsed;
}

std::string SettingsReader::text(const std::string& section, const std::string& key,
                                 const std::string& fallback) {
    const std::string* value = ini_.find(section, key);
    return value ? *value : fallback;
}

std::vector<std::string> SettingsReader::list(const std::string& section, const std::string& key,
                                              const std::vector<std::string>& fallback) {
    const std::string* value = ini_.find(section, key);
    if (!value)
        return fallback;
    std::vector<std::string> items;
    std::string item;
    for (char c : *value + ",") {
        if (c == ',' || c == '|' || std::isspace(static_cast<unsigned char>(c))) {
            if (!item.empty())
                items.push_back(item);
            item.clear();
        } else {
            item += c;
        }
    }
    return items;
}

} // namespace kvdecode
