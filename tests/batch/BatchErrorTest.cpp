// glyphor-batch's failures: one clear line each, and the exit status that tells them apart.
#include "BatchFixture.h"

using namespace batchtest;

namespace {

class BatchErrorTest : public BatchFixture {};

TEST_F(BatchErrorTest, EachFailureIsOneLineWithItsExitStatus) {
    CopySample("qrcode-plain.png", "good.png");
    writeFile(Path("text.png"), "this is not an image\n");
    writeFile(Path("blocker"), "a file where a folder should be");
    const std::string settings = WriteSettings();
    const std::string missingFolder = Path("no-such-folder");
    writeFile(Path("broken.json"), "{\"rows\": [\n{\"file\": ");
    writeFile(Path("other.json"), "{\"rows\": [{\"file\": \"x.png\", \"plugin\": \"ZXing\"}]}");
    const std::string noPlugins = Path("empty-plugins");
    std::filesystem::create_directories(noPlugins);
    struct Case {
        const char* name;
        std::vector<std::string> args;
        int status;
        std::string error; // after "glyphor-batch: "
        bool rows;         // the good image is still decoded and listed
    };
    const std::string loaded = "' (loaded: DataMatrix, Pdf417, QRCode, ZBar, ZXing)";
    const std::string notJson = ": not a JSON document (line 2: unexpected end of the document)";
    const Case cases[] = {
        {"missing folder", {"-s", settings, "-p", "ZXing", missingFolder, Path("good.png")}, 1,
         "cannot read '" + missingFolder + "': No such file or directory", true},
        {"not an image", {"-s", settings, "-p", "ZXing", Path("text.png"), Path("good.png")}, 1,
         "cannot read image '" + Path("text.png") + "': Unsupported image format", true},
        {"unwritable output folder", {"-s", settings, "-p", "ZXing", "-o", Path("blocker/out"), Path("good.png")},
         1, "cannot create folder '" + Path("blocker/out") + "': Not a directory", true},
        {"unknown plug-in", {"-s", settings, "-p", "ZXing,Nope", Path("good.png")}, 2,
         "unknown plug-in 'Nope" + loaded, false},
        {"plug-in names are case-sensitive", {"-s", settings, "-p", "zxing", Path("good.png")}, 2,
         "unknown plug-in 'zxing" + loaded, false},
        {"unreadable settings", {"-s", Path("none.ini"), Path("good.png")}, 2,
         "cannot read reader settings '" + Path("none.ini") + "': File could not be opened, read or written",
         false},
        {"no plug-ins", {"-s", WriteSettings(noPlugins, "bare.ini"), Path("good.png")}, 2,
         "no decoder plug-ins could be loaded from '" + noPlugins + "/'", false},
        {"broken baseline", {"-s", settings, "--baseline", Path("broken.json"), Path("good.png")}, 2,
         "baseline " + Path("broken.json") + notJson, false},
        {"baseline of other files", {"-s", settings, "--baseline", Path("other.json"), Path("good.png")}, 2,
         "baseline '" + Path("other.json") + "' is a run of other files (none of these images is in it)", false},
        {"merge of a broken run", {"merge", Path("other.json"), Path("broken.json")}, 2,
         Path("broken.json") + notJson, false},
        {"merge of overlapping runs", {"merge", Path("other.json"), Path("other.json")}, 2,
         "overlapping files: 'x.png' (ZXing) is in both " + Path("other.json") + " and " + Path("other.json"),
         false},
        {"nothing to read", {"-p", "ZXing"}, 2, "no image files or folders given (see --help)", false},
        {"help goes to standard output", {"--help"}, 0, "", false},
    };
    for (const Case& c : cases) {
        const RunResult run = RunBatch(c.args);
        EXPECT_EQ(run.status, c.status) << c.name;
        EXPECT_EQ(run.err, c.error.empty() ? "" : "glyphor-batch: " + c.error + "\n") << c.name;
        const bool listed = run.out.find("\ngood.png ") != std::string::npos ||
                            run.out.find("\n" + Path("good.png") + " ") != std::string::npos;
        EXPECT_EQ(listed, c.rows) << c.name << ":\n" << run.out;
        if (c.status == 0) {
            EXPECT_EQ(run.out.rfind("Usage: glyphor-batch", 0), 0u);
        } else if (!c.rows) {
            EXPECT_EQ(run.out, "") << c.name;
        }
    }
}

} // namespace
