// Runs as values: reading JSON runs back, shards, merges and baseline comparisons.
#include "Baseline.h"
#include "JsonValue.h"
#include "ReportPage.h"
#include "RunFile.h"
#include "RunMerge.h"
#include "ShardSelection.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace {

RunRow Row(const std::string& relative, const std::string& plugin, const std::string& data, double timeMs = 1,
           size_t index = 0) {
    RunRow row;
    row.index = index;
    row.relative = row.file = relative;
    row.plugin = plugin;
    row.data = data;
    row.length = data.size();
    row.timeMs = timeMs;
    row.json = "{\"file\": \"" + relative + "\", \"relative\": \"" + relative +
               "\", \"index\": " + std::to_string(index) + ", \"plugin\": \"" + plugin +
               "\", \"length\": " + std::to_string(data.size()) + ", \"data\": \"" + data + "\"}";
    return row;
}

TEST(RunFile, ReadsRowsSymbolsAndEscapesBack) {
    const std::string text = R"({"rows": [
      {"file": "a/b.png", "path": "/x/a/b.png", "relative": "a/b.png", "index": 7, "plugin": "Q\u00e9R",
       "time": 12.5, "status": "ok", "length": 3, "data": "QUJD",
       "symbols": [{"symbology": "QR Code", "corners": [[1, 2], [30, 2], [30, 31], [1, 31]]}]},
      {"file": "c\"d.png", "plugin": "Z", "length": 0, "data": "", "symbols": []}],
     "statistics": {"averageTime": 6.25, "imageCount": 2, "symbolsCount": 1}, "shard": {"index": 2, "count": 3}})";
    BatchRun run;
    std::string error;
    ASSERT_TRUE(RunFile::Parse(text, "t.json", run, error)) << error;
    ASSERT_EQ(run.rows.size(), 2u);
    const RunRow& a = run.rows[0];
    EXPECT_EQ(std::make_tuple(a.plugin, a.index, a.timeMs, a.Read()), std::make_tuple("Q\xc3\xa9R", size_t(7), 12.5, true));
    ASSERT_EQ(a.symbols.size(), 1u);
    EXPECT_EQ(a.symbols[0].corners[2], std::make_pair(30.0, 31.0));
    // Older runs without "relative" match by the file column.
    EXPECT_EQ(std::make_pair(run.rows[1].relative, run.rows[1].Read()), std::make_pair(std::string("c\"d.png"), false));
    EXPECT_EQ(std::make_tuple(run.imageCount, run.shardIndex, run.shardCount), std::make_tuple(2L, 2, 3));
}

TEST(RunFile, BrokenOrForeignDocumentsAreRefusedWithTheirReason) {
    const struct {
        std::string text;
        std::string error;
    } cases[] = {
        {"{\"rows\": [\n{\"file\": \"a\", \"plugin\": \"Z\"},\n",
         "t.json: not a JSON document (line 3: unexpected end of the document)"},
        {"{\"rows\": []} x", "t.json: not a JSON document (line 1: text after the document)"},
        {"{\"rows\": [\"a\x01\"]}", "t.json: not a JSON document (line 1: control character in a string)"},
        {"{\"rows\": [\"\\x\"]}", "t.json: not a JSON document (line 1: bad escape in a string)"},
        {"{\"rows\": [1.2.3]}", "t.json: not a JSON document (line 1: malformed number)"},
        {std::string(100, '[') + std::string(100, ']'),
         "t.json: not a JSON document (line 1: nested too deeply)"},
        {"[1, 2]", "t.json: not a glyphor-batch JSON run (no \"rows\" list)"},
        {"{\"rows\": [{\"file\": \"a\"}]}", "t.json: row 1 has no \"file\" and \"plugin\""},
        {"{\"rows\": [], \"shard\": {\"index\": 3, \"count\": 2}}", "t.json: its \"shard\" is not K of N"},
    };
    for (const auto& c : cases) {
        BatchRun run;
        std::string error;
        EXPECT_FALSE(RunFile::Parse(c.text, "t.json", run, error)) << c.text;
        EXPECT_EQ(error, c.error);
        EXPECT_TRUE(run.rows.empty());
    }
    BatchRun run;
    std::string error;
    EXPECT_FALSE(RunFile::Read("/no/such/run.json", run, error));
    EXPECT_EQ(error, "cannot read '/no/such/run.json'");
}

