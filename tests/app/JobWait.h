// A job's button returns at once; window tests wait here until the job has ended (its rows are
// in by then: they were queued before the end).
#pragma once

#include "CGlyphorDlg.h"

#include <QTest>

inline bool JobEnds(CGlyphorDlg& dialog, int timeoutMs = 60000) {
    return QTest::qWaitFor([&] { return !dialog.JobRunning(); }, timeoutMs);
}
