// The main window offscreen: controls, button rules, resizing, statistics, a decode run through the
// real job runner, the results row menu, closing while busy, and settings.
#include "JobWait.h"
#include "CAAMVADialog.h"
#include "CBitmapPicture.h"
#include "CCancelDlg.h"
#include "CGlyphorDlg.h"
#include "ControlIds.h"
#include "DecodeLane.h"
#include "DialogBuilder.h"
#include "EncodedImages.h"
#include "OffscreenMain.h"
#include "PluginPalette.h"
#include "ReaderDouble.h"
#include "TempFolder.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>
#include <map>
#include <thread>

namespace rd = readerdouble;

namespace {

QString TextOf(QWidget* w) {
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        return b->text();
    auto* l = qobject_cast<QLabel*>(w);
    return l ? l->text() : QString();
}

// Every control of the main window by how a resize moves it: grows with the window, moves right,
// moves down, moves down and widens, stays.
const std::map<char, std::vector<int>> kResize = {
    {'g', {IDC_PICTURE}},
    {'r', {IDC_CAPTURE_MULTI, IDC_CAPTURE, IDC_DARK_OBJECT_DETECT, IDC_OPEN_IMAGE, IDC_PREVIOUS, IDC_NEXT, IDC_DECODE_IMAGE,
           IDC_DECODE_MULTI, IDC_CLEAR_RESULTS, IDC_PLUGINS_LABEL, IDC_PLUGINS}},
    {'d', {IDC_AVERAGE_TIME_LABEL, IDC_AVERAGE_TIME, IDC_IMAGE_COUNT_LABEL, IDC_IMAGE_COUNT, IDC_SYMBOLS_COUNT_LABEL,
           IDC_SYMBOLS_COUNT, IDC_AVERAGE_PROCESS_LABEL, IDC_AVERAGE_PROCESS}},
    {'w', {IDC_RESULTS_LABEL, IDC_RESULTS}},
    {'-', {IDC_SIDE1_PICTURE, IDC_SIDE2_PICTURE, IDC_USE_VISIBLE_IMAGE, IDC_CROP}}};

using Messages = std::vector<std::pair<MessageKind, QString>>;

// Parses through the real dialog and, instead of running it, notes what it would show.
struct RecordingViewer : AamvaViewer {
    explicit RecordingViewer(QStringList& shownLicences) : shown(shownLicences) {}
    int32_t Parse(const uint8_t* bytes, int32_t length) override { return dialog.Parse(bytes, length); }
    void ShowModal() override {
        const AAMVARecord* record = dialog.Result().Record();
        shown << (record ? QString::fromLatin1(record->LicenceNumber) : QStringLiteral("<no record>"));
    }
    CAAMVADialog dialog;
    QStringList& shown;
};

} // namespace

class MainDialogTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<TempFolder> plugins;
    std::unique_ptr<TempFolder> app; // also holds the test's images
    std::unique_ptr<CGlyphorDlg> dlg;
    struct Ui { // what the window asked of the user; the answers it gets
        Messages messages;
        QStringList nextFiles, shownLicences;
        QString savePath;
        int saveRequests = 0;
        bool chooserAccepts = true;
        uint32_t chooserFilter = 1;
        std::vector<uint32_t> filtersOffered;
    } ui;

    void InstallPlugin(const rd::PluginScript& script) {
        plugins->write(script.fileName, "");
        rd::AddPlugin(script);
    }

    std::unique_ptr<CGlyphorDlg> MakeDialog(bool reader) {
        auto d = std::make_unique<CGlyphorDlg>();
        d->Session().executableFolder = app->path() + "/";
        d->SetScannerConnected(reader);
        d->SetMessagePresenter([this](MessageKind kind, const QString& text) { ui.messages.emplace_back(kind, text); });
        d->SetOpenFileChooser([this](uint32_t& filter, QStringList& paths) {
            ui.filtersOffered.push_back(filter);
            filter = ui.chooserFilter;
            paths = ui.nextFiles;
            return ui.chooserAccepts;
        });
        d->SetSavePathChooser([this] {
            ++ui.saveRequests;
            return ui.savePath;
        });
        d->SetAamvaViewerFactory([this] { return std::make_unique<RecordingViewer>(ui.shownLicences); });
        return d;
    }

    void Start(bool reader = false) {
        dlg = MakeDialog(reader);
        dlg->OnInitDialog();
        dlg->show();
        QVERIFY(QTest::qWaitForWindowExposed(dlg.get()));
    }

    QPushButton* Button(int id) const { return Control<QPushButton>(dlg.get(), id); }
    QString Text(int id) const { return TextOf(DialogBuilder::Find(dlg.get(), id)); }
    QTreeWidget* Results() const { return Control<QTreeWidget>(dlg.get(), IDC_RESULTS); }
    QListWidget* PluginList() const { return Control<QListWidget>(dlg.get(), IDC_PLUGINS); }

    void Open(const QStringList& files) {
        ui.nextFiles = files;
        Button(IDC_OPEN_IMAGE)->click();
    }
    // Red PNG files in a folder of the test's own.
    QStringList Pngs(std::initializer_list<std::string> names) {
        QStringList paths;
        for (const std::string& name : names)
            paths << QString::fromStdString(app->write(name, PngBytes(Qt::red)));
        return paths;
    }
    void StartWith(const rd::PluginScript& plugin) {
        InstallPlugin(plugin);
        Start();
        PluginList()->item(0)->setSelected(true);
    }
    QPoint CentreOfRow(int row) const { return Results()->visualItemRect(Results()->topLevelItem(row)).center(); }
    void Select(const QList<int>& rows) {
        Results()->clearSelection();
        for (int row : rows)
            Results()->topLevelItem(row)->setSelected(true);
    }

    // Right-clicks a point of a control through the window, as the platform delivers it (press,
    // then release), and returns the entries of every menu that opened ("*" marks a checked one),
    // closing each; the entry named choose is run.
    QList<QStringList> RightClick(QWidget* control, QPoint at, const QString& choose = QString()) {
        QList<QStringList> menus;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                menus << QStringList();
                for (QAction* a : menu->actions())
                    menus.back() << a->text() + (a->isChecked() ? "*" : "");
                menu->close();
                for (QAction* a : menu->actions())
                    a->text() == choose ? a->trigger() : void();
            }
        });
        poll.start(0);
        const QPoint p = control->mapTo(dlg.get(), at);
        QTest::mousePress(dlg->windowHandle(), Qt::RightButton, {}, p);
        QTest::mouseRelease(dlg->windowHandle(), Qt::RightButton, {}, p);
        QApplication::processEvents();
        return menus;
    }

