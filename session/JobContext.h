// What a running job sees of its control (JobControl in the program, recorders in tests).
#pragma once

#include <string>

class JobContext {
public:
    virtual ~JobContext() = default;
    // True once the user asked to stop.
    virtual bool IsStopped() const = 0;
    // Progress text shown while the job runs; any thread.
    virtual void SetStatusText(const std::string& text) = 0;
};
