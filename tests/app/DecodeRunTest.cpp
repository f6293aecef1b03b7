// The decode run against the reader double: rows, bytes, statistics, the Decode Image and Multi
// jobs, camera images filed, and Decode Multi on a worker while this thread serves the interface.
#include "FakeView.h"

#include <atomic>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace rd = readerdouble;
using Strings = std::vector<std::string>;
using namespace std::string_literals;

namespace {

rd::SymbolScript Text(const std::string& text, int32_t type = ZYR_DATA_ASCII, int32_t eci = ZYR_ECI_NONE) {
    rd::SymbolScript s;
    s.data = text;
    s.dataType = type;
    s.eci = eci;
    return s;
}

rd::PluginScript Plugin(const char* name, std::vector<std::vector<rd::SymbolScript>> decodes = {}) {
    rd::PluginScript script{std::string("KVDECODE_") + name + ".so"};
    script.decodes = std::move(decodes);
    return script;
}

class DecodeRunTest : public SessionFixture {
protected:
    void SetUp() override {
        session.loadImage = view.Loader();
        session.savePng = view.PngRecorder();
    }
    // Opens files that all show the test image (or nothing, for names starting with "bad").
    void Open(const Strings& files) {
        for (const std::string& f : files)
            if (f.rfind("bad", 0) != 0)
                view.Provide(f, &image);
        session.OpenImages(files, 1);
    }
    // The user-interface side: every posted row.
    std::vector<ResultRow> TakeRows() {
        std::vector<ResultRow> rows;
        while (auto row = session.decode.TakeNextRow())
            rows.push_back(*row);
        return rows;
    }
    std::string Data(int index) {
        const auto data = session.results.DataAt(index);
        return data ? std::string(data->str(), data->size()) : "<none>";
    }
    size_t Decodes() { return rd::CallsNamed("ZyrReader_ImagePluginDecode").size(); }

