#include "SampleCatalogue.h"

#include "AamvaPayloadWriter.h"

#include <tuple>

namespace glyphor::samples {
namespace {

using ZXing::BarcodeFormat;
using ZXing::CharacterSet;

struct FormatSpec {
    const char* tag;
    BarcodeFormat format;
    const char* payload;
};

// Known contents for every format the plug-ins read and zxing-cpp can write.
const FormatSpec kFormats[] = {
    {"pdf417", BarcodeFormat::PDF417, "GLYPHOR PDF417 SAMPLE 0001"},
    {"qrcode", BarcodeFormat::QRCode, "GLYPHOR QR SAMPLE 42"},
    {"datamatrix", BarcodeFormat::DataMatrix, "GLYPHOR DM 1234567890"},
    {"aztec", BarcodeFormat::Aztec, "GLYPHOR AZTEC SAMPLE"},
    {"code128", BarcodeFormat::Code128, "GLY-128-0042"},
    {"code39", BarcodeFormat::Code39, "GLYPHOR-39"},
    {"code93", BarcodeFormat::Code93, "GLYPHOR-93"},
    {"ean13", BarcodeFormat::EAN13, "5901234123457"},
    {"ean8", BarcodeFormat::EAN8, "96385074"},
    {"upca", BarcodeFormat::UPCA, "036000291452"},
    {"upce", BarcodeFormat::UPCE, "01234565"},
    {"itf", BarcodeFormat::ITF, "0123456789"},
};

// Bytes that only survive a decoder that keeps every byte: NULs, a high byte, control bytes.
std::string binaryPayload() {
    std::string bytes("GLY\0\x01\x02\xff\x80\x00\x7f"
                      "END\n",
                      14);
    return bytes;
}

Sample base(const std::string& name, const std::string& variant, const FormatSpec& f) {
    Sample s;
    s.name = name;
    s.variant = variant;
    s.symbols.push_back({f.format, f.payload});
    if (isLinear(f.format))
        s.module = 3;
    return s;
}

std::vector<Sample> build() {
    std::vector<Sample> all;
    for (const FormatSpec& f : kFormats) {
        const std::string tag = f.tag;
        const bool linear = isLinear(f.format);

        all.push_back(base(tag + "-plain", "plain", f));

        Sample rotated = base(tag + "-rotated", "rotated", f);
        rotated.angle = linear ? 90 : 17;
        all.push_back(rotated);

        Sample upsideDown = base(tag + "-upside-down", "rotated", f);
        upsideDown.angle = 180;
        upsideDown.type = FileType::Jpeg;
        all.push_back(upsideDown);

        Sample scaled = base(tag + "-scaled", "scaled", f);
        scaled.module = linear ? 2 : 2.5;
        scaled.barHeight = 60;
        scaled.type = FileType::Bmp;
        all.push_back(scaled);

        Sample noisy = base(tag + "-noisy", "noisy", f);
        noisy.noise = 50;
        noisy.type = FileType::Jpeg;
        all.push_back(noisy);

        Sample faint = base(tag + "-low-contrast", "low-contrast", f);
        faint.dark = 140;
        faint.light = 200;
        all.push_back(faint);

        // A full ID-1 card at 600 dpi with a small symbol in its corner.
        Sample document = base(tag + "-document", "document", f);
        document.width = 2024;
        document.height = 1276;
        document.module = linear ? 3 : 4;
        document.corner = true;
        all.push_back(document);
    }

    auto two = [&](const std::string& name, BarcodeFormat format, const char* first, const char* second) {
        Sample s;
        s.name = name;
        s.variant = "multi";
        s.module = isLinear(format) ? 3 : 4;
        s.symbols = {{format, first}, {format, second}};
        all.push_back(s);
    };
    two("two-pdf417", BarcodeFormat::PDF417, "FIRST PDF417", "SECOND PDF417");
    two("two-qrcode", BarcodeFormat::QRCode, "FIRST QR", "SECOND QR");
    two("two-datamatrix", BarcodeFormat::DataMatrix, "FIRST DM", "SECOND DM");
    two("two-code128", BarcodeFormat::Code128, "FIRST-128", "SECOND-128");
    // Two copies of one label: zxing-cpp 1.4 aborts when one call finds both.
    two("two-upce", BarcodeFormat::UPCE, "01234565", "01234565");

    Sample mixed;
    mixed.name = "mixed-formats";
    mixed.variant = "multi";
    mixed.module = 3;
    mixed.symbols = {{BarcodeFormat::QRCode, "MIXED QR"}, {BarcodeFormat::Code128, "MIXED-128"}};
    all.push_back(mixed);

    Sample empty;
    empty.name = "no-symbol";
    empty.variant = "empty";
    all.push_back(empty);

    const std::string utf8 = "Gr\xc3\xbc\xc3\x9f"
                             "e aus Glyphor \xe2\x82\xac";
    for (auto [name, format] : {std::pair{"eci-utf8-qrcode", BarcodeFormat::QRCode},
                                std::pair{"eci-utf8-pdf417", BarcodeFormat::PDF417}}) {
        Sample s;
        s.name = name;
        s.variant = "eci";
        s.symbols = {{format, utf8, CharacterSet::UTF8, 26}};
        all.push_back(s);
    }

    // Text in other character sets: Shift_JIS bytes without a designator, GB18030 with one,
    // Latin-1 without, and a DataMatrix that switches sets part-way (given back as UTF-8).
    auto charset = [&](const char* name, SampleSymbol symbol) {
        Sample s;
        s.name = name;
        s.variant = "charset";
        s.symbols = {symbol};
        all.push_back(s);
    };
    charset("sjis-qrcode", {BarcodeFormat::QRCode, "\x93\xfa\x96\x7b\x8c\xea\x83\x65\x83\x4c\x83\x58\x83\x67",
                            CharacterSet::Unknown, 20,
                            "\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e\xe3\x83\x86\xe3\x82\xad\xe3\x82\xb9\xe3\x83\x88"});
    charset("gb18030-qrcode", {BarcodeFormat::QRCode, "\xd6\xd0\xce\xc4\xce\xc4\xb1\xbe", CharacterSet::GB18030, 29,
                               "\xe4\xb8\xad\xe6\x96\x87\xe6\x96\x87\xe6\x9c\xac"});
    charset("latin1-aztec", {BarcodeFormat::Aztec, "Stra\xdf" "e K\xf6ln", CharacterSet::Unknown, 3});
    SampleSymbol mixedEci{BarcodeFormat::DataMatrix, "Stra\xc3\x9f" "e \xe6\x97\xa5\xe6\x9c\xac", CharacterSet::Unknown,
                          26};
    mixedEci.eciSegments = {{3, "Stra\xdf" "e "}, {20, "\x93\xfa\x96\x7b"}};
    charset("eci-mixed-datamatrix", mixedEci);

    // EAN/UPC with add-ons, given back as the main digits, a space and the add-on.
    for (auto [name, format, digits, addOn] :
         {std::tuple{"ean13-addon2", BarcodeFormat::EAN13, "5901234123457", "12"},
          std::tuple{"upca-addon5", BarcodeFormat::UPCA, "036000291452", "52495"}}) {
        Sample s;
        s.name = name;
        s.variant = "addon";
        s.module = 3;
        SampleSymbol symbol{format, std::string(digits) + " " + addOn};
        symbol.addOn = addOn;
        s.symbols = {symbol};
        all.push_back(s);
    }

    for (auto [name, format] : {std::pair{"binary-qrcode", BarcodeFormat::QRCode},
                                std::pair{"binary-pdf417", BarcodeFormat::PDF417},
                                std::pair{"binary-datamatrix", BarcodeFormat::DataMatrix},
                                std::pair{"binary-aztec", BarcodeFormat::Aztec}}) {
        Sample s;
        s.name = name;
        s.variant = "binary";
        s.symbols = {{format, binaryPayload()}};
        all.push_back(s);
    }
    Sample controls;
    controls.name = "binary-code128";
    controls.variant = "binary";
    controls.module = 3;
    controls.symbols = {{BarcodeFormat::Code128, std::string("AB\0\x01"
                                                             "CD",
                                                             6)}};
    all.push_back(controls);

    Sample aamva;
    aamva.name = "aamva-pdf417";
    aamva.variant = "aamva";
    aamva.module = 2;
    aamva.symbols = {
        {BarcodeFormat::PDF417, AamvaPayloadWriter::write(AamvaPayloadDescription::typical(10, false))}};
    all.push_back(aamva);

    Sample aamvaCard = aamva;
    aamvaCard.name = "aamva-pdf417-document";
    aamvaCard.variant = "document";
    aamvaCard.width = 2024;
    aamvaCard.height = 1276;
    aamvaCard.module = 3;
    aamvaCard.corner = true;
    aamvaCard.type = FileType::Jpeg;
    aamvaCard.symbols = {
        {BarcodeFormat::PDF417, AamvaPayloadWriter::write(AamvaPayloadDescription::typical(8, true))}};
    all.push_back(aamvaCard);

    // A licence card tilted by 3 degrees, which zxing-cpp reads only once the image is turned back.
    Sample tilted = licenceCardSet()[11];
    tilted.name = "aamva-pdf417-tilted";
    tilted.variant = "document";
    all.push_back(tilted);

    Sample colour = base("colour-qrcode", "colour", kFormats[1]);
    colour.colour = true;
    all.push_back(colour);
    return all;
}

} // namespace

std::vector<Sample> licenceCardSet() {
    std::vector<Sample> cards;
    for (int i = 0; i < 30; ++i) {
        Sample card;
        card.name = "licence-card-" + std::string(i < 9 ? "0" : "") + std::to_string(i + 1);
        card.variant = "licence-card";
        card.type = FileType::Jpeg;
        card.jpegQuality = 85;
        card.width = 2024; // ID-1 at 600 dpi
        card.height = 1276;
        card.corner = true;
        card.module = 3 + i % 3;
        card.angle = ((i * 7) % 13 - 6) * 0.5; // -3 to 3 degrees
        card.blur = 1;
        card.noise = 8 + (i % 4) * 4;
        card.colour = i % 3 == 2;
        card.symbols = {{BarcodeFormat::PDF417,
                         AamvaPayloadWriter::write(AamvaPayloadDescription::typical(1 + i % 10, i % 4 == 3))}};
        cards.push_back(card);
    }
    return cards;
}

bool isLinear(ZXing::BarcodeFormat format) {
    return (ZXing::BarcodeFormats(ZXing::BarcodeFormat::LinearCodes)).testFlag(format);
}

const std::vector<Sample>& sampleCatalogue() {
    static const std::vector<Sample> catalogue = build();
    return catalogue;
}

const Sample* findSample(const std::string& name) {
    for (const Sample& s : sampleCatalogue())
        if (s.name == name)
            return &s;
    return nullptr;
}

std::string fileNameOf(const Sample& sample) {
    switch (sample.type) {
    case FileType::Jpeg:
        return sample.name + ".jpg";
    case FileType::Bmp:
        return sample.name + ".bmp";
    default:
        return sample.name + ".png";
    }
}

} // namespace glyphor::samples
