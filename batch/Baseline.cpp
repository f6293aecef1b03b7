#include "Baseline.h"

#include "JsonText.h"
#include "TextEncoding.h"

#include <algorithm>
#include <cstdio>
#include <unordered_map>
#include <unordered_set>

namespace {

std::string Key(const RunRow& row) {
    return row.relative + '\n' + row.plugin;
}

Baseline::Change Classify(const RunRow& before, const RunRow& now) {
    if (before.Read() && !now.Read()) {
        return Baseline::Change::Lost;
    }
    if (!before.Read() && now.Read()) {
        return Baseline::Change::NewlyRead;
    }
    if (before.Read() && before.data != now.data) {
        return Baseline::Change::Changed;
    }
    return Baseline::Change::Same;
}

Baseline::PluginSummary& SummaryOf(std::vector<Baseline::PluginSummary>& plugins, const std::string& name) {
    for (Baseline::PluginSummary& summary : plugins) {
        if (summary.plugin == name) {
            return summary;
        }
    }
    plugins.push_back(Baseline::PluginSummary{});
    plugins.back().plugin = name;
    return plugins.back();
}

void Count(Baseline::PluginSummary& s, const Baseline::Entry& e) {
    switch (e.change) {
    case Baseline::Change::OnlyBefore:
        ++s.onlyBefore;
        return;
    case Baseline::Change::OnlyNow:
        ++s.onlyNow;
        return;
    case Baseline::Change::Same:
        ++s.same;
        break;
    case Baseline::Change::NewlyRead:
        ++s.newlyRead;
        break;
    case Baseline::Change::Lost:
        ++s.lost;
        break;
    case Baseline::Change::Changed:
        ++s.changed;
        break;
    }
    ++s.matched;
    s.timeBeforeMs += e.before->timeMs;
    s.timeNowMs += e.now->timeMs;
}

std::string Ms(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2fms", value);
    return text;
}

std::string Percent(double before, double now) {
    if (before <= 0) {
        return "-";
    }
    char text[32];
    std::snprintf(text, sizeof text, "%+.1f%%", (now - before) * 100.0 / before);
    return text;
}

std::string Padded(const std::string& text, size_t width) {
    return text.size() >= width ? text : text + std::string(width - text.size(), ' ');
}

} // namespace

bool Baseline::Comparison::Regressed() const {
    return std::any_of(plugins.begin(), plugins.end(),
                       [](const PluginSummary& s) { return s.lost > 0 || s.changed > 0; });
}

Baseline::Comparison Baseline::Compare(const std::vector<RunRow>& before, const std::vector<RunRow>& now) {
    // Each key's baseline rows, taken in order as this run's rows ask for them.
    std::unordered_map<std::string, std::vector<size_t>> waiting;
    waiting.reserve(before.size());
    for (size_t i = before.size(); i-- > 0;) {
        waiting[Key(before[i])].push_back(i);
    }
    std::vector<bool> used(before.size(), false);
    Comparison comparison;
    comparison.entries.reserve(now.size());
    for (const RunRow& row : now) {
        Entry entry;
        entry.now = &row;
        const auto it = waiting.find(Key(row));
        if (it == waiting.end() || it->second.empty()) {
            entry.change = Change::OnlyNow;
        } else {
            const size_t i = it->second.back();
            it->second.pop_back();
            used[i] = true;
            entry.before = &before[i];
            entry.change = Classify(before[i], row);
        }
        comparison.entries.push_back(entry);
    }
    for (size_t i = 0; i < before.size(); ++i) {
        if (!used[i]) {
            comparison.entries.push_back(Entry{&before[i], nullptr, Change::OnlyBefore});
        }
    }
    for (const Entry& entry : comparison.entries) {
        Count(SummaryOf(comparison.plugins, (entry.now ? entry.now : entry.before)->plugin), entry);
    }
    return comparison;
}