TEST(ShardSelection, ParsesKOfNAndSplitsEveryImageIntoExactlyOnePart) {
    ShardSelection shard;
    EXPECT_TRUE(ShardSelection::Parse("2/5", shard));
    EXPECT_EQ(std::make_pair(shard.index, shard.count), std::make_pair(2, 5));
    for (const char* bad : {"", "1", "/2", "0/1", "2/1", "1/0", "a/2", "1/2/3", "1/1000000000"})
        EXPECT_FALSE(ShardSelection::Parse(bad, shard)) << bad;
    std::vector<ImageInput> inputs;
    for (int i = 0; i < 200; ++i)
        inputs.push_back(ImageInput{"/p/" + std::to_string(i), "", "dir/" + std::to_string(i) + ".png", size_t(i)});
    for (const int n : {1, 3, 16}) {
        std::multiset<size_t> seen;
        for (int k = 1; k <= n; ++k) {
            const std::vector<ImageInput> part = ShardSelection{k, n}.Select(inputs);
            EXPECT_LT(part.size(), n == 1 ? 201u : 200u * 2 / n) << k << "/" << n << ": parts stay near even";
            for (const ImageInput& input : part)
                seen.insert(input.index);
        }
        EXPECT_EQ(seen.size(), inputs.size()) << n;
        EXPECT_EQ(std::set<size_t>(seen.begin(), seen.end()).size(), inputs.size()) << n;
    }
}

BatchRun RunOf(std::vector<RunRow> rows, int shard, int shards, long images = 1, double averageMs = 1) {
    return BatchRun{std::move(rows), averageMs, images, 0, 0, {}, shard, shards};
}

TEST(RunMerge, ShardsComeBackInInputOrderAndOverlapsAreRefused) {
    std::vector<RunMerge::Part> parts = {
        {"one.json", RunOf({Row("b", "P", "", 1, 1), Row("b", "Q", "", 1, 1), Row("d", "P", "", 1, 3)}, 2, 3, 2, 1)},
        {"two.json", RunOf({Row("a", "P", "QQ==", 3, 0), Row("c", "P", "", 3, 2)}, 1, 3, 2, 3)}};
    BatchRun merged;
    std::vector<std::string> warnings;
    std::string error;
    ASSERT_TRUE(RunMerge::Merge(parts, merged, warnings, error)) << error;
    std::string order;
    for (const RunRow& row : merged.rows)
        order += row.relative + row.plugin + " ";
    EXPECT_EQ(order, "aP bP bQ cP dP ");
    EXPECT_EQ(merged.imageCount, 4);
    EXPECT_DOUBLE_EQ(merged.averageTimeMs, (3 * 1 + 2 * 3) / 5.0);
    EXPECT_EQ(warnings, std::vector<std::string>{"shards missing from the merge: 3/3"});
    // The merged document reads back as the same rows.
    BatchRun back;
    ASSERT_TRUE(RunFile::Parse(RunMerge::Json(merged), "m", back, error)) << error;
    ASSERT_EQ(back.rows.size(), 5u);
    EXPECT_EQ(back.rows[0].data, "QQ==");

    const std::pair<BatchRun, std::string> bad[] = {
        {RunOf({Row("y", "P", "", 1, 6)}, 1, 3), "overlapping shards: one.json and two.json are both shard 1/3"},
        {RunOf({Row("y", "P", "", 1, 6)}, 1, 4), "two.json is a shard of 4 parts, others of 3"},
        {RunOf({Row("x", "P", "", 1, 5)}, 2, 3), "overlapping files: 'x' (P) is in both one.json and two.json"}};
    for (const auto& [second, message] : bad) {
        std::vector<RunMerge::Part> p = {{"one.json", RunOf({Row("x", "P", "", 1, 5)}, 1, 3)}, {"two.json", second}};
        EXPECT_FALSE(RunMerge::Merge(p, merged, warnings, error));
        EXPECT_EQ(error, message);
    }
}

