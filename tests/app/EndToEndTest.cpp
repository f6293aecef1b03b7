// The program with the real reader library and the built plug-ins: the plug-ins are listed by
// name, and Decode Multi over generated barcode images gives each plug-in's expected rows.
#include "CGlyphorDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "OffscreenMain.h"
#include "TempFolder.h"

#include <QListWidget>
#include <QPainter>
#include <QTreeWidget>
#include <ZXing/BitMatrix.h>
#include <ZXing/MultiFormatWriter.h>

namespace {

struct Sample {
    const char* file;
    ZXing::BarcodeFormat format;
    const char* text;
    int width, height; // of the symbol in pixels
};

const Sample kSamples[] = {
    {"qr.png", ZXing::BarcodeFormat::QRCode, "E2E QR 0123", 200, 200},
    {"pdf417.png", ZXing::BarcodeFormat::PDF417, "E2E PDF417 4567", 400, 150},
    {"datamatrix.png", ZXing::BarcodeFormat::DataMatrix, "E2E DM 89", 160, 160},
    {"code128.png", ZXing::BarcodeFormat::Code128, "E2E-128-X", 360, 100},
};

// Writes the sample images (symbol on a light page) and returns their paths in order.
QStringList WriteSamples(const TempFolder& folder) {
    QStringList paths;
    for (const Sample& s : kSamples) {
        ZXing::MultiFormatWriter writer(s.format);
        writer.setMargin(10);
        const ZXing::BitMatrix bits = writer.encode(std::string(s.text), s.width, s.height);
        QImage page(640, 480, QImage::Format_RGB32);
        page.fill(Qt::white);
        QPainter painter(&page);
        for (int y = 0; y < bits.height(); ++y) {
            for (int x = 0; x < bits.width(); ++x) {
                if (bits.get(x, y)) {
                    painter.fillRect(60 + x, 60 + y, 1, 1, Qt::black);
                }
            }
        }
        painter.end();
        const std::string path = folder.File(s.file);
        page.save(QString::fromStdString(path), "PNG");
        paths << QString::fromStdString(path);
    }
    return paths;
}

} // namespace

class EndToEndTest : public QObject {
    Q_OBJECT
private:
    TempFolder app;
    TempFolder images;
    QStringList samples;

    std::unique_ptr<CGlyphorDlg> Start() {
        auto dialog = std::make_unique<CGlyphorDlg>();
        dialog->Session().executableFolder = app.Path();
        dialog->SetOpenFileChooser([this](uint32_t&, QStringList& paths) {
            paths = samples;
            return true;
        });
        dialog->OnInitDialog();
        dialog->show();
        return dialog;
    }

private slots:
    void initTestCase() {
        ReaderSession::Startup();
        ZyrReaderSettings& settings = ReaderSession::Settings();
        std::snprintf(settings.PluginFolder, ZYR_PATH_SIZE, "%s", GLYPHOR_PLUGIN_DIR);
        std::snprintf(settings.PluginSettingsFolder, ZYR_PATH_SIZE, "%s", GLYPHOR_PLUGIN_DIR);
        std::snprintf(settings.ApplicationFolder, ZYR_PATH_SIZE, "%s", app.Path().c_str());
        samples = WriteSamples(images);
    }
    void cleanupTestCase() { ReaderSession::Shutdown(); }

    void builtPluginsAreListedByName() {
        auto dialog = Start();
        auto* list = Control<QListWidget>(dialog.get(), IDC_PLUGINS);
        QStringList names;
        for (int i = 0; i < list->count(); ++i) {
            names << list->item(i)->text();
        }
        QCOMPARE(names, (QStringList{"DataMatrix", "Pdf417", "QRCode", "ZBar", "ZXing"}));
    }

    void decodeMultiRowsPerPlugin_data() {
        QTest::addColumn<QString>("plugin");
        QTest::addColumn<QStringList>("expected"); // row text per sample, in sample order
        const QString none = QStringLiteral("[NO DATA]");
        QTest::newRow("ZXing") << "ZXing" << QStringList{"E2E QR 0123", "E2E PDF417 4567", "E2E DM 89", "E2E-128-X"};
        QTest::newRow("Pdf417") << "Pdf417" << QStringList{none, "E2E PDF417 4567", none, none};
        QTest::newRow("QRCode") << "QRCode" << QStringList{"E2E QR 0123", none, none, none};
        QTest::newRow("DataMatrix") << "DataMatrix" << QStringList{none, none, "E2E DM 89", none};
        QTest::newRow("ZBar") << "ZBar" << QStringList{"E2E QR 0123", none, none, "E2E-128-X"};
    }
    void decodeMultiRowsPerPlugin() {
        QFETCH(QString, plugin);
        QFETCH(QStringList, expected);
        auto dialog = Start();
        auto* list = Control<QListWidget>(dialog.get(), IDC_PLUGINS);
        const auto found = list->findItems(plugin, Qt::MatchExactly);
        QCOMPARE(found.size(), 1);
        found.first()->setSelected(true);
        dialog->OnOpenImage();
        dialog->OnDecodeMulti();
        auto* results = Control<QTreeWidget>(dialog.get(), IDC_RESULTS);
        QCOMPARE(results->topLevelItemCount(), expected.size());
        for (int r = 0; r < expected.size(); ++r) {
            QCOMPARE(results->topLevelItem(r)->text(0), QString::fromLatin1(kSamples[r].file));
            QCOMPARE(results->topLevelItem(r)->text(1), plugin);
            QCOMPARE(results->topLevelItem(r)->text(4), expected[r]);
        }
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(EndToEndTest)
#include "EndToEndTest.moc"