    std::vector<uint8_t> pixels = std::vector<uint8_t>(16, 0x80);
    ZyrImage image{4, 4, 4, ZYR_PIXEL_GREY8, pixels.data()};
};

TEST_F(DecodeRunTest, RowsCarryTheOutcomeAsValues) {
    rd::SymbolScript binary = Text("\0\x01"s, ZYR_DATA_BINARY, 26);
    binary.symbology = ZYR_SYM_PDF417;
    binary.corners = {{{1, 2}, {30, 2}, {30, 40}, {1, 40}}};
    constexpr OutcomeStatus read = OutcomeStatus::Read;
    const struct {
        const char* plugin;
        std::vector<rd::SymbolScript> symbols;
        int32_t code;
        OutcomeStatus status;
        std::string results, bytes; // row text; the record's bytes afterwards
    } cases[] = {
        {"Read", {Text("hello"), binary}, ZYR_OK, read, "2 bytes (eci=26)", "hello\0\x01"s},
        {"Empty", {Text("")}, ZYR_OK, OutcomeStatus::NoData, "[NO DATA]", ""},
        {"Crash", {}, ZYR_ERR_PLUGIN_CRASHED, OutcomeStatus::Crashed, "[NO DATA]", ""},
        {"Slow", {}, ZYR_ERR_PLUGIN_TIMEOUT, OutcomeStatus::TimedOut, "[NO DATA]", ""},
        {"Bad", {}, ZYR_ERR_BAD_ARGUMENT, OutcomeStatus::Failed, "[NO DATA]", ""},
        {"EciLatin1", {Text("Gr\xFC\xDF", ZYR_DATA_ECI_BYTES, ZYR_ECI_ISO8859_1)}, ZYR_OK, read, "Gr\xFC\xDF", "Gr\xFC\xDF"},
        {"EciUtf8IsBytes", {Text("h\xC3\xA9llo", ZYR_DATA_ECI_BYTES, ZYR_ECI_UTF8)}, ZYR_OK, read, "6 bytes (eci=26)",
         "h\xC3\xA9llo"},
        // Text stops at the first zero; the bytes keep everything, trailing zeros included.
        {"TextWithZero", {Text("ab\0cd"s)}, ZYR_OK, read, "ab", "ab\0cd"s},
        {"BinaryTrailingZeros", {Text("\x07\0\0"s, ZYR_DATA_BINARY)}, ZYR_OK, read, "3 bytes (eci=0)", "\x07\0\0"s},
        // Type 5 keeps one more byte, the terminator, when the data itself ends in a zero.
        {"StringEndingInZero", {Text("ab\0"s, ZYR_DATA_STRING)}, ZYR_OK, read, "3 bytes (eci=0)", "ab\0\0"s},
        {"StringWithoutZero", {Text("abc", ZYR_DATA_STRING)}, ZYR_OK, read, "3 bytes (eci=0)", "abc"},
    };
    std::vector<rd::PluginScript> scripts;
    for (const auto& c : cases) {
        scripts.push_back(Plugin(c.plugin, {c.symbols}));
        scripts.back().decodeResult = c.code;
    }
    Install(scripts);
    Open({"/pics/one.png"});
    session.stats.lastImageProcessMs = 7;
    for (size_t i = 0; i < std::size(cases); ++i) { // one plug-in per run, in name order
        for (size_t p = 0; p < std::size(cases); ++p)
            session.plugins.SetSelected(p, session.plugins.Entries()[p].name == cases[i].plugin);
        session.decode.DecodeImageJob(job);
        const std::vector<ResultRow> rows = TakeRows();
        ASSERT_EQ(rows.size(), 1u);
        const DecodeOutcome& outcome = rows[0].outcome;
        EXPECT_EQ(outcome.plugin + " " + outcome.file + " " + rows[0].results, std::string(cases[i].plugin) + " one.png " + cases[i].results);
        EXPECT_EQ(std::make_tuple(outcome.Status(), outcome.code, outcome.imageProcess),
                  std::make_tuple(cases[i].status, cases[i].code, std::chrono::nanoseconds(std::chrono::milliseconds(7))));
        EXPECT_EQ(rows[0].time, MillisecondsText(outcome.decode)) << "the row shows the value it carries";
        ASSERT_EQ(outcome.symbols.size(), cases[i].symbols.size()) << cases[i].plugin;
        EXPECT_EQ(Data(int(i)), cases[i].bytes) << cases[i].plugin;
        if (i == 0) { // the row shows the last symbol; the record keeps both, described by the last
            const DecodedSymbol& last = outcome.symbols.back();
            EXPECT_EQ(std::make_tuple(last.bytes, last.symbology, last.dataType, last.corners[2].X, last.corners[2].Y),
                      std::make_tuple("\0\x01"s, int32_t(ZYR_SYM_PDF417), int32_t(ZYR_DATA_BINARY), 30, 40));
            EXPECT_EQ(session.results.DataAt(0)->Symbology, int32_t(ZYR_SYM_PDF417));
        }
    }
}

TEST_F(DecodeRunTest, OneRecordAndRowPerSelectedPluginWithTheDecodeCallAsDocumented) {
    rd::PluginScript a = Plugin("A", {{Text("hello")}});
    a.handle = 11;
    rd::PluginScript b = Plugin("B");
    b.handle = 22;
    Install({a, b}, {false, false});
    Open({"/pics/first.png"});
    session.imageNumber = 41;
    session.decode.DecodeImageJob(job); // nothing selected: nothing at all
    EXPECT_EQ(Decodes() + view.resultPosts + session.stats.imageCount + session.stats.decodeCount, 0u);
    session.plugins.SetSelected(0, true);
    session.plugins.SetSelected(1, true);

    session.decode.DecodeImageJob(job);

    const auto decodes = rd::CallsNamed("ZyrReader_ImagePluginDecode");
    ASSERT_EQ(decodes.size(), 2u);
    EXPECT_EQ(decodes[0].Text(), "ZyrReader_ImagePluginDecode(true, 11, " + rd::Ptr(&image) + ", \"\", 41, \"\", callback, " +
                                     rd::Ptr(&session.decode) + ", 41, 0, 0)");
    EXPECT_EQ(decodes[1].args[1], "22");
    const std::vector<ResultRow> rows = TakeRows();
    EXPECT_EQ(view.resultPosts, 2);
    EXPECT_EQ(rows.at(0).results + "|" + rows.at(1).results, "hello|[NO DATA]");
    EXPECT_EQ(session.stats.imageCount, 1);
    EXPECT_EQ(session.stats.decodeCount, 2);
    EXPECT_EQ(session.stats.symbolsCount, 1);
    EXPECT_EQ(rd::LiveObjects(), 0) << "every symbol is released after it is copied";
    EXPECT_EQ(session.results.DataCount(), 2);
    EXPECT_EQ(Data(0) + "|" + Data(1), "hello|");
    EXPECT_TRUE(view.savedPngs.empty()) << "an opened file is never filed";
}

TEST_F(DecodeRunTest, DecodeMultiStepsThroughTheFollowingImagesUntilTheLastOrAStop) {
    Install({Plugin("A"), Plugin("B")});
    Open({"a.png", "bad.png", "c.png"});
    const int32_t numberBefore = session.imageNumber;
    session.decode.DecodeMultiJob(job);
    EXPECT_EQ(view.loads, (Strings{"a.png", "bad.png", "c.png"}));
    // The unreadable file shows no image: its run decodes nothing.
    EXPECT_EQ(Decodes(), 4u);
    EXPECT_EQ(std::make_tuple(session.imageNumber - numberBefore, session.stats.imageCount.load(), session.stats.decodeCount.load()),
              std::make_tuple(2, 2, 4));
    EXPECT_EQ(TakeRows().at(3).fileName, "c.png");

    session.decode.DecodeMultiJob(job); // on the last image now
    EXPECT_EQ(job.statusTexts, Strings(2, "Decoding..."));
    EXPECT_EQ(Decodes(), 6u);
    EXPECT_EQ(view.loads.size(), 3u) << "no file loaded beyond the last";

    Open({"a.png", "b.png", "c.png", "d.png"});
    job.stopWhen = [&] { return view.loads.size() >= 5; }; // "Stop" pressed while the second image ran
    session.decode.DecodeMultiJob(job);
    EXPECT_EQ(std::make_pair(view.loads.size(), Decodes()), std::make_pair(size_t(5), size_t(10)));
}

TEST_F(DecodeRunTest, ClearResultsRestartsTheAveragesAndKeepsPendingRows) {
    Install({Plugin("A", {{Text("1"), Text("2")}, {Text("3")}})});
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
    EXPECT_EQ(texts.imageCount + " " + texts.symbolsCount + " " + texts.averageImageProcessTime, "1 1 0.00ms");
    EXPECT_LT(session.stats.totalDecodeMs.load(), 1000u);
    session.decode.ClearResults(); // the row has not been shown yet
    const auto rows = TakeRows();
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0].imageProcess, "12ms") << "the last image-process time survives a clear";
    EXPECT_EQ(session.results.DataCount(), 1);
    EXPECT_EQ(Data(0), "3");
}

