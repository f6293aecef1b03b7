#include "capture/SnapshotComposer.h"

#include "capture/DocumentFinder.h"

#include <algorithm>
#include <cstring>

namespace zyr {
namespace {

void place(Raster& frame, const Raster& side, int32_t left) {
    const Raster picture = frame.channels() == 3 ? side.toColour() : side;
    for (int32_t y = 0; y < picture.height(); ++y)
        std::memcpy(frame.at(left, y), picture.row(y), size_t(picture.width()) * size_t(frame.channels()));
}

void fillArea(Raster& frame, const Rect& area, uint8_t level) {
    for (int32_t y = area.top; y < area.bottom(); ++y)
        std::memset(frame.at(area.left, y), level, size_t(area.width) * size_t(frame.channels()));
}

} // namespace

Raster SnapshotComposer::twoSided(const Raster& front, const Raster* back, bool mirrorBack) {
    const int32_t half = std::max(front.width(), back ? back->width() : 0);
    const int32_t height = std::max(front.height(), back ? back->height() : 0);
    const int channels = (front.channels() == 3 || (back && back->channels() == 3)) ? 3 : 1;
    Raster frame(2 * half, height, channels);
    const Rect whole{0, 0, front.width(), front.height()};
    const uint8_t frontPlaten = DocumentFinder::platenLevel(front, whole);
    fillArea(frame, Rect{0, 0, half, height}, frontPlaten);
    place(frame, front, 0);
    if (back == nullptr) {
        fillArea(frame, Rect{half, 0, half, height}, frontPlaten);
        return frame;
    }
    fillArea(frame, Rect{half, 0, half, height},
             DocumentFinder::platenLevel(*back, Rect{0, 0, back->width(), back->height()}));
    place(frame, mirrorBack ? RasterOps::mirrorHorizontal(*back) : *back,
          mirrorBack ? 2 * half - back->width() : half);
    return frame;
}

Rect SnapshotComposer::sideArea(const Raster& frame, bool twoSided, int side) {
    if (!twoSided || side == 0)
        return Rect{0, 0, frame.width(), frame.height()};
    const int32_t half = frame.width() / 2;
    return side == 1 ? Rect{0, 0, half, frame.height()} : Rect{half, 0, frame.width() - half, frame.height()};
}

} // namespace zyr
