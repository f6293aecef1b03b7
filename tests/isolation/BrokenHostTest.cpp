// The library against host programs that are not what they should be: missing, dying at once,
// silent, or answering with bytes that are no reply. Each gives a code; none hangs or crashes.
#include "plugins/IsolatedPlugin.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>

using namespace zyr;

namespace {

std::string script(const std::string& name, const std::string& body) {
    const std::string path = testing::TempDir() + name;
    std::ofstream(path) << "#!/bin/sh\n" << body << "\n";
    chmod(path.c_str(), 0755);
    return path;
}

// Frames as the host would write them, in printf's octal escapes.
const char* kOpenedOk = "\\002\\000\\000\\000\\030\\000\\000\\000"        // Opened, 24 bytes
                        "\\000\\000\\000\\000\\000\\000\\000\\000"        // ok, no reason
                        "\\000\\000\\000\\000\\000\\000\\000\\000"        // names ok, none
                        "\\000\\000\\000\\000\\002\\000\\000\\000";       // no settings, end code 2
const char* kDecodedOddCode = "\\004\\000\\000\\000\\010\\000\\000\\000"  // Decoded, 8 bytes
                              "\\347\\003\\000\\000\\000\\000\\000\\000"; // code 999, no symbols

struct BrokenHost {
    const char* what;
    std::string executable;
    int32_t openResult;
    int32_t decodeResult;   // when the open succeeded
    int timeLimitMs = 5000; // short only where the case is about the limit
};

TEST(BrokenHost, EachGivesItsCode) {
    const std::string opened = std::string("printf '") + kOpenedOk + "' >&3\n";
    const BrokenHost cases[] = {
        {"missing", testing::TempDir() + "no-such-host", ZYR_ERR_PLUGIN_LOAD, 0},
        {"exits at once", script("host-exits", "exit 0"), ZYR_ERR_PLUGIN_CRASHED, 0},
        {"says nothing", script("host-silent", "exec sleep 30"), ZYR_ERR_PLUGIN_TIMEOUT, 0, 300},
        {"answers open with a decode reply",
         script("host-wrong-type", std::string("printf '") + kDecodedOddCode + "' >&3\nexec sleep 30"),
         ZYR_ERR_PLUGIN_LOAD, 0},
        {"answers a decode with another open reply",
         script("host-opened-twice", opened + opened + "exec sleep 30"), ZYR_OK, ZYR_ERR_PLUGIN_DECODE},
        {"dies after the open", script("host-dies-later", opened + "sleep 0.2\nexit 3"), ZYR_OK,
         ZYR_ERR_PLUGIN_CRASHED},
    };
    std::vector<uint8_t> pixels(16, 1);
    const ZyrImage image{4, 4, 4, ZYR_PIXEL_GREY8, pixels.data()};
    for (const BrokenHost& c : cases) {
        std::unique_ptr<PluginConnection> plugin;
        std::string reason;
        EXPECT_EQ(IsolatedPlugin::open(c.executable, "/nowhere/KVDECODE_X.so", "", 0,
                                       std::chrono::milliseconds(c.timeLimitMs), plugin, reason),
                  c.openResult)
            << c.what << ": " << reason;
        EXPECT_EQ(plugin != nullptr, c.openResult == ZYR_OK) << c.what;
        if (!plugin)
            continue;
        std::string names = "left over";
        EXPECT_EQ(plugin->requiredImages(names), ZYR_OK) << c.what;
        EXPECT_EQ(names, "") << c.what;
        ZyrImageSettings settings{};
        EXPECT_EQ(plugin->imageSettings(0, settings), ZYR_ERR_BAD_ARGUMENT) << c.what;
        std::vector<DecodedSymbol> symbols;
        EXPECT_EQ(plugin->decode(image, "", symbols), c.decodeResult) << c.what;
        EXPECT_TRUE(symbols.empty()) << c.what;
    }
}

} // namespace
