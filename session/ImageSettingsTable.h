// Capture settings of the images the loaded plug-ins need: at most one record per image name,
// and for each plug-in the record of the first of its images that has settings.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <map>
#include <memory>
#include <vector>

class ImageSettingsTable {
public:
    ~ImageSettingsTable();

    // The table's record with the record's image name; otherwise a copy is added whose camera
    // block comes from the reader settings for its light and whose two common camera values are
    // the reader settings' common values.
    ZyrImageSettings* FindOrAdd(const ZyrImageSettings& record, const ZyrReaderSettings& reader);

    // Maps a plug-in to a record; a plug-in already mapped keeps its earlier record.
    void MapPlugin(uint64_t handle, ZyrImageSettings* record);

    // The plug-in's record, or null.
    ZyrImageSettings* ForPlugin(uint64_t handle) const;

    size_t Size() const { return m_records.size(); }
    ZyrImageSettings* At(size_t index) const { return m_records[index].get(); }
    const std::map<uint64_t, ZyrImageSettings*>& PluginMap() const { return m_pluginImages; }

private:
    std::vector<std::unique_ptr<ZyrImageSettings>> m_records;
    std::map<uint64_t, ZyrImageSettings*> m_pluginImages;
};
