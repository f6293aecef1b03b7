#include "plugins/ProcessSpawner.h"

#include <signal.h>
#include <spawn.h>
#include <unistd.h>

#include <thread>

extern char** environ;

namespace zyr {

ProcessSpawner& ProcessSpawner::instance() {
    // Never destroyed: its thread serves until the process ends.
    static ProcessSpawner* spawner = new ProcessSpawner;
    return *spawner;
}

ProcessSpawner::ProcessSpawner() : owner_(getpid()) {
    // Signals meant for the process are left to its other threads.
    sigset_t all, previous;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &previous);
    std::thread(&ProcessSpawner::run, this).detach();
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

void ProcessSpawner::run() {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        changed_.wait(lock, [this] { return !queue_.empty(); });
        Request* request = queue_.front();
        queue_.pop_front();
        request->error = spawnNow(*request, request->pid);
        request->done = true;
        changed_.notify_all();
    }
}

int ProcessSpawner::spawn(const std::string& executable, const std::vector<std::string>& arguments,
                          int childFd, pid_t& pid) {
    Request request{&executable, &arguments, childFd};
    if (getpid() != owner_) // a fork of the process that made the spawner: its thread is not here
        return spawnNow(request, pid);
    std::unique_lock<std::mutex> lock(mutex_);
    queue_.push_back(&request);
    changed_.notify_all();
    changed_.wait(lock, [&request] { return request.done; });
    pid = request.pid;
    return request.error;
}

int ProcessSpawner::spawnNow(const Request& request, pid_t& pid) {
    std::vector<char*> argv;
    for (const std::string& argument : *request.arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    // dup2 onto the same number clears close-on-exec as well (glibc 2.29 and later).
    posix_spawn_file_actions_adddup2(&actions, request.childFd, 3);
    sigset_t none, all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    // Its own group: a Ctrl+C meant for the bench does not also stop a decode half-way.
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes,
                             POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    const int error =
        posix_spawn(&pid, request.executable->c_str(), &actions, &attributes, argv.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    return error;
}

} // namespace zyr
