// Turns the command line's paths into the list of images to decode.
#pragma once

#include "ImageInput.h"

#include <string>
#include <vector>

class ImageInputs {
public:
    // Files are taken as given, whatever their extension. Folders are searched recursively for
    // files with an image extension, sorted by their path within the folder. A path that does not
    // exist, or a folder or subfolder that cannot be listed, adds one error line (no program name)
    // and the search goes on with the rest.
    static std::vector<ImageInput> Expand(const std::vector<std::string>& paths,
                                          std::vector<std::string>& errors);

    // .png, .jpg, .jpeg or .bmp in any letter case.
    static bool HasImageExtension(const std::string& fileName);
};
