#include "plugins/HostProcess.h"

#include "plugins/ProcessSpawner.h"

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace zyr {
namespace {

// Time a host gets to close its plug-in and exit before it is killed.
constexpr std::chrono::milliseconds kExitGrace{2000};

int openPidfd(pid_t pid) {
#ifdef SYS_pidfd_open
    const long fd = syscall(SYS_pidfd_open, pid, 0);
    if (fd >= 0) {
        fcntl(int(fd), F_SETFD, FD_CLOEXEC);
        return int(fd);
    }
#endif
    (void)pid;
    return -1; // older kernel: the end of the socket alone tells
}

} // namespace

bool HostProcess::start(const std::string& executable, std::unique_ptr<HostProcess>& host,
                        std::string& reason) {
    if (access(executable.c_str(), X_OK) != 0) {
        reason = "plug-in host " + executable + " is missing or not executable";
        return false;
    }
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
        reason = std::string("socketpair: ") + std::strerror(errno);
        return false;
    }
    pid_t pid = -1;
    const int error =
        ProcessSpawner::instance().spawn(executable, {executable, std::to_string(getpid())}, ends[1], pid);
    close(ends[1]);
    if (error != 0) {
        close(ends[0]);
        reason = "cannot start " + executable + ": " + std::strerror(error);
        return false;
    }
    host.reset(new HostProcess(pid, openPidfd(pid), ends[0]));
    return true;
}

HostProcess::~HostProcess() {
    if (!reaped_) {
        channel_.close();
        waitForExit(kExitGrace);
        stop();
    }
    if (pidfd_ >= 0)
        close(pidfd_);
}

bool HostProcess::waitForExit(std::chrono::milliseconds limit) const {
    if (pidfd_ < 0) {
        // No pidfd: look every few milliseconds.
        for (auto waited = std::chrono::milliseconds(0);; waited += std::chrono::milliseconds(5)) {
            siginfo_t info{};
            if (waitid(P_PID, id_t(pid_), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == pid_)
                return true;
            if (waited >= limit)
                return false;
            usleep(5000);
        }
    }
    pollfd watched{pidfd_, POLLIN, 0};
    int ready;
    while ((ready = poll(&watched, 1, int(limit.count()))) < 0 && errno == EINTR) {
    }
    return ready > 0;
}

bool HostProcess::running() const {
    if (reaped_)
        return false;
    return !waitForExit(std::chrono::milliseconds(0));
}

std::string HostProcess::stop() {
    if (reaped_)
        return ending_;
    kill(pid_, SIGKILL); // a process that already ended keeps the status it ended with
    int status = 0;
    pid_t got;
    while ((got = waitpid(pid_, &status, 0)) < 0 && errno == EINTR) {
    }
    reaped_ = true;
    channel_.close();
    // ECHILD: the program ignores SIGCHLD, so the kernel reaped the host and its status is lost.
    ending_ = got == pid_ ? describe(status) : "ended (status not available)";
    return ending_;
}

std::string HostProcess::describe(int status) {
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        const char* name = sigdescr_np(signal);
        return "killed by signal " + std::to_string(signal) + " (" + (name ? name : "unknown") + ")";
    }
    if (WIFEXITED(status))
        return "exited with status " + std::to_string(WEXITSTATUS(status));
    return "ended with wait status " + std::to_string(status);
}

void HostProcess::moveToCallersProcessor() {
    const int processor = sched_getcpu();
    if (processor < 0 || processor == processor_ || reaped_)
        return;
    cpu_set_t only;
    CPU_ZERO(&only);
    CPU_SET(processor, &only);
    // A refusal (a processor set the host may not use) leaves it where the system puts it.
    if (sched_setaffinity(pid_, sizeof only, &only) == 0)
        processor_ = processor;
}

} // namespace zyr
