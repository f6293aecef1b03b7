// The generated AAMVA PDF417 sample decoded by the real PDF417 plug-in, the decoded bytes parsed
// by the real library into the dialog, and both exports written from it.
#include "CAAMVADialog.h"
#include "ExportTestSupport.h"
#include "SampleCatalogue.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QTreeWidget>

#include <string>
#include <vector>

namespace {

class ScriptedDialog : public CAAMVADialog {
public:
    QString nextPath;
    std::vector<QString> errors;

protected:
    QString AskSavePath(const QString&) override { return nextPath; }
    void ShowError(const QString& text) override { errors.push_back(text); }
};

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

TEST(AAMVADecodeEndToEnd, SampleCardDecodesParsesShowsAndExports) {
    const glyphor::samples::Sample* sample = glyphor::samples::findSample("aamva-pdf417");
    ASSERT_NE(sample, nullptr);
    const std::string path = std::string(GLYPHOR_SAMPLES_DIR) + "/" + glyphor::samples::fileNameOf(*sample);
    ASSERT_EQ(sample->symbols.size(), 1u);
    const std::string payload = sample->symbols[0].payload;

    int32_t code = -1;
    const std::string bytes = DecodeWithPlugin("Pdf417", path, &code);
    ASSERT_EQ(code, ZYR_OK) << ZyrReader_ErrorText(code);
    ASSERT_EQ(bytes, payload);

    ScriptedDialog dialog;
    ASSERT_EQ(
        dialog.Parse(reinterpret_cast<const uint8_t*>(bytes.data()), static_cast<int32_t>(bytes.size())), 0);
    dialog.show();
    const auto* list = dialog.findChild<QTreeWidget*>(CAAMVADialog::ControlName(CAAMVADialog::IDC_FIELDS));
    ASSERT_NE(list, nullptr);
    const AAMVARecord& record = *dialog.Result().Record();

    // The dialog shows what the library read from the decoded bytes, and the bytes appear as data items.
    const QTreeWidgetItem* parsed = list->topLevelItem(CAAMVADialog::ParsedGroup);
    const QTreeWidgetItem* items = list->topLevelItem(CAAMVADialog::DataItemsGroup);
    ASSERT_GE(parsed->childCount(), 19);
    EXPECT_EQ(parsed->child(16)->text(0), "Surname");
    EXPECT_EQ(parsed->child(16)->text(2).toStdString(), std::string(record.Surname));
    EXPECT_FALSE(std::string(record.Surname).empty());
    EXPECT_NE(payload.find("DCS" + std::string(record.Surname)), std::string::npos) << record.Surname;
    EXPECT_NE(payload.find("DAQ" + std::string(record.LicenceNumber)), std::string::npos)
        << record.LicenceNumber;
    ASSERT_GT(items->childCount(), 10);
    for (int i = 0; i < items->childCount(); ++i) {
        const std::string element = (items->child(i)->text(1) + items->child(i)->text(2)).toStdString();
        EXPECT_NE(payload.find(element), std::string::npos) << element;
    }

    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    dialog.nextPath = QString::fromStdString(folder.file("card.txt"));
    dialog.OnSaveAsText();
    dialog.nextPath = QString::fromStdString(folder.file("card.xml"));
    dialog.OnSaveAsXml();
    EXPECT_TRUE(dialog.errors.empty());

    const std::string text = readFile(folder.file("card.txt"));
    EXPECT_EQ(text.substr(0, 9 + payload.size() + 2), "<AAMVA>\r\n" + payload + "\r\n");
    EXPECT_NE(text.find("\r\nSurname\t" + std::string(record.Surname) + "\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\nLicenceNumber\t" + std::string(record.LicenceNumber) + "\r\n"),
              std::string::npos);

    const std::string xml = readFile(folder.file("card.xml"));
    EXPECT_EQ(XmlProblems(folder.file("card.xml")), "");
    EXPECT_NE(xml.find("\t\t<Surname>" + std::string(record.Surname) + "</Surname>\r\n"), std::string::npos);
    EXPECT_NE(xml.find("\t\t<IIN>" + std::string(record.IIN) + "</IIN>\r\n"), std::string::npos);
    std::size_t itemElements = 0;
    for (std::size_t at = xml.find("\t\t<Item>\r\n"); at != std::string::npos;
         at = xml.find("\t\t<Item>\r\n", at + 1))
        ++itemElements;
    EXPECT_EQ(itemElements, static_cast<std::size_t>(items->childCount()));
}

} // namespace
