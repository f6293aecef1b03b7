// Folders the settings take when a settings file names none: the plug-ins where the build or the
// install put them (found from this library's own file), and the running program's folder.
// Every folder ends in "/".
#ifndef ZYR_CORE_DEFAULT_FOLDERS_H
#define ZYR_CORE_DEFAULT_FOLDERS_H

#include <string>

namespace zyr {

class DefaultFolders {
public:
    // <library folder>/plugins/ in a build tree, <library folder>/<install plug-in folder>/ when
    // installed; the first that exists, the build-tree one when neither does.
    static std::string plugins();
    static std::string application();

    static std::string libraryFolder();
    static std::string withSlash(std::string folder);
};

} // namespace zyr

#endif
