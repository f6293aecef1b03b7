// glyphor-batch on the generated samples: the table, CSV and JSON outputs, and parallel runs.
#include "BatchFixture.h"

#include <algorithm>
#include <set>
#include <tuple>

namespace batchtest {
namespace {

const std::string kBinary("GLY\0\x01\x02\xff\x80\x00\x7f"
                          "END\n",
                          14);
const std::string kCrLf("LINE 1\r\nLINE\0 2\r\n", 17);

class BatchOutputTest : public BatchFixture {
protected:
    // A folder with one image of each kind of content.
    void MakeMixedFolder() {
        CopySample("binary-qrcode.png", "binary.png");
        CopySample("aamva-pdf417.png", "licence.png");
        CopySample("eci-utf8-qrcode.png", "utf8.png");
        CopySample("no-symbol.png", "blank.png");
        CopySample("two-qrcode.png", "two.png");
        MakeQrImage("crlf", kCrLf);
    }
};

std::string Str(const QJsonValue& value) { return value.toString().toStdString(); }

// As the run script does without a display: ./ZyrReader.ini read by default. Columns line up by
// characters, also after a file name with a two-byte character.
TEST_F(BatchOutputTest, TableIsAlignedInTheGivenOrderAndEndsWithTheStatistics) {
    const std::vector<std::pair<std::string, std::string>> images = {
        {"qrcode-plain.png", "GLYPHOR QR SAMPLE 42"},
        {"no-symbol.png", "[NO DATA]"},
        {"binary-qrcode.png", "14 bytes (eci=0)"},
        {"eci-utf8-pdf417.png", "23 bytes (eci=26)"},
        {"sjis-qrcode.png", "\xe6\x97\xa5\xe6\x9c\xac\xe8\xaa\x9e\xe3\x83\x86\xe3\x82\xad\xe3\x82\xb9\xe3\x83\x88"},
        {"aamva-pdf417.png", "@\\n\\x1E\\rANSI 6360"}}; // line ends stay on the row
    std::vector<std::string> args = {"-p", "ZXing"};
    for (const auto& image : images) {
        args.push_back(image.first == "no-symbol.png" ? "caf\xc3\xa9.png" : image.first);
        CopySample(image.first, args.back(), false);
    }
    WriteSettings("", "ZyrReader.ini");
    const RunResult run = RunBatch(args, m_dir.string());
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    const std::vector<std::string> lines = Lines(run.out);
    ASSERT_EQ(lines.size(), 1 + images.size() + 1 + 4);
    const std::string& header = lines[0];
    ASSERT_EQ(header.rfind("File name", 0), 0u) << header;
    const size_t columns[] = {header.find("Plugin"), header.find("Img Process"), header.find("Time"), header.find("Results")};
    for (size_t i = 0; i < images.size(); ++i) {
        const std::string& row = lines[1 + i];
        EXPECT_EQ(row.rfind(args[2 + i] + " ", 0), 0u) << "rows in the order given: " << row;
        const size_t extra = size_t(std::count_if(args[2 + i].begin(), args[2 + i].end(), [](char c) { return (c & 0xC0) == 0x80; }));
        for (const size_t column : columns) {
            ASSERT_LT(column + extra, row.size()) << row;
            EXPECT_TRUE(row[column + extra - 1] == ' ' && row[column + extra] != ' ') << "column at " << column << " in " << row;
        }
        EXPECT_EQ(row.compare(columns[0] + extra, 6, "ZXing ") + row.compare(columns[1] + extra, 4, "0ms "), 0) << row;
        EXPECT_EQ(row.substr(columns[3] + extra, images[i].second.size()), images[i].second);
    }
    EXPECT_EQ(std::vector<std::string>(lines.end() - 5, lines.end()),
              (std::vector<std::string>{"", lines[lines.size() - 4], "Image Count: 6", lines[lines.size() - 2],
                                        "Average Image Process Time: 0.00ms"}));
    EXPECT_EQ(lines[lines.size() - 4].rfind("Average Time: ", 0) + lines[lines.size() - 2].rfind("Symbols Count: ", 0), 0u);
}

TEST_F(BatchOutputTest, CsvCarriesTheExactBytesSymbologyAndEci) {
    MakeMixedFolder();
    const RunResult run = RunBatch({"--settings", WriteSettings(), "-p", "ZXing", "-f", "csv", Path("")});
    ASSERT_EQ(run.status, 0) << run.err;
    const auto records = ParseCsv(run.out);
    ASSERT_EQ(records.size(), 7u);
    const std::vector<std::string> header = {"File name", "Plugin",  "Img Process",   "Time",
                                             "Results",   "Symbology", "ECI",         "Symbols",
                                             "Length",    "Data (base64)", "Status",    "Text"};
    EXPECT_EQ(records[0], header);
    // File, plug-in, symbology, ECI, symbols, status, bytes (two.png: the symbols in either order).
    const std::vector<std::vector<std::string>> expected = {
        {"binary.png", "ZXing", "QRCode", "0", "1", "ok", kBinary},
        {"blank.png", "ZXing", "", "", "0", "ok", ""},
        {"crlf.png", "ZXing", "QRCode", "0", "1", "ok", kCrLf},
        {"licence.png", "ZXing", "PDF417", "0", "1", "ok", ReadFile(SamplePath("aamva-pdf417.txt"))},
        {"two.png", "ZXing", "QRCode", "0", "2", "ok", "FIRST QRSECOND QR"},
        {"utf8.png", "ZXing", "QRCode", "26", "1", "ok", ReadFile(SamplePath("eci-utf8-qrcode.txt"))}};
    for (size_t i = 0; i < 6; ++i) {
        const std::vector<std::string>& r = records[1 + i];
        ASSERT_EQ(r.size(), header.size()) << r[0];
        std::string bytes = Base64Decode(r[9]);
        EXPECT_EQ(r[8], std::to_string(bytes.size())) << r[0];
        if (bytes == "SECOND QRFIRST QR")
            bytes = "FIRST QRSECOND QR";
        EXPECT_EQ((std::vector<std::string>{r[0], r[1], r[5], r[6], r[7], r[10], bytes}), expected[i]);
    }
    EXPECT_EQ(records[1 + 1][4], "[NO DATA]");
    EXPECT_EQ(records[1 + 5][11], ReadFile(SamplePath("eci-utf8-qrcode.txt"))) << "text as UTF-8";
    EXPECT_EQ(records[1 + 0][11], "") << "binary data has no text";
    // The statistics stay out of the CSV.
    EXPECT_NE(run.err.find("Image Count: 6\n"), std::string::npos) << run.err;
}

TEST_F(BatchOutputTest, JsonHasEveryRowAndSymbolWithExactBytes) {
    MakeMixedFolder();
    const RunResult run =
        RunBatch({"--settings", WriteSettings(), "-p", "ZXing,QRCode", "-f", "json", "--expect", Path("")});
    ASSERT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    const QJsonObject document = ParseJson(run.out);
    const QJsonArray rows = document["rows"].toArray();
    ASSERT_EQ(rows.size(), 12);
    int symbols = 0;
    for (int i = 0; i < rows.size(); ++i) {
        const QJsonObject row = rows[i].toObject();
        EXPECT_EQ(Str(row["plugin"]), i % 2 == 0 ? "QRCode" : "ZXing") << "plug-ins in list order";
        EXPECT_TRUE(row["imgProcess"].isDouble() && row["imgProcess"].toDouble() == 0) << "milliseconds, a number";
        EXPECT_TRUE(row["time"].isDouble() && row["time"].toDouble() >= 0);
        const std::string data = Base64Decode(Str(row["data"]));
        EXPECT_EQ(row["length"].toInt(), int(data.size()));
        std::string joined;
        for (const QJsonValue& symbol : row["symbols"].toArray()) {
            joined += Base64Decode(Str(symbol.toObject()["data"]));
            EXPECT_EQ(symbol.toObject()["corners"].toArray().size(), 4);
            ++symbols;
        }
        EXPECT_EQ(joined, data) << "the row's bytes are its symbols' bytes";
    }
    const auto rowOf = [&](const char* file, const char* plugin) {
        for (const QJsonValue& value : rows)
            if (Str(value.toObject()["file"]) == file && Str(value.toObject()["plugin"]) == plugin)
                return value.toObject();
        ADD_FAILURE() << "no row for " << file << " " << plugin;
        return QJsonObject();
    };
    const QJsonObject crlf = rowOf("crlf.png", "ZXing");
    EXPECT_EQ(std::make_tuple(Base64Decode(Str(crlf["data"])), Str(crlf["expected"]), Str(crlf["path"])),
              std::make_tuple(kCrLf, std::string("pass"), Path("crlf.png")));
    const QJsonObject utf8 = rowOf("utf8.png", "QRCode");
    EXPECT_EQ(std::make_pair(utf8["eci"].toInt(), utf8["symbols"].toArray()[0].toObject()["dataType"].toInt()),
              std::make_pair(26, 12));
    EXPECT_EQ(Str(utf8["text"]), ReadFile(SamplePath("eci-utf8-qrcode.txt")));
    EXPECT_TRUE(rowOf("binary.png", "ZXing")["text"].isNull());
    const QJsonObject two = rowOf("two.png", "ZXing");
    const std::string first = Base64Decode(Str(two["symbols"].toArray()[0].toObject()["data"]));
    const std::string last = Base64Decode(Str(two["symbols"].toArray()[1].toObject()["data"]));
    EXPECT_EQ((std::set<std::string>{first, last}), (std::set<std::string>{"FIRST QR", "SECOND QR"}));
    EXPECT_EQ(Str(two["text"]), first + "\n" + last) << "the symbols' texts, one per line";
    EXPECT_EQ(Str(two["results"]), last) << "the row shows the last symbol's text";
    const QJsonObject licence = rowOf("licence.png", "QRCode");
    EXPECT_EQ(Str(licence["results"]) + " " + Str(licence["expected"]), "[NO DATA] miss");
    EXPECT_TRUE(licence["symbology"].isNull() && licence["eci"].isNull());
    EXPECT_EQ(Str(rowOf("blank.png", "ZXing")["expected"]), "pass");

    const QJsonObject statistics = document["statistics"].toObject();
    EXPECT_EQ(std::make_pair(statistics["imageCount"].toInt(-1), statistics["symbolsCount"].toInt(-1)),
              std::make_pair(6, symbols));
    int judged = 0;
    std::string plugins;
    for (const QJsonValue& e : document["expectations"].toArray()) {
        plugins += Str(e.toObject()["plugin"]) + " ";
        for (const char* verdict : {"passed", "misread", "missed", "unchecked"})
            judged += e.toObject()[verdict].toInt();
    }
    EXPECT_EQ(std::make_pair(plugins, judged), std::make_pair(std::string("QRCode ZXing "), 12));
}

TEST_F(BatchOutputTest, TwoJobsGiveTheRowsOfOneJobInTheSameOrder) {
    for (const char* sample :
         {"qrcode-plain.png", "pdf417-plain.png", "two-qrcode.png", "no-symbol.png", "binary-datamatrix.png",
          "aamva-pdf417.png", "code128-plain.png", "colour-qrcode.png"}) {
        CopySample(sample, sample);
    }
    const std::vector<std::string> common = {"--settings", WriteSettings(), "-p", "ZXing,Pdf417",
                                             "-f",         "json"};
    std::vector<std::string> one = common, two = common;
    one.insert(one.end(), {"-j", "1", Path("")});
    two.insert(two.end(), {"-j", "2", Path("")});
    const RunResult serial = RunBatch(one);
    const RunResult parallel = RunBatch(two);
    ASSERT_EQ(serial.status, 0) << serial.err;
    ASSERT_EQ(parallel.status, 0) << parallel.err;
    EXPECT_EQ(TimelessRows(serial.out).size(), 16);
    EXPECT_EQ(TimelessRows(serial.out), TimelessRows(parallel.out));
}

} // namespace
} // namespace batchtest
