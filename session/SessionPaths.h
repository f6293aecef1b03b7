// Folder and file-name helpers of the test session.
#pragma once

#include <cstddef>
#include <string>

class SessionPaths {
public:
    // A fixed-size text field of the reader settings (not necessarily terminated) as a folder
    // ending in "/"; an empty field stays empty.
    static std::string FolderWithSeparator(const char* field, size_t size);
    static std::string FolderWithSeparator(const std::string& folder);
    // Folder of the running executable, ending in "/".
    static std::string ExecutableFolder();
};
