// The stop-processing dialog and the job worker: stop by button, Escape or close, the worker's
// own thread, the queued end report, and stopping by destruction.
#include "CCancelDlg.h"
#include "ControlIds.h"
#include "DialogBuilder.h"
#include "JobControl.h"
#include "JobWorker.h"
#include "OffscreenMain.h"
#include "ReaderDouble.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <atomic>
#include <chrono>
#include <memory>
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

    // The caller's thread keeps serving events while the job runs, and hears of the end by signal.
    void runsTheJobOnItsOwnThreadAndReportsTheEndQueued() {
        QObject target;
        bool servedWhileRunning = false;
        std::thread::id jobThread;
        JobWorker worker(
            [&] {
                jobThread = std::this_thread::get_id();
                // Only served if the caller's thread is not blocked waiting for the job.
                QMetaObject::invokeMethod(&target, [&] { servedWhileRunning = true; },
                                          Qt::BlockingQueuedConnection);
                return 42u;
            },
            {});
        QSignalSpy finished(&worker, &JobWorker::Finished);
        worker.Start();
        QVERIFY(worker.IsRunning());
        QVERIFY(finished.wait(10000));
        QCOMPARE(finished.count(), 1);
        QCOMPARE(finished.first().first().toUInt(), 42u);
        QVERIFY(jobThread != std::this_thread::get_id());
        QVERIFY(servedWhileRunning);
        QVERIFY(!worker.IsRunning());
    }

    // Destroying a running worker asks the job to stop and joins its thread; no signal follows.
    void destroyingARunningWorkerStopsAndJoins() {
        JobControl control;
        control.Begin();
        std::atomic<bool> jobReturned{false};
        std::atomic<bool> started{false};
        auto worker = std::make_unique<JobWorker>(
            [&] {
                started = true;
                while (!control.IsStopped()) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
                }
                jobReturned = true;
                return 0u;
            },
            [&] { control.Stop(); });
        bool finished = false;
        connect(worker.get(), &JobWorker::Finished, this, [&] { finished = true; });
        worker->Start();
        QTRY_VERIFY(started.load());
        worker.reset();
        QVERIFY(jobReturned.load());
        QCoreApplication::processEvents();
        QVERIFY(!finished);
    }
};

GLYPHOR_OFFSCREEN_TEST_MAIN(JobRunnerTest)
#include "JobRunnerTest.moc"
