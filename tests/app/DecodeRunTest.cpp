// The decode run against the reader double: records, rows, symbol texts and bytes, statistics,
// the Decode Image and Decode Multi jobs and the filing of camera images.
#include "FakeView.h"
#include "JobContext.h"
#include "ReaderDouble.h"
#include "TempFolder.h"
#include "TestSession.h"

#include <filesystem>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace rd = readerdouble;

namespace {

class FakeJob : public JobContext {
public:
    bool IsStopped() const override { return stopWhen && stopWhen(); }
    void SetStatusText(const std::string& text) override { statusTexts.push_back(text); }
    std::function<bool()> stopWhen;
    std::vector<std::string> statusTexts;
};

rd::SymbolScript Text(const std::string& text, int32_t type = ZYR_DATA_ASCII, int32_t eci = ZYR_ECI_NONE) {
    rd::SymbolScript s;
    s.data = text;
    s.dataType = type;
    s.eci = eci;
    return s;
}

class DecodeRunTest : public ::testing::Test {
protected:
    void SetUp() override {
        rd::Reset();
        ReaderSession::Reset();
        session.loadImage = view.Loader();
        session.savePng = view.PngRecorder();
        pixels.assign(16, 0x80);
        image = ZyrImage{4, 4, 4, ZYR_PIXEL_GREY8, pixels.data()};
        std::snprintf(ReaderSession::Settings().PluginFolder, ZYR_PATH_SIZE, "%s", plugins.path().c_str());
        std::snprintf(ReaderSession::Settings().ApplicationFolder, ZYR_PATH_SIZE, "%s",
                      appFolder.path().c_str());
    }
    void TearDown() override { ReaderSession::Reset(); }

    // Installs plug-ins (file and script) and loads them into the session, all selected.
    void Install(std::vector<rd::PluginScript> scripts) {
        for (rd::PluginScript& script : scripts) {
            plugins.write(script.fileName, "");
            rd::AddPlugin(script);
        }
        session.LoadPlugins();
        for (size_t i = 0; i < session.plugins.Entries().size(); ++i) {
            session.plugins.SetSelected(i, true);
        }
    }

    // Opens files that all show the test image (or nothing, for names starting with "bad").
    void Open(const std::vector<std::string>& files) {
        for (const std::string& f : files) {
            if (f.rfind("bad", 0) != 0) {
                view.Provide(f, &image);
            }
        }
        session.OpenImages(files, 1);
    }

    // The user-interface side: turns every posted "show next result" into a row.
    std::vector<ResultRow> TakeRows() {
        std::vector<ResultRow> rows;
        while (auto row = session.decode.TakeNextRow()) {
            rows.push_back(*row);
        }
        return rows;
    }

    std::vector<std::string> DecodedImages() {
        std::vector<std::string> images;
        for (const rd::Call& call : rd::CallsNamed("ZyrReader_ImagePluginDecode")) {
            images.push_back(call.args[2]);
        }
        return images;
    }

