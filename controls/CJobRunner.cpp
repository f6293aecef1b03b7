#include "CJobRunner.h"

#include "CCancelDlg.h"

#include <QEventLoop>
#include <memory>
#include <thread>

uint32_t CJobRunner::Run(QWidget* parent, bool showDialog, const Job& job, const BusyChanged& busyChanged,
                         const std::function<void()>& onStop) {
    auto cancel = std::make_unique<CCancelDlg>(parent);
    cancel->SetStopHandler(onStop);
    if (showDialog) {
        cancel->show();
    }
    if (busyChanged) {
        busyChanged(true);
    }
    QEventLoop loop;
    uint32_t result = 0;
    std::thread worker([&] {
        result = job(*cancel);
        // Queued, so a quit posted before the loop starts is still seen by it.
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    worker.join();
    cancel.reset();
    if (busyChanged) {
        busyChanged(false);
    }
    return result;
}
