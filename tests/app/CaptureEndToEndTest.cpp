// Capture with the real library, plug-ins and generated virtual readers: Capture Multi files each
// document by outcome and ends on Stop; a two-sided reader with crop shows and saves both sides.
#include "JobWait.h"
#include "CBitmapPicture.h"
#include "CCancelDlg.h"
#include "CGlyphorDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "OffscreenMain.h"
#include "TempFolder.h"

#include <QCheckBox>
#include <QListWidget>
#include <QTimer>
#include <QTreeWidget>

#include <filesystem>
#include <set>

namespace fs = std::filesystem;

namespace {

// A copy of a generated reader holding the named documents, each taken away at once.
void MakeDevice(const TempFolder& folder, const std::string& device, const std::vector<std::string>& documents) {
    const std::string generated = std::string(GLYPHOR_DEVICES_DIR) + "/" + device + "/";
    fs::create_directory(folder.file("documents"));
    for (const std::string& name : documents)
        for (const char* suffix : {".png", ".back.png"})
            if (fs::exists(generated + "documents/" + name + suffix))
                fs::copy_file(generated + "documents/" + name + suffix, folder.file("documents/" + name + suffix));
    folder.write("device.ini", std::string("[Device]\nTwoSided=") + (device == "two-sided" ? "1" : "0") +
                                   "\n[Feed]\nArrivalDelayMs=0\nRemovalTimeMs=0\n");
}

std::set<std::string> FilesIn(const std::string& folder) {
    std::set<std::string> names;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error))
        if (entry.is_regular_file())
            names.insert(entry.path().filename().string());
    return names;
}

} // namespace

class CaptureEndToEndTest : public QObject {
    Q_OBJECT
private:
    std::unique_ptr<TempFolder> device;
    std::unique_ptr<TempFolder> app;
    std::vector<QString> messages;

    // Starts the reader session on the device and opens the main window with one plug-in selected.
    std::unique_ptr<CGlyphorDlg> Start(const QString& plugin) {
        qputenv("ZYRREADER_DEVICE", QByteArray::fromStdString(device->path()));
        ReaderSession::Startup();
        ZyrReaderSettings& settings = ReaderSession::Settings();
        std::snprintf(settings.ApplicationFolder, ZYR_PATH_SIZE, "%s/", app->path().c_str());
        auto dialog = std::make_unique<CGlyphorDlg>();
        dialog->Session().executableFolder = app->path() + "/";
        dialog->SetMessagePresenter([this](MessageKind, const QString& text) { messages.push_back(text); });
        dialog->OnInitDialog();
        dialog->show();
        const auto found = Control<QListWidget>(dialog.get(), IDC_PLUGINS)->findItems(plugin, Qt::MatchExactly);
        if (found.size() == 1)
            found.first()->setSelected(true);
        return dialog;
    }

    static QStringList Rows(CGlyphorDlg& dialog) {
        QCoreApplication::processEvents(); // rows posted by the job's last decode
        auto* results = Control<QTreeWidget>(&dialog, IDC_RESULTS);
        QStringList rows;
        for (int r = 0; r < results->topLevelItemCount(); ++r)
            rows << results->topLevelItem(r)->text(4);
        return rows;
    }

private slots:
    void init() {
        device = std::make_unique<TempFolder>();
        app = std::make_unique<TempFolder>();
        messages.clear();
    }
    void cleanup() {
        ReaderSession::Shutdown();
        ReaderSession::Reset();
        qunsetenv("ZYRREADER_DEVICE");
    }

    void captureMultiTakesEveryDocumentAndEndsOnStop() {
        MakeDevice(*device, "one-sided", {"01-licence", "02-qrcode", "03-datamatrix", "04-code128", "05-blank"});
        auto dialog = Start("ZXing");
        // Stop is pressed once the fifth row is in, while the reader waits for a sixth document.
        QTimer stopper;
        bool stopped = false;
        connect(&stopper, &QTimer::timeout, [&] {
            auto* cancel = dialog->findChild<CCancelDlg*>();
            if (!stopped && cancel && Control<QTreeWidget>(dialog.get(), IDC_RESULTS)->topLevelItemCount() >= 5)
                cancel->Stop(), stopped = true;
        });
        stopper.start(50);
        dialog->OnCaptureMulti();
        QVERIFY(JobEnds(*dialog));
        stopper.stop();
        QVERIFY(stopped);
        const QStringList rows = Rows(*dialog);
        QCOMPARE(rows.size(), 5);
        QVERIFY2(rows[0].startsWith("@") && rows[0].contains("ANSI 636"), qPrintable(rows[0]));
        QCOMPARE(rows.mid(1), (QStringList{"GLYPHOR DEVICE QR 0002", "GLYPHOR DEVICE DM 0003", "GLY-DEV-0004", "[NO DATA]"}));
        QCOMPARE(FilesIn(app->file("ZXing")), (std::set<std::string>{"1.png", "2.png", "3.png", "4.png"}));
        QCOMPARE(FilesIn(app->file("Failed")), (std::set<std::string>{"5.png"}));
        QVERIFY(!dialog->Session().busy && dialog->findChild<CCancelDlg*>() == nullptr);
    }

    void twoSidedWithCropShowsAndSavesBothSides() {
        MakeDevice(*device, "two-sided", {"01-licence"});
        auto dialog = Start("ZXing");
        QVERIFY(ReaderSession::ScannerConnected());
        Control<QCheckBox>(dialog.get(), IDC_CROP)->setChecked(true);
        dialog->OnCapture();
        QVERIFY(JobEnds(*dialog));
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Glyphor - 3.png"));
        QVERIFY(messages.empty());
        const QStringList rows = Rows(*dialog);
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows[0], QStringLiteral("Side Left: D1234562"));
        QVERIFY2(rows[1].startsWith("Side Right: @"), qPrintable(rows[1]));
        for (const char* file : {"Glyphor_1.png", "GlyphorSide1_1.png", "GlyphorSide2_1.png"})
            QVERIFY2(fs::exists(app->file(file)), file);
        QVERIFY(!dialog->Picture(PictureId::Main)->isVisible());
        for (PictureId side : {PictureId::Side1, PictureId::Side2})
            QVERIFY(dialog->Picture(side)->isVisible() && dialog->Picture(side)->HasImage());
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(CaptureEndToEndTest)
#include "CaptureEndToEndTest.moc"
