// Test scenes for the capture calls: cards drawn on a darker platen, with a dark marker square in
// the card's top-left corner so that crops, turns and mirrors can be told apart, and virtual
// reader folders built from them.
#pragma once

#include "ImageFixtures.h"
#include "TestSupport.h"
#include "ZyrReaderLowLevelAPI.h"

#include <cstdint>
#include <string>
#include <vector>

namespace capture {

constexpr uint8_t kPlaten = 30;
constexpr uint8_t kCard = 220;
constexpr uint8_t kMarker = 20;
constexpr int kMarkerSize = 24;
constexpr int kMarkerInset = 12;

struct Card {
    int left, top, width, height;
    double angle = 0; // clockwise, about the card's centre
    uint8_t level = kCard;
};

// A grey scene: platen of level `platen` with the cards drawn on it.
fixtures::Picture scene(int width, int height, const std::vector<Card>& cards, uint8_t platen = kPlaten);

// The grey levels of a picture as a ZyrImage view (keeps its own pixels).
class GreyView {
public:
    explicit GreyView(const fixtures::Picture& picture);
    const ZyrImage* image() const { return &image_; }

private:
    std::vector<uint8_t> pixels_;
    ZyrImage image_{};
};

enum class Corner { TopLeft, TopRight, BottomLeft, BottomRight, None };
const char* cornerName(Corner corner);
// The quarter of a grey image holding the darkest 8 x 8 block (the marker), or None when no
// block is darker than the platen.
Corner markerCorner(const ZyrImage& image);

// A virtual reader folder: device.ini and a documents folder.
class Device {
public:
    explicit Device(const std::string& deviceIni);
    const std::string& path() const { return folder_.path(); }
    std::string documents() const { return folder_.file("documents"); }
    // Writes documents/<file> as a grey or RGB PNG (through a temporary name, as a feeder would).
    void add(const std::string& file, const fixtures::Picture& picture, bool colour = false) const;
    void addBytes(const std::string& file, const std::string& bytes) const;
    // Settings as ZyrReader_LL_LoadSettings gives them for this device.
    ZyrReaderSettings settings() const;

private:
    TempFolder folder_;
};

// A device folder without documents, made once per test program: for starting the camera.
const std::string& emptyDevice();

// Collects the images the library hands to a ZyrImageCallback, and frees them at the end.
struct Delivered {
    struct Entry {
        int32_t index, side;
        uint32_t lightMask;
        ZyrImage* image;
    };
    std::vector<Entry> images;
    ~Delivered();
    static void callback(void* user, int32_t index, int32_t side, uint32_t lightMask, ZyrImage* image);
};

} // namespace capture

