// Capture from the reader: one cycle waits for a document (on repeat passes first for the last
// one to be taken away), takes a snapshot with the image settings the selected plug-ins need,
// has the library post-process it, shows and saves the result and runs the decode on it (on a
// two-sided reader on each side). Also the bodies of the Capture and Capture Multi jobs.
#pragma once

#include "ZyrReaderLowLevelAPI.h"

#include <cstdint>
#include <functional>

class JobContext;
class TestSession;

class CaptureCycle {
public:
    explicit CaptureCycle(TestSession& session);

    // Before either capture button starts a job: false (after telling the user) when the
    // selected plug-ins do not need one and the same image.
    bool CheckImageSettings();

    // One cycle on the job's thread; 0 to go on, else the library's error.
    uint32_t Run(JobContext& job, bool repeat);

    uint32_t CaptureJob(JobContext& job);      // one cycle, then the whole window is redrawn
    uint32_t CaptureMultiJob(JobContext& job); // cycles until one fails (Stop cancels the wait)

    // Waits and the clock; tests replace them so that cycles run at once and time is scripted.
    std::function<void(int milliseconds)> sleep;
    std::function<int64_t()> clockMs;

    static constexpr const char* kWaitingText = "Waiting for document...";
    static constexpr const char* kProcessingText = "Processing document...";
    static constexpr const char* kCountdownFormat =
        "(%d) Seconds left to Remove document before reprocessing...";
    static constexpr int kRemovalTurns = 5;

    // The image callbacks handed to the library: the first stores the image at user; the second
    // fills a pair of side images, the first delivered into slot 0 once the side toggle is set.
    static void SingleImageCallback(void* user, int32_t index, int32_t side, uint32_t lightMask,
                                    ZyrImage* image);
    static void TwoSidedCallback(void* user, int32_t index, int32_t side, uint32_t lightMask,
                                 ZyrImage* image);
    static void SetSideToggle(bool on);

private:
    // Repeat passes: gives the user five turns to take the last document away. Non-zero: the
    // location call failed.
    uint32_t WaitForRemoval(JobContext& job);
    void ProcessTwoSided(const ZyrImage* snapshot, const ZyrImageSettings& record, uint32_t options,
                         uint32_t optional, int32_t number);
    void ZeroLocations();

    TestSession& m_session;
    alignas(4) ZyrLocation m_side1{};
    alignas(4) ZyrLocation m_side2{};
    uint8_t m_documentPresent = 0;
    uint8_t m_detectionFlag = 0;
};
