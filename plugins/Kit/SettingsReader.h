#pragma once

#include "IniFile.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kvdecode {

// Typed reading of settings keys with defaults. The first bad value is kept as the error, so a
// plug-in reads everything it needs and then checks ok() once.
class SettingsReader {
public:
    explicit SettingsReader(const IniFile& ini) : ini_(ini) {}

    bool boolean(const std::string& section, const std::string& key, bool fallback);
    int64_t integer(const std::string& section, const std::string& key, int64_t fallback, int64_t min,
                    int64_t max);
    double real(const std::string& section, const std::string& key, double fallback);
    std::string text(const std::string& section, const std::string& key, const std::string& fallback);
    // A list separated by ',', '|' or spaces; empty items are dropped.
    std::vector<std::string> list(const std::string& section, const std::string& key,
                                  const std::vector<std::string>& fallback);

    void fail(const std::string& message);
    bool ok() const { return error_.empty(); }
    const std::string& error() const { return error_; }

private:
    const IniFile& ini_;
    std::string error_;
};

} // namespace kvdecode
