// One end of the stream socket between the reader library and a plug-in host process, carrying
// frames: a type and a length, then that many bytes. A descriptor can ride along with a frame.
#ifndef ZYR_PLUGINS_FRAME_CHANNEL_H
#define ZYR_PLUGINS_FRAME_CHANNEL_H

#include <chrono>
#include <cstdint>
#include <vector>

namespace zyr {

class FrameChannel {
public:
    using Clock = std::chrono::steady_clock;

    enum class Status {
        Ok,
        Closed,    // the other end closed the socket (or its process ended, see receive)
        TimedOut,  // the deadline passed first
        Malformed, // a frame longer than the limit
        Failed,    // the socket failed (errno is logged by the caller)
    };

    // Frames above this size are refused: no message of ours comes near it.
    static constexpr uint32_t kMaxFrame = 64u << 20;

    explicit FrameChannel(int socket) : socket_(socket) {} // takes the descriptor
    ~FrameChannel();
    FrameChannel(const FrameChannel&) = delete;
    FrameChannel& operator=(const FrameChannel&) = delete;

    // Writes one frame; passFd (when not -1) is sent along with it. Never raises SIGPIPE.
    Status send(uint32_t type, const std::vector<uint8_t>& payload, int passFd = -1);

    // Reads one frame. Without a deadline it waits as long as it takes. exitFd, when not -1, becomes
    // readable when the peer's process has ended (a pidfd): receive then gives Closed even if
    // something else still holds the peer's end of the socket.
    Status receive(uint32_t& type, std::vector<uint8_t>& payload, const Clock::time_point* deadline = nullptr,
                   int exitFd = -1);

    // The last descriptor that arrived with a frame (close-on-exec), now the caller's; -1 if none.
    int takeReceivedFd();

    void close();
    int socket() const { return socket_; }

private:
    Status readExactly(uint8_t* out, size_t length, const Clock::time_point* deadline, int exitFd);
    Status waitReadable(const Clock::time_point* deadline, int exitFd);

    int socket_;
    int receivedFd_ = -1;
};

} // namespace zyr

#endif
