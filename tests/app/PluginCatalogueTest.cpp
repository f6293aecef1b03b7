// Finding, loading and listing plug-ins, their image settings, and the saved selection.
#include "PluginCatalogue.h"
#include "FakeView.h"

#include <filesystem>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <unistd.h>

namespace rd = readerdouble;

namespace {

ZyrImageSettings Record(const char* image, const char* light, uint8_t marker) {
    ZyrImageSettings r{};
    std::snprintf(r.ImageName, sizeof r.ImageName, "%s", image);
    std::snprintf(r.LightName, sizeof r.LightName, "%s", light);
    r.Camera.Gain = marker; // the plug-in's own block
    r.Camera.CaptureResolution = 1;
    r.Camera.Binning = 1;
    r.LightMask = marker;
    return r;
}

ZyrCameraParameters Block(uint32_t gain) {
    ZyrCameraParameters p{};
    p.Gain = gain;
    p.CaptureResolution = gain + 1; // overridden by the common value
    p.Binning = 9;
    return p;
}

class CatalogueTest : public SessionFixture {
protected:
    void SetUp() override {
        reader.VisibleParameters = Block(100);
        reader.InfraredParameters = Block(200);
        reader.UltravioletParameters = Block(300);
        reader.CommonCaptureResolution = 600;
        reader.CommonBinning = 2;
        reader.CameraDevice = 77;
        SetFolder(reader.PluginFolder, plugins.path());
    }
    void Install(const rd::PluginScript& script) {
        plugins.write(script.fileName, "");
        rd::AddPlugin(script);
    }
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const PluginEntry& e : catalogue.Entries())
            names.push_back(e.name);
        return names;
    }

    ZyrReaderSettings reader{};
    PluginCatalogue catalogue;
    ImageSettingsTable table;
};

// Name, suffix of the plug-in folder, settings folder, settings path handed over ("<p>": the plug-in
// folder without separator).
class FolderTest : public CatalogueTest, public ::testing::WithParamInterface<std::array<const char*, 4>> {};

TEST_P(FolderTest, PathsHandedToTheLibrary) {
    const auto [name, suffix, settings, expected] = GetParam();
    const auto expand = [&](std::string text) { return text.rfind("<p>", 0) == 0 ? plugins.path() + text.substr(3) : text; };
    SetFolder(reader.PluginFolder, plugins.path() + suffix);
    SetFolder(reader.PluginSettingsFolder, expand(settings));
    Install({"KVDECODE_Pdf417.so"});
    catalogue.Load(reader, table);
    // The handle is preset to 0; the camera device value comes last.
    EXPECT_EQ(rd::CallsNamed("ZyrReader_ImagePluginLoad").at(0).Text(),
              "ZyrReader_ImagePluginLoad(\"" + plugins.path() + "/KVDECODE_Pdf417.so\", \"" + expand(expected) + "\", 0, 77)");
}

INSTANTIATE_TEST_SUITE_P(Folders, FolderTest,
                         ::testing::Values(std::array<const char*, 4>{"NoSeparators", "", "<p>", "<p>/#KVDECODE_Pdf417.ini"},
                                           std::array<const char*, 4>{"TrailingSeparator", "/", "/cfg/", "/cfg/#KVDECODE_Pdf417.ini"},
                                           std::array<const char*, 4>{"SettingsWithoutSeparator", "", "/cfg", "/cfg/#KVDECODE_Pdf417.ini"},
                                           // An empty settings folder keeps the "#": relative to the working folder.
                                           std::array<const char*, 4>{"EmptySettingsFolder", "", "", "#KVDECODE_Pdf417.ini"}),
                         [](const auto& info) { return std::string(info.param[0]); });

// Only plug-in files, in name order, named by what stands between prefix and suffix; a missing
// plug-in folder lists nothing; an empty one is the working folder.
TEST_F(CatalogueTest, PluginFilesOfTheFolderInNameOrder) {
    for (const char* other : {"libKVDECODE_X.so", "KVDECODE_Y.so.1", "KVDECODE_Z.dll", "kvdecode_w.so"}) {
        plugins.write(other, "");
        rd::AddPlugin({other});
    }
    Install({"KVDECODE_ZXing.so"});
    Install({"KVDECODE_.so"}); // an empty name
    Install({"KVDECODE_DataMatrix.so"});
    std::filesystem::create_directory(plugins.file("KVDECODE_Dir.so"));
    SetFolder(reader.PluginFolder, plugins.path() + "/does-not-exist");
    catalogue.Load(reader, table);
    EXPECT_TRUE(catalogue.Entries().empty());
    EXPECT_TRUE(rd::Calls().empty());
    SetFolder(reader.PluginFolder, "");
    char previous[4096];
    ASSERT_TRUE(getcwd(previous, sizeof previous));
    ASSERT_EQ(chdir(plugins.path().c_str()), 0);
    catalogue.Load(reader, table);
    ASSERT_EQ(chdir(previous), 0);
    EXPECT_EQ(Names(), (std::vector<std::string>{"", "DataMatrix", "ZXing"}));
    const std::vector<rd::Call> loads = rd::CallsNamed("ZyrReader_ImagePluginLoad");
    ASSERT_EQ(loads.size(), 3u);
    EXPECT_EQ(loads[0].args[0], "\"KVDECODE_.so\"");
}

