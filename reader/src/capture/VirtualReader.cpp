#include "capture/VirtualReader.h"

#include "capture/DocumentFinder.h"
#include "capture/SnapshotComposer.h"
#include "core/ErrorReporter.h"
#include "core/Log.h"

#include <algorithm>
#include <cmath>

namespace zyr {

namespace {

using Milliseconds = std::chrono::milliseconds;

ZyrLocation toLocation(const FoundDocument& found) {
    if (!found.found)
        return ZyrLocation{};
    return ZyrLocation{found.box.left, found.box.top, found.box.width, found.box.height,
                       int32_t(std::lround(found.angle * 10))};
}

} // namespace

VirtualReader& VirtualReader::instance() {
    static VirtualReader reader;
    return reader;
}

void VirtualReader::open(const DeviceConfig& config) {
    std::lock_guard<std::mutex> lock(mutex_);
    config_ = config;
    open_ = true;
    ++generation_;
    delivered_.clear();
    firstSeen_.clear();
    current_.reset();
    cancelPending_ = false;
    changed_.notify_all();
}

void VirtualReader::close() {
    std::lock_guard<std::mutex> lock(mutex_);
    open_ = false;
    ++generation_;
    current_.reset();
    cancelPending_ = false;
    changed_.notify_all();
}

bool VirtualReader::isOpen() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return open_;
}

bool VirtualReader::twoSided() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return config_.twoSided;
}

int32_t VirtualReader::cancel() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!open_)
        return ZYR_ERR_NOT_INITIALISED;
    cancelPending_ = true;
    changed_.notify_all();
    Log::write(ZYR_LOG_CAMERA, LogInfo, "capture queue cancelled");
    return ZYR_OK;
}

bool VirtualReader::takeCancelLocked() {
    const bool pending = cancelPending_;
    cancelPending_ = false;
    return pending;
}

bool VirtualReader::presentLocked(Clock::time_point now, int32_t removalMs) const {
    return current_ != nullptr && (current_->inUse || now < current_->completedAt + Milliseconds(removalMs));
}

int32_t VirtualReader::frameOf(const DeviceConfig& config, const DocumentFiles& files, Light light,
                               Raster& frame, std::string& problem) {
    Raster front;
    int32_t result = DocumentFolder::load(files, 0, light, front);
    if (result == ZYR_OK && !config.twoSided) {
        frame = std::move(front);
        return ZYR_OK;
    }
    Raster back;
    if (result == ZYR_OK && files.hasSide(1))
        result = DocumentFolder::load(files, 1, light, back);
    if (result != ZYR_OK) {
        problem = std::string(ErrorReporter::text(result));
        return result;
    }
    frame = SnapshotComposer::twoSided(front, files.hasSide(1) ? &back : nullptr, config.mirrorBack);
    return ZYR_OK;
}

void VirtualReader::fillLocations(Document& document, bool twoSided, const FindParameters& find) {
    const Raster& frame = document.visibleFrame;
    document.where.side1 = toLocation(DocumentFinder::find(
        frame, SnapshotComposer::sideArea(frame, twoSided, 1), find.threshold, find.minimumArea));
    document.where.side2 = ZyrLocation{};
    if (twoSided)
        document.where.side2 = toLocation(DocumentFinder::find(
            frame, SnapshotComposer::sideArea(frame, true, 2), find.threshold, find.minimumArea));
}

