// The stop-processing dialog and the job runner: stop by button, Escape or close, the dialog's
// visibility, busy reports, the worker thread, and events served while the job runs.
#include "CCancelDlg.h"
#include "CJobRunner.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "JobControl.h"
#include "OffscreenMain.h"
#include "ReaderDouble.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <thread>

namespace rd = readerdouble;

class JobRunnerTest : public QObject {
    Q_OBJECT
private slots:
    void init() { rd::Reset(); }

    void templateControls() {
        CCancelDlg dialog;
        QCOMPARE(dialog.windowTitle(), QStringLiteral("Stop processing"));
        QCOMPARE(Control<QPushButton>(&dialog, IDC_STOP)->text(), QStringLiteral("Stop"));
        auto* status = Control<QLabel>(&dialog, IDC_STATUS);
        QVERIFY(status);
        QVERIFY(status->alignment() & Qt::AlignHCenter);
        QCOMPARE(status->text(), QString());
    }

    void everyWayToStopCancelsTheQueueAndKeepsTheDialog_data() {
        QTest::addColumn<QString>("how");
        QTest::newRow("button") << "button";
        QTest::newRow("escape") << "escape";
        QTest::newRow("close") << "close";
        QTest::newRow("twice") << "twice";
    }
    void everyWayToStopCancelsTheQueueAndKeepsTheDialog() {
        QFETCH(QString, how);
        CCancelDlg dialog;
        JobControl job;
        job.Begin();
        dialog.SetStopHandler([&] { job.Stop(); });
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        QVERIFY(!job.IsStopped());
        int expectedCancels = 1;
        if (how == "button") {
            QTest::mouseClick(Control<QPushButton>(&dialog, IDC_STOP), Qt::LeftButton);
        } else if (how == "escape") {
            QTest::keyClick(&dialog, Qt::Key_Escape);
        } else if (how == "close") {
            dialog.close();
        } else {
            Control<QPushButton>(&dialog, IDC_STOP)->click();
            Control<QPushButton>(&dialog, IDC_STOP)->click();
            expectedCancels = 2;
        }
        QVERIFY(job.IsStopped());
        QVERIFY(dialog.isVisible());
        QCOMPARE(int(rd::CallsNamed("ZyrReader_CameraCancelQueue").size()), expectedCancels);
    }

    void statusTextFromAWorker() {
        CCancelDlg dialog;
        std::thread worker([&] { dialog.SetStatusText("Decoding..."); });
        worker.join();
        QTRY_COMPARE(dialog.StatusText(), QStringLiteral("Decoding..."));
    }

    void runsTheJobOnAWorkerWhileEventsAreServed_data() {
        QTest::addColumn<bool>("show");
        QTest::newRow("dialog shown") << true;
        QTest::newRow("dialog hidden") << false;
    }
    void runsTheJobOnAWorkerWhileEventsAreServed() {
        QFETCH(bool, show);
        QWidget parent;
        std::vector<bool> busyReports;
        bool dialogVisible = !show;
        bool servedWhileRunning = false;
        std::thread::id jobThread;
        const uint32_t result = CJobRunner::Run(
            &parent, show,
            [&](CCancelDlg& cancel) {
                jobThread = std::this_thread::get_id();
                // Only served if the interface thread keeps processing events during the job.
                QMetaObject::invokeMethod(
                    &parent,
                    [&] {
                        servedWhileRunning = true;
                        dialogVisible = cancel.isVisible();
                    },
                    Qt::BlockingQueuedConnection);
                return 42u;
            },
            [&](bool busy) { busyReports.push_back(busy); });
        QCOMPARE(result, 42u);
        QVERIFY(jobThread != std::this_thread::get_id());
        QVERIFY(servedWhileRunning);
        QCOMPARE(dialogVisible, show);
        QCOMPARE(busyReports, (std::vector<bool>{true, false}));
        QVERIFY(parent.findChildren<CCancelDlg*>().isEmpty()); // destroyed by the runner
    }

    void stopDuringAJobIsSeenByTheJob() {
        QWidget parent;
        JobControl control;
        control.Begin();
        bool sawStop = false;
        CJobRunner::Run(
            &parent, true,
            [&](CCancelDlg& cancel) {
                QMetaObject::invokeMethod(
                    &parent, [&] { Control<QPushButton>(&cancel, IDC_STOP)->click(); },
                    Qt::BlockingQueuedConnection);
                sawStop = control.IsStopped();
                return 0u;
            },
            {}, [&] { control.Stop(); });
        QVERIFY(sawStop);
        QCOMPARE(int(rd::CallsNamed("ZyrReader_CameraCancelQueue").size()), 1);
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(JobRunnerTest)
#include "JobRunnerTest.moc"
