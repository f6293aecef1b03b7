// Finds a document lying on the reader's platen. The threshold is the grey level separating
// document from platen; the platen's own level (read along the border of the searched area)
// decides whether documents are the lighter or the darker side of it, so light cards on the dark
// platen and dark documents on a light one are both found. Print inside the document (holes in
// its shape) does not matter: everything not reached from the border through platen pixels
// belongs to the document, and the largest such piece is the one reported.
#ifndef ZYR_CAPTURE_DOCUMENT_FINDER_H
#define ZYR_CAPTURE_DOCUMENT_FINDER_H

#include "capture/Raster.h"
#include "capture/RasterOps.h"

namespace zyr {

struct FoundDocument {
    bool found = false;
    Rect box;           // axis-aligned bounds, in the raster's coordinates
    double angle = 0;   // clockwise tilt of the document's long side, -45 to 45 degrees
    uint8_t platen = 0; // grey level of the platen around it
};

class DocumentFinder {
public:
    // threshold <= 0 picks one from the picture (Otsu); minimumArea is in pixels.
    static FoundDocument find(const Raster& raster, const Rect& area, double threshold, int64_t minimumArea);

    // The platen's grey level along the border of area (its median).
    static uint8_t platenLevel(const Raster& raster, const Rect& area);
};

} // namespace zyr

#endif
