// zyrreader-pluginhost: runs one decoder plug-in for the reader library in a process of its own.
// Started by the library with its pid as the only argument and its socket as descriptor 3.
#include "HostServer.h"

#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

int main(int argc, char** argv) {
    // Die with the library's process, even when it is killed. The check after it covers a parent
    // that ended before the request was made (the host then belongs to someone else already).
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (argc != 2 || std::strtol(argv[1], nullptr, 10) != long(getppid()))
        return 2;
    struct stat socketInfo {};
    if (fstat(3, &socketInfo) != 0 || !S_ISSOCK(socketInfo.st_mode))
        return 2;
    // Descriptors some other thread of the parent opened without close-on-exec are not ours.
    close_range(4, ~0u, 0);
    // A library that went away shows as a failed write, not as a signal.
    signal(SIGPIPE, SIG_IGN);
    return zyr::HostServer(3).run();
}
