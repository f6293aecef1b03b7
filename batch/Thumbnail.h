// A small PNG of an image file, for the report: scaled down by averaging, grey or colour as the
// file is.
#pragma once

#include <string>

struct Thumbnail {
    int width = 0, height = 0;           // the image's own size, which outlines are in
    int thumbWidth = 0, thumbHeight = 0; // the thumbnail's
    std::string png;

    // False with error set when the file cannot be read as an image.
    static bool Make(const std::string& path, int maxSide, Thumbnail& thumbnail, std::string& error);
};
