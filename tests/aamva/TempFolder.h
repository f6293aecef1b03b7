// A fresh folder under the system's temporary folder, removed with everything in it at the end.
#ifndef GLYPHOR_TESTS_AAMVA_TEMP_FOLDER_H
#define GLYPHOR_TESTS_AAMVA_TEMP_FOLDER_H

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class TempFolder {
public:
    TempFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "glyphor-aamva-XXXXXX").string();
        path_ = mkdtemp(pattern.data()) ? pattern : std::string();
    }
    ~TempFolder() {
        std::error_code ignored;
        if (!path_.empty())
            std::filesystem::remove_all(path_, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    bool ok() const { return !path_.empty(); }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

inline std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

inline void WriteFile(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

#endif