TEST_F(CatalogueTest, PluginThatFailsToLoadLeavesNoTrace) {
    rd::PluginScript bad{"KVDECODE_Bad.so"};
    bad.loadResult = ZYR_ERR_PLUGIN_VERSION;
    Install(bad);
    rd::PluginScript good{"KVDECODE_Good.so"};
    good.handle = 5;
    Install(good);
    catalogue.Load(reader, table);
    EXPECT_EQ(Names(), std::vector<std::string>{"Good"});
    EXPECT_EQ(catalogue.Entries()[0].handle, 5u);
    // Two loads, then the good one's required images and settings only.
    const std::vector<rd::Call> calls = rd::Calls();
    ASSERT_EQ(calls.size(), 4u);
    EXPECT_EQ(calls[1].name + calls[3].name, "ZyrReader_ImagePluginLoadZyrReader_ImagePluginGetImageSettings");
    EXPECT_EQ(calls[2].Text(), "ZyrReader_ImagePluginGetRequiredImages(5, \"\", " + calls[2].args[2] + ", 1024)");
}

TEST_F(CatalogueTest, CameraBlockComesFromTheReaderForItsLight) {
    const std::pair<const char*, uint32_t> cases[] = {{"IMAGE_VISIBLE", 100}, {"IMAGE_IR", 200}, {"IMAGE_UV", 300},
                                                      {"IMAGE_ir", 42},       {"IMAGE_VISIBLEX", 42}, {"", 42}};
    for (const auto& [light, gain] : cases) {
        const ZyrImageSettings* r = table.FindOrAdd(Record(light, light, 42), reader);
        EXPECT_EQ(r->Camera.Gain, gain) << light;
        // The common values override every block, the plug-in's own included; the rest is the plug-in's.
        EXPECT_EQ(std::make_tuple(r->Camera.CaptureResolution, r->Camera.Binning, r->LightMask),
                  std::make_tuple(600u, uint8_t(2), 42u)) << light;
    }
}

TEST_F(CatalogueTest, FirstImageWithSettingsWinsAndOthersAreSkipped) {
    rd::PluginScript a{"KVDECODE_A.so"};
    a.handle = 3;
    a.requiredImages = "IR_DOC,,UV_DOC,";
    a.imageSettings = {Record("NOT_REQUIRED", "IMAGE_VISIBLE", 1), Record("UV_DOC", "IMAGE_UV", 2),
                       Record("IR_DOC", "IMAGE_IR", 3), Record("uv_doc", "IMAGE_UV", 4)};
    rd::PluginScript b{"KVDECODE_B.so"};
    b.handle = 4;
    b.requiredImages = "NO_SETTINGS";
    b.imageSettings = {Record("OTHER", "IMAGE_VISIBLE", 5)};
    rd::PluginScript c{"KVDECODE_C.so"}; // needs A's image: shares A's record
    c.handle = 5;
    c.requiredImages = "UV_DOC";
    c.imageSettings = {Record("UV_DOC", "IMAGE_UV", 6)};
    Install(a);
    Install(b);
    Install(c);
    catalogue.Load(reader, table);
    // Records are taken in the plug-in's enumeration order; names compare exactly.
    ASSERT_EQ(table.Size(), 2u);
    EXPECT_EQ(std::string(table.At(0)->ImageName) + "," + table.At(1)->ImageName, "UV_DOC,IR_DOC");
    EXPECT_EQ(table.ForPlugin(3), table.At(0)) << "the map keeps its first entry";
    EXPECT_EQ(table.ForPlugin(4), nullptr) << "a required image without settings maps nothing";
    EXPECT_EQ(table.ForPlugin(5), table.At(0));
    EXPECT_EQ(table.At(0)->LightMask, 2u) << "the first plug-in's record is the one kept";
    EXPECT_EQ(rd::CallsNamed("ZyrReader_ImagePluginGetImageSettings").size(), 5u + 2u + 2u);
}

// Name, plug-ins found, saved selection, selection saved again.
class SelectionTest : public CatalogueTest,
                      public ::testing::WithParamInterface<std::tuple<const char*, std::vector<std::string>, const char*, const char*>> {};

TEST_P(SelectionTest, RestoreThenSave) {
    const auto& [name, plugins, saved, savedAgain] = GetParam();
    for (const std::string& p : plugins)
        Install({"KVDECODE_" + p + ".so"});
    catalogue.Load(reader, table);
    catalogue.RestoreSelection(StringBuffer(saved));
    EXPECT_STREQ(catalogue.SelectedNames().str(), savedAgain);
}

using S = std::tuple<const char*, std::vector<std::string>, const char*, const char*>;

INSTANTIATE_TEST_SUITE_P(Selections, SelectionTest,
                         ::testing::Values(S{"Empty", {"A", "B"}, "", ""}, S{"Both", {"A", "B"}, "B,A", "A,B"},
                                           S{"MissingNameIsIgnored", {"B", "C"}, "A,B", "B"},
                                           S{"RunsOfCommas", {"A", "B", "C"}, ",,C,,A,", "A,C"},
                                           S{"CaseSensitive", {"Pdf417"}, "pdf417", ""}, S{"NoSpacesTrimmed", {"A"}, " A", ""}),
                         [](const auto& info) { return std::string(std::get<0>(info.param)); });

} // namespace
