#include "ZXingDecoder.h"

#include "ZXingSymbol.h"

#include <ZXing/ReadBarcode.h>

#include <stdexcept>

namespace kvdecode {
namespace {

ZXing::ImageFormat zxingFormat(int32_t pixelFormat) {
    switch (pixelFormat) {
    case ZYR_PIXEL_GREY8:
        return ZXing::ImageFormat::Lum;
    case ZYR_PIXEL_RGB24:
        return ZXing::ImageFormat::RGB;
    default:
        return ZXing::ImageFormat::BGRX;
    }
}

bool parseBinarizer(const std::string& name, ZXing::Binarizer& out) {
    using B = ZXing::Binarizer;
    const std::pair<const char*, B> names[] = {{"LocalAverage", B::LocalAverage},
                                               {"GlobalHistogram", B::GlobalHistogram},
                                               {"FixedThreshold", B::FixedThreshold},
                                               {"BoolCast", B::BoolCast}};
    for (const auto& [text, value] : names)
        if (name == text) {
            out = value;
            return true;
        }
    return false;
}

} // namespace

ZXingDecoder::ZXingDecoder(ZXing::BarcodeFormats offered, ZXing::BarcodeFormats defaults)
    : offered_(offered) {
    hints_.setFormats(defaults);
}

void ZXingDecoder::configure(SettingsReader& r) {
    const std::string s = "Decoder";
    ZXing::BarcodeFormats formats;
    for (const std::string& name : r.list(s, "Formats", {})) {
        ZXing::BarcodeFormat format = ZXing::BarcodeFormatFromString(name);
        if (format == ZXing::BarcodeFormat::None || !offered_.testFlag(format))
            r.fail("[Decoder] Formats: this plug-in does not read " + name);
        formats |= format;
    }
    if (!formats.empty())
        hints_.setFormats(formats);

    hints_.setTryHarder(r.boolean(s, "TryHarder", hints_.tryHarder()));
    hints_.setTryRotate(r.boolean(s, "TryRotate", hints_.tryRotate()));
    hints_.setTryDownscale(r.boolean(s, "TryDownscale", hints_.tryDownscale()));
    hints_.setIsPure(r.boolean(s, "IsPure", hints_.isPure()));
    hints_.setMaxNumberOfSymbols(
        static_cast<uint8_t>(r.integer(s, "MaxSymbols", hints_.maxNumberOfSymbols(), 1, 255)));
    hints_.setMinLineCount(static_cast<uint8_t>(r.integer(s, "MinLineCount", hints_.minLineCount(), 1, 255)));
    hints_.setDownscaleFactor(
        static_cast<uint8_t>(r.integer(s, "DownscaleFactor", hints_.downscaleFactor(), 2, 4)));
    hints_.setDownscaleThreshold(
        static_cast<uint16_t>(r.integer(s, "DownscaleThreshold", hints_.downscaleThreshold(), 1, 65535)));
    std::string binarizer = r.text(s, "Binarizer", "");
    ZXing::Binarizer chosen = hints_.binarizer();
    if (!binarizer.empty() && !parseBinarizer(binarizer, chosen))
        r.fail("[Decoder] Binarizer: unknown binarizer " + binarizer);
    hints_.setBinarizer(chosen);
}

void ZXingDecoder::decode(const ZyrImage& image, SymbolSink& sink) {
    ZXing::ImageView view(image.Pixels, image.Width, image.Height, zxingFormat(image.PixelFormat),
                          image.Stride);
    const ZXing::Results results = ZXing::ReadBarcodes(view, hints_);
    for (const ZXing::Result& result : results) {
        if (!result.isValid())
            continue;
        const ZXing::ByteArray& bytes = result.bytes();
        int32_t eci = result.hasECI() ? firstEci(result.bytesECI()) : ZYR_ECI_NONE;
        const ZXing::Position& p = result.position();
        ZyrPoint corners[4];
        for (int i = 0; i < 4; ++i)
            corners[i] = ZyrPoint{p[i].x, p[i].y};
        if (!sink.emit(symbologyOf(result.format()), bytes.data(), bytes.size(), eci, corners))
            break;
    }
}

} // namespace kvdecode
