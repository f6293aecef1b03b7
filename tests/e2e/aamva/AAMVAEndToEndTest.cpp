// Generated AAMVA payloads through the real reader library's parser into the dialog and both
// exports: what the card says must come out the other end.
#include "AamvaPayloadDescription.h"
#include "AamvaPayloadWriter.h"
#include "CAAMVADialog.h"
#include "ExportTestSupport.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <QTreeWidget>

#include <map>
#include <utility>
#include <string>
#include <vector>

using glyphor::samples::AamvaPayloadDescription;
using glyphor::samples::AamvaPayloadWriter;

namespace {

// The file dialog answers with a scripted path; error boxes are collected.
class ScriptedDialog : public CAAMVADialog {
public:
    QString nextPath;
    std::vector<QString> errors;

protected:
    QString AskSavePath(const QString&) override { return nextPath; }
    void ShowError(const QString& text) override { errors.push_back(text); }
};

// Every row of a group: name -> value (the first row of a name wins).
std::map<std::string, std::string> Values(const QTreeWidget* list, int group) {
    std::map<std::string, std::string> values;
    const QTreeWidgetItem* g = list->topLevelItem(group);
    for (int i = 0; g && i < g->childCount(); ++i)
        values.emplace(g->child(i)->text(0).toStdString(), g->child(i)->text(2).toStdString());
    return values;
}

// Cards of a standard version, Canadian or not.
class AAMVAEndToEndTest : public ::testing::TestWithParam<std::pair<int, bool>> {
protected:
    static void TearDownTestSuite() { ZyrReader_DestroyCachedData(); }
};

TEST_P(AAMVAEndToEndTest, PayloadFieldsReachTheDialogAndBothExports) {
    const AamvaPayloadDescription card =
        AamvaPayloadDescription::typical(GetParam().first, GetParam().second);
    const std::string payload = AamvaPayloadWriter::write(card);
    const auto elements = AamvaPayloadWriter::elements(card);

    ScriptedDialog dialog;
    ASSERT_EQ(
        dialog.Parse(reinterpret_cast<const uint8_t*>(payload.data()), static_cast<int32_t>(payload.size())),
        0);
    dialog.show();
    const auto* list = dialog.findChild<QTreeWidget*>(CAAMVADialog::ControlName(CAAMVADialog::IDC_FIELDS));
    ASSERT_NE(list, nullptr);

    const std::string birth = "27 March 1984";
    auto shown = Values(list, CAAMVADialog::ParsedGroup);
    shown.merge(Values(list, CAAMVADialog::HeaderGroup));
    EXPECT_EQ(shown.at("AddressStreet").rfind(card.street, 0), 0u) << shown.at("AddressStreet");
    // Versions 2 and 3 carry a weight range only, which is no measure.
    EXPECT_EQ(shown.count("Weight"), card.version == 2 || card.version == 3 ? 0u : 1u);
    EXPECT_EQ(shown.count("Height"), 1u);
    const std::map<std::string, std::string> expected = {
        {"IIN", card.iin}, {"Version", std::to_string(card.version)}, {"LicenceNumber", card.licenceNumber},
        {"Surname", card.familyName}, {"DateOfBirth", birth}, {"ExpiryDate", "27 March 2027"},
        {"IssueDate", "05 November 2019"}, {"AddressCity", card.city}, {"ShortSex", "F"}};
    for (const auto& [name, value] : expected)
        EXPECT_EQ(shown[name], value) << name;

    // Every element of the payload in the order written: ID in the second column, the value as it
    // stood in the data in the third.
    std::vector<std::string> items, written;
    const QTreeWidgetItem* group = list->topLevelItem(CAAMVADialog::DataItemsGroup);
    for (int i = 0; i < group->childCount(); ++i)
        items.push_back(group->child(i)->text(1).toStdString() + "=" + group->child(i)->text(2).toStdString());
    for (const auto& element : elements)
        written.push_back(element.id + "=" + element.value);
    EXPECT_EQ(items, written);

    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    const std::string textPath = folder.file("card.txt"), xmlPath = folder.file("card.xml");
    dialog.nextPath = QString::fromStdString(textPath);
    dialog.OnSaveAsText();
    dialog.nextPath = QString::fromStdString(xmlPath);
    dialog.OnSaveAsXml();
    EXPECT_TRUE(dialog.errors.empty());

    const std::string text = readFile(textPath), xml = readFile(xmlPath);
    EXPECT_EQ(text.substr(0, 9 + payload.size() + 2), "<AAMVA>\r\n" + payload + "\r\n");
    EXPECT_EQ(XmlProblems(xmlPath), "");
    const std::pair<std::string, std::string> fields[] = {
        {"IIN", card.iin}, {"LicenceNumber", card.licenceNumber}, {"Surname", card.familyName}, {"DateOfBirth", birth}};
    for (const auto& [name, value] : fields) {
        EXPECT_TRUE(HasLine(text, name + "\t" + value)) << name;
        EXPECT_TRUE(HasLine(xml, "\t\t<" + name + ">" + value + "</" + name + ">")) << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Versions, AAMVAEndToEndTest,
                         ::testing::Values(std::pair(1, false), std::pair(3, false), std::pair(8, false),
                                           std::pair(9, false), std::pair(10, false), std::pair(3, true),
                                           std::pair(9, true)));

} // namespace
