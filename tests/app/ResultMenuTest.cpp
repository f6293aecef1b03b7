// The results list's context menu in the main window: shown only on a row, its commands wired to
// the row actions, the last selected row's bytes saved or parsed, the parsed record shown.
#include "JobWait.h"
#include "CAAMVADialog.h"
#include "CGlyphorDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "EncodedImages.h"
#include "OffscreenMain.h"
#include "ReaderDouble.h"
#include "TempFolder.h"

#include <QListWidget>
#include <QMenu>
#include <QTreeWidget>
#include <cstring>

namespace rd = readerdouble;

namespace {

// Parses through the real dialog and, instead of running it, notes what it would show.
class RecordingViewer : public AamvaViewer {
public:
    explicit RecordingViewer(QStringList& shownLicences) : m_shown(shownLicences) {}
    int32_t Parse(const uint8_t* bytes, int32_t length) override { return m_dialog.Parse(bytes, length); }
    void ShowModal() override {
        const AAMVARecord* record = m_dialog.Result().Record();
        m_shown << (record ? QString::fromLatin1(record->LicenceNumber) : QStringLiteral("<no record>"));
    }

private:
    CAAMVADialog m_dialog;
    QStringList& m_shown;
};

} // namespace

class ResultMenuTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<TempFolder> folder;
    std::unique_ptr<CGlyphorDlg> dlg;
    std::vector<std::pair<MessageKind, QString>> messages;
    QString savePath;
    int saveRequests = 0;
    QStringList shownLicences;

    QTreeWidget* Results() const { return Control<QTreeWidget>(dlg.get(), IDC_RESULTS); }

    // Three images decoded by one plug-in: rows "first", "" (nothing found) and "third".
    void StartWithThreeRows() {
        rd::PluginScript plugin{"KVDECODE_A.so"};
        rd::SymbolScript first, third;
        first.data = "first";
        third.data = "third";
        plugin.decodes = {{first}, {}, {third}};
        folder->write(plugin.fileName, "");
        rd::AddPlugin(plugin);
        std::snprintf(ReaderSession::Settings().PluginFolder, ZYR_PATH_SIZE, "%s", folder->path().c_str());
        std::snprintf(ReaderSession::Settings().ApplicationFolder, ZYR_PATH_SIZE, "%s",
                      folder->path().c_str());

        dlg = std::make_unique<CGlyphorDlg>();
        dlg->Session().executableFolder = folder->path() + "/";
        dlg->SetMessagePresenter(
            [this](MessageKind kind, const QString& text) { messages.emplace_back(kind, text); });
        const QStringList images = {QString::fromStdString(folder->write("1.png", PngBytes(Qt::white))),
                                    QString::fromStdString(folder->write("2.png", PngBytes(Qt::white))),
                                    QString::fromStdString(folder->write("3.png", PngBytes(Qt::white)))};
        dlg->SetOpenFileChooser([images](uint32_t&, QStringList& paths) {
            paths = images;
            return true;
        });
        dlg->SetSavePathChooser([this] {
            ++saveRequests;
            return savePath;
        });
        dlg->SetAamvaViewerFactory([this] { return std::make_unique<RecordingViewer>(shownLicences); });
        dlg->OnInitDialog();
        dlg->show();
        QVERIFY(QTest::qWaitForWindowExposed(dlg.get()));
        Control<QListWidget>(dlg.get(), IDC_PLUGINS)->item(0)->setSelected(true);
        dlg->OnOpenImage();
        dlg->OnDecodeMulti();
        QVERIFY(JobEnds(*dlg));
        QCOMPARE(Results()->topLevelItemCount(), 3);
    }

    QPoint CentreOfRow(int row) const {
        return Results()->visualItemRect(Results()->topLevelItem(row)).center();
    }

    void Select(std::initializer_list<int> rows) {
        Results()->clearSelection();
        for (int row : rows) {
            Results()->topLevelItem(row)->setSelected(true);
        }
    }