    TempFolder plugins;
    TempFolder appFolder;
    FakeView view;
    TestSession session{view};
    std::vector<uint8_t> pixels;
    ZyrImage image{};
};

TEST_F(DecodeRunTest, RowsCarryTheOutcomeAsValues) {
    rd::SymbolScript binary = Text(std::string("\0\x01", 2), ZYR_DATA_BINARY, 26);
    binary.symbology = ZYR_SYM_PDF417;
    binary.corners = {{{1, 2}, {30, 2}, {30, 40}, {1, 40}}};
    struct Case {
        const char* plugin;
        std::vector<rd::SymbolScript> symbols;
        int32_t code;
        OutcomeStatus status;
    };
    const Case cases[] = {
        {"KVDECODE_Read.so", {Text("hello"), binary}, ZYR_OK, OutcomeStatus::Read},
        {"KVDECODE_Empty.so", {Text("")}, ZYR_OK, OutcomeStatus::NoData},
        {"KVDECODE_Crash.so", {}, ZYR_ERR_PLUGIN_CRASHED, OutcomeStatus::Crashed},
        {"KVDECODE_Slow.so", {}, ZYR_ERR_PLUGIN_TIMEOUT, OutcomeStatus::TimedOut},
        {"KVDECODE_Bad.so", {}, ZYR_ERR_BAD_ARGUMENT, OutcomeStatus::Failed},
    };
    std::vector<rd::PluginScript> scripts;
    for (const Case& c : cases) {
        rd::PluginScript script{c.plugin};
        script.decodes = {c.symbols};
        script.decodeResult = c.code;
        scripts.push_back(script);
    }
    Install(scripts);
    Open({"/pics/one.png"});
    session.stats.lastImageProcessMs = 7;
    std::vector<ResultRow> rows; // one plug-in per run: a symbol joins the first record still pending
    for (size_t i = 0; i < std::size(cases); ++i) {
        for (size_t p = 0; p < std::size(cases); ++p) {
            session.plugins.SetSelected(p, p == i);
        }
        FakeJob job;
        session.decode.DecodeImageJob(job);
        for (ResultRow& row : TakeRows()) {
            rows.push_back(std::move(row));
        }
    }

    ASSERT_EQ(rows.size(), std::size(cases));
    const ResultRow* read = nullptr;
    for (const ResultRow& row : rows) {
        const DecodeOutcome& outcome = row.outcome;
        const auto c = std::find_if(std::begin(cases), std::end(cases), [&](const Case& k) {
            return "KVDECODE_" + outcome.plugin + ".so" == k.plugin;
        });
        ASSERT_NE(c, std::end(cases)) << outcome.plugin;
        EXPECT_EQ(outcome.Status(), c->status) << c->plugin;
        EXPECT_EQ(outcome.code, c->code) << c->plugin;
        EXPECT_EQ(outcome.file, "one.png");
        EXPECT_EQ(outcome.imageProcess, std::chrono::milliseconds(7));
        EXPECT_EQ(row.time, MillisecondsText(outcome.decode)) << "the row shows the value it carries";
        ASSERT_EQ(outcome.symbols.size(), c->symbols.size()) << c->plugin;
        if (c->status == OutcomeStatus::Read) {
            read = &row;
        } else {
            EXPECT_EQ(row.results, "[NO DATA]") << c->plugin;
        }
    }
    ASSERT_NE(read, nullptr);
    const DecodedSymbol& last = read->outcome.symbols.back();
    EXPECT_EQ(read->results, "2 bytes (eci=26)");
    EXPECT_EQ(last.bytes, std::string("\0\x01", 2));
    EXPECT_EQ(last.symbology, ZYR_SYM_PDF417);
    EXPECT_EQ(last.dataType, ZYR_DATA_BINARY);
    EXPECT_EQ(last.corners[2].X, 30);
    EXPECT_EQ(last.corners[2].Y, 40);
}

TEST_F(DecodeRunTest, NothingSelectedDoesNothing) {
    Install({{"KVDECODE_A.so"}});
    session.plugins.SetSelected(0, false);
    Open({"one.png"});
    FakeJob job;
    session.decode.DecodeImageJob(job);
    EXPECT_TRUE(rd::CallsNamed("ZyrReader_ImagePluginDecode").empty());
    EXPECT_EQ(view.resultPosts, 0);
    EXPECT_EQ(session.stats.imageCount, 0);
    EXPECT_EQ(session.stats.decodeCount, 0);
    EXPECT_TRUE(view.savedPngs.empty()) << "an opened file is never filed";
}

TEST_F(DecodeRunTest, OneRecordAndRowPerSelectedPluginWithTheDecodeCallAsDocumented) {
    rd::PluginScript a{"KVDECODE_A.so"};
    a.handle = 11;
    a.decodes = {{Text("hello")}};
    rd::PluginScript b{"KVDECODE_B.so"};
    b.handle = 22;
    Install({a, b});
    Open({"/pics/first.png"});
    session.imageNumber = 41;

    FakeJob job;
    session.decode.DecodeImageJob(job);

    const auto decodes = rd::CallsNamed("ZyrReader_ImagePluginDecode");
    ASSERT_EQ(decodes.size(), 2u);
    const std::string context = rd::Ptr(&session.decode);
    EXPECT_EQ(decodes[0].Text(), "ZyrReader_ImagePluginDecode(true, 11, " + rd::Ptr(&image) +
                                     ", \"\", 41, \"\", callback, " + context + ", 41, 0, 0)");
    EXPECT_EQ(decodes[1].args[1], "22");
    EXPECT_EQ(view.resultPosts, 2);

    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].fileName, "first.png");
    EXPECT_EQ(rows[0].pluginName, "A");
    EXPECT_EQ(rows[0].results, "hello");
    EXPECT_EQ(rows[0].imageProcess, "0ms");
    EXPECT_EQ(rows[1].pluginName, "B");
    EXPECT_EQ(rows[1].results, "[NO DATA]");
    for (const ResultRow& row : rows) {
        EXPECT_TRUE(row.time.size() > 2 && row.time.compare(row.time.size() - 2, 2, "ms") == 0) << row.time;
    }
    EXPECT_EQ(session.stats.imageCount, 1);
    EXPECT_EQ(session.stats.decodeCount, 2);
    EXPECT_EQ(session.stats.symbolsCount, 1);
    EXPECT_EQ(rd::LiveObjects(), 0) << "every symbol is released after it is copied";
    ASSERT_EQ(session.results.DataCount(), 2);
    EXPECT_EQ(std::string(session.results.DataAt(0)->str()), "hello");
    EXPECT_TRUE(session.results.DataAt(1)->isEmpty());
}

