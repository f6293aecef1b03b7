#include "CaptureSettingsCheck.h"

#include <cstring>
#include <set>
#include <string>

bool CaptureSettingsCheck::SameImageSettings(const PluginCatalogue& plugins,
                                             const ImageSettingsTable& table) {
    const std::vector<PluginEntry> selected = plugins.SelectedEntries();
    if (selected.empty()) {
        return false;
    }
    // std::string compares as unsigned characters, byte by byte.
    std::set<std::string> names;
    for (const PluginEntry& entry : selected) {
        if (const ZyrImageSettings* record = table.ForPlugin(entry.handle)) {
            names.emplace(record->ImageName, strnlen(record->ImageName, sizeof record->ImageName));
        }
    }
    return names.size() == 1;
}

ZyrImageSettings* CaptureSettingsCheck::Choose(const PluginCatalogue& plugins,
                                               const ImageSettingsTable& table) {
    if (SameImageSettings(plugins, table)) {
        return table.ForPlugin(plugins.SelectedEntries().front().handle);
    }
    return table.Size() > 0 ? table.At(0) : nullptr;
}
