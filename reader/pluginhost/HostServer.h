// The plug-in host's side of the socket: opens the plug-in the library names, then decodes the
// images it is sent until the library closes the socket.
#ifndef ZYR_PLUGINHOST_HOST_SERVER_H
#define ZYR_PLUGINHOST_HOST_SERVER_H

#include "SharedImageView.h"
#include "plugins/FrameChannel.h"
#include "plugins/HostMessages.h"
#include "plugins/PluginConnection.h"

#include <memory>

namespace zyr {

class HostServer {
public:
    explicit HostServer(int socket) : channel_(socket) {} // takes the descriptor

    // Serves until the library closes the socket; the process's exit status: 0 after an orderly
    // end (a refused open included), non-zero when the library's messages made no sense.
    int run();

private:
    bool open(); // false when there is nothing more to serve
    DecodeReply decode(const DecodeRequest& request);

    FrameChannel channel_;
    std::unique_ptr<SharedImageView> images_;
    std::unique_ptr<PluginConnection> plugin_;
};

} // namespace zyr

#endif
