// The documents of a virtual reader: image files in one folder, grouped by document name.
//   NAME.png            side 1 under visible light (the file that makes NAME a document)
//   NAME.ir.png         side 1 under infrared, NAME.uv.png under ultraviolet
//   NAME.back.png       side 2 (two-sided readers), NAME.back.ir.png, NAME.back.uv.png
// PNG, JPEG (.jpg, .jpeg) and BMP files are read; other files and names starting with "." are
// ignored, so a document can be written under a temporary name and renamed into place.
#ifndef ZYR_CAPTURE_DOCUMENT_FOLDER_H
#define ZYR_CAPTURE_DOCUMENT_FOLDER_H

#include "capture/Raster.h"

#include <map>
#include <string>

namespace zyr {

enum class Light { Visible = 0, Infrared = 1, Ultraviolet = 2 };

// The light a snapshot's light mask asks for: visible before infrared before ultraviolet; a mask
// without a known bit means visible.
Light lightOfMask(uint32_t lightMask);

struct DocumentFiles {
    std::string files[2][3]; // [side 0/1][light]: path, or empty when absent
    bool hasSide(int side) const { return !files[side][int(Light::Visible)].empty(); }
};

class DocumentFolder {
public:
    // Documents by name (name order); false when the folder cannot be listed.
    static bool scan(const std::string& folder, std::map<std::string, DocumentFiles>& documents);

    // Reads one side under one light. A missing infrared or ultraviolet file is derived from the
    // visible one: infrared as its grey levels, ultraviolet dimmed with a blue cast. Returns a
    // ZyrReaderError code (ZYR_ERR_FILE when the side has no visible image).
    static int32_t load(const DocumentFiles& document, int side, Light light, Raster& out);
};

} // namespace zyr

#endif
