#include "ImageInputs.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string Lower(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return text;
}

std::string CannotRead(const std::string& path, const std::error_code& error) {
    return "cannot read '" + path + "': " + error.message();
}

// Collects the image files below folder. Symbolic links to folders are not followed, so the
// search always ends; links to files are taken.
void Collect(const fs::path& folder, const fs::path& root, std::vector<ImageInput>& found,
             std::vector<std::string>& errors) {
    std::error_code error;
    fs::directory_iterator it(folder, error);
    if (error) {
        errors.push_back(CannotRead(folder.string(), error));
        return;
    }
    std::vector<fs::path> subfolders;
    for (; !error && it != fs::directory_iterator(); it.increment(error)) {
        std::error_code typeError;
        if (!it->is_symlink(typeError) && it->is_directory(typeError)) {
            subfolders.push_back(it->path());
        } else if (it->is_regular_file(typeError) &&
                   ImageInputs::HasImageExtension(it->path().filename().string())) {
            const std::string relative = it->path().lexically_relative(root).generic_string();
            found.push_back(ImageInput{it->path().string(), relative, relative});
        }
    }
    if (error) {
        errors.push_back(CannotRead(folder.string(), error));
    }
    for (const fs::path& subfolder : subfolders) {
        Collect(subfolder, root, found, errors);
    }
}

void AddFolder(const std::string& folder, std::vector<ImageInput>& inputs, std::vector<std::string>& errors) {
    std::vector<ImageInput> found;
    Collect(folder, folder, found, errors);
    std::sort(found.begin(), found.end(),
              [](const ImageInput& a, const ImageInput& b) { return a.display < b.display; });
    inputs.insert(inputs.end(), found.begin(), found.end());
}

} // namespace

bool ImageInputs::HasImageExtension(const std::string& fileName) {
    const std::string extension = Lower(fs::path(fileName).extension().string());
    return extension == ".png" || extension == ".jpg" || extension == ".jpeg" || extension == ".bmp";
}

std::vector<ImageInput> ImageInputs::Expand(const std::vector<std::string>& paths,
                                            std::vector<std::string>& errors) {
    std::vector<ImageInput> inputs;
    for (const std::string& path : paths) {
        std::error_code error;
        const fs::file_status status = fs::status(path, error);
        if (error || !fs::exists(status)) {
            errors.push_back(
                CannotRead(path, error ? error : std::make_error_code(std::errc::no_such_file_or_directory)));
        } else if (fs::is_directory(status)) {
            AddFolder(path, inputs, errors);
        } else {
            inputs.push_back(ImageInput{path, path, fs::path(path).filename().string()});
        }
    }
    for (size_t i = 0; i < inputs.size(); ++i) {
        inputs[i].index = i;
    }
    return inputs;
}
