// Starts plug-in host processes from one long-lived thread of the library. A host asks the kernel
// to kill it when its parent goes (PR_SET_PDEATHSIG), and the kernel takes "parent" to mean the
// thread that started it: started from a worker thread, a host would die with that worker.
#ifndef ZYR_PLUGINS_PROCESS_SPAWNER_H
#define ZYR_PLUGINS_PROCESS_SPAWNER_H

#include <sys/types.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

namespace zyr {

class ProcessSpawner {
public:
    static ProcessSpawner& instance();

    // Runs executable with arguments (argv[0] is the executable) in a process group of its own, with
    // default signal handling, nothing blocked, and childFd as its descriptor 3. Every other
    // descriptor the library opens is close-on-exec. Returns 0 or an errno value.
    int spawn(const std::string& executable, const std::vector<std::string>& arguments, int childFd,
              pid_t& pid);

private:
    struct Request {
        const std::string* executable;
        const std::vector<std::string>* arguments;
        int childFd;
        pid_t pid = -1;
        int error = 0;
        bool done = false;
    };

    ProcessSpawner();
    void run();
    static int spawnNow(const Request& request, pid_t& pid);

    pid_t owner_; // the process whose thread serves the queue (a forked copy has no such thread)
    std::mutex mutex_;
    std::condition_variable changed_;
    std::deque<Request*> queue_;
};

} // namespace zyr

#endif
