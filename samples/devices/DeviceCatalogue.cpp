#include "DeviceCatalogue.h"

#include "AamvaPayloadWriter.h"

namespace glyphor::samples {
namespace {

using ZXing::BarcodeFormat;

Sample card(const std::string& name, std::vector<SampleSymbol> symbols, double module = 3) {
    Sample s;
    s.name = name;
    s.variant = "device";
    s.symbols = std::move(symbols);
    s.module = module;
    return s;
}

std::vector<DeviceSample> build() {
    const std::string usLicence = AamvaPayloadWriter::write(AamvaPayloadDescription::typical(10, false));
    const std::string canadianLicence = AamvaPayloadWriter::write(AamvaPayloadDescription::typical(8, true));

    DeviceSample oneSided;
    oneSided.name = "one-sided";
    {
        DeviceDocument licence{
            "01-licence", card("licence", {{BarcodeFormat::PDF417, usLicence}}), {}, 2.5, -20, 10};
        licence.front.corner = true;
        oneSided.documents.push_back(licence);
        oneSided.documents.push_back({"02-qrcode",
                                      card("qrcode", {{BarcodeFormat::QRCode, "GLYPHOR DEVICE QR 0002"}}, 5),
                                      {},
                                      0,
                                      30,
                                      -15});
        oneSided.documents.push_back(
            {"03-datamatrix",
             card("datamatrix", {{BarcodeFormat::DataMatrix, "GLYPHOR DEVICE DM 0003"}}, 6),
             {},
             -1.5,
             0,
             0});
        oneSided.documents.push_back(
            {"04-code128", card("code128", {{BarcodeFormat::Code128, "GLY-DEV-0004"}}), {}, 0, -40, 20});
        oneSided.documents.push_back({"05-blank", card("blank", {}), {}, 0, 0, 0});
    }

    DeviceSample twoSided;
    twoSided.name = "two-sided";
    twoSided.twoSided = true;
    {
        DeviceDocument licence{"01-licence",
                               card("licence-front", {{BarcodeFormat::Code128, "D1234562"}}),
                               card("licence-back", {{BarcodeFormat::PDF417, canadianLicence}}),
                               0,
                               0,
                               0};
        licence.back->corner = true;
        twoSided.documents.push_back(licence);
        twoSided.documents.push_back(
            {"02-card", card("card-front", {{BarcodeFormat::QRCode, "GLYPHOR FRONT QR"}}, 5),
             card("card-back", {{BarcodeFormat::DataMatrix, "GLYPHOR BACK DM"}}, 6), 1.5, 10, -10});
        twoSided.documents.push_back({"03-blank", card("blank-front", {}), std::nullopt, 0, 0, 0});
    }
    return {oneSided, twoSided};
}

} // namespace

const std::vector<DeviceSample>& deviceCatalogue() {
    static const std::vector<DeviceSample> devices = build();
    return devices;
}

const DeviceSample* findDevice(const std::string& name) {
    for (const DeviceSample& d : deviceCatalogue())
        if (d.name == name)
            return &d;
    return nullptr;
}

std::string deviceIni(const DeviceSample& device) {
    std::string ini =
        "; A virtual " + std::string(device.twoSided ? "two" : "one") +
        "-sided reader. Start Glyphor with ZYRREADER_DEVICE naming this folder;\n"
        "; each NAME.png in documents/ is a document put on the reader (NAME.back.png its second\n"
        "; side), taken in name order; files copied in later arrive later.\n"
        "[Device]\n"
        "TwoSided=" +
        std::string(device.twoSided ? "1" : "0") +
        "\n"
        "\n"
        "[Feed]\n"
        "; A document counts as taken away this long after its capture has finished.\n"
        "RemovalTimeMs=2000\n"
        "; A new document lies this long on the platen before it is detected.\n"
        "ArrivalDelayMs=300\n"
        "\n"
        "[Documents]\n"
        "Folder=documents\n";
    return ini;
}

} // namespace glyphor::samples
