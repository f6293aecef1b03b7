#include "ImageRequirements.h"

#include <cstring>
#include <limits>

namespace kvdecode {
namespace {

constexpr int64_t kU32 = std::numeric_limits<uint32_t>::max();
constexpr int64_t kI32Min = std::numeric_limits<int32_t>::min();
constexpr int64_t kI32Max = std::numeric_limits<int32_t>::max();

uint32_t lightMaskFor(const std::string& light) {
    if (light == "IMAGE_IR")
        return ZYR_LIGHT_IR;
    if (light == "IMAGE_UV")
        return ZYR_LIGHT_UV;
    return ZYR_LIGHT_VISIBLE;
}

ZyrImageSettings readRecord(SettingsReader& r, const std::string& s, const std::string& name,
                            const std::string& defaultLight) {
    ZyrImageSettings rec;
    std::memset(&rec, 0, sizeof rec);
    std::string light = r.text(s, "LightName", defaultLight);
    if (name.size() >= sizeof rec.ImageName)
        r.fail("image name too long: " + name);
    if (light.size() >= sizeof rec.LightName)
        r.fail("[" + s + "] LightName too long");
    std::strncpy(rec.ImageName, name.c_str(), sizeof rec.ImageName - 1);
    std::strncpy(rec.LightName, light.c_str(), sizeof rec.LightName - 1);

    auto u32 = [&](const char* key, uint32_t fallback) {
        return static_cast<uint32_t>(r.integer(s, key, fallback, 0, kU32));
    };
    auto u8 = [&](const char* key, uint8_t fallback) {
        return static_cast<uint8_t>(r.integer(s, key, fallback, 0, 255));
    };
    rec.LightMask = u32("LightMask", lightMaskFor(light));
    rec.ProcessingMode = static_cast<int32_t>(r.integer(s, "ProcessingMode", 0, kI32Min, kI32Max));

    ZyrCameraParameters& c = rec.Camera;
    c.ExposureMicroseconds = u32("ExposureMicroseconds", 10000);
    c.Gain = u32("Gain", 100);
    c.Brightness = u32("Brightness", 128);
    c.Contrast = u32("Contrast", 128);
    c.WhiteBalance = u32("WhiteBalance", 5500);
    c.LedIntensity = u32("LedIntensity", 100);
    c.OutputScale = static_cast<float>(r.real(s, "OutputScale", 1.0));
    c.DetectThreshold = static_cast<float>(r.real(s, "DetectThreshold", 0.0));
    c.BorderPixels = u32("BorderPixels", 0);
    c.Sharpness = u32("Sharpness", 0);
    c.Saturation = u32("Saturation", 0);
    c.OutputDpi = u32("OutputDpi", 300);
    c.CaptureResolution = u32("CaptureResolution", 300);
    c.AutoExposure = u8("AutoExposure", 0);
    c.HardwareDeskew = u8("HardwareDeskew", 0);
    c.Binning = u8("Binning", 1);

    rec.Colour = u8("Colour", 0);
    rec.Normalise = u8("Normalise", 0);
    rec.Deskew = u8("Deskew", 0);
    rec.CropWidth = u8("CropWidth", 0);
    rec.CropHeight = u8("CropHeight", 0);
    rec.ExtraProcessing = u8("ExtraProcessing", 0);
    rec.Sharpen = u8("Sharpen", 0);
    rec.Rotate90 = u8("Rotate90", 0);
    rec.Rotate180 = u8("Rotate180", 0);
    rec.MirrorHorizontal = u8("MirrorHorizontal", 0);
    rec.MirrorVertical = u8("MirrorVertical", 0);
    rec.Greyscale = u8("Greyscale", 0);
    rec.UseBorder = u8("UseBorder", 0);
    return rec;
}

} // namespace

void ImageRequirements::load(SettingsReader& reader, const std::string& defaultImage,
                             const std::string& defaultLight) {
    images_.clear();
    std::vector<std::string> names = reader.list("Images", "Required", {defaultImage});
    if (names.empty())
        reader.fail("[Images] Required names no image");
    for (const std::string& name : names) {
        if (name == "Images" || name == "Decoder")
            reader.fail("an image cannot be named " + name);
        images_.push_back(readRecord(reader, name, name, defaultLight));
    }
}

std::string ImageRequirements::joinedNames() const {
    std::string joined;
    for (const ZyrImageSettings& image : images_) {
        if (!joined.empty())
            joined += ',';
        joined += image.ImageName;
    }
    return joined;
}

bool ImageRequirements::accepts(const char* imageName) const {
    if (!imageName || !*imageName)
        return true;
    for (const ZyrImageSettings& image : images_)
        if (std::strcmp(image.ImageName, imageName) == 0)
            return true;
    return false;
}

} // namespace kvdecode
