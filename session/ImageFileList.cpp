#include "ImageFileList.h"

void ImageFileList::Replace(const std::vector<std::string>& paths) {
    m_hasPosition = false;
    m_paths.assign(paths.begin(), paths.end());
    m_count = static_cast<int64_t>(m_paths.size());
    if (!m_paths.empty()) {
        m_position = m_paths.begin();
        m_hasPosition = true;
        m_currentIndex = 0;
    }
}

void ImageFileList::Clear() {
    m_paths.clear();
    m_count = 0;
    m_hasPosition = false; // the position pointed into the list just emptied
}

std::optional<std::string> ImageFileList::CurrentPath() const {
    if (!m_hasPosition) {
        return std::nullopt;
    }
    return *m_position;
}

std::optional<std::string> ImageFileList::StepNext() {
    if (!m_hasPosition) {
        return std::nullopt;
    }
    if (m_currentIndex >= 0) {
        ++m_position;
    } else {
        m_position = m_paths.begin();
    }
    ++m_currentIndex;
    if (m_position == m_paths.end()) {
        m_hasPosition = false; // stepped past the end
        return std::nullopt;
    }
    return *m_position;
}

std::optional<std::string> ImageFileList::StepPrevious() {
    if (!m_hasPosition) {
        return std::nullopt;
    }
    std::optional<std::string> shown;
    if (m_currentIndex < m_count) {
        if (m_position == m_paths.begin()) {
            m_hasPosition = false; // stepped before the start
        } else {
            --m_position;
            shown = *m_position;
        }
    } else if (!m_paths.empty()) {
        m_position = std::prev(m_paths.end());
        shown = *m_position;
    } else {
        m_hasPosition = false;
    }
    --m_currentIndex;
    return shown;
}

std::string ImageFileList::NamePart(const std::string& path) {
    const size_t separator = path.find_last_of("\\/");
    return separator == std::string::npos ? path : path.substr(separator + 1);
}
