// What a running job sees of the stop-processing dialog.
#pragma once

#include <string>

class JobContext {
public:
    virtual ~JobContext() = default;
    // True once the user asked to stop.
    virtual bool IsStopped() const = 0;
    // Progress text shown in the dialog; any thread.
    virtual void SetStatusText(const std::string& text) = 0;
};
