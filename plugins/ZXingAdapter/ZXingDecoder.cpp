#include "ZXingDecoder.h"

#include "GreyImage.h"
#include "ZXingSymbol.h"

#include <ZXing/ReadBarcode.h>

#include <algorithm>
#include <memory>
#include <vector>
#include <climits>
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

struct Box {
    int left, top, right, bottom;
    bool overlaps(const Box& o) const {
        return left <= o.right && o.left <= right && top <= o.bottom && o.top <= bottom;
    }
};

Box boxOf(const ZXing::Position& p) {
    Box b{INT_MAX, INT_MAX, INT_MIN, INT_MIN};
    for (const ZXing::PointI& c : p) {
        b.left = std::min(b.left, c.x);
        b.right = std::max(b.right, c.x);
        b.top = std::min(b.top, c.y);
        b.bottom = std::max(b.bottom, c.y);
    }
    return b;
}

// Bar edges along one scan line of a grey image, counted with the dark and light levels of the
// line zxing read, so that noise on a plain card does not count.
class EdgeCounter {
public:
    EdgeCounter(const GreyImage& grey, bool rows) : grey_(grey), rows_(rows) {}

    void learn(int line, int from, int to) {
        std::vector<uint8_t> values;
        for (int i = from; i <= to; ++i)
            values.push_back(at(line, i));
        std::sort(values.begin(), values.end());
        const int dark = values[values.size() / 4], light = values[values.size() * 3 / 4];
        threshold_ = (dark + light) / 2;
        band_ = std::max(8, (light - dark) / 4);
    }

    int edges(int line, int from, int to) const {
        int count = 0, state = 0;
        for (int i = from; i <= to; ++i) {
            const int v = at(line, i);
            const int next = v < threshold_ - band_ ? -1 : v > threshold_ + band_ ? 1 : state;
            if (state != 0 && next != state)
                ++count;
            state = next;
        }
        return count;
    }

private:
    uint8_t at(int line, int i) const {
        const int x = rows_ ? i : line, y = rows_ ? line : i;
        return grey_.data()[size_t(y) * size_t(grey_.width()) + size_t(x)];
    }

    const GreyImage& grey_;
    bool rows_;
    int threshold_ = 128;
    int band_ = 32;
};

// The box a linear symbol covers: zxing gives the lines it read, so the box grows across the bars
// while the scan lines still cross about as many bar edges.
Box symbolBox(const GreyImage& grey, const ZXing::Position& p) {
    const Box read = boxOf(p);
    const bool rows = std::abs(p.topRight().x - p.topLeft().x) >= std::abs(p.topRight().y - p.topLeft().y);
    const int lines = rows ? grey.height() : grey.width();
    const int extent = rows ? grey.width() : grey.height();
    const int length = rows ? read.right - read.left : read.bottom - read.top;
    const int margin = std::max(8, length / 10);
    const int from = std::max(0, (rows ? read.left : read.top) - margin);
    const int to = std::min(extent - 1, (rows ? read.right : read.bottom) + margin);
    int first = std::clamp(rows ? read.top : read.left, 0, lines - 1);
    int last = std::clamp(rows ? read.bottom : read.right, 0, lines - 1);
    EdgeCounter counter(grey, rows);
    const int middle = (first + last) / 2;
    counter.learn(middle, std::max(0, rows ? read.left : read.top), std::min(extent - 1, rows ? read.right : read.bottom));
    const int wanted = std::max(4, counter.edges(middle, from, to) / 2);
    while (first > 0 && counter.edges(first - 1, from, to) >= wanted)
        --first;
    while (last < lines - 1 && counter.edges(last + 1, from, to) >= wanted)
        ++last;
    first = std::max(0, first - margin);
    last = std::min(lines - 1, last + margin);
    return rows ? Box{from, first, to, last} : Box{first, from, last, to};
}

void paintLight(GreyImage& grey, const Box& b) {
    for (int y = b.top; y <= b.bottom; ++y)
        std::fill_n(grey.data() + size_t(y) * size_t(grey.width()) + size_t(b.left), b.right - b.left + 1,
                    uint8_t(255));
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
    for (const ZXing::Result& result : read(image)) {
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