TEST_F(DecodeRunTest, TwoSymbolsShowTheSecondAndKeepBoth) {
    rd::PluginScript a{"KVDECODE_A.so"};
    rd::SymbolScript first = Text("first");
    first.symbology = ZYR_SYM_PDF417;
    first.orientation = 90;
    rd::SymbolScript second = Text("second");
    second.symbology = ZYR_SYM_QRCODE;
    second.orientation = 180;
    a.decodes = {{first, second}};
    Install({a});
    Open({"x.png"});
    FakeJob job;
    session.decode.DecodeImageJob(job);
    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].results, "second");
    const auto data = session.results.DataAt(0);
    ASSERT_TRUE(data);
    EXPECT_EQ(std::string(data->str(), data->size()), "firstsecond");
    EXPECT_EQ(data->Symbology, ZYR_SYM_QRCODE) << "descriptor values come from the last symbol";
    EXPECT_EQ(data->Orientation, 180);
    EXPECT_EQ(session.stats.symbolsCount, 2);
    EXPECT_EQ(rd::CallsNamed("ZyrReader_DestroyCachedObject").size(), 2u);
}

struct SymbolCase {
    const char* name;
    int32_t type;
    int32_t eci;
    std::string data;
    std::string text;  // row text
    std::string bytes; // data buffer afterwards
};

void PrintTo(const SymbolCase& c, std::ostream* os) {
    *os << c.name;
}

class SymbolTextTest : public DecodeRunTest, public ::testing::WithParamInterface<SymbolCase> {};

TEST_P(SymbolTextTest, TextAndBytes) {
    const SymbolCase& c = GetParam();
    rd::PluginScript a{"KVDECODE_A.so"};
    a.decodes = {{Text(c.data, c.type, c.eci)}};
    Install({a});
    Open({"x.png"});
    FakeJob job;
    session.decode.DecodeImageJob(job);
    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].results, c.text);
    const auto data = session.results.DataAt(0);
    ASSERT_TRUE(data);
    EXPECT_EQ(std::string(data->str(), data->size()), c.bytes);
}

using namespace std::string_literals;

