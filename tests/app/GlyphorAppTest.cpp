// The application object: the whole run's reader calls in order around the main window, and a
// start-up error shown first.
#include "CGlyphorApp.h"
#include "CGlyphorDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "OffscreenMain.h"
#include "ReaderDouble.h"
#include "TempFolder.h"

#include <QListWidget>
#include <QPushButton>
#include <algorithm>

namespace rd = readerdouble;

class GlyphorAppTest : public QObject {
    Q_OBJECT
private slots:
    void init() {
        rd::Reset();
        ReaderSession::Reset();
    }
    void cleanup() { ReaderSession::Reset(); }

    void wholeRunWithoutAReader() {
        TempFolder plugins;
        plugins.write("KVDECODE_A.so", "");
        rd::AddPlugin({"KVDECODE_A.so"});
        ZyrReaderSettings ini{};
        std::snprintf(ini.PluginFolder, ZYR_PATH_SIZE, "%s", plugins.path().c_str());
        ini.LoggingLevel = 2;
        ini.LoggingMask = 0x21;
        rd::SetNoReader();
        rd::SetIniSettings(ini);
        rd::SetInitialised(rd::Service::Parsing, false);

        std::vector<std::string> messages;
        QStringList listed;
        CGlyphorApp app;
        app.SetLibraryMessageSink([&](const std::string& text) { messages.push_back(text); });
        app.SetDialogRunner([&](CGlyphorDlg& dialog) {
            dialog.OnInitDialog(); // what exec does first
            auto* list = Control<QListWidget>(&dialog, IDC_PLUGINS);
            for (int i = 0; i < list->count(); ++i)
                listed << list->item(i)->text();
        });
        QCOMPARE(app.InitInstance(), false);
        QVERIFY(messages.empty());
        QCOMPARE(listed, QStringList{"A"});
        // Start-up, the window's plug-in loading, then shut-down (each sequence: ReaderSessionTest).
        const std::vector<std::string> calls = rd::CallNames();
        const auto load = std::find(calls.begin(), calls.end(), "ZyrReader_ImagePluginLoad");
        QVERIFY(load - calls.begin() == 5 && load[-1] == "ZyrReader_ImageProcessingInitialise");
        QVERIFY(calls.end() - load == 9 && load[3] == "ZyrReader_IsCameraInitialised");
        QCOMPARE(calls.back(), std::string("ZyrReader_DestroyCachedData"));
        QCOMPARE(rd::CallsNamed("ZyrReader_InitialiseLogging")[0].Text(),
                 std::string("ZyrReader_InitialiseLogging(true, 2, 33, \"Glyphor.log\")"));
    }

    // With a reader: a start-up error is shown before start-up goes on, capture is offered, and the
    // camera is shut down at the end.
    void readerRunShowsAStartupErrorFirstAndShutsTheCameraDown() {
        rd::QueueError("ZyrReader_LL_LoadSettings", ZYR_ERR_DEVICE, "Device folder unreadable");
        std::vector<std::string> events;
        CGlyphorApp app;
        app.SetLibraryMessageSink([&](const std::string& text) { events.push_back(text + " after " + rd::CallNames().back()); });
        app.SetDialogRunner([&](CGlyphorDlg& dialog) {
            dialog.OnInitDialog();
            events.push_back(Control<QPushButton>(&dialog, IDC_CAPTURE_MULTI)->isEnabled() ? "window, capture" : "window");
        });
        app.InitInstance();
        QCOMPARE(events, (std::vector<std::string>{"Device folder unreadable after ZyrReader_LL_LoadSettings", "window, capture"}));
        QCOMPARE(rd::CallsNamed("ZyrReader_CameraShutdown").size(), size_t(1)); // the order: ReaderSessionTest
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(GlyphorAppTest)
#include "GlyphorAppTest.moc"
