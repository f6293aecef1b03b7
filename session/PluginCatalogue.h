// The decoder plug-ins found in the reader's plug-in folder and loaded through the reader
// library, listed by display name, and which of them are selected. The selection is written on
// the user-interface thread and read by jobs, so it is guarded.
#pragma once

#include "ImageSettingsTable.h"
#include "StringBuffer.h"
#include "ZyrReaderLowLevelAPI.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

struct PluginEntry {
    std::string name; // file name without "KVDECODE_" and the shared-library suffix
    uint64_t handle;  // what ZyrReader_ImagePluginLoad returned
};

class PluginCatalogue {
public:
    // Loads every "KVDECODE_*.so" of the settings' plug-in folder (the working folder when it is
    // empty) in name order; plug-ins that fail to load leave no trace. For each loaded one its
    // required images and their settings go into the table.
    void Load(const ZyrReaderSettings& reader, ImageSettingsTable& table);

    const std::vector<PluginEntry>& Entries() const { return m_entries; }

    void SetSelected(size_t index, bool selected);
    bool IsSelected(size_t index) const;
    std::vector<PluginEntry> SelectedEntries() const; // in list order

    // Display names of the selected entries joined by "," (empty when none is selected).
    StringBuffer SelectedNames() const;
    // Selects, for each name of the comma-separated text, the first entry of that name; nothing
    // is deselected and unknown names are ignored.
    void RestoreSelection(const StringBuffer& names);

    // Paths used for one plug-in file name, exposed for tests.
    static std::string SettingsPath(const ZyrReaderSettings& reader, const std::string& fileName);
    static std::string DisplayName(const std::string& fileName);
    static bool IsPluginFileName(const std::string& fileName);

private:
    void ReadImageSettings(uint64_t handle, const ZyrReaderSettings& reader, ImageSettingsTable& table);

    std::vector<PluginEntry> m_entries;
    mutable std::mutex m_selectionMutex;
    std::vector<bool> m_selected;
};
