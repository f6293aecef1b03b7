// The stop-processing dialog: stop by button, Escape or close, status text from a worker (running
// jobs on a worker thread is checked through the window).
#include "CCancelDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "JobControl.h"
#include "OffscreenMain.h"
#include "ReaderDouble.h"

#include <QPushButton>
#include <functional>
#include <thread>

namespace rd = readerdouble;

class JobRunnerTest : public QObject {
    Q_OBJECT
private slots:
    void init() { rd::Reset(); }

    void everyWayToStopCancelsTheQueueAndKeepsTheDialog() {
        const std::pair<const char*, std::function<void(CCancelDlg&)>> ways[] = {
            {"button", [](CCancelDlg& d) { QTest::mouseClick(Control<QPushButton>(&d, IDC_STOP), Qt::LeftButton); }},
            {"escape", [](CCancelDlg& d) { QTest::keyClick(&d, Qt::Key_Escape); }},
            {"close", [](CCancelDlg& d) { d.close(); }},
            {"twice", [](CCancelDlg& d) { Control<QPushButton>(&d, IDC_STOP)->click(), Control<QPushButton>(&d, IDC_STOP)->click(); }}};
        for (const auto& [how, stop] : ways) {
            rd::Reset();
            CCancelDlg dialog;
            QCOMPARE(dialog.windowTitle(), QStringLiteral("Stop processing"));
            JobControl job;
            job.Begin();
            dialog.SetStopHandler([&] { job.Stop(); });
            dialog.show();
            QVERIFY(QTest::qWaitForWindowExposed(&dialog));
            QVERIFY(!job.IsStopped());
            std::thread worker([&] { dialog.SetStatusText(how); });
            worker.join();
            QTRY_COMPARE(dialog.StatusText(), QString(how)); // status text from a worker
            stop(dialog);
            QVERIFY2(job.IsStopped() && dialog.isVisible(), how);
            QCOMPARE(int(rd::CallsNamed("ZyrReader_CameraCancelQueue").size()), how == std::string("twice") ? 2 : 1);
        }
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(JobRunnerTest)
#include "JobRunnerTest.moc"
