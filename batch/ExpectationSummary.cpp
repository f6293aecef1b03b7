#include "ExpectationSummary.h"

#include "TextEncoding.h"

#include <algorithm>
#include <cstdio>

void ExpectationSummary::Add(const std::string& plugin, Verdict verdict) {
    auto it =
        std::find_if(m_counts.begin(), m_counts.end(), [&](const Counts& c) { return c.plugin == plugin; });
    if (it == m_counts.end()) {
        m_counts.push_back(Counts{plugin});
        it = m_counts.end() - 1;
    }
    switch (verdict) {
    case Verdict::Pass:
        ++it->passed;
        break;
    case Verdict::Misread:
        ++it->misread;
        break;
    case Verdict::Miss:
        ++it->missed;
        break;
    case Verdict::Unchecked:
        ++it->unchecked;
        break;
    }
}

std::vector<std::string> ExpectationSummary::TableLines() const {
    size_t width = 6; // "Plugin"
    for (const Counts& c : m_counts) {
        width = std::max(width, TextEncoding::DisplayWidth(TextEncoding::TableText(c.plugin, false)));
    }
    const auto line = [&](const std::string& plugin, const std::string& a, const std::string& b,
                          const std::string& c, const std::string& d) {
        char text[160];
        std::snprintf(text, sizeof text, "  %7s  %7s  %7s  %9s", a.c_str(), b.c_str(), c.c_str(), d.c_str());
        return plugin + std::string(width - TextEncoding::DisplayWidth(plugin), ' ') + text;
    };
    std::vector<std::string> lines{"Expected results:",
                                   line("Plugin", "Passed", "Misread", "Missed", "No .txt")};
    for (const Counts& c : m_counts) {
        lines.push_back(line(TextEncoding::TableText(c.plugin, false), std::to_string(c.passed),
                             std::to_string(c.misread), std::to_string(c.missed),
                             std::to_string(c.unchecked)));
    }
    return lines;
}
