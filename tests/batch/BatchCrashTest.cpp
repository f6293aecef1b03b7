// A plug-in that crashes or hangs on some images: glyphor-batch goes on with the rest and says
// which decodes crashed or timed out, in each output format.
#include "BatchFixture.h"

#include "ImageFiles.h"

namespace fs = std::filesystem;

namespace batchtest {
namespace {

class BatchCrashTest : public BatchFixture {
protected:
    // A plug-in folder holding only the misbehaving test plug-in, with a 2 s time limit, and
    // images whose first pixel tells it what to do: a good one, one that aborts, one that hangs.
    std::string Prepare() {
        const fs::path plugins = m_dir / "plugins";
        fs::create_directories(plugins);
        fs::copy_file(FAULTY_PLUGIN_PATH, plugins / "KVDECODE_Faulty.so");
        WriteFile((plugins / "#KVDECODE_Faulty.ini").string(), "[Host]\nTimeLimitSeconds=2\n");
        WriteFile(Path("reader.ini"), "[Folders]\nPluginFolder=" + plugins.string() +
                                          "\nPluginSettingsFolder=" + plugins.string() +
                                          "\nApplicationFolder=" + m_dir.string() + "\n");
        const std::pair<const char*, uint8_t> images[] = {
            {"a-good.png", 1}, {"b-abort.png", 'A'}, {"c-hang.png", 'H'}, {"d-good.png", 2}};
        for (const auto& [name, first] : images) {
            glyphor::samples::RasterImage image;
            image.width = 8;
            image.height = 4;
            image.pixels.assign(32, 9);
            image.pixels[0] = first;
            EXPECT_TRUE(glyphor::samples::writePng(Path(std::string("images/") + name), image)) << name;
        }
        return Path("reader.ini");
    }
};

// What the plug-in reports for an 8x4 image of nines with this first pixel.
std::string GoodText(int first) {
    return "8x4 " + std::to_string(31 * 9 + first);
}

TEST_F(BatchCrashTest, CrashedAndTimedOutDecodesAreNamedInEveryFormat) {
    fs::create_directories(m_dir / "images");
    const std::string settings = Prepare();
    const std::vector<std::string> base = {"-s", settings, "-p", "Faulty", Path("images")};

    auto with = [&](const char* format) {
        std::vector<std::string> args = {"-f", format};
        args.insert(args.end(), base.begin(), base.end());
        return RunBatch(args);
    };

    const RunResult table = with("table");
    ASSERT_EQ(table.status, 0) << table.err;
    const std::vector<std::string> lines = Lines(table.out);
    ASSERT_GE(lines.size(), 5u);
    const char* tableEnds[] = {nullptr, "[CRASHED]", "[TIMED OUT]", nullptr};
    for (size_t i = 0; i < 4; ++i) {
        const std::string& line = lines[1 + i];
        const std::string end = tableEnds[i] ? tableEnds[i] : GoodText(i == 0 ? 1 : 2);
        ASSERT_GE(line.size(), end.size()) << line;
        EXPECT_EQ(line.substr(line.size() - end.size()), end) << line;
    }

    const RunResult csv = with("csv");
    ASSERT_EQ(csv.status, 0) << csv.err;
    const auto records = ParseCsv(csv.out);
    ASSERT_EQ(records.size(), 5u);
    const char* statuses[] = {"ok", "crashed", "timed out", "ok"};
    const std::string results[] = {GoodText(1), "[CRASHED]", "[TIMED OUT]", GoodText(2)};
    for (size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(records[1 + i].at(4), results[i]);
        EXPECT_EQ(records[1 + i].at(7), i == 1 || i == 2 ? "0" : "1");
        EXPECT_EQ(records[1 + i].at(10), statuses[i]);
    }

    const RunResult json = with("json");
    ASSERT_EQ(json.status, 0) << json.err;
    const QJsonArray rows = ParseJson(json.out)["rows"].toArray();
    ASSERT_EQ(rows.size(), 4);
    for (int i = 0; i < 4; ++i) {
        const QJsonObject row = rows[i].toObject();
        EXPECT_EQ(row["status"].toString().toStdString(), statuses[i]);
        EXPECT_EQ(row["results"].toString().toStdString(), results[i]);
        EXPECT_EQ(row["symbols"].toArray().size(), i == 1 || i == 2 ? 0 : 1);
    }
}

// Every job loads every plug-in, but only a plug-in that decodes keeps a host: one per job for
// the one selected, and each plug-in is opened once to load it however many jobs there are.
TEST_F(BatchCrashTest, OneSelectedPluginStartsOneHostPerJob) {
    WriteFile(WriteSettings(), ReadFile(Path("reader.ini")) + "[Logging]\nLevel=3\nMask=0x02\n");
    for (const char* sample : {"qrcode-plain.png", "code128-plain.png", "ean8-plain.png", "aztec-plain.png"})
        CopySample(sample, std::string("images/") + sample, false);
    const RunResult run =
        RunBatch({"-s", Path("reader.ini"), "-p", "ZXing", "-j", "2", "--no-progress", Path("images")},
                 m_dir.string());
    ASSERT_EQ(run.status, 0) << run.err;
    int decoding = 0, loading = 0, plugins = 0;
    for (const std::string& line : Lines(ReadFile(Path("Glyphor.log")))) {
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
} // namespace batchtest