TEST(Baseline, ClassifiesEachImageAndPluginAndFlagsRegressions) {
    const std::vector<RunRow> before = {
        Row("same.png", "P", "QQ==", 10),    Row("lost.png", "P", "QQ==", 10), Row("new.png", "P", "", 10),
        Row("changed.png", "P", "QQ==", 10), Row("none.png", "P", "", 10),     Row("gone.png", "P", ""),
        Row("twice.png", "P", "QQ==", 10),   Row("twice.png", "P", "", 10)};
    const std::vector<RunRow> now = {Row("same.png", "P", "QQ==", 5),  Row("lost.png", "P", "", 5),
                                     Row("new.png", "P", "Qg==", 5),   Row("changed.png", "P", "Qg==", 5),
                                     Row("none.png", "P", "", 5),      Row("added.png", "P", ""),
                                     Row("twice.png", "P", "QQ==", 5), Row("twice.png", "P", "", 5)};
    const Baseline::Comparison c = Baseline::Compare(before, now);
    std::string changes;
    for (const Baseline::Entry& e : c.entries)
        changes += std::string(Baseline::Name(e.change)) + ",";
    EXPECT_EQ(changes, "same,lost,newly read,changed,same,not in baseline,same,same,only in baseline,");
    ASSERT_EQ(c.plugins.size(), 1u);
    const Baseline::PluginSummary& s = c.plugins[0];
    EXPECT_EQ(std::make_tuple(s.matched, s.newlyRead, s.lost, s.changed, s.timeBeforeMs, s.timeNowMs),
              std::make_tuple(7L, 1L, 1L, 1L, 70.0, 35.0));
    EXPECT_TRUE(c.Regressed());
    EXPECT_NE(Baseline::TextLines(c).back().find("-50.0%"), std::string::npos);
    JsonValue json;
    std::string error;
    ASSERT_TRUE(JsonValue::Parse(Baseline::Json(c), json, error)) << error;
    EXPECT_EQ(json.Find("rows")->items.size(), 9u);

    EXPECT_TRUE(Baseline::Compare({Row("a", "P", "QQ==")}, {Row("a", "P", "Qg==")}).Regressed()) << "other bytes alone";
    // Only new reads and new images: nothing for CI to fail on.
    EXPECT_FALSE(
        Baseline::Compare({Row("a", "P", "")}, {Row("a", "P", "QQ=="), Row("b", "P", "")}).Regressed());
    EXPECT_TRUE(Baseline::SharesFiles(before, {"x", "lost.png"}));
    EXPECT_FALSE(Baseline::SharesFiles(before, {"x", "y"}));
}

TEST(Report, FiguresPerFolderPluginAndImage) {
    std::vector<RunRow> rows = {
        Row("a/1.png", "P", "QQ==", 1, 0), Row("a/1.png", "Q", "QQ==", 2, 0), // agree
        Row("a/2.png", "P", "QQ==", 3, 1), Row("a/2.png", "Q", "", 4, 1),     // only P reads
        Row("3.png", "P", "QQ==", 5, 2),   Row("3.png", "Q", "Qg==", 6, 2),   // other bytes
        Row("4.png", "P", "", 7, 3),       Row("4.png", "Q", "", 8, 3)};
    const std::vector<RunRow> before = {Row("4.png", "P", "QQ==", 1, 3)};
    const Baseline::Comparison comparison = Baseline::Compare(before, rows);
    const ReportStats stats = ReportStats::Compute(rows, &comparison);
    EXPECT_EQ(stats.plugins, (std::vector<std::string>{"P", "Q"}));
    EXPECT_EQ(stats.imageCount, 4);
    ASSERT_EQ(stats.folders.size(), 2u);
    EXPECT_EQ(stats.folders[0].name + stats.folders[1].name, ".a");
    EXPECT_EQ(stats.folders[1].read, (std::vector<long>{2, 1}));
    EXPECT_EQ(stats.folders[1].images, (std::vector<long>{2, 2}));
    EXPECT_EQ(stats.onlyRead, (std::vector<std::vector<long>>{{0, 1}, {0, 0}}));
    EXPECT_EQ(stats.readImages, (std::vector<long>{3, 2}));
    EXPECT_DOUBLE_EQ(stats.times[0].median, 4);
    EXPECT_DOUBLE_EQ(stats.times[1].q1, 3.5);
    EXPECT_DOUBLE_EQ(stats.times[1].max, 8);
    std::vector<std::string> flagged;
    for (const ReportStats::Image& image : stats.flagged)
        flagged.push_back(image.rows.front()->relative + ": " + image.reason);
    EXPECT_EQ(flagged, (std::vector<std::string>{"4.png: baseline: P lost", "a/2.png: plug-ins disagree",
                                                 "3.png: plug-ins disagree"}));

    // Names cannot end the page's elements early; images that cannot be read say why.
    rows = {Row("<b>.png", "P</script>", "", 1, 0), Row("<b>.png", "Q", "QQ==", 1, 0)};
    ReportPage::Options options;
    options.chartLibrary = "/* charts */";
    const std::string html = ReportPage::Html(ReportStats::Compute(rows, nullptr), options);
    EXPECT_EQ(html.find("<b>.png"), std::string::npos);
    EXPECT_NE(html.find("&lt;b&gt;.png"), std::string::npos);
    EXPECT_EQ(html.find("P</script>"), std::string::npos);
    EXPECT_NE(html.find("<script>/* charts */</script>"), std::string::npos);
    EXPECT_NE(html.find("class=\"missing\">No such file or directory"), std::string::npos);
}

} // namespace