INSTANTIATE_TEST_SUITE_P(
    Types, SymbolTextTest,
    ::testing::Values(
        SymbolCase{"Ascii", ZYR_DATA_ASCII, 0, "ABC", "ABC", "ABC"},
        SymbolCase{"Text8", ZYR_DATA_TEXT8, 0, "caf\xE9", "caf\xE9", "caf\xE9"},
        SymbolCase{"EciLatin1", ZYR_DATA_ECI_BYTES, ZYR_ECI_ISO8859_1, "Gr\xFC\xDF", "Gr\xFC\xDF",
                   "Gr\xFC\xDF"},
        SymbolCase{"EciShiftJis", ZYR_DATA_ECI_BYTES, ZYR_ECI_SHIFT_JIS, "\x82\xA0", "\x82\xA0", "\x82\xA0"},
        SymbolCase{"EciUtf8IsBytes", ZYR_DATA_ECI_BYTES, ZYR_ECI_UTF8, "h\xC3\xA9llo", "6 bytes (eci=26)",
                   "h\xC3\xA9llo"},
        SymbolCase{"Binary", ZYR_DATA_BINARY, 0, "\x01\x02\x00\x04"s, "4 bytes (eci=0)", "\x01\x02\x00\x04"s},
        // Text stops at the first zero; the bytes keep everything, trailing zeros included.
        SymbolCase{"TextWithZero", ZYR_DATA_ASCII, 0, "ab\0cd"s, "ab", "ab\0cd"s},
        SymbolCase{"BinaryTrailingZeros", ZYR_DATA_BINARY, 0, "\x07\0\0"s, "3 bytes (eci=0)", "\x07\0\0"s},
        // Type 5 keeps one more byte, the terminator, when the data itself ends in a zero.
        SymbolCase{"StringEndingInZero", ZYR_DATA_STRING, 0, "ab\0"s, "3 bytes (eci=0)", "ab\0\0"s},
        SymbolCase{"StringWithoutZero", ZYR_DATA_STRING, 0, "abc", "3 bytes (eci=0)", "abc"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(DecodeRunTest, SymbolJoinsAnEarlierPendingRecordOfTheSameImage) {
    rd::PluginScript a{"KVDECODE_A.so"};
    rd::PluginScript b{"KVDECODE_B.so"};
    b.decodes = {{Text("from B")}};
    Install({a, b});
    Open({"x.png"});
    FakeJob job;
    session.decode.DecodeImageJob(job); // no row taken in between: A's record is still pending
    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].results, "from B");
    EXPECT_EQ(rows[1].results, "[NO DATA]");
}

TEST_F(DecodeRunTest, SymbolStaysWithItsOwnRecordOnceTheEarlierRowIsShown) {
    rd::PluginScript a{"KVDECODE_A.so"};
    rd::PluginScript b{"KVDECODE_B.so"};
    b.decodes = {{Text("from B")}};
    Install({a, b});
    Open({"x.png"});
    std::vector<ResultRow> rows;
    // The user-interface thread shows each posted row at once, so A's row is gone before B reports.
    rd::SetHook("ZyrReader_ImagePluginDecode", [&] {
        while (static_cast<int>(rows.size()) < view.resultPosts) {
            rows.push_back(*session.decode.TakeNextRow());
        }
    });
    FakeJob job;
    session.decode.DecodeImageJob(job);
    for (const ResultRow& row : TakeRows()) {
        rows.push_back(row);
    }
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].results, "[NO DATA]");
    EXPECT_EQ(rows[1].results, "from B");
}

TEST_F(DecodeRunTest, CallbackIgnoresNullSymbolsAndUnknownImages) {
    Install({{"KVDECODE_A.so"}});
    session.results.Append(5, 0, "A");
    ZyrSymbolResult symbol{};
    symbol.Data = reinterpret_cast<const uint8_t*>("x");
    symbol.DataLength = 1;
    DecodeRunner::Callback(&session.decode, 5, 0, 1, nullptr);
    DecodeRunner::Callback(&session.decode, 6, 0, 1, &symbol);
    EXPECT_EQ(session.stats.symbolsCount, 0);
    EXPECT_FALSE(session.dataReceived);
    EXPECT_TRUE(rd::CallsNamed("ZyrReader_DestroyCachedObject").empty());
    DecodeRunner::Callback(&session.decode, 5, 0, 1, &symbol);
    EXPECT_EQ(session.stats.symbolsCount, 1);
    EXPECT_TRUE(session.dataReceived);
}

TEST_F(DecodeRunTest, SidesPrefixTheRowText) {
    rd::PluginScript a{"KVDECODE_A.so"};
    a.decodes = {{Text("L")}, {Text("R")}, {Text("W")}, {Text("Z")}};
    Install({a});
    Open({"x.png"});
    std::vector<std::string> texts;
    for (int32_t side : {1, 2, 0, -7}) {
        session.decode.Run(&image, side);
        for (const ResultRow& row : TakeRows()) { // each row shown before the next run
            texts.push_back(row.results);
        }
    }
    EXPECT_EQ(texts, (std::vector<std::string>{"Side Left: L", "Side Right: R", "W", "Side Right: Z"}));
}

TEST_F(DecodeRunTest, DecodeMultiOnTheLastImageDecodesOnceWithoutAStep) {
    Install({{"KVDECODE_A.so"}});
    Open({"a.png", "b.png"});
    session.NextImage();
    FakeJob job;
    session.decode.DecodeMultiJob(job);
    EXPECT_EQ(job.statusTexts, std::vector<std::string>{"Decoding..."});
    EXPECT_EQ(DecodedImages().size(), 1u);
    EXPECT_EQ(view.loads.size(), 2u) << "no file loaded beyond the last";
}

