// Pixels of a BMP file as the reader library writes them (8-bit with a palette, or 24-bit),
// held by the object and offered as a ZyrImage view for the decoder plug-ins.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class BmpImage {
public:
    // Reads uncompressed 8-bit (palette) and 24-bit BMP bytes, bottom-up or top-down. An 8-bit
    // file with a grey palette stays one byte per pixel; other palettes and 24-bit files become
    // RGB. On failure returns false, sets error to a short reason and leaves the image empty.
    bool Decode(const uint8_t* bytes, size_t length, std::string& error);

    // Rows top-down; Pixels is null while the image is empty.
    const ZyrImage& View() const { return m_view; }

    // Largest width times height accepted, so a forged header cannot ask for gigabytes.
    static constexpr uint64_t kMaxPixels = uint64_t(1) << 28;

private:
    std::vector<uint8_t> m_pixels;
    ZyrImage m_view{};
};
