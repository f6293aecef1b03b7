// What the camera of the virtual reader sees: one document side on the platen, or on a two-sided
// reader both sides next to each other in one frame (side 1 in the left half, side 2 in the
// right; both halves equally wide, so the halves alone say where each side lies).
#ifndef ZYR_CAPTURE_SNAPSHOT_COMPOSER_H
#define ZYR_CAPTURE_SNAPSHOT_COMPOSER_H

#include "capture/Raster.h"
#include "capture/RasterOps.h"

namespace zyr {

class SnapshotComposer {
public:
    // back null: a two-sided frame whose second half is empty platen. mirrorBack: the back
    // camera sees side 2 mirrored.
    static Raster twoSided(const Raster& front, const Raster* back, bool mirrorBack);

    // Where side (1 or 2) lies in a frame; side 0 = the whole frame.
    static Rect sideArea(const Raster& frame, bool twoSided, int side);
};

} // namespace zyr

#endif
