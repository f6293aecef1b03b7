// Turns the part of a snapshot that shows one document side into the processed image the option
// word asks for (ZYR_OPT_* bits): find the document, straighten it, cut it out, then the tonal
// and geometric steps in a fixed order.
#ifndef ZYR_CAPTURE_POST_PROCESSOR_H
#define ZYR_CAPTURE_POST_PROCESSOR_H

#include "capture/Raster.h"
#include "capture/RasterOps.h"

namespace zyr {

struct ProcessRequest {
    uint32_t options = 0;
    bool colour = false;       // keep colour (else the result is grey)
    uint32_t borderPixels = 0; // margin kept around a crop
    float outputScale = 0;     // 0 or 1 = no scaling
    double threshold = 0;      // document/platen grey level; <= 0 = chosen from the picture
    int64_t minimumArea = 1;   // smaller objects are not documents
    int denoiseRadius = 1;     // for ZYR_OPT_EXTRA
    bool unmirror = false;     // the area shows its side mirrored (back camera)
};

class PostProcessor {
public:
    // area: where the side lies in the snapshot. location: where the document lies, when known
    // (width and height above 0); on success it receives where the document was found.
    // ZYR_ERR_NO_DOCUMENT when locating was asked for and nothing was found.
    static int32_t process(const Raster& snapshot, const Rect& area, const ProcessRequest& request,
                           ZyrLocation* location, Raster& out);
};

} // namespace zyr

#endif
