// A plug-in that crashes or hangs on some images: glyphor-batch goes on with the rest and says
// which decodes crashed or timed out.
#include "BatchFixture.h"

#include "ImageFiles.h"

namespace fs = std::filesystem;

using namespace batchtest;

namespace {

class BatchCrashTest : public BatchFixture {};

// What the plug-in reports for an 8x4 image of nines with this first pixel.
std::string GoodText(int first) { return "8x4 " + std::to_string(31 * 9 + first); }

// A plug-in folder holding only the misbehaving test plug-in, with a 2 s time limit, and images
// whose first pixel tells it what to do: a good one, one that aborts, one that hangs.
TEST_F(BatchCrashTest, CrashedAndTimedOutDecodesAreNamedInTheirRows) {
    const fs::path plugins = m_dir / "plugins";
    fs::create_directories(plugins);
    fs::create_directories(m_dir / "images");
    fs::copy_file(FAULTY_PLUGIN_PATH, plugins / "KVDECODE_Faulty.so");
    writeFile((plugins / "#KVDECODE_Faulty.ini").string(), "[Host]\nTimeLimitSeconds=2\n");
    for (const auto& [name, first] : {std::pair<const char*, uint8_t>{"a-good.png", 1}, {"b-abort.png", 'A'},
                                      {"c-hang.png", 'H'}, {"d-good.png", 2}}) {
        glyphor::samples::RasterImage image;
        image.width = 8;
        image.height = 4;
        image.pixels.assign(32, 9);
        image.pixels[0] = first;
        EXPECT_TRUE(glyphor::samples::writePng(Path(std::string("images/") + name), image)) << name;
    }
    const std::string settings = WriteSettings(plugins.string(), "reader.ini", plugins.string());
    const RunResult run = RunBatch({"-f", "json", "-s", settings, "-p", "Faulty", Path("images")});
    ASSERT_EQ(run.status, 0) << run.err;
    std::vector<std::string> rows;
    for (const QJsonValue& value : ParseJson(run.out)["rows"].toArray()) {
        const QJsonObject row = value.toObject();
        const std::string symbols = std::to_string(row["symbols"].toArray().size());
        rows.push_back(Str(row["results"]) + "|" + symbols + "|" + Str(row["status"]));
    }
    EXPECT_EQ(rows, (std::vector<std::string>{GoodText(1) + "|1|ok", "[CRASHED]|0|crashed",
                                              "[TIMED OUT]|0|timed out", GoodText(2) + "|1|ok"}));
}

// Every job loads every plug-in, but only a plug-in that decodes keeps a host: one per job for
// the one selected, and each plug-in is opened once to load it however many jobs there are.
TEST_F(BatchCrashTest, OneSelectedPluginStartsOneHostPerJob) {
    writeFile(WriteSettings(), readFile(Path("reader.ini")) + "[Logging]\nLevel=3\nMask=0x02\n");
    for (const char* sample : {"qrcode-plain.png", "code128-plain.png", "ean8-plain.png", "aztec-plain.png"})
        CopySample(sample, std::string("images/") + sample, false);
    const RunResult run =
        RunBatch({"-s", Path("reader.ini"), "-p", "ZXing", "-j", "2", "--no-progress", Path("images")},
                 m_dir.string());
    ASSERT_EQ(run.status, 0) << run.err;
    int decoding = 0, loading = 0, plugins = 0;
    for (const std::string& line : Lines(readFile(Path("Glyphor.log")))) {
        if (line.find("runs in host process") != std::string::npos) {
            ++decoding;
            EXPECT_NE(line.find("KVDECODE_ZXing.so"), std::string::npos) << line;
        }
        loading += line.find("to load it") != std::string::npos;
    }
    for (const fs::directory_entry& entry : fs::directory_iterator(PluginDir()))
        plugins += entry.path().extension() == ".so";
    EXPECT_GE(decoding, 1);
    EXPECT_LE(decoding, 2);
    EXPECT_EQ(loading, plugins);
}

} // namespace
