// The virtual reader behind the capture calls: documents arrive as image files in the device's
// documents folder and are detected one after another in name order, including files that
// appear later. A detected document lies on the platen until the client has finished with it
// (ZyrReader_DocumentProcessingComplete) and then for the removal time, as if the user took it
// away; while it lies there, location reports it present and detection sees it again.
// A cancel wakes a waiting detection or location call, or waits for the next one.
#ifndef ZYR_CAPTURE_VIRTUAL_READER_H
#define ZYR_CAPTURE_VIRTUAL_READER_H

#include "capture/DeviceConfig.h"
#include "capture/DocumentFolder.h"
#include "capture/Raster.h"

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace zyr {

// How documents are told from the platen (from the reader settings of the call).
struct FindParameters {
    double threshold = 0;
    int64_t minimumArea = 1;
};

// Where the document on the platen lies, in snapshot coordinates.
struct PlatenState {
    ZyrLocation side1{};
    ZyrLocation side2{};
};

class VirtualReader {
public:
    using Clock = std::chrono::steady_clock;

    static VirtualReader& instance();

    // Starts the device afresh (nothing delivered yet, no cancel pending).
    void open(const DeviceConfig& config);
    // Wakes and ends waiting calls; later calls answer ZYR_ERR_NOT_INITIALISED.
    void close();
    bool isOpen() const;
    bool twoSided() const;

    int32_t cancel();

    // wait false: look once; timeoutMs 0: no limit. removalMs < 0: the device's removal time.
    // ZYR_ERR_NO_DOCUMENT when none came in time.
    int32_t detect(bool wait, int32_t timeoutMs, int32_t removalMs, const FindParameters& find,
                   PlatenState& where);

    // present: whether the previous document still lies on the platen; with timeoutMs > 0,
    // waits up to that long for it to be taken away.
    int32_t locate(int32_t timeoutMs, int32_t removalMs, bool& present, PlatenState& where);

    int32_t insert();
    // The platen with the current document under the light asked for; ZYR_ERR_NO_DOCUMENT when
    // no document lies there.
    int32_t snapshot(uint32_t lightMask, Raster& frame);
    int32_t complete();

private:
    struct Document {
        std::string name;
        DocumentFiles files;
        Raster visibleFrame;
        PlatenState where;
        bool inUse = true; // detected and not yet completed
        Clock::time_point completedAt{};
    };

    bool presentLocked(Clock::time_point now, int32_t removalMs) const;
    bool takeCancelLocked();
    static int32_t frameOf(const DeviceConfig& config, const DocumentFiles& files, Light light, Raster& frame,
                           std::string& problem);
    static void fillLocations(Document& document, bool twoSided, const FindParameters& find);

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    bool open_ = false;
    uint64_t generation_ = 0; // counts opens, so a waiter notices a restart
    DeviceConfig config_;
    std::set<std::string> delivered_;
    std::map<std::string, Clock::time_point> firstSeen_;
    std::unique_ptr<Document> current_;
    bool cancelPending_ = false;
};

} // namespace zyr

#endif
