#include "capture/PostProcessor.h"

#include "capture/DocumentFinder.h"
#include "imagecodec/ImageInfo.h"

#include <algorithm>
#include <cmath>

namespace zyr {
namespace {

constexpr double kSmallestScale = 0.05;
constexpr double kLargestScale = 8.0;

Rect grow(const Rect& r, uint32_t margin, int32_t width, int32_t height) {
    const int64_t m = margin;
    const int64_t left = std::max<int64_t>(0, r.left - m), top = std::max<int64_t>(0, r.top - m);
    const int64_t right = std::min<int64_t>(width, int64_t(r.right()) + m);
    const int64_t bottom = std::min<int64_t>(height, int64_t(r.bottom()) + m);
    return Rect{int32_t(left), int32_t(top), int32_t(right - left), int32_t(bottom - top)};
}

} // namespace

int32_t PostProcessor::process(const Raster& snapshot, const Rect& wantedArea, const ProcessRequest& request,
                               ZyrLocation* location, Raster& out) {
    const Rect area = clipRect(wantedArea, snapshot.width(), snapshot.height());
    if (area.empty())
        return ZYR_ERR_BAD_ARGUMENT;
    Raster work = RasterOps::crop(snapshot, area);
    const Rect whole{0, 0, work.width(), work.height()};

    // Where the document lies, in the coordinates of `work`.
    FoundDocument document;
    document.platen = DocumentFinder::platenLevel(work, whole);
    if (location != nullptr && location->Width > 0 && location->Height > 0) {
        Rect given{location->Left - area.left, location->Top - area.top, location->Width, location->Height};
        double angle = location->AngleTenths / 10.0;
        if (request.unmirror) {
            given.left = work.width() - given.right();
            angle = -angle;
        }
        document.box = clipRect(given, work.width(), work.height());
        document.angle = angle;
        document.found = !document.box.empty();
    }
    if (request.unmirror)
        work = RasterOps::mirrorHorizontal(work);
    if (!document.found && (request.options & ZYR_OPT_LOCATE)) {
        document = DocumentFinder::find(work, whole, request.threshold, request.minimumArea);
        if (!document.found)
            return ZYR_ERR_NO_DOCUMENT;
    }
    const FoundDocument located = document;

    if ((request.options & ZYR_OPT_DESKEW) && document.found && document.angle != 0) {
        const double cx = document.box.left + document.box.width / 2.0,
                     cy = document.box.top + document.box.height / 2.0;
        work = RasterOps::rotate(work, -document.angle, cx, cy, document.platen);
        const FoundDocument straight =
            DocumentFinder::find(work, whole, request.threshold, request.minimumArea);
        if (straight.found)
            document.box = straight.box;
        document.angle = 0;
    }

    if (document.found && (request.options & ZYR_OPT_CROP)) {
        const Rect kept = grow(document.box, request.borderPixels, work.width(), work.height());
        Rect cut = whole;
        if (request.options & ZYR_OPT_CROP_WIDTH)
            cut.left = kept.left, cut.width = kept.width;
        if (request.options & ZYR_OPT_CROP_HEIGHT)
            cut.top = kept.top, cut.height = kept.height;
        work = RasterOps::crop(work, cut);
    }

    if (!request.colour || (request.options & ZYR_OPT_GREYSCALE))
        work = work.toGrey();
    if (request.options & ZYR_OPT_NORMALISE)
        work = RasterOps::normalise(work);
    if (request.options & ZYR_OPT_EXTRA)
        work = RasterOps::denoise(work, request.denoiseRadius);
    if (request.options & ZYR_OPT_SHARPEN)
        work = RasterOps::sharpen(work);
    if (request.options & ZYR_OPT_ROTATE_90)
        work = RasterOps::rotate90(work);
    if (request.options & ZYR_OPT_ROTATE_180)
        work = RasterOps::rotate180(work);
    if (request.options & ZYR_OPT_MIRROR_H)
        work = RasterOps::mirrorHorizontal(work);
    if (request.options & ZYR_OPT_MIRROR_V)
        work = RasterOps::mirrorVertical(work);

    const double scale = request.outputScale;
    if (std::isfinite(scale) && scale > 0 && scale != 1) {
        const double limit = double(kMaxImageDimension) / std::max(work.width(), work.height());
        work = RasterOps::scale(work, std::clamp(std::min(scale, limit), kSmallestScale, kLargestScale));
    }

    if (location != nullptr && located.found) {
        Rect box = located.box;
        double angle = located.angle;
        if (request.unmirror)
            box.left = area.width - box.right(), angle = -angle;
        *location = ZyrLocation{area.left + box.left, area.top + box.top, box.width, box.height,
                                int32_t(std::lround(angle * 10))};
    }
    out = std::move(work);
    return ZYR_OK;
}

} // namespace zyr
