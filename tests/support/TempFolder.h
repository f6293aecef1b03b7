// A fresh folder under the system's temporary folder, removed with everything in it at the end,
// and the whole-file reads and writes the tests do in it.
#ifndef GLYPHOR_TESTS_SUPPORT_TEMP_FOLDER_H
#define GLYPHOR_TESTS_SUPPORT_TEMP_FOLDER_H

#include <string>
#include <vector>

class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    bool ok() const { return !path_.empty(); }
    const std::string& path() const { return path_; }
    std::string file(const std::string& name) const { return path_ + "/" + name; }

    // Writes bytes to a file in the folder and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const;

private:
    std::string path_;
};

void writeFile(const std::string& path, const std::string& bytes);
std::string readFile(const std::string& path); // empty when the file cannot be read
std::vector<std::string> readLines(const std::string& path);

#endif
