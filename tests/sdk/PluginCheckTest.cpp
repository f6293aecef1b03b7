// glyphor-plugin-check on the shipped plug-ins, which keep every rule, and on test plug-ins that
// each break named rules, which it must name and nothing else.
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <sys/wait.h>

namespace {

struct CheckRun {
    int status = -1;
    std::string out;
    std::map<std::string, std::string> verdicts; // rule -> pass, FAIL or skip
};

std::string quoted(const std::string& s) {
    std::string q = "'";
    for (char c : s)
        q += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return q + "'";
}

CheckRun runChecker(const std::vector<std::string>& args) {
    std::string command = quoted(PLUGIN_CHECK_PATH);
    for (const std::string& a : args)
        command += " " + quoted(a);
    static const TempFolder folder;
    const int status = std::system((command + " >" + quoted(folder.file("out")) + " 2>&1").c_str());
    CheckRun run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = readFile(folder.file("out"));
    std::istringstream lines(run.out);
    std::string line;
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string rule, verdict;
        if (words >> rule >> verdict && (verdict == "pass" || verdict == "FAIL" || verdict == "skip"))
            run.verdicts[rule] = verdict;
    }
    return run;
}

// Settings of the broken test plug-in that make it break the given rules.
std::string brokenSettings(const std::string& breaks) {
    static const TempFolder folder;
    return folder.write("#KVDECODE_Broken-" + (breaks.empty() ? "none" : breaks) + ".ini",
                        "[Fixture]\nBreak=" + breaks + "\n[Host]\nIsolated=1\nTimeLimitSeconds=20\n");
}

const char* const kRules[] = {"exports",  "interface-version", "open",   "required-images", "image-settings",
                              "decode",   "symbols",           "sample-contents", "time", "bad-images",
                              "empty-images", "pixel-formats", "threads"};

struct PluginCase {
    const char* name;
    std::string plugin; // "" = the broken test plug-in
    const char* breaks; // its Break setting; null: the plug-in's own settings
    std::vector<std::string> extraArgs;
    std::set<std::string> failing;
};

// The shipped plug-ins pass every rule; a test plug-in fails exactly the rules it breaks.
class CheckedPlugin : public ::testing::TestWithParam<PluginCase> {};

TEST_P(CheckedPlugin, FailsExactlyTheRulesItBreaks) {
    const PluginCase& c = GetParam();
    std::vector<std::string> args = {c.plugin.empty() ? BROKEN_PLUGIN_PATH : c.plugin};
    if (c.breaks)
        args.insert(args.end(), {"--settings", brokenSettings(c.plugin.empty() ? c.breaks : "")});
    args.insert(args.end(), c.extraArgs.begin(), c.extraArgs.end());
    CheckRun run = runChecker(args);
    EXPECT_EQ(run.status, c.failing.empty() ? 0 : 1) << run.out;
    EXPECT_EQ(run.verdicts.size(), std::size(kRules)) << run.out;
    for (const char* rule : kRules) {
        const std::string& v = run.verdicts[rule];
        EXPECT_TRUE(c.failing.count(rule) ? v == "FAIL" : v == "pass" || (c.breaks && v == "skip"))
            << rule << " " << v << "\n" << run.out;
    }
}

const std::string kShipped = std::string(GLYPHOR_PLUGIN_DIR) + "/KVDECODE_";
const PluginCase kPlugins[] = {
    {"ZXing", kShipped + "ZXing.so", nullptr, {}, {}},
    {"Pdf417", kShipped + "Pdf417.so", nullptr, {}, {}},
    {"QRCode", kShipped + "QRCode.so", nullptr, {}, {}},
    {"DataMatrix", kShipped + "DataMatrix.so", nullptr, {}, {}},
    {"ZBar", kShipped + "ZBar.so", nullptr, {}, {}},
    {"NothingBroken", "", "", {}, {}},
    {"NoExports", NOT_A_PLUGIN_PATH, "", {}, {"exports", "open"}},
    {"OtherInterfaceVersion", WRONG_VERSION_PATH, "", {}, {"interface-version", "open"}},
    {"RequiredImages", "", "required-images", {}, {"required-images", "image-settings"}},
    {"ImageSettings", "", "image-settings", {}, {"image-settings"}},
    {"Symbols", "", "symbols", {}, {"symbols", "sample-contents", "bad-images", "empty-images"}},
    {"Misread", "", "misread", {}, {"sample-contents", "empty-images"}},
    {"SharedBuffer", "", "threads", {}, {"threads", "sample-contents", "empty-images", "pixel-formats"}},
    {"CrashOnStrips", "", "crash", {}, {"bad-images"}},
    {"Slow", "", "slow", {"--max-ms", "200"}, {"time"}},
};

INSTANTIATE_TEST_SUITE_P(Each, CheckedPlugin, ::testing::ValuesIn(kPlugins),
                         [](const ::testing::TestParamInfo<PluginCase>& info) { return info.param.name; });

TEST(PluginCheckCommand, UsageErrorsAndUnreadableImagesExitWithTwo) {
    const std::string plugin = std::string(GLYPHOR_PLUGIN_DIR) + "/KVDECODE_QRCode.so";
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{}, {"--threads", "1", plugin}, {"--bogus", plugin}, {"/no/such/KVDECODE_X.so"},
          {plugin, "/no/such/image.png"}}) {
        CheckRun run = runChecker(args);
        EXPECT_EQ(run.status, 2) << run.out;
        EXPECT_TRUE(run.verdicts.empty()) << run.out;
    }
}

} // namespace
