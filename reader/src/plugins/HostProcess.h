// A running plug-in host process as the library sees it: its pid, a pidfd that tells when it
// ends, and the socket to it. Dropping the object ends the process and reaps it.
#ifndef ZYR_PLUGINS_HOST_PROCESS_H
#define ZYR_PLUGINS_HOST_PROCESS_H

#include "plugins/FrameChannel.h"

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <string>

namespace zyr {

class HostProcess {
public:
    // Starts executable with a new socket pair, its end as descriptor 3 of the host. Returns false
    // with the reason when the process cannot be started.
    static bool start(const std::string& executable, std::unique_ptr<HostProcess>& host, std::string& reason);

    // Closes the socket, which asks the host to close its plug-in and exit; kills it when it has
    // not done so within a short grace period, and reaps it.
    ~HostProcess();
    HostProcess(const HostProcess&) = delete;
    HostProcess& operator=(const HostProcess&) = delete;

    FrameChannel& channel() { return channel_; }
    int exitFd() const { return pidfd_; } // readable once the process has ended; -1 when unknown
    pid_t pid() const { return pid_; }

    // True while the process runs (false too once it was reaped).
    bool running() const;

    // Kills the process (when still running), reaps it and says how it ended, e.g. "killed by
    // signal 11 (Segmentation fault)". Later calls give the same text.
    std::string stop();

    // Lets the host run on the processor the calling thread is on. The caller only waits while
    // the host decodes, so that processor is free, and its caches hold the image just copied for
    // the host; on another processor a page-size image decodes several per cent slower.
    void moveToCallersProcessor();

    // How a wait status reads in the log.
    static std::string describe(int status);

private:
    HostProcess(pid_t pid, int pidfd, int socket) : pid_(pid), pidfd_(pidfd), channel_(socket) {}
    bool waitForExit(std::chrono::milliseconds limit) const;

    pid_t pid_;
    int pidfd_;
    FrameChannel channel_;
    bool reaped_ = false;
    int processor_ = -1; // where the host was last moved to; -1 anywhere
    std::string ending_;
};

} // namespace zyr

#endif