TEST_F(DecodeRunTest, CameraImagesAreFiledByOutcome) {
    Install({Plugin("A", {{Text("yes")}, {}}), Plugin("B", {{Text("yes too")}, {}})});
    session.imageNumber = 7; // no file opened: the image came from the camera
    session.ShowImage(PictureId::Main, std::shared_ptr<const ZyrImage>(&image, [](const ZyrImage*) {}));
    session.decode.Run(&image, 0);
    const std::string app = appFolder.path() + "/";
    EXPECT_EQ(view.savedPngs, (Strings{app + "A/7.png", app + "B/7.png"}));
    EXPECT_TRUE(std::filesystem::is_directory(app + "A"));
    EXPECT_EQ(view.captions.back(), "Glyphor - 7.png");
    session.decode.Run(&image, 0); // nothing decoded this time
    session.plugins.SetSelected(0, false);
    session.plugins.SetSelected(1, false);
    session.decode.Run(&image, 0);
    session.decode.Run(nullptr, 0); // no image at all is filed as failed too
    EXPECT_EQ(view.savedPngs, (Strings{app + "A/7.png", app + "B/7.png", app + "Failed/7.png", app + "Failed/7.png",
                                       app + "Failed/7.png"}));
}

TEST_F(DecodeRunTest, DecodeMultiWithTheInterfaceServedConcurrently) {
    rd::SymbolScript symbol = Text("s");
    Install({Plugin("A", {{symbol, symbol}}), Plugin("B", {{symbol, symbol}}), Plugin("C", {{symbol, symbol}})});
    const int kImages = 40;
    Strings files;
    for (int i = 0; i < kImages; ++i)
        files.push_back("image" + std::to_string(i) + ".png");
    Open(files);
    std::atomic<bool> done{false};
    std::thread worker([&] {
        session.decode.DecodeMultiJob(job);
        done = true;
    });
    // Each posted row is taken here; the statistics line and the caption's file are read meanwhile.
    std::vector<ResultRow> rows;
    for (int taken = 0;; std::this_thread::yield()) {
        const bool finished = done; // read first: every row posted before the end is counted below
        int posted = 0;
        {
            std::lock_guard<std::mutex> lock(view.mutex);
            posted = view.resultPosts;
        }
        for (; taken < posted; ++taken) {
            if (auto row = session.decode.TakeNextRow())
                rows.push_back(*row);
            session.stats.Format();
            (void)session.CurrentFileName();
        }
        if (finished)
            break;
    }
    worker.join();
    ASSERT_EQ(rows.size(), size_t(3 * kImages));
    for (size_t i = 0; i < rows.size(); ++i) // each row belongs to the image it was decoded from
        EXPECT_EQ(rows[i].fileName, files[i / 3]) << i;
    EXPECT_EQ(std::make_tuple(session.stats.imageCount.load(), session.stats.symbolsCount.load(), session.results.DataCount()),
              std::make_tuple(kImages, 2 * 3 * kImages, 3 * kImages));
    EXPECT_EQ(rd::LiveObjects(), 0);
}

} // namespace
