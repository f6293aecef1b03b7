// The window with the real reader library, the built plug-ins and the generated samples: Decode
// Multi rows as each sample's contents call for, bytes kept exactly, a licence row parsed and saved.
#include "JobWait.h"
#include "CAAMVADialog.h"
#include "CGlyphorDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "OffscreenMain.h"
#include "ResultText.h"
#include "SampleCatalogue.h"
#include "TempFolder.h"
#include "ZyrReaderLowLevelAPI.h"

#include <QListWidget>
#include <QTreeWidget>
#include <algorithm>
#include <set>

using glyphor::samples::Sample;
using glyphor::samples::SampleSymbol;

namespace {

// Bytes a plug-in reports as text rather than as binary data.
bool IsText(const std::string& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](unsigned char c) {
        return (c >= 0x20 && c <= 0x7E) || c == '\n' || c == '\r' || c == 0x1E || c == 0x1D;
    });
}

// What the results column shows for one symbol.
QString RowText(const SampleSymbol& symbol) {
    // Latin-1 and Shift_JIS text is shown as text, read in its own character set.
    if (symbol.eci == ZYR_ECI_ISO8859_1 || symbol.eci == ZYR_ECI_SHIFT_JIS)
        return symbol.text.empty() ? QString::fromLatin1(symbol.payload.c_str()) : QString::fromUtf8(symbol.text.c_str());
    if (symbol.eci != 0 || !IsText(symbol.payload))
        return QStringLiteral("%1 bytes (eci=%2)").arg(symbol.payload.size()).arg(symbol.eci);
    const std::string shown = ResultRowText(symbol.payload); // control bytes spelled out ("<LF>")
    return QString::fromLatin1(shown.data(), int(shown.size()));
}

QString PathOf(const Sample& sample) {
    return QString::fromStdString(std::string(GLYPHOR_SAMPLES_DIR) + "/" + glyphor::samples::fileNameOf(sample));
}

} // namespace

class EndToEndTest : public QObject {
    Q_OBJECT
private:
    TempFolder app;
    std::vector<const Sample*> opened;
    std::unique_ptr<CGlyphorDlg> dialog;
    QStringList listed; // the plug-ins the window lists

    // Opens the samples, selects one plug-in and runs Decode Multi; returns the results list.
    QTreeWidget* DecodeWith(const QString& plugin, const std::vector<const Sample*>& samples) {
        opened = samples;
        dialog = std::make_unique<CGlyphorDlg>();
        dialog->Session().executableFolder = app.path();
        dialog->SetOpenFileChooser([this](uint32_t&, QStringList& paths) {
            for (const Sample* s : opened)
                paths << PathOf(*s);
            return true;
        });
        dialog->OnInitDialog();
        dialog->show();
        auto* list = Control<QListWidget>(dialog.get(), IDC_PLUGINS);
        listed.clear();
        for (int i = 0; i < list->count(); ++i) {
            list->item(i)->setSelected(list->item(i)->text() == plugin);
            listed << list->item(i)->text();
        }
        dialog->OnOpenImage();
        dialog->OnDecodeMulti();
        JobEnds(*dialog); // after a timeout the caller's checks of the rows fail
        return Control<QTreeWidget>(dialog.get(), IDC_RESULTS);
    }

private slots:
    void initTestCase() {
        ReaderSession::Startup();
        ZyrReaderSettings& settings = ReaderSession::Settings();
        std::snprintf(settings.PluginFolder, ZYR_PATH_SIZE, "%s", GLYPHOR_PLUGIN_DIR);
        std::snprintf(settings.PluginSettingsFolder, ZYR_PATH_SIZE, "%s", GLYPHOR_PLUGIN_DIR);
        std::snprintf(settings.ApplicationFolder, ZYR_PATH_SIZE, "%s", app.path().c_str());
    }
    void cleanup() { dialog.reset(); }
    void cleanupTestCase() { ReaderSession::Shutdown(); }

