// The generated AAMVA PDF417 sample decoded by the real PDF417 plug-in and the decoded bytes parsed
// by the real library into the dialog. From the bytes on, the path is the one the generated-payload
// end-to-end tests follow through the dialog and both exports.
#include "CAAMVADialog.h"
#include "SampleCatalogue.h"

#include <gtest/gtest.h>

#include <QImage>

#include <string>

namespace {

// The bytes of every symbol the plug-in finds, appended in arrival order as a results row keeps them.
std::string DecodeWithPlugin(const std::string& plugin, const std::string& imagePath, int32_t* code) {
    const std::string folder = GLYPHOR_PLUGIN_DIR;
    uint64_t handle = 0;
    *code = ZyrReader_ImagePluginLoad((folder + "/KVDECODE_" + plugin + ".so").c_str(),
                                      (folder + "/#KVDECODE_" + plugin + ".ini").c_str(), &handle, 0);
    if (*code != ZYR_OK)
        return "";
    const QImage grey = QImage(QString::fromStdString(imagePath)).convertToFormat(QImage::Format_Grayscale8);
    ZyrImage image{};
    image.Width = grey.width();
    image.Height = grey.height();
    image.Stride = static_cast<int32_t>(grey.bytesPerLine());
    image.PixelFormat = ZYR_PIXEL_GREY8;
    image.Pixels = const_cast<uint8_t*>(grey.constBits());
    std::string bytes;
    auto keep = [](void* context, int32_t, int32_t, int32_t, const ZyrSymbolResult* symbol) {
        static_cast<std::string*>(context)->append(reinterpret_cast<const char*>(symbol->Data),
                                                   static_cast<std::size_t>(symbol->DataLength));
        ZyrReader_DestroyCachedObject(symbol);
    };
    *code = ZyrReader_ImagePluginDecode(true, handle, &image, "", 1, "", keep, &bytes, 0, 0, 0);
    return bytes;
}

TEST(AAMVADecodeEndToEnd, SampleCardDecodesToItsPayloadAndParses) {
    const glyphor::samples::Sample* sample = glyphor::samples::findSample("aamva-pdf417");
    ASSERT_NE(sample, nullptr);
    const std::string path = std::string(GLYPHOR_SAMPLES_DIR) + "/" + glyphor::samples::fileNameOf(*sample);
    ASSERT_EQ(sample->symbols.size(), 1u);
    const std::string payload = sample->symbols[0].payload;

    int32_t code = -1;
    const std::string bytes = DecodeWithPlugin("Pdf417", path, &code);
    ASSERT_EQ(code, ZYR_OK) << ZyrReader_ErrorText(code);
    ASSERT_EQ(bytes, payload);

    CAAMVADialog dialog;
    ASSERT_EQ(
        dialog.Parse(reinterpret_cast<const uint8_t*>(bytes.data()), static_cast<int32_t>(bytes.size())), 0);
    const AAMVARecord& record = *dialog.Result().Record();
    EXPECT_FALSE(std::string(record.Surname).empty());
    EXPECT_NE(payload.find("DCS" + std::string(record.Surname)), std::string::npos) << record.Surname;
    EXPECT_NE(payload.find("DAQ" + std::string(record.LicenceNumber)), std::string::npos)
        << record.LicenceNumber;
}

} // namespace
