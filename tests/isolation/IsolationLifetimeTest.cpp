// No plug-in host outlives its use: closing the plug-ins ends and reaps them, a killed bench takes
// them along, and a plug-in set to run in-process never gets one.
#include "IsolationSupport.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>
#include <tuple>

extern char** environ;

using namespace isolationtest;

namespace {

class IsolationLifetime : public ::testing::Test {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
};

// Loading starts no lasting host (a batch job loads every plug-in and may use one); a plug-in's
// host starts with its first decode and stays for the next.
TEST_F(IsolationLifetime, HostsStartWithTheFirstDecodeAndCloseWithThePlugins) {
    const uint64_t faulty = load(faultyPlugin(), faultySettings());
    const uint64_t again = load(faultyPlugin(), faultySettings());
    const uint64_t zxing = load(pluginPath("ZXing"), settingsPath("ZXing"));
    load(pluginPath("Pdf417"), settingsPath("Pdf417"));
    EXPECT_TRUE(hostChildren(getpid()).empty());
    const TestImage image(30, 30, ZYR_PIXEL_GREY8, None, 1);
    struct Step {
        uint64_t handle;
        size_t hosts; // running after the decode
    };
    for (const Step& step : {Step{faulty, 1}, Step{faulty, 1}, Step{again, 2}, Step{zxing, 3}}) {
        EXPECT_EQ(decode(step.handle, image.image()).result, ZYR_OK);
        EXPECT_EQ(hostChildren(getpid()).size(), step.hosts);
    }
    // What the plug-in answered at load is still there once its host runs.
    char names[64] = {};
    EXPECT_EQ(ZyrReader_ImagePluginGetRequiredImages(zxing, "", names, sizeof names), ZYR_OK);
    EXPECT_STREQ(names, "VISIBLE_DOC");
    const std::vector<pid_t> hosts = hostChildren(getpid());
    ZyrReader_DestroyCachedData();
    EXPECT_TRUE(hostChildren(getpid()).empty());
    for (pid_t host : hosts)
        EXPECT_FALSE(unreapedChild(host)) << host;
}

TEST_F(IsolationLifetime, HostsDieWithAKilledParentBusyOrIdle) {
    int out[2];
    ASSERT_EQ(pipe2(out, O_CLOEXEC), 0);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], 1);
    const std::string probe = PARENT_PROBE_PATH;
    const std::string settings = writeFile("#probe.ini", "[Host]\nTimeLimitSeconds=600\n");
    const std::string plugin = faultyPlugin();
    char* argv[] = {const_cast<char*>(probe.c_str()), const_cast<char*>(plugin.c_str()),
                    const_cast<char*>(settings.c_str()), nullptr};
    pid_t parent = -1;
    ASSERT_EQ(posix_spawn(&parent, probe.c_str(), &actions, nullptr, argv, environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
    char ready[6] = {};
    const ssize_t got = read(out[0], ready, sizeof ready);
    close(out[0]);
    ASSERT_EQ(std::string(ready, size_t(got > 0 ? got : 0)), "ready\n");

    const std::vector<pid_t> hosts = hostChildren(parent);
    EXPECT_EQ(hosts.size(), 2u);
    ASSERT_EQ(kill(parent, SIGKILL), 0);
    int status = 0;
    ASSERT_EQ(waitpid(parent, &status, 0), parent);
    EXPECT_TRUE(WIFSIGNALED(status));
    for (pid_t host : hosts)
        EXPECT_TRUE(waitEnded(host, 10000)) << "host " << host << " outlived its parent";
}

TEST_F(IsolationLifetime, AnInProcessPluginRunsInTheCallersProcess) {
    const std::string settings = writeFile("#inprocess.ini", "[Host]\nIsolated=0\nTimeLimitSeconds=1\n");
    const uint64_t handle = load(faultyPlugin(), settings);
    EXPECT_TRUE(hostChildren(getpid()).empty());
    void* mapped = dlopen(faultyPlugin().c_str(), RTLD_NOW | RTLD_NOLOAD);
    EXPECT_NE(mapped, nullptr) << "the plug-in is not in this process";
    if (mapped)
        dlclose(mapped);
    // Junk meant for a host's socket is not written anywhere here; the decode is an ordinary one.
    const TestImage images[] = {{30, 30, ZYR_PIXEL_GREY8, None, 1}, {30, 30, ZYR_PIXEL_GREY8, JunkReply, 2}};
    for (const TestImage& image : images) {
        const Decoded decoded = decode(handle, image.image());
        EXPECT_EQ(std::make_pair(decoded.result, decoded.texts()), std::make_pair(int32_t{ZYR_OK}, std::vector<std::string>{image.expectedText()}));
    }
}

struct LoadCase { const char* what; std::string settings; int32_t expected; };

TEST_F(IsolationLifetime, AFailedLoadLeavesNoHostBehind) {
    const LoadCase cases[] = {
        {"open aborts", "[Host]\nTimeLimitSeconds=5\n[Fixture]\nOpenFault=abort\n", ZYR_ERR_PLUGIN_CRASHED},
        {"open hangs", "[Host]\nTimeLimitSeconds=0.3\n[Fixture]\nOpenFault=hang\n", ZYR_ERR_PLUGIN_TIMEOUT},
        {"open refused", "[Fixture]\nOpenFault=refuse\n", ZYR_ERR_PLUGIN_OPEN},
        {"host settings refused", "[Host]\nIsolated=maybe\n", ZYR_ERR_PLUGIN_OPEN},
    };
    int n = 0;
    for (const LoadCase& c : cases) {
        const std::string settings = writeFile("#load" + std::to_string(n++) + ".ini", c.settings);
        uint64_t handle = 99;
        EXPECT_EQ(ZyrReader_ImagePluginLoad(faultyPlugin().c_str(), settings.c_str(), &handle, 0), c.expected)
            << c.what;
        EXPECT_EQ(handle, 0u) << c.what;
        EXPECT_TRUE(hostChildren(getpid()).empty()) << c.what;
    }
    EXPECT_NE(load(faultyPlugin(), faultySettings()), 0u);
}

TEST_F(IsolationLifetime, ConcurrentPluginsAreUntouchedByAnotherOnesCrash) {
    const uint64_t faulty = load(faultyPlugin(), faultySettings());
    const uint64_t steady = load(faultyPlugin(), faultySettings());
    std::vector<TestImage> images;
    for (int i = 0; i < 20; ++i)
        images.emplace_back(60, 40, ZYR_PIXEL_GREY8, None, uint32_t(i));
    std::vector<Decoded> steadyResults(images.size());
    std::thread::id workerId;
    std::thread worker([&] {
        workerId = std::this_thread::get_id();
        for (size_t i = 0; i < images.size(); ++i)
            steadyResults[i] = decode(steady, images[i].image());
    });
    const Fault crashes[] = {Abort, Exit, Segfault, Abort, Exit};
    for (Fault fault : crashes)
        EXPECT_EQ(decode(faulty, TestImage(20, 20, ZYR_PIXEL_GREY8, fault, 1).image()).result,
                  ZYR_ERR_PLUGIN_CRASHED);
    worker.join();
    for (size_t i = 0; i < images.size(); ++i) {
        const Decoded& d = steadyResults[i];
        EXPECT_EQ(std::make_tuple(d.result, d.texts(), d.symbols.empty() ? std::thread::id() : d.symbols[0].thread),
                  std::make_tuple(int32_t{ZYR_OK}, std::vector<std::string>{images[i].expectedText()}, workerId)) << i;
    }
}

} // namespace