    // The built plug-ins are listed by name. Every generated sample through the all-format plug-in:
    // a row per image, in order, showing either what the image holds or "[NO DATA]"; the clean
    // images always decode.
    void everySampleWithTheAllFormatPlugin() {
        std::vector<const Sample*> samples;
        for (const Sample& s : glyphor::samples::sampleCatalogue())
            samples.push_back(&s);
        QTreeWidget* results = DecodeWith("ZXing", samples);
        QCOMPARE(listed, (QStringList{"DataMatrix", "Pdf417", "QRCode", "ZBar", "ZXing"}));
        QCOMPARE(results->topLevelItemCount(), int(samples.size()));
        for (int r = 0; r < int(samples.size()); ++r) {
            const Sample& sample = *samples[size_t(r)];
            const QString text = results->topLevelItem(r)->text(4);
            QCOMPARE(results->topLevelItem(r)->text(0), QString::fromStdString(glyphor::samples::fileNameOf(sample)));
            std::set<QString> allowed = {QStringLiteral("[NO DATA]")};
            std::string allBytes;
            for (const SampleSymbol& symbol : sample.symbols) {
                allowed.insert(RowText(symbol));
                allBytes += symbol.payload;
            }
            QVERIFY2(allowed.count(text), qPrintable(QString::fromStdString(sample.name) + ": " + text));
            const bool clean = sample.variant == "plain" || sample.name.rfind("binary-", 0) == 0 ||
                               sample.name.rfind("eci-", 0) == 0 || sample.name.rfind("aamva-", 0) == 0 ||
                               sample.variant == "charset" || sample.variant == "addon";
            if (sample.symbols.empty())
                QCOMPARE(text, QStringLiteral("[NO DATA]"));
            else if (clean)
                QVERIFY2(text != "[NO DATA]", sample.name.c_str());
            if (text == "[NO DATA]")
                continue;
            // The bytes of every symbol found are kept: all of them for a single symbol, for several
            // at least those of the one shown.
            const auto found = dialog->Session().results.DataAt(r);
            const std::string data = found ? std::string(found->str(), size_t(found->size())) : "<none>";
            if (sample.symbols.size() == 1)
                QCOMPARE(data, allBytes);
            else
                QVERIFY(data.size() <= allBytes.size() && !data.empty());
        }
    }

    // The licence card's row: parsed by the real library into the AAMVA dialog, and saved as the
    // exact bytes the plug-in decoded.
    void licenceRowIsParsedShownExportedAndSaved() {
        const Sample* card = glyphor::samples::findSample("aamva-pdf417");
        QVERIFY(card);
        const std::string payload = card->symbols.at(0).payload;
        QTreeWidget* results = DecodeWith("Pdf417", {card});
        QCOMPARE(results->topLevelItemCount(), 1);
        results->topLevelItem(0)->setSelected(true);

        struct Viewer : AamvaViewer { // notes surname, licence number and data-item rows as shown
            CAAMVADialog dialog;
            QStringList& shown;
            explicit Viewer(QStringList& shown) : shown(shown) {}
            int32_t Parse(const uint8_t* bytes, int32_t length) override { return dialog.Parse(bytes, length); }
            void ShowModal() override {
                dialog.show();
                auto* fields = dialog.findChild<QTreeWidget*>(CAAMVADialog::ControlName(CAAMVADialog::IDC_FIELDS));
                shown << QString::fromLatin1(dialog.Result().Record()->Surname)
                      << QString::fromLatin1(dialog.Result().Record()->LicenceNumber)
                      << QString::number(fields ? fields->topLevelItem(CAAMVADialog::DataItemsGroup)->childCount() : 0);
            }
        };
        QStringList shown;
        dialog->SetAamvaViewerFactory([&] { return std::make_unique<Viewer>(shown); });
        std::vector<std::pair<MessageKind, QString>> messages;
        dialog->SetMessagePresenter([&](MessageKind kind, const QString& text) { messages.emplace_back(kind, text); });
        dialog->OnParseAsAamva();
        QCOMPARE(messages, (std::vector<std::pair<MessageKind, QString>>{}));
        QCOMPARE(shown.size(), 3);
        QVERIFY(!shown[0].isEmpty() && shown[2].toInt() > 10);
        QVERIFY(payload.find("DCS" + shown[0].toStdString()) != std::string::npos);
        QVERIFY(payload.find("DAQ" + shown[1].toStdString()) != std::string::npos);

        const std::string saved = app.file("card.bin");
        dialog->SetSavePathChooser([&] { return QString::fromStdString(saved); });
        dialog->OnSaveDataAsBinary();
        QCOMPARE(readFile(saved), payload);
        QCOMPARE(int(messages.size()), 1);
        QCOMPARE(messages[0].second, QString::fromStdString("Successfully saved data to " + saved));
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(EndToEndTest)
#include "EndToEndTest.moc"
