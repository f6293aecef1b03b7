#include "capture/DocumentFolder.h"

#include "capture/RasterOps.h"
#include "core/Log.h"
#include "imagecodec/ImageDecoder.h"

#include <filesystem>
#include <strings.h>

namespace zyr {

namespace fs = std::filesystem;

namespace {

bool endsWith(const std::string& text, const char* suffix, std::string& rest) {
    const size_t length = std::char_traits<char>::length(suffix);
    if (text.size() <= length || strcasecmp(text.c_str() + text.size() - length, suffix) != 0)
        return false;
    rest = text.substr(0, text.size() - length);
    return true;
}

} // namespace

Light lightOfMask(uint32_t lightMask) {
    if (lightMask & ZYR_LIGHT_VISIBLE)
        return Light::Visible;
    if (lightMask & ZYR_LIGHT_IR)
        return Light::Infrared;
    if (lightMask & ZYR_LIGHT_UV)
        return Light::Ultraviolet;
    return Light::Visible;
}

bool DocumentFolder::scan(const std::string& folder, std::map<std::string, DocumentFiles>& documents) {
    documents.clear();
    std::error_code error;
    fs::directory_iterator it(folder, error), end;
    if (error)
        return false;
    std::map<std::string, DocumentFiles> found;
    for (; it != end; it.increment(error)) {
        if (error)
            return false;
        const std::string file = it->path().filename().string();
        std::string stem;
        if (file.empty() || file[0] == '.' || !it->is_regular_file(error))
            continue;
        if (!endsWith(file, ".png", stem) && !endsWith(file, ".jpg", stem) &&
            !endsWith(file, ".jpeg", stem) && !endsWith(file, ".bmp", stem))
            continue;
        Light light = Light::Visible;
        std::string rest;
        if (endsWith(stem, ".ir", rest))
            light = Light::Infrared, stem = rest;
        else if (endsWith(stem, ".uv", rest))
            light = Light::Ultraviolet, stem = rest;
        int side = 0;
        if (endsWith(stem, ".back", rest))
            side = 1, stem = rest;
        std::string& slot = found[stem].files[side][int(light)];
        // Two files for one slot (NAME.png and NAME.jpg): the first in name order wins.
        if (slot.empty() || it->path().string() < slot)
            slot = it->path().string();
    }
    for (auto& entry : found)
        if (entry.second.hasSide(0))
            documents.insert(std::move(entry));
    return true;
}

int32_t DocumentFolder::load(const DocumentFiles& document, int side, Light light, Raster& out) {
    const std::string& own = document.files[side][int(light)];
    const std::string& visible = document.files[side][int(Light::Visible)];
    const std::string& path = own.empty() ? visible : own;
    if (path.empty())
        return ZYR_ERR_FILE;
    RawImage raw;
    if (const int32_t result = ImageDecoder::decodeFile(path, raw)) {
        Log::write(ZYR_LOG_CAMERA, LogError, "document image %s not read: error %d", path.c_str(), result);
        return result;
    }
    Raster picture;
    if (!Raster::fromRaw(raw, picture))
        return ZYR_ERR_OUT_OF_MEMORY;
    if (!own.empty() || light == Light::Visible) {
        out = std::move(picture);
        return ZYR_OK;
    }
    if (light == Light::Infrared) {
        // Most inks and colours look alike in the near infrared: what is left is brightness.
        out = picture.toGrey();
        return ZYR_OK;
    }
    static const double ultraviolet[3] = {0.25, 0.3, 0.6};
    out = RasterOps::tint(picture, ultraviolet);
    return ZYR_OK;
}

} // namespace zyr
