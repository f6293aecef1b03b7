#include "ZBarDecoder.h"

#include "GreyImage.h"
#include "PayloadType.h"

#include <zbar.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <memory>
#include <new>
#include <string>

using namespace zbar; // the C API, which zbar.h puts in a namespace for C++

namespace kvdecode {
namespace {

struct ZBarFormat {
    const char* name;
    zbar_symbol_type_t type;
    int32_t symbology;
};

const ZBarFormat kFormats[] = {
    {"EAN13", ZBAR_EAN13, ZYR_SYM_EAN13},
    {"EAN8", ZBAR_EAN8, ZYR_SYM_EAN8},
    {"UPCA", ZBAR_UPCA, ZYR_SYM_UPCA},
    {"UPCE", ZBAR_UPCE, ZYR_SYM_UPCE},
    {"Code128", ZBAR_CODE128, ZYR_SYM_CODE128},
    {"Code39", ZBAR_CODE39, ZYR_SYM_CODE39},
    {"I25", ZBAR_I25, ZYR_SYM_ITF},
    {"QRCode", ZBAR_QRCODE, ZYR_SYM_QRCODE},
};

int32_t symbologyOf(zbar_symbol_type_t type) {
    for (const ZBarFormat& f : kFormats)
        if (f.type == type)
            return f.symbology;
    return ZYR_SYM_UNKNOWN;
}

struct ScannerDeleter {
    void operator()(zbar_image_scanner_t* p) const { zbar_image_scanner_destroy(p); }
};
struct ImageDeleter {
    void operator()(zbar_image_t* p) const { zbar_image_destroy(p); }
};

// ZBar gives a polyline of the points where it read the symbol; its bounding box, turned by the
// symbol's orientation so that the first corner is the symbol's own top-left.
void cornersOf(const zbar_symbol_t* symbol, ZyrPoint (&corners)[4]) {
    unsigned n = zbar_symbol_get_loc_size(symbol);
    int left = INT_MAX, top = INT_MAX, right = INT_MIN, bottom = INT_MIN;
    for (unsigned i = 0; i < n; ++i) {
        int x = zbar_symbol_get_loc_x(symbol, i);
        int y = zbar_symbol_get_loc_y(symbol, i);
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    if (n == 0)
        left = top = right = bottom = 0;
    const ZyrPoint box[4] = {{left, top}, {right, top}, {right, bottom}, {left, bottom}};
    int turn = 0;
    switch (zbar_symbol_get_orientation(symbol)) {
    case ZBAR_ORIENT_RIGHT:
        turn = 1;
        break;
    case ZBAR_ORIENT_DOWN:
        turn = 2;
        break;
    case ZBAR_ORIENT_LEFT:
        turn = 3;
        break;
    default:
        break;
    }
    for (int i = 0; i < 4; ++i)
        corners[i] = box[(i + turn) % 4];
}

// A symbol's bytes and symbology. ZBar gives a main symbol read with its add-on as a composite of
// the two; it comes as the main digits, a space and the add-on, as zxing-cpp gives it.
std::string payloadOf(const zbar_symbol_t* symbol, int32_t& symbology) {
    symbology = symbologyOf(zbar_symbol_get_type(symbol));
    if (zbar_symbol_get_type(symbol) != ZBAR_COMPOSITE)
        return std::string(zbar_symbol_get_data(symbol), zbar_symbol_get_data_length(symbol));
    std::string main, addOn;
    for (const zbar_symbol_t* part = zbar_symbol_first_component(symbol); part; part = zbar_symbol_next(part)) {
        const zbar_symbol_type_t type = zbar_symbol_get_type(part);
        std::string data(zbar_symbol_get_data(part), zbar_symbol_get_data_length(part));
        if (type == ZBAR_EAN2 || type == ZBAR_EAN5) {
            addOn = data;
        } else {
            main = data;
            symbology = symbologyOf(type);
        }
    }
    return addOn.empty() ? main : main + " " + addOn;
}

} // namespace

ZBarDecoder::ZBarDecoder() {
    for (const ZBarFormat& f : kFormats)
        symbolTypes_.push_back(f.type);
}

void ZBarDecoder::configure(SettingsReader& r) {
    const std::string s = "Decoder";
    std::vector<std::string> names = r.list(s, "Formats", {});
    if (!names.empty()) {
        symbolTypes_.clear();
        for (const std::string& name : names) {
            auto f = std::find_if(std::begin(kFormats), std::end(kFormats),
                                  [&](const ZBarFormat& format) { return name == format.name; });
            if (f == std::end(kFormats))
                r.fail("[Decoder] Formats: this plug-in does not read " + name);
            else
                symbolTypes_.push_back(f->type);
        }
    }
    maxSymbols_ = static_cast<int>(r.integer(s, "MaxSymbols", maxSymbols_, 1, 255));
    tryHarder_ = r.boolean(s, "TryHarder", tryHarder_);
    tryInverted_ = r.boolean(s, "TryInverted", tryInverted_);
    addOns_ = r.boolean(s, "EanAddOn", addOns_);
}

void ZBarDecoder::decode(const ZyrImage& image, SymbolSink& sink) {
    GreyImage grey(image);
    std::unique_ptr<zbar_image_scanner_t, ScannerDeleter> scanner(zbar_image_scanner_create());
    std::unique_ptr<zbar_image_t, ImageDeleter> img(zbar_image_create());
    if (!scanner || !img)
        throw std::bad_alloc();
    zbar_image_scanner_set_config(scanner.get(), ZBAR_NONE, ZBAR_CFG_ENABLE, 0);
    for (int type : symbolTypes_)
        zbar_image_scanner_set_config(scanner.get(), zbar_symbol_type_t(type), ZBAR_CFG_ENABLE, 1);
    if (addOns_) {
        zbar_image_scanner_set_config(scanner.get(), ZBAR_EAN2, ZBAR_CFG_ENABLE, 1);
        zbar_image_scanner_set_config(scanner.get(), ZBAR_EAN5, ZBAR_CFG_ENABLE, 1);
        zbar_image_scanner_set_config(scanner.get(), ZBAR_COMPOSITE, ZBAR_CFG_ENABLE, 1);
    }
    // Keep QR bytes as encoded instead of ZBar's guess at a character set.
    zbar_image_scanner_set_config(scanner.get(), ZBAR_QRCODE, ZBAR_CFG_BINARY, 1);
    const int density = tryHarder_ ? 1 : 2;
    zbar_image_scanner_set_config(scanner.get(), ZBAR_NONE, ZBAR_CFG_X_DENSITY, density);
    zbar_image_scanner_set_config(scanner.get(), ZBAR_NONE, ZBAR_CFG_Y_DENSITY, density);
    zbar_image_scanner_set_config(scanner.get(), ZBAR_NONE, ZBAR_CFG_TEST_INVERTED, tryInverted_ ? 1 : 0);

    zbar_image_set_format(img.get(), zbar_fourcc('Y', '8', '0', '0'));
    zbar_image_set_size(img.get(), unsigned(grey.width()), unsigned(grey.height()));
    zbar_image_set_data(img.get(), grey.data(), unsigned(grey.width()) * unsigned(grey.height()), nullptr);
    if (zbar_scan_image(scanner.get(), img.get()) < 0)
        throw std::runtime_error("zbar_scan_image failed");

    int found = 0;
    for (const zbar_symbol_t* symbol = zbar_image_first_symbol(img.get()); symbol && found < maxSymbols_;
         symbol = zbar_symbol_next(symbol)) {
        ZyrPoint corners[4];
        cornersOf(symbol, corners);
        int32_t symbology = ZYR_SYM_UNKNOWN;
        const std::string data = payloadOf(symbol, symbology);
        if (symbology == ZYR_SYM_UNKNOWN)
            continue; // an add-on without its main symbol
        ++found;
        const auto* bytes = reinterpret_cast<const uint8_t*>(data.data());
        if (!sink.emit(symbology, bytes, data.size(), guessTextEci(bytes, data.size()), corners))
            break;
    }
}

} // namespace kvdecode
