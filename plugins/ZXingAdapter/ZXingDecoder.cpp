#include "ZXingDecoder.h"

#include "GreyImage.h"
#include "RetryPass.h"
#include "SymbolMask.h"
#include "ZXingSymbol.h"

#include <ZXing/ReadBarcode.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <vector>

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
    hints_.setEanAddOnSymbol(r.boolean(s, "EanAddOn", true) ? ZXing::EanAddOnSymbol::Read
                                                              : ZXing::EanAddOnSymbol::Ignore);
    mixedAsUtf8_ = r.boolean(s, "MixedEciAsUtf8", mixedAsUtf8_);
    for (const std::string& text : r.list(s, "Retry", {})) {
        RetryPass pass;
        if (!parseRetryPass(text, pass))
            r.fail("[Decoder] Retry: not a binarizer with an optional @degrees and +Downscale: " + text);
        retries_.push_back(pass);
    }
    for (const std::string& name : r.list(s, "RetryFormats", {})) {
        ZXing::BarcodeFormat format = ZXing::BarcodeFormatFromString(name);
        if (format == ZXing::BarcodeFormat::None || !offered_.testFlag(format))
            r.fail("[Decoder] RetryFormats: this plug-in does not read " + name);
        retryFormats_ |= format;
    }
}

ZXing::Results ZXingDecoder::retry(const ZyrImage& image) const {
    const ZXing::ImageView view(image.Pixels, image.Width, image.Height, zxingFormat(image.PixelFormat),
                                image.Stride);
    const ZXing::BarcodeFormats wanted =
        hints_.formats().empty() ? ZXing::BarcodeFormats(ZXing::BarcodeFormat::Any) : hints_.formats();
    const ZXing::BarcodeFormats formats = retryFormats_.empty() ? wanted : retryFormats_ & wanted;
    if (formats.empty())
        return {};
    std::unique_ptr<GreyImage> grey;
    for (const RetryPass& pass : retries_) {
        ZXing::DecodeHints hints = ZXing::DecodeHints(hints_).setFormats(formats).setBinarizer(pass.binarizer)
                                       .setTryDownscale(pass.downscale);
        // One symbol at a time where linear formats take part (see read()).
        if (!(formats & ZXing::BarcodeFormat::LinearCodes).empty())
            hints.setMaxNumberOfSymbols(1);
        ZXing::Results found;
        if (pass.degrees == 0) {
            found = ZXing::ReadBarcodes(view, hints);
        } else {
            if (!grey)
                grey = std::make_unique<GreyImage>(image);
            const TurnedImage turned(*grey, pass.degrees);
            found = ZXing::ReadBarcodes(
                ZXing::ImageView(turned.data(), turned.width(), turned.height(), ZXing::ImageFormat::Lum), hints);
            for (ZXing::Result& result : found) {
                ZXing::Position p = result.position();
                for (ZXing::PointI& corner : p)
                    corner = turned.original(corner);
                result.setPosition(p);
            }
        }
        if (std::any_of(found.begin(), found.end(), [](const ZXing::Result& r) { return r.isValid(); }))
            return found;
    }
    return {};
}

ZXing::Results ZXingDecoder::read(const ZyrImage& image) const {
    const ZXing::ImageView view(image.Pixels, image.Width, image.Height, zxingFormat(image.PixelFormat),
                                image.Stride);
    const ZXing::BarcodeFormats wanted =
        hints_.formats().empty() ? ZXing::BarcodeFormats(ZXing::BarcodeFormat::Any) : hints_.formats();
    const ZXing::BarcodeFormats linear = wanted & ZXing::BarcodeFormat::LinearCodes;
    const int most = hints_.maxNumberOfSymbols() ? hints_.maxNumberOfSymbols() : 255;
    if (linear.empty() || most == 1)
        return ZXing::ReadBarcodes(view, hints_);

    // zxing-cpp 1.4 aborts on an assertion when one call finds two linear results with the same
    // content (two copies of a label, or one symbol seen by both the row and the column scan).
    // Linear symbols are therefore read one per call, each found one painted out before the next.
    ZXing::Results results;
    const ZXing::BarcodeFormats matrix = wanted & ZXing::BarcodeFormat::MatrixCodes;
    if (!matrix.empty())
        results = ZXing::ReadBarcodes(view, ZXing::DecodeHints(hints_).setFormats(matrix));
    ZXing::DecodeHints one = ZXing::DecodeHints(hints_).setFormats(linear).setMaxNumberOfSymbols(1);
    std::unique_ptr<GreyImage> masked;
    ZXing::ImageView current = view;
    std::vector<Box> painted;
    while (int(results.size()) < most) {
        ZXing::Results found = ZXing::ReadBarcodes(current, one);
        if (found.empty())
            break;
        ZXing::Result& result = found.front();
        // What is left of a painted-out symbol could be read again: stop there.
        const Box read = boxOf(result.position());
        if (std::any_of(painted.begin(), painted.end(), [&](const Box& b) { return b.overlaps(read); }))
            break;
        if (!masked) {
            masked = std::make_unique<GreyImage>(image);
            current = ZXing::ImageView(masked->data(), masked->width(), masked->height(), ZXing::ImageFormat::Lum);
        }
        painted.push_back(symbolBox(*masked, result.position()));
        paintLight(*masked, painted.back());
        results.push_back(std::move(result));
    }
    std::stable_sort(results.begin(), results.end(), [](const ZXing::Result& a, const ZXing::Result& b) {
        const ZXing::PointI pa = a.position().topLeft(), pb = b.position().topLeft();
        return pa.y < pb.y || (pa.y == pb.y && pa.x < pb.x);
    });
    return results;
}

void ZXingDecoder::decode(const ZyrImage& image, SymbolSink& sink) {
    ZXing::Results results = read(image);
    if (!retries_.empty() &&
        std::none_of(results.begin(), results.end(), [](const ZXing::Result& r) { return r.isValid(); }))
        results = retry(image);
    for (const ZXing::Result& result : results) {
        if (!result.isValid())
            continue;
        const SymbolPayload payload = payloadOf(result, mixedAsUtf8_);
        const ZXing::Position& p = result.position();
        ZyrPoint corners[4];
        for (int i = 0; i < 4; ++i)
            corners[i] = ZyrPoint{p[i].x, p[i].y};
        if (!sink.emit(symbologyOf(result.format()), reinterpret_cast<const uint8_t*>(payload.bytes.data()),
                       payload.bytes.size(), payload.eci, corners))
            break;
    }
}

} // namespace kvdecode
