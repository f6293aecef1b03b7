#include "PluginCatalogue.h"

#include "SessionPaths.h"
#include "StringBufferList.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace {

const char kPrefix[] = "KVDECODE_";
const char kSuffix[] = ".so";
constexpr size_t kPrefixLength = sizeof kPrefix - 1;
constexpr size_t kSuffixLength = sizeof kSuffix - 1;
constexpr int32_t kRequiredImagesSize = 1024;
// A plug-in that never reports the end of its image settings is not asked forever.
constexpr int32_t kMaxImageSettings = 4096;

std::vector<std::string> PluginFileNames(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator it(folder.empty() ? "." : folder, error);
    for (; !error && it != std::filesystem::directory_iterator(); it.increment(error)) {
        const std::string name = it->path().filename().string();
        if (PluginCatalogue::IsPluginFileName(name) && !it->is_directory(error)) {
            names.push_back(name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

std::string PluginCatalogue::SettingsPath(const ZyrReaderSettings& reader, const std::string& fileName) {
    // "#" is always there, also without a folder: the settings file's name starts with it.
    return SessionPaths::FolderWithSeparator(reader.PluginSettingsFolder,
                                             sizeof reader.PluginSettingsFolder) +
           "#" + fileName.substr(0, fileName.size() - kSuffixLength) + ".ini";
}

std::string PluginCatalogue::DisplayName(const std::string& fileName) {
    return fileName.substr(kPrefixLength, fileName.size() - kPrefixLength - kSuffixLength);
}

bool PluginCatalogue::IsPluginFileName(const std::string& name) {
    return name.size() >= kPrefixLength + kSuffixLength && name.compare(0, kPrefixLength, kPrefix) == 0 &&
           name.compare(name.size() - kSuffixLength, kSuffixLength, kSuffix) == 0;
}

void PluginCatalogue::Load(const ZyrReaderSettings& reader, ImageSettingsTable& table) {
    const std::string folder =
        SessionPaths::FolderWithSeparator(reader.PluginFolder, sizeof reader.PluginFolder);
    for (const std::string& fileName : PluginFileNames(folder)) {
        const std::string settingsPath = SettingsPath(reader, fileName);
        const std::string libraryPath = folder + fileName;
        uint64_t handle = 0;
        if (ZyrReader_ImagePluginLoad(libraryPath.c_str(), settingsPath.c_str(), &handle,
                                      reader.CameraDevice) != ZYR_OK) {
            continue;
        }
        m_entries.push_back(PluginEntry{DisplayName(fileName), handle});
        {
            std::lock_guard<std::mutex> lock(m_selectionMutex);
            m_selected.push_back(false);
        }
        ReadImageSettings(handle, reader, table);
    }
}

void PluginCatalogue::ReadImageSettings(uint64_t handle, const ZyrReaderSettings& reader,
                                        ImageSettingsTable& table) {
    char buffer[kRequiredImagesSize] = {};
    ZyrReader_ImagePluginGetRequiredImages(handle, "", buffer, kRequiredImagesSize);
    buffer[kRequiredImagesSize - 1] = '\0';
    StringBufferList names;
    names.Split(StringBuffer(buffer), StringBuffer(","));
    ZyrImageSettings record{};
    for (int32_t index = 0; index < kMaxImageSettings; ++index) {
        record = ZyrImageSettings{};
        if (ZyrReader_ImagePluginGetImageSettings(handle, &record, index) != ZYR_OK) {
            break;
        }
        const std::string imageName(record.ImageName, strnlen(record.ImageName, sizeof record.ImageName));
        for (int i = 0; i < names.GetCount(); ++i) {
            if (names.GetItem(i) == imageName.c_str()) {
                table.MapPlugin(handle, table.FindOrAdd(record, reader));
                break;
            }
        }
    }
}

void PluginCatalogue::SetSelected(size_t index, bool selected) {
    std::lock_guard<std::mutex> lock(m_selectionMutex);
    if (index < m_selected.size()) {
        m_selected[index] = selected;
    }
}

bool PluginCatalogue::IsSelected(size_t index) const {
    std::lock_guard<std::mutex> lock(m_selectionMutex);
    return index < m_selected.size() && m_selected[index];
}

std::vector<PluginEntry> PluginCatalogue::SelectedEntries() const {
    std::lock_guard<std::mutex> lock(m_selectionMutex);
    std::vector<PluginEntry> selected;
    for (size_t i = 0; i < m_entries.size(); ++i) {
        if (m_selected[i]) {
            selected.push_back(m_entries[i]);
        }
    }
    return selected;
}

StringBuffer PluginCatalogue::SelectedNames() const {
    StringBuffer names;
    bool first = true;
    for (const PluginEntry& entry : SelectedEntries()) {
        if (!first) {
            names.append(",");
        }
        names.append(entry.name.c_str());
        first = false;
    }
    return names;
}

void PluginCatalogue::RestoreSelection(const StringBuffer& text) {
    StringBufferList names;
    names.Split(text, StringBuffer(","));
    std::lock_guard<std::mutex> lock(m_selectionMutex);
    for (int i = 0; i < names.GetCount(); ++i) {
        const StringBuffer name = names.GetItem(i);
        for (size_t e = 0; e < m_entries.size(); ++e) {
            if (name == m_entries[e].name.c_str()) {
                m_selected[e] = true;
                break;
            }
        }
    }
}
