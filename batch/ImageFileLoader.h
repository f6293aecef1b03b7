// Opens an image file for decoding: PNG, JPEG or BMP bytes decoded by the reader library's own
// codec straight into the pixels the plug-ins get (grey for grey files, else RGB; transparency
// over white), the same pixels as the library's conversion to BMP read back, without the BMP.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <memory>
#include <string>

class ImageFileLoader {
public:
    // The image, or null with error set to a short reason ("No such file or directory",
    // "corrupt image", ...).
    static std::shared_ptr<const ZyrImage> Load(const std::string& path, std::string& error);
};
