// glyphor-batch on the generated samples: the table, CSV and JSON outputs, also from two jobs.
#include "BatchFixture.h"

#include <algorithm>

using namespace batchtest;

namespace {

const std::string kBinary("GLY\0\x01\x02\xff\x80\x00\x7f" "END\n", 14);
const std::string kCrLf("LINE 1\r\nLINE\0 2\r\n", 17);

class BatchOutputTest : public BatchFixture {};

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

// What each row holds, the same in CSV and JSON: results, symbology, ECI, symbols, status, the
// exact bytes, their text, and the verdict on the expected text. Two jobs keep the input order.
TEST_F(BatchOutputTest, CsvAndJsonCarryTheExactBytesSymbologyEciAndVerdict) {
    // One image of each kind of content.
    CopySample("binary-qrcode.png", "binary.png");
    CopySample("aamva-pdf417.png", "licence.png");
    CopySample("eci-utf8-qrcode.png", "utf8.png");
    CopySample("no-symbol.png", "blank.png");
    CopySample("two-qrcode.png", "two.png");
    MakeQrImage("crlf", kCrLf);
    const std::vector<std::string> args = {"--settings", WriteSettings(), "-p", "ZXing,QRCode", "--expect"};
    std::vector<std::string> csvArgs = args, jsonArgs = args;
    csvArgs.insert(csvArgs.end(), {"-f", "csv", Path("")});
    jsonArgs.insert(jsonArgs.end(), {"-f", "json", "-j", "2", Path("")});
    const RunResult csv = RunBatch(csvArgs), json = RunBatch(jsonArgs);
    ASSERT_EQ(csv.status + json.status, 0) << csv.err << json.err;
    EXPECT_NE(csv.err.find("Image Count: 6\n"), std::string::npos) << "the statistics stay out of the CSV";
    EXPECT_EQ(json.err, "");
    const std::string licence = readFile(SamplePath("aamva-pdf417.txt"));
    const std::string utf8 = readFile(SamplePath("eci-utf8-qrcode.txt"));
    // Plug-ins in list order; file, plug-in, results, symbology, ECI, symbols, status, bytes, text, verdict.
    std::vector<std::vector<std::string>> expected;
    for (const char* plugin : {"QRCode", "ZXing"}) {
        for (const std::vector<std::string>& row : std::vector<std::vector<std::string>>{
                 {"binary.png", "14 bytes (eci=0)", "QRCode", "0", "1", "ok", kBinary, "", "pass"},
                 {"blank.png", "[NO DATA]", "", "", "0", "ok", "", "", "pass"},
                 {"crlf.png", "17 bytes (eci=0)", "QRCode", "0", "1", "ok", kCrLf, "", "pass"},
                 {"licence.png", licence, "PDF417", "0", "1", "ok", licence, licence, "pass"},
                 {"two.png", "SECOND QR", "QRCode", "0", "2", "ok", "FIRST QRSECOND QR", "FIRST QR\nSECOND QR", "pass"},
                 {"utf8.png", "23 bytes (eci=26)", "QRCode", "26", "1", "ok", utf8, utf8, "pass"}}) {
            expected.push_back(row);
            expected.back().insert(expected.back().begin() + 1, plugin);
        }
    }
    expected[3] = {"licence.png", "QRCode", "[NO DATA]", "", "", "0", "ok", "", "", "miss"};
    std::sort(expected.begin(), expected.end());

    std::vector<std::vector<std::string>> records = ParseCsv(csv.out);
    ASSERT_EQ(records.size(), 13u);
    EXPECT_EQ(records[0], (std::vector<std::string>{"File name", "Plugin", "Img Process", "Time", "Results", "Symbology",
                                                    "ECI", "Symbols", "Length", "Data (base64)", "Status", "Text",
                                                    "Expected"}));
    std::vector<std::vector<std::string>> fromCsv;
    for (size_t i = 1; i < records.size(); ++i) {
        const std::vector<std::string>& r = records[i];
        ASSERT_EQ(r.size(), records[0].size()) << r[0];
        const std::string bytes = Base64Decode(r[9]);
        EXPECT_EQ(r[8], std::to_string(bytes.size())) << r[0];
        fromCsv.push_back({r[0], r[1], r[4], r[5], r[6], r[7], r[10], bytes, r[11], r[12]});
    }
    EXPECT_EQ(fromCsv, expected);

    const QJsonObject document = ParseJson(json.out);
    std::vector<std::vector<std::string>> fromJson;
    int symbols = 0;
    for (const QJsonValue& value : document["rows"].toArray()) {
        const QJsonObject row = value.toObject();
        EXPECT_TRUE(row["imgProcess"].isDouble() && row["imgProcess"].toDouble() == 0) << "milliseconds, a number";
        EXPECT_TRUE(row["time"].isDouble() && row["time"].toDouble() >= 0);
        EXPECT_EQ(Str(row["path"]), Path(Str(row["file"])));
        const std::string data = Base64Decode(Str(row["data"]));
        EXPECT_EQ(row["length"].toInt(), int(data.size()));
        std::string joined;
        for (const QJsonValue& symbol : row["symbols"].toArray()) {
            joined += Base64Decode(Str(symbol.toObject()["data"]));
            EXPECT_EQ(symbol.toObject()["corners"].toArray().size(), 4);
            ++symbols;
        }
        EXPECT_EQ(joined, data) << "the row's bytes are its symbols' bytes";
        const std::string eci = row["eci"].isNull() ? "" : std::to_string(row["eci"].toInt());
        fromJson.push_back({Str(row["file"]), Str(row["plugin"]), Str(row["results"]), Str(row["symbology"]), eci,
                            std::to_string(row["symbols"].toArray().size()), Str(row["status"]), data,
                            Str(row["text"]), Str(row["expected"])});
    }
    ASSERT_EQ(fromJson, expected);
    EXPECT_TRUE(document["rows"].toArray()[0].toObject()["text"].isNull()) << "binary data has no text";
    const QJsonObject statistics = document["statistics"].toObject();
    EXPECT_EQ(std::make_pair(statistics["imageCount"].toInt(-1), statistics["symbolsCount"].toInt(-1)),
              std::make_pair(6, symbols));
    std::string plugins;
    for (const QJsonValue& e : document["expectations"].toArray())
        plugins += Str(e.toObject()["plugin"]) + "=" + std::to_string(e.toObject()["passed"].toInt()) + " ";
    EXPECT_EQ(plugins, "QRCode=5 ZXing=6 ");
}

} // namespace
