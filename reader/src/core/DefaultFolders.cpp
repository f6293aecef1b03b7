#include "core/DefaultFolders.h"

#include <dlfcn.h>

#include <filesystem>

#ifndef ZYR_INSTALL_PLUGIN_SUBDIR
#define ZYR_INSTALL_PLUGIN_SUBDIR "glyphor/plugins"
#endif

namespace zyr {

namespace fs = std::filesystem;

std::string DefaultFolders::withSlash(std::string folder) {
    if (!folder.empty() && folder.back() != '/')
        folder += '/';
    return folder;
}

std::string DefaultFolders::libraryFolder() {
    Dl_info info{};
    static const int anchor = 0; // any address inside this library
    if (dladdr(&anchor, &info) == 0 || info.dli_fname == nullptr)
        return {};
    std::error_code error;
    const fs::path library = fs::canonical(info.dli_fname, error);
    return error ? fs::path(info.dli_fname).parent_path().string() : library.parent_path().string();
}

std::string DefaultFolders::plugins() {
    const fs::path library = libraryFolder();
    const fs::path candidates[] = {library / "plugins", library / ZYR_INSTALL_PLUGIN_SUBDIR};
    std::error_code error;
    for (const fs::path& candidate : candidates)
        if (fs::is_directory(candidate, error))
            return withSlash(candidate.lexically_normal().string());
    return withSlash(candidates[0].lexically_normal().string());
}

std::string DefaultFolders::application() {
    std::error_code error;
    const fs::path executable = fs::read_symlink("/proc/self/exe", error);
    if (error)
        return "./";
    return withSlash(executable.parent_path().string());
}

} // namespace zyr