int32_t VirtualReader::detect(bool wait, int32_t timeoutMs, int32_t removalMs, const FindParameters& find,
                              PlatenState& where) {
    const bool limited = !wait || timeoutMs > 0;
    const Clock::time_point deadline = Clock::now() + Milliseconds(wait ? std::max(timeoutMs, 0) : 0);
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        if (takeCancelLocked())
            return ZYR_ERR_CANCELLED;
        if (!open_)
            return ZYR_ERR_NOT_INITIALISED;
        Clock::time_point now = Clock::now();
        if (presentLocked(now, removalMs < 0 ? config_.removalTimeMs : removalMs)) {
            // Not taken away: the camera sees the same document again.
            current_->inUse = true;
            where = current_->where;
            return ZYR_OK;
        }

        const uint64_t generation = generation_;
        const DeviceConfig config = config_;
        lock.unlock();
        std::map<std::string, DocumentFiles> documents;
        const bool listed = DocumentFolder::scan(config.documentsFolder, documents);
        lock.lock();
        if (generation != generation_)
            continue;
        if (!listed) {
            lock.unlock();
            ErrorReporter::report(ZYR_ERR_DEVICE,
                                  ("The reader at " + config.deviceFolder +
                                   " cannot read its documents folder " + config.documentsFolder)
                                      .c_str());
            return ZYR_ERR_DEVICE;
        }

        now = Clock::now();
        Clock::time_point wakeAt = now + Milliseconds(config.pollIntervalMs);
        bool restart = false;
        for (const auto& [name, files] : documents) {
            if (delivered_.count(name) != 0)
                continue;
            const Clock::time_point readyAt =
                firstSeen_.emplace(name, now).first->second + Milliseconds(config.arrivalDelayMs);
            if (now < readyAt) {
                wakeAt = std::min(wakeAt, readyAt);
                break;
            }
            auto document = std::make_unique<Document>();
            document->name = name;
            document->files = files;
            std::string problem;
            lock.unlock();
            const int32_t loaded = frameOf(config, files, Light::Visible, document->visibleFrame, problem);
            if (loaded == ZYR_OK)
                fillLocations(*document, config.twoSided, find);
            lock.lock();
            if (generation != generation_) {
                restart = true;
                break;
            }
            delivered_.insert(name);
            if (loaded != ZYR_OK) {
                lock.unlock();
                ErrorReporter::report(ZYR_ERR_DEVICE,
                                      ("The reader at " + config.deviceFolder + " skips document " + name +
                                       ": its image cannot be read (" + problem + ")")
                                          .c_str());
                lock.lock();
                if (generation != generation_) {
                    restart = true;
                    break;
                }
                continue;
            }
            Log::write(ZYR_LOG_CAMERA, LogInfo, "document %s detected in %s", name.c_str(),
                       config.documentsFolder.c_str());
            current_ = std::move(document);
            where = current_->where;
            return ZYR_OK;
        }
        if (restart)
            continue;
        if (limited && now >= deadline)
            return ZYR_ERR_NO_DOCUMENT;
        if (limited)
            wakeAt = std::min(wakeAt, deadline);
        changed_.wait_until(lock, wakeAt);
    }
}

int32_t VirtualReader::locate(int32_t timeoutMs, int32_t removalMs, bool& present, PlatenState& where) {
    const Clock::time_point deadline = Clock::now() + Milliseconds(std::max(timeoutMs, 0));
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        if (takeCancelLocked())
            return ZYR_ERR_CANCELLED;
        if (!open_)
            return ZYR_ERR_NOT_INITIALISED;
        const Clock::time_point now = Clock::now();
        const int32_t removal = removalMs < 0 ? config_.removalTimeMs : removalMs;
        present = presentLocked(now, removal);
        if (!present || now >= deadline) {
            where = present ? current_->where : PlatenState{};
            return ZYR_OK;
        }
        const Clock::time_point removedAt =
            current_->inUse ? deadline : current_->completedAt + Milliseconds(removal);
        changed_.wait_until(lock, std::min(deadline, removedAt));
    }
}

int32_t VirtualReader::insert() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!open_)
        return ZYR_ERR_NOT_INITIALISED;
    Log::write(ZYR_LOG_CAMERA, LogDetail,
               config_.twoSided ? "document drawn in" : "one-sided reader: nothing to draw in");
    return ZYR_OK;
}

int32_t VirtualReader::snapshot(uint32_t lightMask, Raster& frame) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (!open_)
        return ZYR_ERR_NOT_INITIALISED;
    if (!presentLocked(Clock::now(), config_.removalTimeMs))
        return ZYR_ERR_NO_DOCUMENT;
    const Light light = lightOfMask(lightMask);
    if (light == Light::Visible) {
        frame = current_->visibleFrame;
        return ZYR_OK;
    }
    const DocumentFiles files = current_->files;
    const std::string name = current_->name;
    const DeviceConfig config = config_;
    lock.unlock();
    std::string problem;
    const int32_t result = frameOf(config, files, light, frame, problem);
    if (result != ZYR_OK)
        ErrorReporter::report(ZYR_ERR_DEVICE, ("The reader at " + config.deviceFolder +
                                               " cannot take a snapshot of " + name + ": " + problem)
                                                  .c_str());
    return result;
}

int32_t VirtualReader::complete() {
    std::lock_guard<std::mutex> lock(mutex_);
    if (!open_)
        return ZYR_ERR_NOT_INITIALISED;
    if (current_ != nullptr && current_->inUse) {
        current_->inUse = false;
        current_->completedAt = Clock::now();
        changed_.notify_all();
        Log::write(ZYR_LOG_CAMERA, LogDetail, "document %s done with", current_->name.c_str());
    }
    return ZYR_OK;
}

} // namespace zyr
