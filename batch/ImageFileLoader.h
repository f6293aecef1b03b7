// Opens an image file the way the window does: the reader library turns PNG, JPEG or BMP bytes
// into BMP bytes, which are then read into pixels.
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