private slots:
    void init() {
        rd::Reset();
        ReaderSession::Reset();
        folder = std::make_unique<TempFolder>();
        messages.clear();
        savePath.clear();
        saveRequests = 0;
        shownLicences.clear();
    }
    void cleanup() {
        dlg.reset();
        ReaderSession::Reset();
    }

    void menuOnlyOnARow() {
        StartWithThreeRows();
        QMenu onRow;
        QVERIFY(dlg->BuildResultMenu(onRow, CentreOfRow(2)));
        QStringList texts;
        for (QAction* action : onRow.actions()) {
            texts << action->text();
        }
        QCOMPARE(texts, QStringList({"Parse as AAMVA Data...", "Save Data as Binary..."}));

        QMenu below;
        const QPoint underLastRow(CentreOfRow(2).x(), Results()->viewport()->height() - 2);
        QVERIFY(!Results()->itemAt(underLastRow));
        QVERIFY(!dlg->BuildResultMenu(below, underLastRow));
        QVERIFY(below.actions().isEmpty());
    }

    void menuCommandsSaveTheLastSelectedRow() {
        StartWithThreeRows();
        savePath = QString::fromStdString(folder->file("row.bin"));
        QMenu menu;
        QVERIFY(dlg->BuildResultMenu(menu, CentreOfRow(0)));

        Select({0, 2});
        menu.actions().at(1)->trigger();
        QCOMPARE(QString::fromStdString(readFile(savePath.toStdString())), QStringLiteral("third"));
        Select({0});
        menu.actions().at(1)->trigger();
        QCOMPARE(QString::fromStdString(readFile(savePath.toStdString())), QStringLiteral("first"));
        QCOMPARE(saveRequests, 2);
        QCOMPARE(int(messages.size()), 2);
        QCOMPARE(messages[1].first, MessageKind::Info);
        QCOMPARE(messages[1].second, "Successfully saved data to " + savePath);
    }

    void rowsWithoutDataAreRefused() {
        StartWithThreeRows();
        QCOMPARE(Results()->topLevelItem(1)->text(4), QStringLiteral("[NO DATA]"));
        for (const QList<int>& rows : {QList<int>{1}, QList<int>{}, QList<int>{0, 1}}) {
            Results()->clearSelection();
            for (int row : rows) {
                Results()->topLevelItem(row)->setSelected(true);
            }
            messages.clear();
            dlg->OnSaveDataAsBinary();
            dlg->OnParseAsAamva();
            QCOMPARE(int(messages.size()), 2);
            for (const auto& message : messages) {
                QCOMPARE(message.first, MessageKind::Error);
                QCOMPARE(message.second, QStringLiteral("There is not data available for this result"));
            }
        }
        QCOMPARE(saveRequests, 0);
        QVERIFY(shownLicences.isEmpty());
    }

    void parseShowsTheRecordOrSaysWhyNot() {
        StartWithThreeRows();
        Select({2});
        dlg->OnParseAsAamva(); // the double knows no record: not AAMVA data
        QVERIFY(shownLicences.isEmpty());
        QCOMPARE(int(messages.size()), 1);
        QCOMPARE(messages[0].first, MessageKind::Exclamation);
        QCOMPARE(messages[0].second,
                 QStringLiteral("Cannot parse data. Check that it is in an AAMVA data format. Error code: %1")
                     .arg(ZYR_ERR_NOT_AAMVA));

        auto record = std::make_unique<AAMVARecord>();
        std::memset(record.get(), 0, sizeof(AAMVARecord));
        std::strcpy(record->LicenceNumber, "D1234567");
        rd::SetParseRecord(*record, {});
        messages.clear();
        dlg->OnParseAsAamva();
        QCOMPARE(shownLicences, QStringList{"D1234567"});
        QVERIFY(messages.empty());
        const auto parses = rd::CallsNamed("ZyrReader_ParseAAMVA");
        QCOMPARE(int(parses.size()), 2);
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(ResultMenuTest)
#include "ResultMenuTest.moc"
