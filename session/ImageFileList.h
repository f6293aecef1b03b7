// The image files opened in one go, the current position in that list and the stepping through it.
// User-interface thread, except Count() and CurrentIndex(), which a decode job reads.
#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <vector>

class ImageFileList {
public:
    // Replaces the list; the current position becomes the first entry, index 0 (none when empty).
    void Replace(const std::vector<std::string>& paths);
    // Empties the list (a capture does); the index is kept, the position is dropped.
    void Clear();

    int64_t Count() const { return m_count.load(); }
    int32_t CurrentIndex() const { return m_currentIndex.load(); }
    bool HasPosition() const { return m_hasPosition; }
    std::optional<std::string> CurrentPath() const;

    // One step forward (back); returns the path to show when the new position is an entry.
    // The index changes by one in any case; without a position nothing happens.
    std::optional<std::string> StepNext();
    std::optional<std::string> StepPrevious();

    // The open dialog's filter (1 = first filter; 0 = never chosen).
    uint32_t FilterIndex() const { return m_filterIndex; }
    void SetFilterIndex(uint32_t index) { m_filterIndex = index; }

    // Name part of a path: the text after the last "\" or "/", or the whole path.
    static std::string NamePart(const std::string& path);

private:
    std::list<std::string> m_paths;
    std::list<std::string>::iterator m_position;
    bool m_hasPosition = false;
    std::atomic<int32_t> m_currentIndex{0};
    std::atomic<int64_t> m_count{0};
    uint32_t m_filterIndex = 0;
};
