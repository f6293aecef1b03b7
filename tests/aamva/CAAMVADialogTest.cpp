#include "CAAMVADialog.h"
#include "CHexEdit.h"
#include "ExportTestSupport.h"
#include "ParseDouble.h"
#include "RecordBuilder.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <QFontMetrics>
#include <QGroupBox>
#include <QHeaderView>
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

struct Row {
    std::string name, id, value, extra;
    bool operator==(const Row& o) const {
        return name == o.name && id == o.id && value == o.value && extra == o.extra;
    }
};

void PrintTo(const Row& r, std::ostream* os) {
    *os << "{" << r.name << " | " << r.id << " | " << r.value << " | " << r.extra << "}";
}

class AAMVADialogTest : public ::testing::Test {
protected:
    // Parses `raw` into a dialog whose library answers with `record`, then shows it.
    std::unique_ptr<ScriptedDialog> Open(const AAMVARecord& record,
                                         const std::string& raw = "@\n\x1e\rANSI ") {
        ParseDouble::Script script;
        script.record = &record;
        ParseDouble::Reset(script);
        auto dialog = std::make_unique<ScriptedDialog>();
        EXPECT_EQ(
            dialog->Parse(reinterpret_cast<const uint8_t*>(raw.data()), static_cast<int32_t>(raw.size())), 0);
        dialog->show();
        return dialog;
    }

    static QTreeWidget* List(const CAAMVADialog& d) {
        return d.findChild<QTreeWidget*>(CAAMVADialog::ControlName(CAAMVADialog::IDC_FIELDS));
    }
    static QPushButton* Button(const CAAMVADialog& d, int id) {
        return d.findChild<QPushButton*>(CAAMVADialog::ControlName(id));
    }
    static std::vector<Row> Rows(const CAAMVADialog& d, int group) {
        std::vector<Row> rows;
        QTreeWidgetItem* g = List(d)->topLevelItem(group);
        for (int i = 0; g && i < g->childCount(); ++i) {
            const QTreeWidgetItem* item = g->child(i);
            rows.push_back({item->text(0).toStdString(), item->text(1).toStdString(),
                            item->text(2).toStdString(), item->text(3).toStdString()});
        }
        return rows;
    }
    RecordBuilder full = [] {
        RecordBuilder b;
        b.Full();
        return b;
    }();
};

TEST_F(AAMVADialogTest, TemplateCaptionControlsAndGeometry) {
    auto d = Open(full.get());
    EXPECT_EQ(d->windowTitle(), "AAMVA Data");
    const QFontMetrics m(d->font());
    const int bx = m.averageCharWidth(), by = m.height();
    EXPECT_EQ(d->size(), QSize(520 * bx / 4, 398 * by / 8));
    struct {
        int id;
        const char* text;
        QRect units;
    } const buttons[] = {
        {CAAMVADialog::IDOK, "Close", {463, 377, 50, 14}},
        {CAAMVADialog::IDC_SAVE_TEXT, "Save as Text...", {7, 377, 69, 14}},
        {CAAMVADialog::IDC_SAVE_XML, "Save as XML...", {80, 377, 65, 14}},
    };
    for (const auto& b : buttons) {
        QPushButton* button = Button(*d, b.id);
        ASSERT_NE(button, nullptr) << b.text;
        EXPECT_EQ(button->text(), b.text);
        EXPECT_EQ(button->geometry(), QRect(b.units.x() * bx / 4, b.units.y() * by / 8,
                                            b.units.width() * bx / 4, b.units.height() * by / 8))
            << b.text;
    }
    EXPECT_TRUE(Button(*d, CAAMVADialog::IDOK)->isDefault());
    EXPECT_EQ(List(*d)->geometry(), QRect(7 * bx / 4, 146 * by / 8, 506 * bx / 4, 218 * by / 8));
    std::vector<QString> boxes;
    for (const QGroupBox* box : d->findChildren<QGroupBox*>())
        boxes.push_back(box->title());
    EXPECT_EQ(boxes, (std::vector<QString>{"Raw Data", "Decoded Fields"}));
}

