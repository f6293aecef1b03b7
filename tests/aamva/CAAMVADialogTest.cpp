#include "CAAMVADialog.h"
#include "CHexEdit.h"
#include "ExportTestSupport.h"
#include "ParseDouble.h"
#include "RecordBuilder.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

// The dialog with its file dialog and message boxes replaced by a script and a record of calls.
class ScriptedDialog : public CAAMVADialog {
public:
    QString nextPath;             // what the save-file dialog answers
    std::vector<QString> filters; // filters the save-file dialog was opened with
    std::vector<QString> errors;  // texts of the error boxes

protected:
    QString AskSavePath(const QString& filter) override {
        filters.push_back(filter);
        return nextPath;
    }
    void ShowError(const QString& text) override { errors.push_back(text); }
};

class AAMVADialogTest : public ::testing::Test {
protected:
    // Parses `raw` into a dialog whose library answers with `record`, then shows it.
    std::unique_ptr<ScriptedDialog> Open(const AAMVARecord& record, const std::string& raw) {
        ParseDouble::Script script;
        script.record = &record;
        ParseDouble::Reset(script);
        auto dialog = std::make_unique<ScriptedDialog>();
        EXPECT_EQ(
            dialog->Parse(reinterpret_cast<const uint8_t*>(raw.data()), static_cast<int32_t>(raw.size())), 0);
        dialog->show();
        return dialog;
    }

    template <class Control> static Control* Child(const CAAMVADialog& d, int id) {
        return d.findChild<Control*>(CAAMVADialog::ControlName(id));
    }
    static auto* List(const CAAMVADialog& d) { return Child<QTreeWidget>(d, CAAMVADialog::IDC_FIELDS); }
    // A group's rows as "name [id]=value (extra)", joined by "|"; empty columns left out.
    static std::string Rows(const CAAMVADialog& d, int group) {
        std::string rows;
        const QTreeWidgetItem* g = List(d)->topLevelItem(group);
        for (int i = 0; g && i < g->childCount(); ++i) {
            const auto column = [&](int c, const char* before, const char* after) {
                const std::string text = g->child(i)->text(c).toStdString();
                return text.empty() ? text : before + text + after;
            };
            rows += (i ? "|" : "") + column(0, "", "") + column(1, " [", "]") + "=" + column(2, "", "") +
                    column(3, " (", ")");
        }
        return rows;
    }
};

// The parsed bytes in a read-only hex view. The rows come in a fixed order, the physical ones after
// the identity; data items in library order with the name first.
TEST_F(AAMVADialogTest, BytesAndEveryRowInItsGroupAndColumn) {
    RecordBuilder b;
    b.Full();
    b.Items({{"DCS", "Family Name", "DOE"}, {"ZVA", "Unknown element", "42"}});
    const std::string raw("@\n\x1e\rANSI 6360\0\xff", 14);
    auto d = Open(b.get(), raw);
    const CHexEdit* hex = Child<CHexEdit>(*d, CAAMVADialog::IDC_RAW_DATA);
    ASSERT_NE(hex, nullptr);
    EXPECT_TRUE(hex->IsReadOnly());
    EXPECT_EQ(hex->Editor().Data(), std::vector<uint8_t>(raw.begin(), raw.end()));
    ASSERT_EQ(std::make_pair(List(*d)->columnCount(), List(*d)->topLevelItemCount()), std::make_pair(4, 3));
    EXPECT_EQ(Rows(*d, CAAMVADialog::HeaderGroup), "FileType=ANSI |IIN=636000|IssuerName=Virginia|"
                                                   "Version=8 (AAMVA 2013 Standard)|JurisdictionVersion=0");
    EXPECT_EQ(Rows(*d, CAAMVADialog::ParsedGroup),
              "AddressCity=ANYTOWN|AddressPostalCode=221010000|AddressState=VA|AddressStreet=123 MAIN ST|"
              "AddressCountry=USA|DateOfBirth=04 July 1976|ExpiryDate=Invalid DateTime|Forename=JANE|"
              "FullName=JANE ANN DOE|GivenNames=JANE ANN|IssueDate=29 February 2016|LicenceNumber=D1234567|"
              "MiddleName=ANN|NameSuffix=JR|Sex=Female|ShortSex=F|Surname=DOE|"
              "Height=64 Inches|Weight=130 Pounds|EyeColour=1|HairColour=3");
    EXPECT_EQ(Rows(*d, CAAMVADialog::DataItemsGroup), "Family Name [DCS]=DOE|Unknown element [ZVA]=42");
}

// Saving writes the golden files; a path that cannot be written gives the message, a cancelled
// dialog nothing, and the dialog stays as it was until Close ends it and releases the record.
TEST_F(AAMVADialogTest, ButtonsWriteTheExportsOrSayWhyNotAndCloseReleasesTheRecord) {
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    RecordBuilder full;
    auto d = Open(full.Full().get(), readFile(kData + "/full.raw"));
    const QString missing = QString::fromStdString(folder.file("no-such-folder/out"));
    const QString text = "All Files (*)", xml = "XML Files (*.xml);;All Files (*)";
    const struct {
        int button;
        const char* file; // written, compared with the golden file of that name; "": cancelled
        QString filter, error;
    } cases[] = {
        {CAAMVADialog::IDC_SAVE_TEXT, "full.txt", text, ""},
        {CAAMVADialog::IDC_SAVE_XML, "full.xml", xml, ""},
        {CAAMVADialog::IDC_SAVE_TEXT, nullptr, text, "Failed to save data as text to " + missing},
        {CAAMVADialog::IDC_SAVE_XML, nullptr, xml, "Failed to save data as XML to " + missing},
        {CAAMVADialog::IDC_SAVE_XML, "", xml, ""},
    };
    for (const auto& c : cases) {
        d->filters.clear(), d->errors.clear();
        const std::string file = c.file ? c.file : "";
        d->nextPath = !c.file ? missing : file.empty() ? QString() : QString::fromStdString(folder.file(file));
        QTest::mouseClick(Child<QPushButton>(*d, c.button), Qt::LeftButton);
        EXPECT_EQ(d->filters, std::vector<QString>{c.filter});
        EXPECT_EQ(d->errors, c.error.isEmpty() ? std::vector<QString>() : std::vector<QString>{c.error});
        if (!file.empty()) {
            EXPECT_EQ(readFile(folder.file(file)), readFile(kData + "/" + file)) << file;
        }
    }
    EXPECT_EQ(XmlProblems(folder.file("full.xml")), "");
    EXPECT_FALSE(std::filesystem::exists(folder.file("no-such-folder")));
    EXPECT_TRUE(d->isVisible());
    QTest::mouseClick(Child<QPushButton>(*d, CAAMVADialog::IDOK), Qt::LeftButton);
    EXPECT_EQ(std::make_pair(d->isVisible(), d->result()), std::make_pair(false, int(QDialog::Accepted)));
    EXPECT_EQ(ParseDouble::Outstanding(), 1);
    d.reset();
    EXPECT_EQ(ParseDouble::Outstanding(), 0);
}

} // namespace
