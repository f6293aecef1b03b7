// Runs larger than one call: shards merged back into one run, and runs compared with a baseline.
#include "BatchFixture.h"

#include <map>

using namespace batchtest;

namespace {

class BatchShardTest : public BatchFixture {};

TEST_F(BatchShardTest, ShardsMergedEqualOneRun) {
    const std::vector<std::string> common = {
        "-s", SamplePath("ZyrReader.ini"), "-p", "ZXing,QRCode", "-f", "json", SamplesDir()};
    const RunResult whole = RunBatch(common);
    ASSERT_EQ(whole.status, 0) << whole.err;
    std::vector<std::string> merge = {"merge", "-o", Path("merged.json")};
    for (int k = 1; k <= 3; ++k) {
        std::vector<std::string> args = common;
        args.insert(args.begin(), {"--shard", std::to_string(k) + "/3"});
        const RunResult shard = RunBatch(args);
        ASSERT_EQ(shard.status, 0) << shard.err;
        writeFile(Path("s" + std::to_string(k) + ".json"), shard.out);
        merge.push_back(Path("s" + std::to_string(k) + ".json"));
    }
    const RunResult merged = RunBatch(merge);
    ASSERT_EQ(merged.status, 0) << merged.err;
    EXPECT_EQ(merged.out + merged.err, "");
    const std::string json = readFile(Path("merged.json"));
    const QJsonArray expected = TimelessRows(whole.out);
    EXPECT_EQ(TimelessRows(json), expected);
    const QJsonValue stats = ParseJson(json)["statistics"], wholeStats = ParseJson(whole.out)["statistics"];
    for (const QString figure : {"imageCount", "symbolsCount"})
        EXPECT_EQ(stats[figure], wholeStats[figure]) << figure.toStdString();

    // A shard given twice overlaps; the earlier merged file stays as it was.
    merge.push_back(Path("s1.json"));
    const RunResult twice = RunBatch(merge);
    EXPECT_EQ(twice.status, 2);
    EXPECT_EQ(twice.err, "glyphor-batch: overlapping shards: " + Path("s1.json") + " and " + Path("s1.json") +
                             " are both shard 1/3\n");
    EXPECT_EQ(readFile(Path("merged.json")), json);
}

TEST_F(BatchShardTest, BaselineOfAnotherPluginSettingTellsWhatWasLost) {
    CopySample("ean13-low-contrast.png", "in/sub/low.png", false);
    CopySample("ean13-noisy.jpg", "in/noisy.jpg", false);
    CopySample("qrcode-plain.png", "in/plain.png", false);
    // The same plug-in with another setting: no harder tries, a fixed threshold (which loses the
    // low-contrast image and reads the noisy one).
    std::filesystem::create_directories(Path("weak"));
    std::string ini = readFile(PluginDir() + "/#KVDECODE_ZXing.ini");
    for (const auto& [from, to] : {std::pair<std::string, std::string>{"TryHarder=1", "TryHarder=0"},
                                   {"Binarizer=LocalAverage", "Binarizer=FixedThreshold"}}) {
        ASSERT_NE(ini.find(from), std::string::npos) << from;
        ini.replace(ini.find(from), from.size(), to);
    }
    writeFile(Path("weak/#KVDECODE_ZXing.ini"), ini);
    WriteSettings("", "weak.ini", Path("weak"));
    const RunResult base = RunBatch({"-s", WriteSettings(), "-p", "ZXing", "-f", "json", Path("in")});
    ASSERT_EQ(base.status, 0) << base.err;
    writeFile(Path("base.json"), base.out);

    // Against itself (from another folder holding the same files) nothing changed.
    std::filesystem::copy(Path("in"), Path("copy"), std::filesystem::copy_options::recursive);
    const RunResult same =
        RunBatch({"-s", WriteSettings(), "-p", "ZXing", "--baseline", Path("base.json"), Path("copy")});
    EXPECT_EQ(same.status, 0) << same.err;
    EXPECT_NE(same.out.find("\nZXing             3         0            0       0"), std::string::npos)
        << same.out;

    const RunResult weak = RunBatch(
        {"-s", Path("weak.ini"), "-p", "ZXing", "-f", "json", "--baseline", Path("base.json"), Path("in")});
    EXPECT_EQ(weak.status, 3) << weak.err;
    const QJsonObject baseline = ParseJson(weak.out)["baseline"].toObject();
    std::map<std::string, std::string> changes;
    for (const QJsonValue& value : baseline["rows"].toArray()) {
        const QJsonObject row = value.toObject();
        changes[Str(row["relative"])] = Str(row["change"]);
        EXPECT_TRUE(row["timeBefore"].isDouble() && row["timeNow"].isDouble());
    }
    EXPECT_EQ(changes, (std::map<std::string, std::string>{
                           {"sub/low.png", "lost"}, {"noisy.jpg", "newly read"}, {"plain.png", "same"}}));
    EXPECT_EQ(baseline["plugins"].toArray().at(0).toObject()["lost"].toInt(), 1);
}

} // namespace