TEST_F(AAMVADialogTest, ColumnsAndGroups) {
    auto d = Open(full.get());
    QTreeWidget* list = List(*d);
    ASSERT_EQ(list->columnCount(), 4);
    const char* const titles[] = {"Name", "ID", "Value", "Extra"};
    for (int c = 0; c < 4; ++c)
        EXPECT_EQ(list->headerItem()->text(c), titles[c]);
    // A twelfth wider than the list on purpose: it scrolls sideways.
    const int w = list->contentsRect().width();
    EXPECT_EQ(list->columnWidth(0), w / 4);
    EXPECT_EQ(list->columnWidth(1), w / 6);
    EXPECT_EQ(list->columnWidth(2), w / 3);
    EXPECT_EQ(list->columnWidth(3), w / 3);
    EXPECT_EQ(list->selectionBehavior(), QAbstractItemView::SelectRows);

    ASSERT_EQ(list->topLevelItemCount(), 3);
    const char* const groups[] = {"Header", "Parsed", "All Data Items"};
    for (int g = 0; g < 3; ++g) {
        EXPECT_EQ(list->topLevelItem(g)->text(0), groups[g]);
        EXPECT_TRUE(list->topLevelItem(g)->isExpanded()) << groups[g];
    }
}

TEST_F(AAMVADialogTest, RowsInTheirFixedOrder) {
    auto d = Open(full.get());
    EXPECT_EQ(Rows(*d, CAAMVADialog::HeaderGroup), (std::vector<Row>{
                                                       {"FileType", "", "ANSI ", ""},
                                                       {"IIN", "", "636000", ""},
                                                       {"IssuerName", "", "Virginia", ""},
                                                       {"Version", "", "8", "AAMVA 2013 Standard"},
                                                       {"JurisdictionVersion", "", "0", ""},
                                                   }));
    EXPECT_EQ(Rows(*d, CAAMVADialog::ParsedGroup), (std::vector<Row>{
                                                       {"AddressCity", "", "ANYTOWN", ""},
                                                       {"AddressPostalCode", "", "221010000", ""},
                                                       {"AddressState", "", "VA", ""},
                                                       {"AddressStreet", "", "123 MAIN ST", ""},
                                                       {"AddressCountry", "", "USA", ""},
                                                       {"DateOfBirth", "", "04 July 1976", ""},
                                                       {"ExpiryDate", "", "Invalid DateTime", ""},
                                                       {"Forename", "", "JANE", ""},
                                                       {"FullName", "", "JANE ANN DOE", ""},
                                                       {"GivenNames", "", "JANE ANN", ""},
                                                       {"IssueDate", "", "29 February 2016", ""},
                                                       {"LicenceNumber", "", "D1234567", ""},
                                                       {"MiddleName", "", "ANN", ""},
                                                       {"NameSuffix", "", "JR", ""},
                                                       {"Sex", "", "Female", ""},
                                                       {"ShortSex", "", "F", ""},
                                                       {"Surname", "", "DOE", ""},
                                                       {"Height", "", "64 Inches", ""},
                                                       {"Weight", "", "130 Pounds", ""},
                                                       {"EyeColour", "", "1", ""},
                                                       {"HairColour", "", "3", ""},
                                                   }));
}

// Which rows each record gives (absent versions, unknown units, item counts) is the fields
// table's; here the rows reach their groups and columns.
TEST_F(AAMVADialogTest, DataItemsInLibraryOrderNameFirst) {
    RecordBuilder b;
    b.Full();
    b.Items({{"DCS", "Family Name", "DOE"}, {"DAC", "First Name", "JANE"}, {"ZVA", "Unknown element", "42"}});
    auto d = Open(b.get());
    EXPECT_EQ(Rows(*d, CAAMVADialog::DataItemsGroup),
              (std::vector<Row>{{"Family Name", "DCS", "DOE", ""},
                                {"First Name", "DAC", "JANE", ""},
                                {"Unknown element", "ZVA", "42", ""}}));
}

