// The expected-result summary, result files, and which plug-ins run by default.
#include "BatchFixture.h"

using namespace batchtest;

namespace {

class BatchExpectTest : public BatchFixture {};

std::vector<std::string> SummaryLines(const std::string& out) {
    const std::vector<std::string> lines = Lines(out);
    const auto start = std::find(lines.begin(), lines.end(), "Expected results:");
    return std::vector<std::string>(start, lines.end());
}

TEST_F(BatchExpectTest, SummaryCountsPassesMisreadsAndMissesPerPlugin) {
    CopySample("qrcode-plain.png", "good.png");
    CopySample("qrcode-plain.png", "wrong.png", false);
    writeFile(Path("wrong.txt"), "SOMETHING ELSE");
    CopySample("no-symbol.png", "blank.png", false);
    writeFile(Path("blank.txt"), "X");
    CopySample("qrcode-plain.png", "unchecked.png", false);
    CopySample("two-qrcode.png", "swapped.png", false);
    writeFile(Path("swapped.txt"), "SECOND QR\nFIRST QR\n");
    CopySample("mixed-formats.png", "partial.png");
    CopySample("no-symbol.png", "empty.png");
    CopySample("sjis-qrcode.png", "sjis.png"); // Shift_JIS bytes against a UTF-8 text file
    const RunResult run = RunBatch({"-s", WriteSettings(), "-p", "QRCode,ZBar", "--expect", Path("")});
    ASSERT_EQ(run.status, 0) << run.err;
    // QRCode reads only the QR half of partial.png (a miss); ZBar reads both halves.
    const std::vector<std::string> expected = {
        "Expected results:",
        "Plugin   Passed  Misread   Missed    No .txt",
        "QRCode        4        1        2          1",
        "ZBar          5        1        1          1",
    };
    EXPECT_EQ(SummaryLines(run.out), expected) << run.out;
}

TEST_F(BatchExpectTest, OutputFolderGetsBytesAndAamvaExportsMirroringSubfolders) {
    CopySample("aamva-pdf417.png", "licence.png");
    CopySample("binary-qrcode.png", "sub/binary.png");
    CopySample("no-symbol.png", "blank.png");
    const std::string out = Path("out");
    const RunResult run = RunBatch({"-s", WriteSettings(), "-p", "ZXing,QRCode", "-o", out, Path("")});
    ASSERT_EQ(run.status, 0) << run.err;
    const std::string aamva = readFile(SamplePath("aamva-pdf417.txt"));
    EXPECT_EQ(readFile(out + "/licence.png.ZXing.bin"), aamva);
    const std::string text = readFile(out + "/licence.png.ZXing.aamva.txt");
    EXPECT_EQ(text.rfind("<AAMVA>\r\n", 0), 0u) << text.substr(0, 40);
    EXPECT_NE(text.find("\r\n</AAMVA>\r\n"), std::string::npos);
    EXPECT_NE(readFile(out + "/licence.png.ZXing.aamva.xml").find("<AAMVAData>"), std::string::npos);
    EXPECT_EQ(readFile(out + "/sub/binary.png.QRCode.bin"), readFile(SamplePath("binary-qrcode.txt")));
    std::vector<std::string> written;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(out)) {
        if (entry.is_regular_file())
            written.push_back(entry.path().lexically_relative(out).string());
    }
    std::sort(written.begin(), written.end());
    // Nothing for rows without bytes, no exports for bytes that are not AAMVA data.
    const std::vector<std::string> expected = {"licence.png.ZXing.aamva.txt", "licence.png.ZXing.aamva.xml",
                                               "licence.png.ZXing.bin", "sub/binary.png.QRCode.bin",
                                               "sub/binary.png.ZXing.bin"};
    EXPECT_EQ(written, expected);
}

std::vector<std::string> PluginsOfRows(const std::string& json) {
    std::vector<std::string> plugins;
    for (const QJsonValue& row : TimelessRows(json))
        plugins.push_back(Str(row.toObject()["plugin"]));
    return plugins;
}

TEST_F(BatchExpectTest, DefaultPluginsAreTheSavedSelectionElseAll) {
    CopySample("qrcode-plain.png", "good.png");
    const std::string settings = WriteSettings();
    const std::vector<std::string> args = {"-s", settings, "-f", "json", Path("good.png")};

    RunResult run = RunBatch(args);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(PluginsOfRows(run.out),
              (std::vector<std::string>{"DataMatrix", "Pdf417", "QRCode", "ZBar", "ZXing"}));

    writeFile(Path("Glyphor.ini"),
              "[Previous_State]\r\nBitmapID=57\r\nSelectedPlugins=ZXing,Gone,QRCode\r\n");
    run = RunBatch(args);
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(PluginsOfRows(run.out), (std::vector<std::string>{"QRCode", "ZXing"}))
        << "list order, unknown skipped";

    run = RunBatch({"-s", settings, "-f", "json", "-p", "ZBar", Path("good.png")});
    EXPECT_EQ(PluginsOfRows(run.out), (std::vector<std::string>{"ZBar"})) << "the command line wins";
    EXPECT_NE(readFile(Path("Glyphor.ini")).find("BitmapID=57"), std::string::npos)
        << "a batch run saves nothing";

    writeFile(Path("Glyphor.ini"), "[Previous_State]\r\nSelectedPlugins=\r\n");
    run = RunBatch(args);
    EXPECT_EQ(PluginsOfRows(run.out).size(), 5u) << "an empty saved selection means all";
}

} // namespace