TEST_F(DecodeRunTest, DecodeMultiStepsThroughEveryFollowingImage) {
    Install({{"KVDECODE_A.so"}, {"KVDECODE_B.so"}});
    Open({"a.png", "bad.png", "c.png"});
    const int32_t numberBefore = session.imageNumber;
    FakeJob job;
    session.decode.DecodeMultiJob(job);
    EXPECT_EQ(view.loads, (std::vector<std::string>{"a.png", "bad.png", "c.png"}));
    // The unreadable file shows no image: its run decodes nothing.
    EXPECT_EQ(DecodedImages(), std::vector<std::string>(4, rd::Ptr(&image)));
    EXPECT_EQ(session.imageNumber, numberBefore + 2);
    EXPECT_EQ(session.stats.imageCount, 2);
    EXPECT_EQ(session.stats.decodeCount, 4);
    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[3].fileName, "c.png");
}

TEST_F(DecodeRunTest, DecodeMultiEndsWhenStoppedBetweenImages) {
    Install({{"KVDECODE_A.so"}});
    Open({"a.png", "b.png", "c.png", "d.png"});
    FakeJob job;
    job.stopWhen = [&] { return view.loads.size() >= 2; }; // "Stop" pressed while the second image ran
    session.decode.DecodeMultiJob(job);
    EXPECT_EQ(view.loads.size(), 2u);
    EXPECT_EQ(DecodedImages().size(), 2u);
}

TEST_F(DecodeRunTest, ClearResultsRestartsTheAverages) {
    rd::PluginScript a{"KVDECODE_A.so"};
    a.decodes = {{Text("1"), Text("2")}, {Text("3")}};
    Install({a});
    Open({"a.png"});
    session.decode.Run(&image, 0);
    TakeRows();
    session.stats.totalDecodeMs += 1000; // a slow first run
    session.stats.lastImageProcessMs = 12;
    session.stats.totalImageProcessMs = 12;
    session.decode.ClearResults();
    EXPECT_EQ(session.results.DataCount(), 0);
    session.decode.Run(&image, 0);
    const DecodeStatistics::Texts texts = session.stats.Format();
    EXPECT_EQ(texts.imageCount, "1");
    EXPECT_EQ(texts.symbolsCount, "1");
    EXPECT_EQ(texts.averageImageProcessTime, "0.00ms");
    EXPECT_LT(session.stats.totalDecodeMs.load(), 1000u);
    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].imageProcess, "12ms") << "the last image-process time survives a clear";
    ASSERT_EQ(session.results.DataCount(), 1);
    EXPECT_EQ(std::string(session.results.DataAt(0)->str()), "3");
}

TEST_F(DecodeRunTest, ClearWhileRowsArePendingKeepsTheirData) {
    rd::PluginScript a{"KVDECODE_A.so"};
    a.decodes = {{Text("kept")}};
    Install({a});
    Open({"a.png"});
    session.decode.Run(&image, 0);
    session.decode.ClearResults(); // the row has not been shown yet
    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 1u);
    ASSERT_EQ(session.results.DataCount(), 1);
    EXPECT_EQ(std::string(session.results.DataAt(0)->str()), "kept");
}

TEST_F(DecodeRunTest, CameraImagesAreFiledByOutcome) {
    rd::PluginScript a{"KVDECODE_A.so"};
    a.decodes = {{Text("yes")}, {}};
    rd::PluginScript b{"KVDECODE_B.so"};
    b.decodes = {{Text("yes too")}, {}};
    Install({a, b});
    session.imageNumber = 7; // no file opened: the image came from the camera
    session.ShowImage(PictureId::Main, std::shared_ptr<const ZyrImage>(&image, [](const ZyrImage*) {}));
    session.decode.Run(&image, 0);
    const std::string app = appFolder.path() + "/";
    EXPECT_EQ(view.savedPngs, (std::vector<std::string>{app + "A/7.png", app + "B/7.png"}));
    EXPECT_TRUE(std::filesystem::is_directory(app + "A"));
    EXPECT_EQ(view.captions.back(), "Glyphor - 7.png");

    view.savedPngs.clear();
    session.decode.Run(&image, 0); // nothing decoded this time
    EXPECT_EQ(view.savedPngs, std::vector<std::string>{app + "Failed/7.png"});

    view.savedPngs.clear();
    session.plugins.SetSelected(0, false);
    session.plugins.SetSelected(1, false);
    session.decode.Run(&image, 0);
    EXPECT_EQ(view.savedPngs, std::vector<std::string>{app + "Failed/7.png"});
    session.decode.Run(nullptr, 0);
    EXPECT_EQ(view.savedPngs.size(), 2u) << "no image at all is filed as failed too";
}

} // namespace