TEST_F(AAMVADialogTest, HexViewShowsTheParsedBytesReadOnly) {
    struct {
        const char* what;
        std::string raw;
    } const cases[] = {
        {"bytes", std::string("@\n\x1e\rANSI 6360\0\xff", 14)},
        {"no bytes", std::string()},
    };
    for (const auto& c : cases) {
        auto d = Open(full.get(), c.raw);
        EXPECT_TRUE(d->isVisible()) << c.what;
        auto* hex = d->findChild<CHexEdit*>(CAAMVADialog::ControlName(CAAMVADialog::IDC_RAW_DATA));
        ASSERT_NE(hex, nullptr);
        EXPECT_TRUE(hex->IsReadOnly());
        EXPECT_EQ(hex->Editor().Data(), std::vector<uint8_t>(c.raw.begin(), c.raw.end())) << c.what;
        EXPECT_EQ(Rows(*d, CAAMVADialog::HeaderGroup).size(), 5u) << c.what;
    }
}

TEST_F(AAMVADialogTest, ButtonsWriteTheExports) {
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    auto d = Open(full.get(), readFile(kData + "/full.raw"));
    struct {
        int button;
        const char* file;
        const char* filter;
    } const cases[] = {
        {CAAMVADialog::IDC_SAVE_TEXT, "full.txt", "All Files (*)"},
        {CAAMVADialog::IDC_SAVE_XML, "full.xml", "XML Files (*.xml);;All Files (*)"},
    };
    for (const auto& c : cases) {
        d->filters.clear();
        d->nextPath = QString::fromStdString(folder.file(c.file));
        QTest::mouseClick(Button(*d, c.button), Qt::LeftButton);
        EXPECT_EQ(d->filters, std::vector<QString>{c.filter});
        EXPECT_EQ(readFile(folder.file(c.file)), readFile(kData + "/" + c.file)) << c.file;
    }
    EXPECT_TRUE(d->errors.empty());
    EXPECT_EQ(XmlProblems(folder.file("full.xml")), "");
}

TEST_F(AAMVADialogTest, ExportFailuresAndCancel) {
    TempFolder folder;
    ASSERT_TRUE(folder.ok());
    auto d = Open(full.get());
    const QString missing = QString::fromStdString(folder.file("no-such-folder/out"));
    struct {
        int button;
        QString path;
        std::vector<QString> errors;
    } const cases[] = {
        {CAAMVADialog::IDC_SAVE_TEXT, missing, {"Failed to save data as text to " + missing}},
        {CAAMVADialog::IDC_SAVE_XML, missing, {"Failed to save data as XML to " + missing}},
        {CAAMVADialog::IDC_SAVE_TEXT, QString(), {}}, // cancelled: nothing happens
        {CAAMVADialog::IDC_SAVE_XML, QString(), {}},
    };
    for (const auto& c : cases) {
        d->errors.clear();
        d->nextPath = c.path;
        QTest::mouseClick(Button(*d, c.button), Qt::LeftButton);
        EXPECT_EQ(d->errors, c.errors) << c.button << " " << c.path.toStdString();
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("no-such-folder")));
    // The dialog is unchanged by a failed export.
    EXPECT_EQ(Rows(*d, CAAMVADialog::HeaderGroup).size(), 5u);
    EXPECT_TRUE(d->isVisible());
}

TEST_F(AAMVADialogTest, CloseEndsTheDialogAndReleasesTheRecord) {
    {
        auto d = Open(full.get());
        QTest::mouseClick(Button(*d, CAAMVADialog::IDOK), Qt::LeftButton);
        EXPECT_FALSE(d->isVisible());
        EXPECT_EQ(d->result(), QDialog::Accepted);
        EXPECT_EQ(ParseDouble::Outstanding(), 1);
    }
    EXPECT_EQ(ParseDouble::Outstanding(), 0);
}

} // namespace
