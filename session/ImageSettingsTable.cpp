#include "ImageSettingsTable.h"

#include <cstring>

namespace {

bool SameText(const char* field, size_t size, const char* text) {
    return std::strncmp(field, text, size) == 0 && std::strlen(text) < size;
}

bool SameImageName(const ZyrImageSettings& a, const ZyrImageSettings& b) {
    return std::strncmp(a.ImageName, b.ImageName, sizeof a.ImageName) == 0;
}

} // namespace

ImageSettingsTable::~ImageSettingsTable() {
    // The map points into the table: empty it first.
    m_pluginImages.clear();
    m_records.clear();
}

ZyrImageSettings* ImageSettingsTable::FindOrAdd(const ZyrImageSettings& record,
                                                const ZyrReaderSettings& reader) {
    for (const auto& existing : m_records) {
        if (SameImageName(*existing, record)) {
            return existing.get();
        }
    }
    auto copy = std::make_unique<ZyrImageSettings>(record);
    const char* light = copy->LightName;
    if (SameText(light, sizeof copy->LightName, "IMAGE_VISIBLE")) {
        copy->Camera = reader.VisibleParameters;
    } else if (SameText(light, sizeof copy->LightName, "IMAGE_IR")) {
        copy->Camera = reader.InfraredParameters;
    } else if (SameText(light, sizeof copy->LightName, "IMAGE_UV")) {
        copy->Camera = reader.UltravioletParameters;
    }
    // Whatever the light, the camera's common values override the block's.
    copy->Camera.CaptureResolution = reader.CommonCaptureResolution;
    copy->Camera.Binning = reader.CommonBinning;
    m_records.push_back(std::move(copy));
    return m_records.back().get();
}

void ImageSettingsTable::MapPlugin(uint64_t handle, ZyrImageSettings* record) {
    m_pluginImages.emplace(handle, record);
}

ZyrImageSettings* ImageSettingsTable::ForPlugin(uint64_t handle) const {
    auto it = m_pluginImages.find(handle);
    return it == m_pluginImages.end() ? nullptr : it->second;
}
