// Opens an image file for decoding: PNG, JPEG or BMP bytes decoded by the reader library's own
// codec straight into the pixels the plug-ins get (grey for grey files, else RGB; transparency
// over white), the same pixels as the library's conversion to BMP read back, without the BMP.
// The window and the batch both load through here, so a plug-in sees the same pixels from each.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <memory>
#include <string>

class ImageFileLoader {
public:
    // The image, or null with error set to a short reason ("No such file or directory",
    // "corrupt image", ...).
    static std::shared_ptr<const ZyrImage> Load(const std::string& path, std::string& error);

    // An owned copy of a reader image's pixels (rows packed); null for null or an unusable view.
    static std::shared_ptr<const ZyrImage> Copy(const ZyrImage* image);

    // Writes the pixels as a PNG file (grey stays grey); false when the image is unusable or the
    // file cannot be written.
    static bool SavePng(const ZyrImage& image, const std::string& path);
};
