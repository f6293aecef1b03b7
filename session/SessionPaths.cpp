#include "SessionPaths.h"

#include <cstring>
#include <filesystem>

std::string SessionPaths::FolderWithSeparator(const char* field, size_t size) {
    return FolderWithSeparator(std::string(field, strnlen(field, size)));
}

std::string SessionPaths::FolderWithSeparator(const std::string& folder) {
    if (!folder.empty() && folder.back() != '/') {
        return folder + '/';
    }
    return folder;
}

std::string SessionPaths::ExecutableFolder() {
    std::error_code error;
    const std::filesystem::path exe = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::string("./") : FolderWithSeparator(exe.parent_path().string());
}
