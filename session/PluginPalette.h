// One colour per plug-in, by its place in the plug-in list, for outlines and charts alike, so a
// plug-in looks the same in the window and in a report.
#pragma once

#include <cstddef>
#include <cstdint>

namespace PluginPalette {

// 0xRRGGBB; well apart from each other and from black and white.
inline uint32_t Colour(size_t index) {
    static const uint32_t kColours[] = {0xE6194B, 0x3CB44B, 0x4363D8, 0xF58231, 0x911EB4,
                                        0x42D4F4, 0xF032E6, 0x9A6324, 0x808000, 0x000075};
    return kColours[index % (sizeof kColours / sizeof kColours[0])];
}

} // namespace PluginPalette
