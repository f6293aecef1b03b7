#include "ChildProcess.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <cstring>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace plugincheck {

std::string ChildOutcome::describe(int timeoutSeconds) const {
    if (!finished)
        return "no answer within " + std::to_string(timeoutSeconds) + " s";
    if (signal)
        return "signal " + std::to_string(signal) + " (" + strsignal(signal) + ")";
    return "exit code " + std::to_string(exitCode);
}

ChildOutcome runSelf(const std::vector<std::string>& arguments, int timeoutSeconds) {
    ChildOutcome outcome;
    int pipeEnds[2];
    if (pipe2(pipeEnds, O_CLOEXEC) != 0) {
        outcome.output = std::strerror(errno);
        return outcome;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    std::vector<std::string> argv = {"glyphor-plugin-check"};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& a : argv)
        pointers.push_back(a.data());
    pointers.push_back(nullptr);
    pid_t pid = -1;
    const int spawned = posix_spawn(&pid, "/proc/self/exe", &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipeEnds[1]);
    if (spawned != 0) {
        close(pipeEnds[0]);
        outcome.output = std::strerror(spawned);
        return outcome;
    }
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(timeoutSeconds);
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            break;
        pollfd p{pipeEnds[0], POLLIN, 0};
        const int ready = poll(&p, 1, int(left.count()));
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            break;
        char chunk[4096];
        const ssize_t got = read(pipeEnds[0], chunk, sizeof chunk);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0) {
            outcome.finished = true;
            break;
        }
        outcome.output.append(chunk, size_t(got));
    }
    close(pipeEnds[0]);
    if (!outcome.finished)
        kill(pid, SIGKILL);
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (outcome.finished) {
        if (WIFEXITED(status))
            outcome.exitCode = WEXITSTATUS(status);
        else if (WIFSIGNALED(status))
            outcome.signal = WTERMSIG(status);
    }
    return outcome;
}

} // namespace plugincheck
