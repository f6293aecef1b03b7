// Runs one long job on a worker thread while the calling (user-interface) thread keeps
// processing events, with the "Stop processing" dialog alive for the job's whole length.
#pragma once

#include <cstdint>
#include <functional>

class CCancelDlg;
class QWidget;

class CJobRunner {
public:
    using Job = std::function<uint32_t(CCancelDlg& cancel)>;
    using BusyChanged = std::function<void(bool busy)>;

    // Creates the stop dialog (shown only when showDialog; its Stop runs onStop), reports busy,
    // runs job on a new thread, processes events until it ends, then destroys the dialog and
    // reports idle. Returns the job's value.
    static uint32_t Run(QWidget* parent, bool showDialog, const Job& job, const BusyChanged& busyChanged,
                        const std::function<void()>& onStop = {});
};
