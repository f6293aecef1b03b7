// A plug-in that crashes, hangs or talks nonsense costs one decode: the calling process goes on,
// the decode gets the code of what happened and no symbols, and the decodes around it are right.
#include "IsolationSupport.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <unistd.h>

#include <thread>

using namespace isolationtest;

namespace {

class IsolatedFaults : public ::testing::Test {
protected:
    void SetUp() override { handle_ = load(faultyPlugin(), faultySettings()); }
    void TearDown() override { ZyrReader_DestroyCachedData(); }

    // The one host this test runs; fails the test when there is not exactly one.
    pid_t onlyHost() {
        const std::vector<pid_t> hosts = hostChildren(getpid());
        EXPECT_EQ(hosts.size(), 1u);
        return hosts.empty() ? -1 : hosts[0];
    }

    // The image decodes with the plug-in's one symbol for it.
    ::testing::AssertionResult DecodesRight(const TestImage& image) {
        const Decoded d = decode(handle_, image.image());
        if (d.result == ZYR_OK && d.texts() == std::vector<std::string>{image.expectedText()})
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "result " << d.result << ", " << d.symbols.size() << " symbols";
    }

    uint64_t handle_ = 0;
};

struct FaultCase {
    const char* what;
    Fault fault;
    int32_t expected;
    bool newHost; // the host had to go
};

const FaultCase kFaults[] = {
    {"abort", Abort, ZYR_ERR_PLUGIN_CRASHED, true},
    {"segmentation fault", Segfault, ZYR_ERR_PLUGIN_CRASHED, true},
    {"exit", Exit, ZYR_ERR_PLUGIN_CRASHED, true},
    {"hang past the time limit", Hang, ZYR_ERR_PLUGIN_TIMEOUT, true},
    {"junk on the host's socket", JunkReply, ZYR_ERR_PLUGIN_DECODE, true},
    {"malformed symbols, unknown code", Garbage, ZYR_ERR_PLUGIN_DECODE, false},
};

TEST_F(IsolatedFaults, EachFaultGetsItsCodeAndTheDecodesAroundItAreRight) {
    uint32_t seed = 1;
    for (const FaultCase& c : kFaults) {
        SCOPED_TRACE(c.what);
        const TestImage before(64, 48, ZYR_PIXEL_GREY8, None, seed++);
        const TestImage faulty(64, 48, ZYR_PIXEL_GREY8, c.fault, seed++);
        const TestImage after(80, 20, ZYR_PIXEL_RGB24, None, seed++);

        EXPECT_TRUE(DecodesRight(before));
        const pid_t host = onlyHost();
        const Decoded failed = decode(handle_, faulty.image());
        EXPECT_EQ(std::make_pair(failed.result, failed.symbols.size()), std::make_pair(c.expected, size_t{0}))
            << ZyrReader_ErrorText(failed.result);
        EXPECT_TRUE(DecodesRight(after));
        EXPECT_EQ(onlyHost() != host, c.newHost);
        if (c.newHost) {
            EXPECT_FALSE(unreapedChild(host)) << "the old host was left unreaped";
        }
    }
}

TEST_F(IsolatedFaults, SymbolsKeepTheCallbackContract) {
    const TestImage image(33, 17, ZYR_PIXEL_BGRA32, SomeGarbage, 77, 5);
    const Decoded decoded = decode(handle_, image.image(), 5);
    // The malformed reports around the good one are dropped, as in the plug-in's own process; the
    // good one comes on the calling thread before the call returns.
    ASSERT_EQ(std::make_pair(decoded.result, decoded.texts()), std::make_pair(int32_t{ZYR_OK}, std::vector<std::string>{image.expectedText()}));
    const SeenSymbol& s = decoded.symbols[0];
    EXPECT_EQ(std::make_tuple(s.index, s.count, s.tag, s.thread), std::make_tuple(0, 1, 5, std::this_thread::get_id()));
}

TEST_F(IsolatedFaults, ImagesOfEverySizeArriveWhole) {
    // Padded rows, and sizes that make the shared memory grow and then be reused smaller.
    const TestImage images[] = {
        {7, 3, ZYR_PIXEL_GREY8, None, 1, 9},     {2480, 3508, ZYR_PIXEL_GREY8, None, 2},
        {640, 480, ZYR_PIXEL_RGB24, None, 3, 1}, {1200, 1700, ZYR_PIXEL_BGRA32, None, 4, 12},
        {1, 1, ZYR_PIXEL_GREY8, None, 5},
    };
    for (const TestImage& image : images)
        EXPECT_TRUE(DecodesRight(image)) << image.image()->Width << "x" << image.image()->Height;
}

TEST_F(IsolatedFaults, ALargeSymbolComesBackByteForByte) {
    const TestImage image(16, 16, ZYR_PIXEL_GREY8, LargeSymbol, 3);
    std::string expected(kLargeSymbolBytes, '\0');
    for (size_t i = 0; i < kLargeSymbolBytes; ++i)
        expected[i] = char(i * 7 + i / 251);
    const Decoded decoded = decode(handle_, image.image());
    EXPECT_TRUE(decoded.result == ZYR_OK && decoded.texts() == std::vector<std::string>{expected});
}

TEST_F(IsolatedFaults, AHostKilledWhileIdleIsReplacedWithoutAFailedDecode) {
    const TestImage image(50, 50, ZYR_PIXEL_GREY8, None, 9);
    ASSERT_TRUE(DecodesRight(image));
    const pid_t host = onlyHost();
    ASSERT_EQ(kill(host, SIGKILL), 0);
    ASSERT_TRUE(waitEnded(host, 5000));
    EXPECT_TRUE(DecodesRight(image));
    EXPECT_NE(onlyHost(), host);
}

} // namespace
