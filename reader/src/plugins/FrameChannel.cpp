#include "plugins/FrameChannel.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace zyr {
namespace {

struct FrameHeader {
    uint32_t type;
    uint32_t length;
};

} // namespace

FrameChannel::~FrameChannel() {
    close();
    if (receivedFd_ >= 0)
        ::close(receivedFd_);
}

void FrameChannel::close() {
    if (socket_ >= 0)
        ::close(socket_);
    socket_ = -1;
}

int FrameChannel::takeReceivedFd() {
    const int fd = receivedFd_;
    receivedFd_ = -1;
    return fd;
}

FrameChannel::Status FrameChannel::send(uint32_t type, const std::vector<uint8_t>& payload, int passFd) {
    if (socket_ < 0)
        return Status::Closed;
    if (payload.size() > kMaxFrame)
        return Status::Malformed;
    const FrameHeader header{type, uint32_t(payload.size())};
    iovec parts[2] = {{const_cast<FrameHeader*>(&header), sizeof header},
                      {const_cast<uint8_t*>(payload.data()), payload.size()}};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = payload.empty() ? 1 : 2;
    if (passFd >= 0) {
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        cmsghdr* attached = CMSG_FIRSTHDR(&message);
        attached->cmsg_level = SOL_SOCKET;
        attached->cmsg_type = SCM_RIGHTS;
        attached->cmsg_len = CMSG_LEN(sizeof(int));
        std::memcpy(CMSG_DATA(attached), &passFd, sizeof(int));
    }
    size_t left = sizeof header + payload.size();
    while (left > 0) {
        const ssize_t sent = sendmsg(socket_, &message, MSG_NOSIGNAL);
        if (sent < 0) {
            if (errno == EINTR)
                continue;
            return errno == EPIPE || errno == ECONNRESET ? Status::Closed : Status::Failed;
        }
        left -= size_t(sent);
        // The descriptor went with the first bytes; move past what was written.
        message.msg_control = nullptr;
        message.msg_controllen = 0;
        size_t done = size_t(sent);
        while (done > 0 && message.msg_iovlen > 0) {
            iovec& first = message.msg_iov[0];
            const size_t step = done < first.iov_len ? done : first.iov_len;
            first.iov_base = static_cast<uint8_t*>(first.iov_base) + step;
            first.iov_len -= step;
            done -= step;
            if (first.iov_len == 0) {
                ++message.msg_iov;
                --message.msg_iovlen;
            }
        }
    }
    return Status::Ok;
}

FrameChannel::Status FrameChannel::waitReadable(const Clock::time_point* deadline, int exitFd) {
    for (;;) {
        int timeout = -1;
        if (deadline) {
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(*deadline - Clock::now()).count();
            if (left <= 0)
                return Status::TimedOut;
            timeout = left > 1000000 ? 1000000 : int(left) + 1; // round up: never wake just before it
        }
        pollfd watched[2] = {{socket_, POLLIN, 0}, {exitFd, POLLIN, 0}};
        const int ready = poll(watched, exitFd >= 0 ? 2 : 1, timeout);
        if (ready < 0) {
            if (errno == EINTR)
                continue;
            return Status::Failed;
        }
        // Data the peer sent before it ended is still read.
        if (watched[0].revents != 0)
            return Status::Ok;
        if (exitFd >= 0 && watched[1].revents != 0)
            return Status::Closed;
    }
}

FrameChannel::Status FrameChannel::readExactly(uint8_t* out, size_t length, const Clock::time_point* deadline,
                                               int exitFd) {
    while (length > 0) {
        const Status ready = waitReadable(deadline, exitFd);
        if (ready != Status::Ok)
            return ready;
        iovec part{out, length};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
        msghdr message{};
        message.msg_iov = &part;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        const ssize_t got = recvmsg(socket_, &message, MSG_CMSG_CLOEXEC | MSG_DONTWAIT);
        if (got < 0) {
            if (errno == EINTR || errno == EAGAIN)
                continue;
            return errno == ECONNRESET ? Status::Closed : Status::Failed;
        }
        for (cmsghdr* c = CMSG_FIRSTHDR(&message); c; c = CMSG_NXTHDR(&message, c)) {
            if (c->cmsg_level != SOL_SOCKET || c->cmsg_type != SCM_RIGHTS)
                continue;
            const size_t count = (c->cmsg_len - CMSG_LEN(0)) / sizeof(int);
            for (size_t i = 0; i < count; ++i) {
                int fd = -1;
                std::memcpy(&fd, CMSG_DATA(c) + i * sizeof(int), sizeof fd);
                if (receivedFd_ >= 0)
                    ::close(receivedFd_);
                receivedFd_ = fd;
            }
        }
        if (got == 0)
            return Status::Closed;
        out += got;
        length -= size_t(got);
    }
    return Status::Ok;
}

FrameChannel::Status FrameChannel::receive(uint32_t& type, std::vector<uint8_t>& payload,
                                           const Clock::time_point* deadline, int exitFd) {
    if (socket_ < 0)
        return Status::Closed;
    FrameHeader header{};
    Status status = readExactly(reinterpret_cast<uint8_t*>(&header), sizeof header, deadline, exitFd);
    if (status != Status::Ok)
        return status;
    if (header.length > kMaxFrame)
        return Status::Malformed;
    type = header.type;
    payload.resize(header.length);
    return readExactly(payload.data(), payload.size(), deadline, exitFd);
}

} // namespace zyr