bool Baseline::SharesFiles(const std::vector<RunRow>& before, const std::vector<std::string>& relatives) {
    std::unordered_set<std::string> known;
    for (const RunRow& row : before) {
        known.insert(row.relative);
    }
    return std::any_of(relatives.begin(), relatives.end(),
                       [&](const std::string& relative) { return known.count(relative) > 0; });
}

const char* Baseline::Name(Change change) {
    switch (change) {
    case Change::Same:
        return "same";
    case Change::NewlyRead:
        return "newly read";
    case Change::Lost:
        return "lost";
    case Change::Changed:
        return "changed";
    case Change::OnlyBefore:
        return "only in baseline";
    case Change::OnlyNow:
        return "not in baseline";
    }
    return "same";
}

std::vector<std::string> Baseline::TextLines(const Comparison& comparison) {
    std::vector<std::string> lines;
    for (const Entry& e : comparison.entries) {
        if (e.change == Change::Same) {
            continue;
        }
        const RunRow& row = e.now ? *e.now : *e.before;
        std::string line = TextEncoding::TableText(row.relative, false) + "  " +
                           TextEncoding::TableText(row.plugin, false) + "  " + Name(e.change);
        if (e.before && e.now) {
            line += "  " + Ms(e.before->timeMs) + " -> " + Ms(e.now->timeMs);
        }
        lines.push_back(line);
    }
    if (!lines.empty()) {
        lines.emplace_back();
    }
    const size_t widths[] = {16, 8, 11, 6, 8, 12, 12, 8};
    const auto row = [&](const std::vector<std::string>& cells) {
        std::string line;
        for (size_t i = 0; i < cells.size(); ++i) {
            line += i + 1 < cells.size() ? Padded(cells[i], widths[i]) + "  " : cells[i];
        }
        lines.push_back(line);
    };
    row({"Baseline: plugin", "Matched", "Newly read", "Lost", "Changed", "Time before", "Time now",
         "Change"});
    for (const PluginSummary& s : comparison.plugins) {
        const double n = s.matched > 0 ? static_cast<double>(s.matched) : 1.0;
        row({TextEncoding::TableText(s.plugin, false), std::to_string(s.matched), std::to_string(s.newlyRead),
             std::to_string(s.lost), std::to_string(s.changed), Ms(s.timeBeforeMs / n), Ms(s.timeNowMs / n),
             Percent(s.timeBeforeMs, s.timeNowMs)});
    }
    return lines;
}

std::string Baseline::Json(const Comparison& comparison) {
    const auto str = [](const std::string& text) { return TextEncoding::JsonString(text, false); };
    std::string json = "{\"plugins\": [";
    bool first = true;
    for (const PluginSummary& s : comparison.plugins) {
        json += std::string(first ? "" : ", ") + "{\"plugin\": " + str(s.plugin) +
                ", \"matched\": " + std::to_string(s.matched) + ", \"same\": " + std::to_string(s.same) +
                ", \"newlyRead\": " + std::to_string(s.newlyRead) + ", \"lost\": " + std::to_string(s.lost) +
                ", \"changed\": " + std::to_string(s.changed) +
                ", \"onlyBefore\": " + std::to_string(s.onlyBefore) +
                ", \"onlyNow\": " + std::to_string(s.onlyNow) +
                ", \"timeBefore\": " + JsonNumber(s.timeBeforeMs) +
                ", \"timeNow\": " + JsonNumber(s.timeNowMs) + "}";
        first = false;
    }
    json += "], \"rows\": [";
    first = true;
    for (const Entry& e : comparison.entries) {
        const RunRow& row = e.now ? *e.now : *e.before;
        json += std::string(first ? "\n" : ",\n") + "    {\"relative\": " + str(row.relative) +
                ", \"plugin\": " + str(row.plugin) + ", \"change\": \"" + Name(e.change) +
                "\", \"timeBefore\": " + (e.before ? JsonNumber(e.before->timeMs) : "null") +
                ", \"timeNow\": " + (e.now ? JsonNumber(e.now->timeMs) : "null") + "}";
        first = false;
    }
    json += first ? "]}" : "\n  ]}";
    return json;
}