private slots:
    void init() {
        rd::Reset();
        ReaderSession::Reset();
        plugins = std::make_unique<TempFolder>();
        app = std::make_unique<TempFolder>();
        std::snprintf(ReaderSession::Settings().PluginFolder, ZYR_PATH_SIZE, "%s", plugins->path().c_str());
        std::snprintf(ReaderSession::Settings().ApplicationFolder, ZYR_PATH_SIZE, "%s", app->path().c_str());
        ui = Ui();
    }
    void cleanup() {
        dlg.reset();
        ReaderSession::Reset();
    }

    void initialWindow() {
        InstallPlugin({"KVDECODE_A.so"});
        InstallPlugin({"KVDECODE_B.so"});
        app->write("Glyphor.ini", "[Previous_State]\r\nSelectedPlugins=B\r\n"); // shown selected
        Start();
        QVERIFY(!PluginList()->item(0)->isSelected() && PluginList()->item(1)->isSelected());
        PluginList()->item(0)->setSelected(true);
        QCOMPARE(dlg->Session().plugins.SelectedNames().str(), "A,B");
        QStringList texts; // "text", then "h" when hidden, "d" when disabled, "c" when checked
        for (const auto& [how, ids] : kResize)
            for (int id : ids) {
                QWidget* w = DialogBuilder::Find(dlg.get(), id);
                const auto* box = qobject_cast<QCheckBox*>(w);
                texts << TextOf(w) + (w->isVisible() ? "" : "h") + (w->isEnabled() ? "" : "d") +
                             (box && box->isChecked() ? "c" : "");
            }
        QCOMPARE(texts.join('|'), QStringLiteral("hd|hd|Use Visible Imgc|Crop|Average Time:|-|Image Count:|-|Symbols Count:|-|"
                                                 "Average Image Process Time:|-||Capture Mult&id|C&apture d|Dark object detect|"
                                                 "&Open Image|&<-d|-&>d|&Decode Imaged|Decode &Multid|&Clear Results|&Plugins:||Results:|"));
        QCOMPARE(dlg->windowTitle(), QStringLiteral("Glyphor"));
        QCOMPARE(PluginList()->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(Results()->selectionBehavior(), QAbstractItemView::SelectRows);
        const int w = Results()->width() - 2 * Results()->frameWidth();
        QStringList columns;
        for (int c = 0; c < 5; ++c)
            columns << QStringLiteral("%1 %2").arg(Results()->headerItem()->text(c)).arg(Results()->columnWidth(c));
        QCOMPARE(columns, (QStringList{QStringLiteral("File name %1").arg(w / 6), QStringLiteral("Plugin %1").arg(w / 6),
                                       QStringLiteral("Img Process %1").arg(w / 6), QStringLiteral("Time %1").arg(w / 6),
                                       QStringLiteral("Results %1").arg(4 * w / 6)}));
    }

    void pictureMenuOnRightClickInTheWindow() {
        Start();
        auto* picture = Control<CBitmapPicture>(dlg.get(), IDC_PICTURE);
        const QPoint middle = picture->rect().center();
        QCOMPARE(RightClick(picture, middle), QList<QStringList>()); // no image, no menu at all
        Open(Pngs({"a.png"}));
        QVERIFY(picture->HasImage());
        const QStringList plain = {"Save Image", "Maintain Aspect Ratio", "Show Symbol Outlines"};
        QCOMPARE(RightClick(picture, middle, "Maintain Aspect Ratio"), QList<QStringList>{plain});
        QVERIFY(picture->MaintainAspect());
        const QStringList checked = {"Save Image", "Maintain Aspect Ratio*", "Show Symbol Outlines"};
        QCOMPARE(RightClick(picture, middle), QList<QStringList>{checked});
        // Elsewhere the window's own menu still opens.
        QWidget* label = DialogBuilder::Find(dlg.get(), IDC_IMAGE_COUNT_LABEL);
        QCOMPARE(RightClick(label, label->rect().center()), QList<QStringList>{{"&About Glyphor..."}});
    }

    void buttonRulesAndACancelledOpen_data() {
        QTest::addColumn<bool>("reader");
        QTest::addColumn<int>("files");
        QTest::addColumn<QString>("steps"); // 'n' next, 'p' previous
        QTest::addColumn<QString>("enabled"); // previous, next, decode image, decode multi as 0/1
        QTest::newRow("no reader, no files") << false << 0 << "" << "0000";
        QTest::newRow("one file") << false << 1 << "" << "0011";
        QTest::newRow("three at 0") << true << 3 << "" << "0111";
        QTest::newRow("three at 1") << false << 3 << "n" << "1111";
        QTest::newRow("three at 2") << true << 3 << "nn" << "1011";
        QTest::newRow("three back to 0") << false << 3 << "nnpp" << "0111";
    }
    void buttonRulesAndACancelledOpen() {
        QFETCH(bool, reader);
        QFETCH(int, files);
        QFETCH(QString, steps);
        QFETCH(QString, enabled);
        Start(reader);
        QStringList paths;
        for (int i = 0; i < files; ++i)
            paths << QStringLiteral("/nowhere/f%1.png").arg(i);
        if (files > 0)
            Open(paths);
        for (QChar step : steps)
            Button(step == 'n' ? IDC_NEXT : IDC_PREVIOUS)->click();
        const int32_t number = dlg->Session().imageNumber;
        ui.chooserAccepts = false; // a cancelled open keeps everything, also a filter changed in it
        ui.chooserFilter = 4;
        Button(IDC_OPEN_IMAGE)->click();
        const TestSession& s = dlg->Session();
        QCOMPARE(QStringLiteral("%1 %2 %3").arg(s.files.Count()).arg(s.files.FilterIndex()).arg(s.imageNumber),
                 QStringLiteral("%1 %2 %3").arg(files).arg(files > 0 ? 1 : 0).arg(number));
        QCOMPARE(ui.filtersOffered.back(), uint32_t(files > 0 ? 1 : 0)); // the stored filter is preselected
        QString seen;
        for (int id : {IDC_PREVIOUS, IDC_NEXT, IDC_DECODE_IMAGE, IDC_DECODE_MULTI})
            seen += Button(id)->isEnabled() ? '1' : '0';
        QCOMPARE(seen, enabled);
        QCOMPARE(Button(IDC_CAPTURE)->isEnabled(), reader);
        QCOMPARE(Button(IDC_CAPTURE_MULTI)->isEnabled(), reader);
        if (files > 0)
            QCOMPARE(dlg->windowTitle(), QStringLiteral("Glyphor - f%1.png").arg(steps.count('n') - steps.count('p')));
    }

    void resizeMovesExactlyTheNamedControls() {
        for (const QSize& delta : {QSize(120, 80), QSize(-30, -20), QSize(0, 45)}) { // grow, shrink, taller
            dlg = MakeDialog(false);
            dlg->OnInitDialog();
            std::map<int, QRect> before;
            for (const auto& [how, ids] : kResize)
                for (int id : ids)
                    before[id] = DialogBuilder::Find(dlg.get(), id)->geometry();
            dlg->show();
            QVERIFY(QTest::qWaitForWindowExposed(dlg.get()));
            for (const auto& [id, r] : before) // the first size event only records the size
                QCOMPARE(DialogBuilder::Find(dlg.get(), id)->geometry(), r);
            const int column2 = Results()->columnWidth(2);
            const QSize target = dlg->size() + delta;
            dlg->resize(target);
            QTRY_COMPARE(dlg->size(), target);
            QCOMPARE(Results()->columnWidth(4), column2 + delta.width()); // from "Img Process", as designed
            QCOMPARE(Results()->columnWidth(2), column2);
            const int dw = delta.width(), dh = delta.height();
            for (const auto& [how, ids] : kResize)
                for (int id : ids) {
                    const QRect r = before[id];
                    const std::map<char, QRect> moved = {{'g', r.adjusted(0, 0, dw, dh)}, {'r', r.translated(dw, 0)},
                                                         {'d', r.translated(0, dh)},
                                                         {'w', r.translated(0, dh).adjusted(0, 0, dw, 0)}, {'-', r}};
                    QCOMPARE(DialogBuilder::Find(dlg.get(), id)->geometry(), moved.at(how));
                }
        }
    }

    // Rows arriving in a burst end with the last one in view, and the list scrolled only once; the
    // statistics line, and Clear Results emptying the list.
    void aBurstOfRowsTheStatisticsLineAndClearResults() {
        Start();
        int scrolls = 0;
        connect(Results()->verticalScrollBar(), &QScrollBar::valueChanged, this, [&scrolls] { ++scrolls; });
        for (int i = 0; i < 300; ++i) {
            dlg->Session().results.Finish(dlg->Session().results.Append(i, 0, "A"), std::chrono::milliseconds(1));
            dlg->PostShowNextResult();
        }
        QCOMPARE(Results()->topLevelItemCount(), 0); // nothing shown until the events are handled
        QTRY_COMPARE(Results()->topLevelItemCount(), 300);
        QTRY_VERIFY(Results()->viewport()->rect().contains(
            Results()->visualItemRect(Results()->topLevelItem(299)).bottomLeft()));
        QCOMPARE(scrolls, 1);

        DecodeStatistics& stats = dlg->Session().stats;
        stats.decodeCount = 3;
        stats.totalDecodeMs = 100;
        stats.totalImageProcessMs = 10;
        stats.imageCount = 2;
        stats.symbolsCount = 5;
        const auto line = [this] {
            return QStringList{Text(IDC_AVERAGE_TIME), Text(IDC_IMAGE_COUNT), Text(IDC_SYMBOLS_COUNT), Text(IDC_AVERAGE_PROCESS)};
        };
        dlg->UpdateStatistics();
        QCOMPARE(line(), (QStringList{"33.33ms", "2", "5", "3.33ms"}));
        Button(IDC_CLEAR_RESULTS)->click();
        QCOMPARE(Results()->topLevelItemCount(), 0);
        QCOMPARE(line(), (QStringList{"-", "-", "-", "3.33ms"})); // the process average is kept, as designed
        dlg->UpdateStatistics(); // no decode yet: no division by zero
        QCOMPARE(line(), (QStringList{"0.00ms", "0", "0", "0.00ms"}));
        // Each value stands just after its own label's text, on the label's line.
        for (int labelId : {IDC_AVERAGE_TIME_LABEL, IDC_IMAGE_COUNT_LABEL, IDC_SYMBOLS_COUNT_LABEL, IDC_AVERAGE_PROCESS_LABEL}) {
            const auto* label = Control<QLabel>(dlg.get(), labelId);
            const auto* value = Control<QLabel>(dlg.get(), labelId + 1);
            const int gap = value->x() - (label->x() + label->fontMetrics().horizontalAdvance(label->text()));
            QVERIFY2(gap >= 0 && gap <= 4 * label->fontMetrics().averageCharWidth(),
                     qPrintable(QStringLiteral("%1: gap %2").arg(label->text()).arg(gap)));
            QCOMPARE(value->y(), label->y());
        }
    }

    void decodeMultiFillsTheResultsList() {
        rd::PluginScript a{"KVDECODE_A.so"};
        rd::SymbolScript one, two;
        one.data = "one";
        two.data = "@\n\x1e\rANSI\x85";
        two.corners = {{{1, 2}, {30, 2}, {30, 40}, {1, 40}}};
        a.decodes = {{one}, {two}};
        StartWith(a);
        Open(Pngs({"a.png", "b.png"}));
        dlg->Session().stats.lastImageProcessMs = 12345;
        Button(IDC_DECODE_MULTI)->click();
        QVERIFY(JobEnds(*dlg));
        QStringList rows; // the decode time is the double's, far from the image-process time
        for (int r = 0; r < Results()->topLevelItemCount(); ++r) {
            const QTreeWidgetItem* row = Results()->topLevelItem(r);
            QVERIFY(row->text(3).endsWith("ms") && row->text(3).size() < 6);
            rows << QStringList{row->text(0), row->text(1), row->text(2), row->text(4)}.join('|');
        }
        QCOMPARE(rows, (QStringList{"a.png|A|12345ms|one", "b.png|A|12345ms|@<LF><RS><CR>ANSI<85>"}));
        QCOMPARE(Text(IDC_IMAGE_COUNT) + Text(IDC_SYMBOLS_COUNT), QStringLiteral("22"));
        QCOMPARE(dlg->windowTitle(), QStringLiteral("Glyphor - b.png"));
        QVERIFY(!dlg->Session().busy && Button(IDC_DECODE_MULTI)->isEnabled() && dlg->findChildren<CCancelDlg*>().isEmpty());

        // The selected row's symbols are outlined over the picture, in the plug-in's colour, and
        // only over the image it was decoded from (b.png is on show).
        auto* picture = Control<CBitmapPicture>(dlg.get(), IDC_PICTURE);
        Results()->topLevelItem(1)->setSelected(true);
        const std::vector<CBitmapPicture::Outline> outlines = picture->Outlines();
        QCOMPARE(outlines.size(), size_t(1));
        QVERIFY(outlines[0].corners.at(2) == QPointF(30, 40) && outlines[0].colour == QColor::fromRgb(PluginPalette::Colour(0)));
        Results()->clearSelection();
        Results()->topLevelItem(0)->setSelected(true);
        QVERIFY(picture->Outlines().empty());
    }

    // The window and the batch load a file through the same session code: a plug-in gets the same
    // pixel format from both, colour as RGB and grey as grey.
    void windowAndBatchHandAPluginTheSamePixelFormat() {
        StartWith({"KVDECODE_A.so"});
        const std::string colour = Pngs({"colour.png"})[0].toStdString();
        const std::string grey =
            app->write("grey.png", Encoded(Solid(8, 8, Qt::gray).convertToFormat(QImage::Format_Grayscale8), "PNG").toStdString());
        std::vector<int32_t> window, batch;
        for (const std::string& file : {colour, grey}) {
            Open({QString::fromStdString(file)});
            Button(IDC_DECODE_IMAGE)->click();
            QVERIFY(JobEnds(*dlg));
            window.push_back(rd::DecodedPixelFormats().back());

            DecodeLane lane;
            lane.LoadPlugins();
            std::string unknown;
            QVERIFY(lane.Select({"A"}, unknown));
            QCOMPARE(lane.Decode({file, file, file}).error, std::string());
            batch.push_back(rd::DecodedPixelFormats().back());
        }
        QCOMPARE(window, batch);
        QCOMPARE(batch, (std::vector<int32_t>{ZYR_PIXEL_RGB24, ZYR_PIXEL_GREY8}));
    }

    // While the plug-in decodes on a worker, the busy window has a stop dialog, hidden for one file,
    // and closing it only cancels; Escape afterwards closes it like the close button and saves.
    void closeWhileBusyOnlyCancelsThenEscapeClosesAndSaves_data() {
        QTest::addColumn<int>("files");
        QTest::addColumn<bool>("visible");
        QTest::newRow("one file") << 1 << false;
        QTest::newRow("two files") << 2 << true;
    }
    void closeWhileBusyOnlyCancelsThenEscapeClosesAndSaves() {
        QFETCH(int, files);
        QFETCH(bool, visible);
        StartWith({"KVDECODE_A.so"});
        Open(files == 1 ? Pngs({"f0.png"}) : Pngs({"f0.png", "f1.png"}));
        bool onWorker = false, shown = !visible, busyButtonsOff = false;
        int dialogs = -1;
        rd::SetHook("ZyrReader_ImagePluginDecode", [&] {
            onWorker = QThread::currentThread() != dlg->thread();
            QMetaObject::invokeMethod(dlg.get(), [&] {
                const auto found = dlg->findChildren<CCancelDlg*>();
                dialogs = found.size();
                shown = !found.isEmpty() && found.first()->isVisible();
                busyButtonsOff = !Button(IDC_OPEN_IMAGE)->isEnabled() && !Button(IDC_DECODE_IMAGE)->isEnabled();
                dlg->close();
            }, Qt::BlockingQueuedConnection);
        });
        Button(IDC_DECODE_IMAGE)->click();
        QVERIFY(JobEnds(*dlg));
        QVERIFY(onWorker && busyButtonsOff);
        QCOMPARE(dialogs, 1);
        QCOMPARE(shown, visible);
        QCOMPARE(Results()->topLevelItemCount(), 1);
        QVERIFY(dlg->isVisible());
        QCOMPARE(int(rd::CallsNamed("ZyrReader_CameraCancelQueue").size()), 1);
        QVERIFY(!std::filesystem::exists(app->file("Glyphor.ini")));

        QTest::keyClick(dlg.get(), Qt::Key_Escape);
        QVERIFY(!dlg->isVisible());
        QCOMPARE(dlg->result(), int(QDialog::Rejected));
        QCOMPARE(int(rd::CallsNamed("ZyrReader_CameraCancelQueue").size()), 1);
        QCOMPARE(readFile(app->file("Glyphor.ini")),
                 std::string("[Previous_State]\r\nBitmapID=1\r\nSelectedPlugins=A\r\nFileDlgFilterIndex=1\r\n"));
    }

    // The results list's row menu: only on a row; its commands act on the last selected row and
    // refuse one without data (the parse's own failures are the row actions' tests).
    void resultMenuActsOnTheLastSelectedRowWithData() {
        rd::PluginScript plugin{"KVDECODE_A.so"};
        rd::SymbolScript first, third;
        first.data = "first", third.data = "third";
        plugin.decodes = {{first}, {}, {third}};
        StartWith(plugin);
        Open(Pngs({"1.png", "2.png", "3.png"}));
        Button(IDC_DECODE_MULTI)->click();
        QVERIFY(JobEnds(*dlg));
        QMenu below;
        const QPoint underLastRow(CentreOfRow(2).x(), Results()->viewport()->height() - 2);
        QVERIFY(!Results()->itemAt(underLastRow));
        QVERIFY(!dlg->BuildResultMenu(below, underLastRow) && below.actions().isEmpty());
        QMenu menu;
        QVERIFY(dlg->BuildResultMenu(menu, CentreOfRow(0)));
        QCOMPARE(menu.actions().size(), 2);
        QCOMPARE(menu.actions()[0]->text() + menu.actions()[1]->text(), "Parse as AAMVA Data...Save Data as Binary...");

        ui.savePath = QString::fromStdString(app->file("row.bin"));
        using Saved = std::pair<QList<int>, const char*>;
        for (const auto& [rows, saved] : {Saved{{0, 2}, "third"}, Saved{{0}, "first"}}) {
            Select(rows);
            menu.actions().at(1)->trigger();
            QCOMPARE(readFile(ui.savePath.toStdString()), std::string(saved));
        }
        QCOMPARE(ui.messages.back(), std::make_pair(MessageKind::Info, "Successfully saved data to " + ui.savePath));
        auto record = std::make_unique<AAMVARecord>();
        std::strcpy(record->LicenceNumber, "D1234567");
        rd::SetParseRecord(*record, {});
        menu.actions().at(0)->trigger(); // parsed through the double, shown by the dialog
        QCOMPARE(ui.shownLicences, QStringList{"D1234567"});

        QCOMPARE(Results()->topLevelItem(1)->text(4), QStringLiteral("[NO DATA]"));
        ui.messages.clear();
        // Nothing decoded, no row selected, the last selected without data.
        for (const QList<int>& rows : {QList<int>{1}, QList<int>{}, QList<int>{0, 1}}) {
            Select(rows);
            dlg->OnSaveDataAsBinary();
            dlg->OnParseAsAamva();
        }
        const std::pair<MessageKind, QString> refusal = {MessageKind::Error, "There is not data available for this result"};
        QCOMPARE(ui.messages, Messages(6, refusal));
        QCOMPARE(ui.saveRequests, 2);
        QCOMPARE(ui.shownLicences.size(), 1);
    }

    void messagesFromAWorkerReachTheInterfaceThread() {
        Start();
        QThread* shownOn = nullptr;
        dlg->SetMessagePresenter([&](MessageKind, const QString&) { shownOn = QThread::currentThread(); });
        std::thread worker([&] { dlg->ShowMessage(MessageKind::Info, "from a worker"); });
        QTRY_VERIFY(shownOn != nullptr); // the interface thread keeps serving events meanwhile
        worker.join();
        QCOMPARE(shownOn, dlg->thread());
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(MainDialogTest)
#include "MainDialogTest.moc"
