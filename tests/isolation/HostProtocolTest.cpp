// The library's side of the host protocol refuses whatever a broken or hostile host could send:
// messages cut short or padded, lengths past the limits, frames too long, a socket that goes quiet.
#include "plugins/FrameChannel.h"
#include "plugins/HostMessages.h"
#include "plugins/IsolationSettings.h"

#include <gtest/gtest.h>

#include <sys/socket.h>
#include <unistd.h>

#include <cstring>
#include <tuple>

using namespace zyr;

namespace {

OpenReply sampleOpenReply() {
    OpenReply reply;
    reply.reason = "fine";
    reply.names = "IR_DOC,UV_DOC";
    ZyrImageSettings settings{};
    std::strcpy(settings.ImageName, "IR_DOC");
    settings.LightMask = 2;
    reply.settings.push_back(settings);
    std::strcpy(settings.ImageName, "UV_DOC");
    settings.LightMask = 4;
    reply.settings.push_back(settings);
    reply.settingsEndCode = ZYR_ERR_BAD_ARGUMENT;
    return reply;
}

DecodeReply sampleDecodeReply() {
    DecodeReply reply;
    for (int i = 0; i < 3; ++i) {
        DecodedSymbol symbol;
        symbol.symbology = 10 + i;
        symbol.dataType = i;
        symbol.eci = 26;
        symbol.data.assign(size_t(i) * 5, uint8_t('a' + i));
        symbol.data.push_back(0); // NUL bytes inside data survive
        symbol.corners[2] = {int32_t(-i), 1000 + i};
        reply.symbols.push_back(symbol);
    }
    return reply;
}

// Whether bytes decode as a message of type M, and whether that message encodes back to them.
template <typename M> bool decodes(const std::vector<uint8_t>& bytes) {
    M message;
    return decodeMessage(bytes, message);
}
template <typename M> bool roundTrips(const std::vector<uint8_t>& bytes) {
    M message;
    return decodeMessage(bytes, message) && encodeMessage(message) == bytes;
}

struct Encoded {
    const char* what;
    std::vector<uint8_t> bytes;
    bool (*decodes)(const std::vector<uint8_t>&);
    bool (*roundTrips)(const std::vector<uint8_t>&);
};

TEST(HostMessages, EachMessageDecodesBackWholeButNotCutShortOrPadded) {
    const Encoded messages[] = {
        {"open request",
         encodeMessage(OpenRequest{"/p/KVDECODE_X.so", "/p/#KVDECODE_X.ini", 0x1122334455667788ull}),
         decodes<OpenRequest>, roundTrips<OpenRequest>},
        {"open reply", encodeMessage(sampleOpenReply()), decodes<OpenReply>, roundTrips<OpenReply>},
        {"decode request", encodeMessage(DecodeRequest{640, 480, 1920, ZYR_PIXEL_RGB24, 921600, "IR_DOC"}),
         decodes<DecodeRequest>, roundTrips<DecodeRequest>},
        {"decode reply", encodeMessage(sampleDecodeReply()), decodes<DecodeReply>, roundTrips<DecodeReply>},
    };
    for (const Encoded& m : messages) {
        EXPECT_TRUE(m.roundTrips(m.bytes)) << m.what;
        for (size_t length = 0; length < m.bytes.size(); ++length)
            EXPECT_FALSE(m.decodes({m.bytes.begin(), m.bytes.begin() + long(length)}))
                << m.what << " cut to " << length;
        std::vector<uint8_t> padded = m.bytes;
        padded.push_back(0);
        EXPECT_FALSE(m.decodes(padded)) << m.what << " with a byte more";
    }
    // The fields come back where they were put (the round trip alone would not see two swapped).
    OpenRequest open;
    ASSERT_TRUE(decodeMessage(messages[0].bytes, open));
    EXPECT_EQ(std::make_tuple(open.pluginPath, open.settingsPath, open.cameraDevice),
              std::make_tuple("/p/KVDECODE_X.so", "/p/#KVDECODE_X.ini", 0x1122334455667788ull));
    DecodeRequest request;
    ASSERT_TRUE(decodeMessage(messages[2].bytes, request));
    EXPECT_EQ(std::vector<int64_t>({request.width, request.height, request.stride, request.pixelFormat, int64_t(request.bytes)}),
              std::vector<int64_t>({640, 480, 1920, ZYR_PIXEL_RGB24, 921600}));
    DecodeReply reply;
    ASSERT_TRUE(decodeMessage(messages[3].bytes, reply));
    ASSERT_EQ(reply.symbols.size(), 3u);
    const DecodedSymbol& third = reply.symbols[2];
    EXPECT_EQ(third.data, std::vector<uint8_t>({'c', 'c', 'c', 'c', 'c', 'c', 'c', 'c', 'c', 'c', 0}));
    EXPECT_EQ(std::make_tuple(third.symbology, third.dataType, third.eci, third.corners[2].X, third.corners[2].Y),
              std::make_tuple(12, 2, 26, -2, 1002));
    OpenReply opened;
    ASSERT_TRUE(decodeMessage(messages[1].bytes, opened));
    ASSERT_EQ(opened.settings.size(), 2u);
    EXPECT_EQ(std::make_tuple(opened.names, opened.reason, opened.settingsEndCode, std::string(opened.settings[1].ImageName),
                              uint32_t{opened.settings[1].LightMask}), // packed: compare a copy
              std::make_tuple("IR_DOC,UV_DOC", "fine", ZYR_ERR_BAD_ARGUMENT, "UV_DOC", 4u));
}

std::vector<uint8_t> frame(uint32_t type, uint32_t length, size_t actualBytes) {
    std::vector<uint8_t> bytes(8 + actualBytes, 0x5A);
    std::memcpy(bytes.data(), &type, 4);
    std::memcpy(bytes.data() + 4, &length, 4);
    return bytes;
}

// Both ends of a connected socket pair.
std::pair<int, int> Sockets() {
    int ends[2] = {-1, -1};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    return {ends[0], ends[1]};
}

TEST(FrameChannelStatus, WhatThePeerSendsDecidesTheStatus) {
    struct Case { const char* what; std::vector<uint8_t> sent; bool peerCloses; FrameChannel::Status expected; };
    const Case cases[] = {
        {"whole frame", frame(4, 3, 3), false, FrameChannel::Status::Ok},
        {"empty frame", frame(2, 0, 0), false, FrameChannel::Status::Ok},
        {"nothing, peer stays", {}, false, FrameChannel::Status::TimedOut},
        {"half a header, peer stays", {1, 0, 0}, false, FrameChannel::Status::TimedOut},
        {"half a payload, peer stays", frame(4, 10, 4), false, FrameChannel::Status::TimedOut},
        {"length past the limit", frame(4, FrameChannel::kMaxFrame + 1, 0), false,
         FrameChannel::Status::Malformed},
        {"nothing, peer closes", {}, true, FrameChannel::Status::Closed},
        {"half a payload, peer closes", frame(4, 10, 4), true, FrameChannel::Status::Closed},
    };
    for (const Case& c : cases) {
        const auto [ourEnd, peer] = Sockets();
        FrameChannel ours(ourEnd);
        if (!c.sent.empty()) {
            ASSERT_EQ(write(peer, c.sent.data(), c.sent.size()), ssize_t(c.sent.size()));
        }
        if (c.peerCloses)
            close(peer);
        const auto deadline = FrameChannel::Clock::now() + std::chrono::milliseconds(50);
        uint32_t type = 0;
        std::vector<uint8_t> payload;
        EXPECT_EQ(ours.receive(type, payload, &deadline), c.expected) << c.what;
        if (c.expected == FrameChannel::Status::Ok) {
            EXPECT_EQ(payload, std::vector<uint8_t>(c.sent.begin() + 8, c.sent.end())) << c.what;
        }
        if (!c.peerCloses)
            close(peer);
    }
    // Sending to a closed peer is a status, not a signal.
    const auto [ourEnd, peer] = Sockets();
    FrameChannel ours(ourEnd);
    close(peer);
    EXPECT_EQ(ours.send(3, std::vector<uint8_t>(100000, 1)), FrameChannel::Status::Closed);
    EXPECT_EQ(ours.send(3, std::vector<uint8_t>(size_t(FrameChannel::kMaxFrame) + 1)), FrameChannel::Status::Malformed);
}

// Refused texts give a reason and leave the defaults (isolated, 20 s).
TEST(IsolationSettingsTest, HostSectionValues) {
    struct Case { const char* text; bool ok; bool isolated; long long milliseconds; };
    const Case cases[] = {
        {"", true, true, 20000},
        {"[Decoder]\nIsolated=0\nTimeLimitSeconds=1\n", true, true, 20000}, // another section's keys
        {"[host]\nisolated=no\n", true, false, 20000},
        {"[Host]\nIsolated=TRUE\nTimeLimitSeconds=2.5\n", true, true, 2500},
        {"[Host]\nTimeLimitSeconds=86400\n", true, true, 86400000},
        {"[Host]\nTimeLimitSeconds=86401\n", false, true, 20000},
        {"[Host]\nTimeLimitSeconds=5s\n", false, true, 20000},
    };
    for (const Case& c : cases) {
        IsolationSettings settings;
        std::string reason;
        const bool ok = settings.readText(c.text, reason);
        EXPECT_EQ(std::make_tuple(ok, reason.empty(), settings.isolated, settings.timeLimit.count()),
                  std::make_tuple(c.ok, c.ok, c.isolated, c.milliseconds)) << c.text;
    }
}

} // namespace
