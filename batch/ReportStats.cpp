#include "ReportStats.h"

#include <algorithm>
#include <map>
#include <unordered_map>

namespace {

std::string FolderOf(const std::string& relative) {
    const size_t slash = relative.find_last_of('/');
    return slash == std::string::npos ? "." : relative.substr(0, slash);
}

// The value at fraction p of sorted values, between neighbours.
double Quantile(const std::vector<double>& sorted, double p) {
    const double at = p * static_cast<double>(sorted.size() - 1);
    const size_t low = static_cast<size_t>(at);
    const size_t high = std::min(low + 1, sorted.size() - 1);
    return sorted[low] + (sorted[high] - sorted[low]) * (at - static_cast<double>(low));
}

std::string ImageKey(const RunRow& row) {
    return std::to_string(row.index) + '\n' + row.relative;
}

bool Disagree(const std::vector<const RunRow*>& rows) {
    for (const RunRow* row : rows) {
        if (row->Read() != rows.front()->Read() || (row->Read() && row->data != rows.front()->data)) {
            return true;
        }
    }
    return false;
}

} // namespace

size_t ReportStats::PluginIndex(const std::string& plugin) const {
    return static_cast<size_t>(std::find(plugins.begin(), plugins.end(), plugin) - plugins.begin());
}

ReportStats ReportStats::Compute(const std::vector<RunRow>& rows, const Baseline::Comparison* comparison) {
    ReportStats stats;
    std::vector<Image> images;
    std::unordered_map<std::string, size_t> imageOf;
    for (const RunRow& row : rows) {
        if (stats.PluginIndex(row.plugin) == stats.plugins.size()) {
            stats.plugins.push_back(row.plugin);
        }
        const auto slot = imageOf.emplace(ImageKey(row), images.size());
        if (slot.second) {
            images.emplace_back();
        }
        images[slot.first->second].rows.push_back(&row);
    }
    const size_t n = stats.plugins.size();
    stats.imageCount = static_cast<long>(images.size());
    stats.readImages.assign(n, 0);
    stats.onlyRead.assign(n, std::vector<long>(n, 0));

    std::map<std::string, Folder> folders;
    std::vector<std::vector<double>> times(n);
    for (const RunRow& row : rows) {
        const size_t p = stats.PluginIndex(row.plugin);
        Folder& folder = folders[FolderOf(row.relative)];
        folder.images.resize(n);
        folder.read.resize(n);
        ++folder.images[p];
        folder.read[p] += row.Read();
        times[p].push_back(row.timeMs);
    }
    for (auto& entry : folders) {
        entry.second.name = entry.first;
        entry.second.images.resize(n);
        entry.second.read.resize(n);
        stats.folders.push_back(std::move(entry.second));
    }
    for (size_t p = 0; p < n; ++p) {
        std::vector<double>& t = times[p];
        std::sort(t.begin(), t.end());
        Spread& s = stats.times.emplace_back();
        if (!t.empty()) {
            s = Spread{static_cast<long>(t.size()), t.front(), Quantile(t, 0.25), Quantile(t, 0.5),
                       Quantile(t, 0.75),           t.back()};
        }
    }

    std::unordered_map<std::string, std::string> baselineReason;
    if (comparison) {
        for (const Baseline::Entry& e : comparison->entries) {
            if (e.now && (e.change == Baseline::Change::Lost || e.change == Baseline::Change::NewlyRead ||
                          e.change == Baseline::Change::Changed)) {
                std::string& reason = baselineReason[ImageKey(*e.now)];
                reason +=
                    (reason.empty() ? "baseline: " : ", ") + e.now->plugin + " " + Baseline::Name(e.change);
            }
        }
    }
    for (Image& image : images) {
        std::vector<bool> read(n, false);
        for (const RunRow* row : image.rows) {
            read[stats.PluginIndex(row->plugin)] = read[stats.PluginIndex(row->plugin)] || row->Read();
        }
        for (size_t a = 0; a < n; ++a) {
            stats.readImages[a] += read[a];
            for (size_t b = 0; b < n; ++b) {
                stats.onlyRead[a][b] += read[a] && !read[b];
            }
        }
        std::string reason = Disagree(image.rows) ? "plug-ins disagree" : "";
        const auto it = baselineReason.find(ImageKey(*image.rows.front()));
        if (it != baselineReason.end()) {
            reason += (reason.empty() ? "" : "; ") + it->second;
        }
        if (!reason.empty()) {
            image.reason = std::move(reason);
            stats.flagged.push_back(std::move(image));
        }
    }
    // What the baseline read otherwise first: that is what a new build is judged by.
    std::stable_partition(stats.flagged.begin(), stats.flagged.end(), [](const Image& image) {
        return image.reason.find("baseline") != std::string::npos;
    });
    return stats;
}
