// The main window on the offscreen platform: controls and texts, button rules, resizing, the
// statistics line, a decode run through the real job runner, closing while busy, and settings.
#include "JobWait.h"
#include "CAboutDlg.h"
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
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QTreeWidget>
#include <QWindow>
#include <map>
#include <set>
#include <thread>

namespace rd = readerdouble;

namespace {

QString TextOf(QWidget* w) {
    if (auto* b = qobject_cast<QAbstractButton*>(w)) {
        return b->text();
    }
    if (auto* l = qobject_cast<QLabel*>(w)) {
        return l->text();
    }
    return QString();
}

// Every control of the main window.
const int kAllControls[] = {IDC_USE_VISIBLE_IMAGE,
                            IDC_CROP,
                            IDC_PICTURE,
                            IDC_SIDE1_PICTURE,
                            IDC_SIDE2_PICTURE,
                            IDC_CAPTURE_MULTI,
                            IDC_CAPTURE,
                            IDC_DARK_OBJECT_DETECT,
                            IDC_OPEN_IMAGE,
                            IDC_PREVIOUS,
                            IDC_NEXT,
                            IDC_DECODE_IMAGE,
                            IDC_DECODE_MULTI,
                            IDC_CLEAR_RESULTS,
                            IDC_PLUGINS_LABEL,
                            IDC_PLUGINS,
                            IDC_RESULTS_LABEL,
                            IDC_RESULTS,
                            IDC_AVERAGE_TIME_LABEL,
                            IDC_AVERAGE_TIME,
                            IDC_IMAGE_COUNT_LABEL,
                            IDC_IMAGE_COUNT,
                            IDC_SYMBOLS_COUNT_LABEL,
                            IDC_SYMBOLS_COUNT,
                            IDC_AVERAGE_PROCESS_LABEL,
                            IDC_AVERAGE_PROCESS};

} // namespace

class MainDialogTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<TempFolder> plugins;
    std::unique_ptr<TempFolder> app;
    std::unique_ptr<CGlyphorDlg> dlg;
    std::vector<std::pair<MessageKind, QString>> messages;
    QStringList nextFiles;
    bool chooserAccepts = true;
    uint32_t chooserFilter = 1;
    std::vector<uint32_t> filtersOffered;

    void InstallPlugin(const rd::PluginScript& script) {
        plugins->write(script.fileName, "");
        rd::AddPlugin(script);
    }

    std::unique_ptr<CGlyphorDlg> MakeDialog(bool reader) {
        auto d = std::make_unique<CGlyphorDlg>();
        d->Session().executableFolder = app->path() + "/";
        d->SetScannerConnected(reader);
        d->SetMessagePresenter(
            [this](MessageKind kind, const QString& text) { messages.emplace_back(kind, text); });
        d->SetOpenFileChooser([this](uint32_t& filter, QStringList& paths) {
            filtersOffered.push_back(filter);
            filter = chooserFilter;
            if (!chooserAccepts) {
                return false;
            }
            paths = nextFiles;
            return true;
        });
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
        nextFiles = files;
        Button(IDC_OPEN_IMAGE)->click();
    }

    // Right-clicks a point of a control through the window, as the platform delivers it (press,
    // then release), and returns the entries of every menu that opened ("*" marks a checked one),
    // closing each; the entry named choose is run.
    QList<QStringList> RightClick(QWidget* control, QPoint at, const QString& choose = QString()) {
        QList<QStringList> menus;
        QTimer poll;
        connect(&poll, &QTimer::timeout, this, [&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu) {
                return;
            }
            QStringList entries;
            QAction* chosen = nullptr;
            for (QAction* a : menu->actions()) {
                entries << a->text() + (a->isChecked() ? "*" : "");
                chosen = a->text() == choose ? a : chosen;
            }
            menus << entries;
            menu->close();
            if (chosen) {
                chosen->trigger();
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
        messages.clear();
        nextFiles.clear();
        chooserAccepts = true;
        chooserFilter = 1;
        filtersOffered.clear();
    }
    void cleanup() {
        dlg.reset();
        ReaderSession::Reset();
    }

    void initialControls_data() {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<bool>("enabled");
        QTest::newRow("1003 picture") << IDC_PICTURE << "" << true << true;
        QTest::newRow("1005 side 1") << IDC_SIDE1_PICTURE << "" << false << false;
        QTest::newRow("1007 side 2") << IDC_SIDE2_PICTURE << "" << false << false;
        QTest::newRow("1002") << IDC_CAPTURE_MULTI << "Capture Mult&i" << true << false;
        QTest::newRow("1001") << IDC_CAPTURE << "C&apture " << true << false;
        QTest::newRow("1029") << IDC_DARK_OBJECT_DETECT << "Dark object detect" << true << true;
        QTest::newRow("1004") << IDC_OPEN_IMAGE << "&Open Image" << true << true;
        QTest::newRow("1013") << IDC_PREVIOUS << "&<-" << true << false;
        QTest::newRow("1014") << IDC_NEXT << "-&>" << true << false;
        QTest::newRow("1015") << IDC_DECODE_IMAGE << "&Decode Image" << true << false;
        QTest::newRow("1016") << IDC_DECODE_MULTI << "Decode &Multi" << true << false;
        QTest::newRow("1017") << IDC_CLEAR_RESULTS << "&Clear Results" << true << true;
        QTest::newRow("1031") << IDC_USE_VISIBLE_IMAGE << "Use Visible Img" << true << true;
        QTest::newRow("1033") << IDC_CROP << "Crop" << true << true;
        QTest::newRow("1009") << IDC_PLUGINS_LABEL << "&Plugins:" << true << true;
        QTest::newRow("1006") << IDC_PLUGINS << "" << true << true;
        QTest::newRow("1010") << IDC_RESULTS_LABEL << "Results:" << true << true;
        QTest::newRow("1008") << IDC_RESULTS << "" << true << true;
        QTest::newRow("1018") << IDC_AVERAGE_TIME_LABEL << "Average Time:" << true << true;
        QTest::newRow("1019") << IDC_AVERAGE_TIME << "-" << true << true;
        QTest::newRow("1020") << IDC_IMAGE_COUNT_LABEL << "Image Count:" << true << true;
        QTest::newRow("1021") << IDC_IMAGE_COUNT << "-" << true << true;
        QTest::newRow("1022") << IDC_SYMBOLS_COUNT_LABEL << "Symbols Count:" << true << true;
        QTest::newRow("1023") << IDC_SYMBOLS_COUNT << "-" << true << true;
        QTest::newRow("1024") << IDC_AVERAGE_PROCESS_LABEL << "Average Image Process Time:" << true << true;
        QTest::newRow("1025") << IDC_AVERAGE_PROCESS << "-" << true << true;
    }
    void initialControls() {
        QFETCH(int, id);
        QFETCH(QString, text);
        QFETCH(bool, visible);
        QFETCH(bool, enabled);
        Start();
        QWidget* w = DialogBuilder::Find(dlg.get(), id);
        QVERIFY(w);
        QCOMPARE(TextOf(w), text);
        QCOMPARE(w->isVisible(), visible);
        QCOMPARE(w->isEnabled(), enabled);
    }

    void initialWindow() {
        Start();
        QCOMPARE(dlg->windowTitle(), QStringLiteral("Glyphor"));
        QVERIFY(Control<QCheckBox>(dlg.get(), IDC_USE_VISIBLE_IMAGE)->isChecked());
        QVERIFY(!Control<QCheckBox>(dlg.get(), IDC_CROP)->isChecked());
        QVERIFY(!Control<QCheckBox>(dlg.get(), IDC_DARK_OBJECT_DETECT)->isChecked());
        QVERIFY(qobject_cast<CBitmapPicture*>(DialogBuilder::Find(dlg.get(), IDC_PICTURE)));
        QCOMPARE(PluginList()->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(Results()->selectionBehavior(), QAbstractItemView::SelectRows);
        const QStringList headers = {"File name", "Plugin", "Img Process", "Time", "Results"};
        for (int c = 0; c < headers.size(); ++c) {
            QCOMPARE(Results()->headerItem()->text(c), headers[c]);
        }
        const int w = Results()->width() - 2 * Results()->frameWidth();
        for (int c = 0; c < 4; ++c) {
            QCOMPARE(Results()->columnWidth(c), w / 6);
        }
        QCOMPARE(Results()->columnWidth(4), 4 * w / 6);
    }

    void aboutBox() {
        CAboutDlg about;
        QVERIFY(TextOf(DialogBuilder::Find(&about, IDC_ABOUT_TEXT)) == QStringLiteral("Glyphor Version 1.0"));
        QCOMPARE(TextOf(DialogBuilder::Find(&about, IDOK)), QStringLiteral("OK"));
        Start();
        const auto actions = dlg->actions();
        QVERIFY(std::any_of(actions.begin(), actions.end(), [](QAction* a) {
            return a->text() == QStringLiteral("&About Glyphor...") &&
                   a->shortcut() == QKeySequence::HelpContents;
        }));
    }

    void pictureMenuOnRightClickInTheWindow() {
        Start();
        auto* picture = Control<CBitmapPicture>(dlg.get(), IDC_PICTURE);
        const QPoint middle = picture->rect().center();
        QCOMPARE(RightClick(picture, middle), QList<QStringList>()); // no image, no menu at all
        TempFolder images;
        Open({QString::fromStdString(images.write("a.png", PngBytes(Qt::red)))});
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

    void buttonRules_data() {
        QTest::addColumn<bool>("reader");
        QTest::addColumn<int>("files");
        QTest::addColumn<int>("steps"); // positive: next, negative: previous, from the first file
        QTest::addColumn<bool>("previous");
        QTest::addColumn<bool>("next");
        QTest::addColumn<bool>("decode");
        QTest::newRow("no reader, no files") << false << 0 << 0 << false << false << false;
        QTest::newRow("reader, no files") << true << 0 << 0 << false << false << false;
        QTest::newRow("one file") << false << 1 << 0 << false << false << true;
        QTest::newRow("three at 0") << true << 3 << 0 << false << true << true;
        QTest::newRow("three at 1") << false << 3 << 1 << true << true << true;
        QTest::newRow("three at 2") << true << 3 << 2 << true << false << true;
        QTest::newRow("three back to 0") << false << 3 << -2 << false << true << true;
    }
    void buttonRules() {
        QFETCH(bool, reader);
        QFETCH(int, files);
        QFETCH(int, steps);
        QFETCH(bool, previous);
        QFETCH(bool, next);
        QFETCH(bool, decode);
        Start(reader);
        QStringList paths;
        for (int i = 0; i < files; ++i) {
            paths << QStringLiteral("/nowhere/f%1.png").arg(i);
        }
        if (files > 0) {
            Open(paths);
        }
        if (steps < 0) { // to the end first, then back
            for (int i = 0; i < files - 1; ++i) {
                Button(IDC_NEXT)->click();
            }
            steps = files - 1 + steps;
            for (int i = files - 1; i > steps; --i) {
                Button(IDC_PREVIOUS)->click();
            }
        } else {
            for (int i = 0; i < steps; ++i) {
                Button(IDC_NEXT)->click();
            }
        }
        QCOMPARE(Button(IDC_PREVIOUS)->isEnabled(), previous);
        QCOMPARE(Button(IDC_NEXT)->isEnabled(), next);
        QCOMPARE(Button(IDC_DECODE_IMAGE)->isEnabled(), decode);
        QCOMPARE(Button(IDC_DECODE_MULTI)->isEnabled(), decode);
        QCOMPARE(Button(IDC_CAPTURE)->isEnabled(), reader);
        QCOMPARE(Button(IDC_CAPTURE_MULTI)->isEnabled(), reader);
        QVERIFY(Button(IDC_OPEN_IMAGE)->isEnabled());
        if (files > 0) {
            QCOMPARE(dlg->windowTitle(), QStringLiteral("Glyphor - f%1.png").arg(steps));
        }
    }

    void cancelledOpenKeepsEverything() {
        Start();
        Open({"/x/a.png", "/x/b.png", "/x/c.png"});
        Button(IDC_NEXT)->click();
        const int32_t number = dlg->Session().imageNumber;
        chooserAccepts = false;
        chooserFilter = 4; // changed in the dialog, then cancelled
        Button(IDC_OPEN_IMAGE)->click();
        QCOMPARE(dlg->Session().files.Count(), int64_t(3));
        QCOMPARE(dlg->Session().files.CurrentIndex(), 1);
        QCOMPARE(dlg->Session().files.FilterIndex(), 1u);
        QCOMPARE(dlg->Session().imageNumber.load(), number);
        QCOMPARE(dlg->windowTitle(), QStringLiteral("Glyphor - b.png"));
        QCOMPARE(filtersOffered, (std::vector<uint32_t>{0, 1})); // the stored filter is preselected
    }

    void resizeMovesExactlyTheNamedControls_data() {
        QTest::addColumn<int>("dw");
        QTest::addColumn<int>("dh");
        QTest::newRow("grow") << 120 << 80;
        QTest::newRow("shrink") << -30 << -20;
        QTest::newRow("wider") << 50 << 0;
        QTest::newRow("taller") << 0 << 45;
    }
    void resizeMovesExactlyTheNamedControls() {
        QFETCH(int, dw);
        QFETCH(int, dh);
        dlg = MakeDialog(false);
        dlg->OnInitDialog();
        std::map<int, QRect> before;
        for (int id : kAllControls) {
            before[id] = DialogBuilder::Find(dlg.get(), id)->geometry();
        }
        dlg->show();
        QVERIFY(QTest::qWaitForWindowExposed(dlg.get()));
        for (int id : kAllControls) { // the first size event only records the size
            QCOMPARE(DialogBuilder::Find(dlg.get(), id)->geometry(), before[id]);
        }
        const int column2 = Results()->columnWidth(2);
        const QSize target = dlg->size() + QSize(dw, dh);
        dlg->resize(target);
        QTRY_COMPARE(dlg->size(), target);

        const std::set<int> right = {
            IDC_CAPTURE_MULTI, IDC_DARK_OBJECT_DETECT, IDC_CAPTURE,      IDC_OPEN_IMAGE,    IDC_PREVIOUS,
            IDC_NEXT,          IDC_DECODE_IMAGE,       IDC_DECODE_MULTI, IDC_CLEAR_RESULTS, IDC_PLUGINS_LABEL,
            IDC_PLUGINS};
        for (int id : kAllControls) {
            QRect expected = before[id];
            if (id == IDC_PICTURE) {
                expected.setSize(expected.size() + QSize(dw, dh));
            } else if (id >= IDC_AVERAGE_TIME_LABEL && id <= IDC_AVERAGE_PROCESS) {
                expected.translate(0, dh);
            } else if (right.count(id)) {
                expected.translate(dw, 0);
            } else if (id == IDC_RESULTS_LABEL || id == IDC_RESULTS) {
                expected.translate(0, dh);
                expected.setWidth(expected.width() + dw);
            }
            QCOMPARE(DialogBuilder::Find(dlg.get(), id)->geometry(), expected);
        }
        QCOMPARE(Results()->columnWidth(2), column2);
        QCOMPARE(Results()->columnWidth(4), column2 + dw); // from "Img Process", as designed
    }

    void statisticsLineAndClearResults() {
        Start();
        TestSession& s = dlg->Session();
        s.stats.decodeCount = 3;
        s.stats.totalDecodeMs = 100;
        s.stats.totalImageProcessMs = 10;
        s.stats.imageCount = 2;
        s.stats.symbolsCount = 5;
        dlg->UpdateStatistics();
        QCOMPARE(Text(IDC_AVERAGE_TIME), QStringLiteral("33.33ms"));
        QCOMPARE(Text(IDC_IMAGE_COUNT), QStringLiteral("2"));
        QCOMPARE(Text(IDC_SYMBOLS_COUNT), QStringLiteral("5"));
        QCOMPARE(Text(IDC_AVERAGE_PROCESS), QStringLiteral("3.33ms"));
        new QTreeWidgetItem(Results(), QStringList{"a"});
        Button(IDC_CLEAR_RESULTS)->click();
        QCOMPARE(Results()->topLevelItemCount(), 0);
        QCOMPARE(Text(IDC_AVERAGE_TIME), QStringLiteral("-"));
        QCOMPARE(Text(IDC_IMAGE_COUNT), QStringLiteral("-"));
        QCOMPARE(Text(IDC_SYMBOLS_COUNT), QStringLiteral("-"));
        QCOMPARE(Text(IDC_AVERAGE_PROCESS), QStringLiteral("3.33ms")); // kept, as designed
        dlg->UpdateStatistics();
        QCOMPARE(Text(IDC_AVERAGE_TIME), QStringLiteral("0.00ms"));
    }

    // Each statistic's value stands just after its own label's text, on the label's line.
    void statisticValuesFollowTheirLabels() {
        Start();
        const std::pair<int, int> pairs[] = {{IDC_AVERAGE_TIME_LABEL, IDC_AVERAGE_TIME},
                                             {IDC_IMAGE_COUNT_LABEL, IDC_IMAGE_COUNT},
                                             {IDC_SYMBOLS_COUNT_LABEL, IDC_SYMBOLS_COUNT},
                                             {IDC_AVERAGE_PROCESS_LABEL, IDC_AVERAGE_PROCESS}};
        for (const auto& [labelId, valueId] : pairs) {
            const auto* label = Control<QLabel>(dlg.get(), labelId);
            const auto* value = Control<QLabel>(dlg.get(), valueId);
            const int gap = value->x() - (label->x() + label->fontMetrics().horizontalAdvance(label->text()));
            QVERIFY2(gap >= 0 && gap <= 4 * label->fontMetrics().averageCharWidth(),
                     qPrintable(QStringLiteral("%1: gap %2").arg(label->text()).arg(gap)));
            QCOMPARE(value->y(), label->y());
        }
    }

    void pluginListShowsNamesHandlesAndTheSavedSelection() {
        rd::PluginScript a{"KVDECODE_A.so"};
        a.handle = 71;
        rd::PluginScript b{"KVDECODE_B.so"};
        b.handle = 72;
        InstallPlugin(a);
        InstallPlugin(b);
        app->write("Glyphor.ini", "[Previous_State]\r\nSelectedPlugins=B\r\nBitmapID=4\r\n");
        Start();
        QCOMPARE(PluginList()->count(), 2);
        QCOMPARE(PluginList()->item(0)->text(), QStringLiteral("A"));
        QCOMPARE(PluginList()->item(1)->data(Qt::UserRole).toULongLong(), 72ull);
        QVERIFY(!PluginList()->item(0)->isSelected());
        QVERIFY(PluginList()->item(1)->isSelected());
        PluginList()->item(0)->setSelected(true);
        QCOMPARE(dlg->Session().plugins.SelectedNames().str(), "A,B");
        QCOMPARE(dlg->Session().imageNumber.load(), 4);
    }

    void decodeMultiFillsTheResultsList() {
        rd::PluginScript a{"KVDECODE_A.so"};
        rd::SymbolScript one, two;
        one.data = "one";
        two.data = "@\n\x1e\rANSI\x85";
        two.corners = {{{1, 2}, {30, 2}, {30, 40}, {1, 40}}};
        a.decodes = {{one}, {two}};
        InstallPlugin(a);
        Start();
        PluginList()->item(0)->setSelected(true);
        TempFolder images;
        Open({QString::fromStdString(images.write("a.png", PngBytes(Qt::red))),
              QString::fromStdString(images.write("b.png", PngBytes(Qt::blue)))});
        Button(IDC_DECODE_MULTI)->click();
        QVERIFY(JobEnds(*dlg));
        QCOMPARE(Results()->topLevelItemCount(), 2);
        const QStringList first = {"a.png", "A", "0ms", Results()->topLevelItem(0)->text(3), "one"};
        for (int c = 0; c < 5; ++c) {
            QCOMPARE(Results()->topLevelItem(0)->text(c), first[c]);
        }
        QCOMPARE(Results()->topLevelItem(1)->text(0), QStringLiteral("b.png"));
        QCOMPARE(Results()->topLevelItem(1)->text(4), QStringLiteral("@<LF><RS><CR>ANSI<85>"));
        QVERIFY(Results()->topLevelItem(0)->text(3).endsWith("ms"));
        QCOMPARE(Text(IDC_IMAGE_COUNT), QStringLiteral("2"));
        QCOMPARE(Text(IDC_SYMBOLS_COUNT), QStringLiteral("2"));
        QCOMPARE(dlg->windowTitle(), QStringLiteral("Glyphor - b.png"));
        QVERIFY(!dlg->Session().busy);
        QVERIFY(Button(IDC_DECODE_MULTI)->isEnabled());
        QVERIFY(dlg->findChildren<CCancelDlg*>().isEmpty());

        // The selected row's symbols are outlined over the picture, in the plug-in's colour, and
        // only over the image it was decoded from (b.png is on show).
        auto* picture = Control<CBitmapPicture>(dlg.get(), IDC_PICTURE);
        Results()->topLevelItem(1)->setSelected(true);
        const std::vector<CBitmapPicture::Outline> outlines = picture->Outlines();
        QCOMPARE(outlines.size(), size_t(1));
        QCOMPARE(outlines[0].corners.at(2), QPointF(30, 40));
        QCOMPARE(outlines[0].colour, QColor::fromRgb(PluginPalette::Colour(0)));
        Results()->clearSelection();
        Results()->topLevelItem(0)->setSelected(true);
        QVERIFY(picture->Outlines().empty());
    }

    // The window and the batch load a file through the same session code: a plug-in gets the same
    // pixel format from both, colour as RGB and grey as grey.
    void windowAndBatchHandAPluginTheSamePixelFormat() {
        InstallPlugin({"KVDECODE_A.so"});
        Start();
        PluginList()->item(0)->setSelected(true);
        TempFolder images;
        const std::string colour = images.write("colour.png", PngBytes(Qt::red));
        const std::string grey = images.write(
            "grey.png",
            Encoded(Solid(8, 8, Qt::gray).convertToFormat(QImage::Format_Grayscale8), "PNG").toStdString());
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
            const ImageOutcome outcome = lane.Decode({file, file, file});
            QCOMPARE(outcome.error, std::string());
            batch.push_back(rd::DecodedPixelFormats().back());
        }
        QCOMPARE(window, batch);
        QCOMPARE(window, (std::vector<int32_t>{ZYR_PIXEL_RGB24, ZYR_PIXEL_GREY8}));
    }

    // Rows arriving in a burst end with the last one in view, and the list scrolled only once.
    void aBurstOfRowsEndsWithTheLastInView() {
        Start();
        int scrolls = 0;
        connect(Results()->verticalScrollBar(), &QScrollBar::valueChanged, this, [&scrolls] { ++scrolls; });
        for (int i = 0; i < 300; ++i) {
            dlg->Session().results.Finish(dlg->Session().results.Append(i, 0, "A"),
                                          std::chrono::milliseconds(1));
            dlg->PostShowNextResult();
        }
        QCOMPARE(Results()->topLevelItemCount(), 0); // nothing shown until the events are handled
        QTRY_COMPARE(Results()->topLevelItemCount(), 300);
        QTRY_VERIFY(Results()->viewport()->rect().contains(
            Results()->visualItemRect(Results()->topLevelItem(299)).bottomLeft()));
        QCOMPARE(scrolls, 1);
    }

    void stopDialogIsHiddenForOneFile_data() {
        QTest::addColumn<int>("files");
        QTest::addColumn<bool>("visible");
        QTest::newRow("one file") << 1 << false;
        QTest::newRow("two files") << 2 << true;
    }
    void stopDialogIsHiddenForOneFile() {
        QFETCH(int, files);
        QFETCH(bool, visible);
        InstallPlugin({"KVDECODE_A.so"});
        Start();
        PluginList()->item(0)->setSelected(true);
        TempFolder images;
        QStringList paths;
        for (int i = 0; i < files; ++i) {
            paths << QString::fromStdString(
                images.write("f" + std::to_string(i) + ".png", PngBytes(Qt::red)));
        }
        Open(paths);
        bool onWorker = false;
        int dialogs = -1;
        bool shown = !visible;
        bool busyButtonsOff = false;
        rd::SetHook("ZyrReader_ImagePluginDecode", [&] {
            onWorker = QThread::currentThread() != dlg->thread();
            QMetaObject::invokeMethod(
                dlg.get(),
                [&] {
                    const auto found = dlg->findChildren<CCancelDlg*>();
                    dialogs = found.size();
                    shown = !found.isEmpty() && found.first()->isVisible();
                    busyButtonsOff =
                        !Button(IDC_OPEN_IMAGE)->isEnabled() && !Button(IDC_DECODE_IMAGE)->isEnabled();
                },
                Qt::BlockingQueuedConnection);
        });
        Button(IDC_DECODE_IMAGE)->click();
        QVERIFY(JobEnds(*dlg));
        QVERIFY(onWorker);
        QCOMPARE(dialogs, 1);
        QCOMPARE(shown, visible);
        QVERIFY(busyButtonsOff);
        QCOMPARE(Results()->topLevelItemCount(), 1);
    }

    void closeWhileBusyOnlyCancelsThenCloseSaves() {
        InstallPlugin({"KVDECODE_A.so"});
        Start();
        PluginList()->item(0)->setSelected(true);
        TempFolder images;
        Open({QString::fromStdString(images.write("a.png", PngBytes(Qt::red)))});
        rd::SetHook("ZyrReader_ImagePluginDecode", [&] {
            QMetaObject::invokeMethod(
                dlg.get(), [&] { dlg->close(); }, Qt::BlockingQueuedConnection);
        });
        Button(IDC_DECODE_IMAGE)->click();
        QVERIFY(JobEnds(*dlg));
        QVERIFY(dlg->isVisible());
        QCOMPARE(int(rd::CallsNamed("ZyrReader_CameraCancelQueue").size()), 1);
        QVERIFY(!std::filesystem::exists(app->file("Glyphor.ini")));

        dlg->close();
        QVERIFY(!dlg->isVisible());
        QCOMPARE(dlg->result(), int(QDialog::Rejected));
        QCOMPARE(int(rd::CallsNamed("ZyrReader_CameraCancelQueue").size()), 1);
        const std::string saved = readFile(app->file("Glyphor.ini"));
        QVERIFY(saved.find("SelectedPlugins=A\r\n") != std::string::npos);
        QVERIFY(saved.find("BitmapID=1\r\n") != std::string::npos);
    }

    void escapeClosesLikeTheCloseButton() {
        Start();
        QTest::keyClick(dlg.get(), Qt::Key_Escape);
        QVERIFY(!dlg->isVisible());
        QVERIFY(std::filesystem::exists(app->file("Glyphor.ini")));
    }

    void darkObjectDetectGoesToTheCameraAndARefusalIsShown() {
        Start();
        auto* box = Control<QCheckBox>(dlg.get(), IDC_DARK_OBJECT_DETECT);
        rd::ClearCalls();
        box->click();
        QCOMPARE(rd::CallTexts(), std::vector<std::string>{"ZyrReader_CameraUpdateSettings(" +
                                                           rd::Ptr(&ReaderSession::Settings()) + ", 1)"});
        QVERIFY(messages.empty());
        rd::SetResult("ZyrReader_CameraUpdateSettings", ZYR_ERR_NOT_INITIALISED);
        box->click();
        QVERIFY(!box->isChecked()); // not reset after the error
        QCOMPARE(ReaderSession::Settings().DarkObjectDetect, uint8_t(0));
        QCOMPARE(messages, (std::vector<std::pair<MessageKind, QString>>{
                               {MessageKind::Exclamation, "Error saving settings.  Error code: 1"}}));
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
