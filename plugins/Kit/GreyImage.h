#pragma once

#include <ZyrReaderLowLevelAPI.h>

#include <cstdint>
#include <string>
#include <vector>

namespace kvdecode {

// Checks an image view handed to a plug-in: positive size, known pixel format, rows that hold
// their pixels, and a size a decoder can take. Gives the reason when it is not.
bool validImage(const ZyrImage* image, std::string& error);

// An 8-bit grey copy of an image view, rows packed, for decoders that read only grey.
class GreyImage {
public:
    explicit GreyImage(const ZyrImage& image); // image must have passed validImage

    int width() const { return width_; }
    int height() const { return height_; }
    const uint8_t* data() const { return pixels_.data(); }
    uint8_t* data() { return pixels_.data(); }

private:
    int width_;
    int height_;
    std::vector<uint8_t> pixels_;
};

} // namespace kvdecode
