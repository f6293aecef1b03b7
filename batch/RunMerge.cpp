#include "RunMerge.h"

#include "JsonText.h"
#include "TextEncoding.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace {

bool CheckShards(const std::vector<RunMerge::Part>& parts, std::vector<std::string>& warnings,
                 std::string& error) {
    int count = 0;
    std::map<int, const std::string*> seen;
    for (const RunMerge::Part& part : parts) {
        const BatchRun& run = part.second;
        if (run.shardCount == 0) {
            continue;
        }
        if (count != 0 && run.shardCount != count) {
            error = part.first + " is a shard of " + std::to_string(run.shardCount) + " parts, others of " +
                    std::to_string(count);
            return false;
        }
        count = run.shardCount;
        const auto it = seen.find(run.shardIndex);
        if (it != seen.end()) {
            error = "overlapping shards: " + *it->second + " and " + part.first + " are both shard " +
                    std::to_string(run.shardIndex) + "/" + std::to_string(count);
            return false;
        }
        seen[run.shardIndex] = &part.first;
    }
    if (count != 0 && static_cast<int>(seen.size()) < count) {
        std::string missing;
        for (int k = 1; k <= count; ++k) {
            if (!seen.count(k)) {
                missing += (missing.empty() ? "" : ", ") + std::to_string(k) + "/" + std::to_string(count);
            }
        }
        warnings.push_back("shards missing from the merge: " + missing);
    }
    return true;
}

} // namespace

bool RunMerge::Merge(std::vector<Part>& parts, BatchRun& merged, std::vector<std::string>& warnings,
                     std::string& error) {
    merged = BatchRun();
    if (!CheckShards(parts, warnings, error)) {
        return false;
    }
    struct Place {
        size_t index, part, row;
    };
    std::vector<Place> places;
    std::unordered_map<std::string, size_t> owner; // image and plug-in -> part
    double totalTime = 0, totalImageProcess = 0;
    size_t rowCount = 0;
    for (size_t p = 0; p < parts.size(); ++p) {
        const BatchRun& run = parts[p].second;
        for (size_t r = 0; r < run.rows.size(); ++r) {
            const RunRow& row = run.rows[r];
            const std::string key = std::to_string(row.index) + '\n' + row.relative + '\n' + row.plugin;
            const auto inserted = owner.emplace(key, p);
            if (!inserted.second && inserted.first->second != p) {
                error = "overlapping files: '" + row.relative + "' (" + row.plugin + ") is in both " +
                        parts[inserted.first->second].first + " and " + parts[p].first;
                return false;
            }
            places.push_back(Place{row.index, p, r});
        }
        const double n = static_cast<double>(run.rows.size());
        totalTime += run.averageTimeMs * n;
        totalImageProcess += run.averageImageProcessMs * n;
        rowCount += run.rows.size();
        merged.imageCount += run.imageCount;
        merged.symbolsCount += run.symbolsCount;
        for (const RunExpectation& e : run.expectations) {
            auto it = std::find_if(merged.expectations.begin(), merged.expectations.end(),
                                   [&](const RunExpectation& m) { return m.plugin == e.plugin; });
            if (it == merged.expectations.end()) {
                merged.expectations.push_back(RunExpectation{e.plugin, 0, 0, 0, 0});
                it = merged.expectations.end() - 1;
            }
            it->passed += e.passed;
            it->misread += e.misread;
            it->missed += e.missed;
            it->unchecked += e.unchecked;
        }
    }
    // Parts in the order given keep their own order for an index, so one image's plug-ins stay in
    // list order.
    std::stable_sort(places.begin(), places.end(), [](const Place& a, const Place& b) {
        return a.index != b.index ? a.index < b.index : a.part < b.part;
    });
    merged.rows.reserve(places.size());
    for (const Place& place : places) {
        merged.rows.push_back(std::move(parts[place.part].second.rows[place.row]));
    }
    if (rowCount > 0) {
        merged.averageTimeMs = totalTime / static_cast<double>(rowCount);
        merged.averageImageProcessMs = totalImageProcess / static_cast<double>(rowCount);
    }
    return true;
}

std::string RunMerge::Json(const BatchRun& run,
                           const std::vector<std::pair<std::string, std::string>>& sections) {
    size_t size = 256;
    for (const RunRow& row : run.rows) {
        size += row.json.size() + 6;
    }
    std::string json;
    json.reserve(size);
    json += "{\n  \"rows\": [";
    bool first = true;
    for (const RunRow& row : run.rows) {
        json += first ? "\n    " : ",\n    ";
        json += row.json;
        first = false;
    }
    json += first ? "]" : "\n  ]";
    json += ",\n  \"statistics\": {\"averageTime\": " + JsonNumber(run.averageTimeMs) +
            ", \"imageCount\": " + std::to_string(run.imageCount) +
            ", \"symbolsCount\": " + std::to_string(run.symbolsCount) +
            ", \"averageImageProcessTime\": " + JsonNumber(run.averageImageProcessMs) + "}";
    if (!run.expectations.empty()) {
        json += ",\n  \"expectations\": [";
        first = true;
        for (const RunExpectation& e : run.expectations) {
            json += std::string(first ? "\n" : ",\n") +
                    "    {\"plugin\": " + TextEncoding::JsonString(e.plugin, false) +
                    ", \"passed\": " + std::to_string(e.passed) +
                    ", \"misread\": " + std::to_string(e.misread) +
                    ", \"missed\": " + std::to_string(e.missed) +
                    ", \"unchecked\": " + std::to_string(e.unchecked) + "}";
            first = false;
        }
        json += "\n  ]";
    }
    for (const auto& section : sections) {
        json += ",\n  " + TextEncoding::JsonString(section.first, false) + ": " + section.second;
    }
    json += "\n}\n";
    return json;
}
