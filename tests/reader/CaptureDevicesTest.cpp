// The generated sample readers through the whole capture path of the library: detection,
// snapshot, post-processing with the options a plug-in asks for, and decoding with the real
// plug-ins, which must give back every symbol of every document side.
#include "DeviceCatalogue.h"
#include "TestSupport.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <set>

namespace {

namespace fs = std::filesystem;
using glyphor::samples::DeviceDocument;
using glyphor::samples::DeviceSample;

struct DocumentCase {
    const DeviceSample* device;
    const DeviceDocument* document;
};

void PrintTo(const DocumentCase& c, std::ostream* out) {
    *out << c.device->name << "/" << c.document->name;
}

std::vector<DocumentCase> allDocuments() {
    std::vector<DocumentCase> cases;
    for (const DeviceSample& device : glyphor::samples::deviceCatalogue())
        for (const DeviceDocument& document : device.documents)
            cases.push_back({&device, &document});
    return cases;
}

struct Images {
    ZyrImage* single = nullptr;
    ZyrImage* sides[2] = {nullptr, nullptr};
    ~Images() {
        for (ZyrImage* image : {single, sides[0], sides[1]})
            if (image != nullptr)
                ZyrReader_DestroyCachedObject(image);
    }
};

void keepImage(void* user, int32_t, int32_t, uint32_t, ZyrImage* image) {
    *static_cast<ZyrImage**>(user) = image;
}
void keepSide(void* user, int32_t, int32_t side, uint32_t, ZyrImage* image) {
    static_cast<ZyrImage**>(user)[side - 1] = image;
}
void collect(void* context, int32_t, int32_t, int32_t, const ZyrSymbolResult* symbol) {
    static_cast<std::multiset<std::string>*>(context)->insert(
        std::string(reinterpret_cast<const char*>(symbol->Data), size_t(symbol->DataLength)));
    ZyrReader_DestroyCachedObject(symbol);
}

class CaptureDevices : public ::testing::TestWithParam<DocumentCase> {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
};

TEST_P(CaptureDevices, EverySymbolOfTheDocumentIsDecodedAfterCapture) {
    const DocumentCase& c = GetParam();
    // A reader holding just this document, copied from the generated device.
    const std::string generated = std::string(GLYPHOR_DEVICES_DIR) + "/" + c.device->name + "/";
    TempFolder folder;
    fs::copy_file(generated + "device.ini", folder.file("device.ini"));
    fs::create_directory(folder.file("documents"));
    for (const char* suffix : {".png", ".back.png"})
        if (fs::exists(generated + "documents/" + c.document->name + suffix))
            fs::copy_file(generated + "documents/" + c.document->name + suffix,
                          folder.file("documents/" + c.document->name + suffix));

    ZyrReaderSettings settings{};
    {
        support::ScopedEnvironment device("ZYRREADER_DEVICE", folder.path().c_str());
        ASSERT_EQ(ZyrReader_LL_LoadSettings(&settings), ZYR_OK);
    }
    ASSERT_EQ(ZyrReader_CameraInitialise(&settings, settings.CameraDevice, 0), ZYR_OK);
    ASSERT_EQ(ZyrReader_ImageProcessingInitialise(&settings, 0, &settings.ImageProcessing), ZYR_OK);
    uint64_t plugin = 0;
    const std::string plugins = GLYPHOR_PLUGIN_DIR;
    ASSERT_EQ(ZyrReader_ImagePluginLoad((plugins + "/KVDECODE_ZXing.so").c_str(),
                                        (plugins + "/#KVDECODE_ZXing.ini").c_str(), &plugin, 0),
              ZYR_OK);

    alignas(4) ZyrLocation side1{}, side2{};
    uint8_t flag = 0;
    ASSERT_EQ(ZyrReader_CameraDetectDocumentTwoSidedEx(
                  true, 60000, 0, &side1, &side2, &settings, &settings.Detect, &settings.Locate, 0, 0, 0, 0,
                  0, &settings.Process, &settings.Side, &settings.Feed, 0, nullptr, true, true, &flag),
              ZYR_OK);
    EXPECT_GT(side1.Width, 900) << "the card lies on the platen and is found there";

    Images images;
    ZyrImage* snapshot = nullptr;
    ASSERT_EQ(ZyrReader_CameraTakeSnapshot(true, ZYR_LIGHT_VISIBLE, 15, &settings.VisibleParameters,
                                           &settings, keepImage, &snapshot, 0, nullptr),
              ZYR_OK);
    images.single = snapshot;
    const uint32_t options =
        ZYR_OPT_LOCATE | ZYR_OPT_DESKEW | ZYR_OPT_NORMALISE | ZYR_OPT_CROP | ZYR_OPT_GREYSCALE;
    std::vector<const ZyrImage*> decoded;
    ZyrImage* processed = nullptr;
    if (c.device->twoSided) {
        side1 = side2 = ZyrLocation{};
        ASSERT_EQ(ZyrReader_ImagePostProcessImageTwoSided(
                      true, snapshot, 1, 300, false, options | ZYR_OPT_TWO_SIDED, 0, 0, 1.0f, &settings,
                      &settings.Locate, &side1, &side2, keepSide, images.sides, 0, nullptr, &settings.Process,
                      &settings.Side),
                  ZYR_OK);
        decoded = {images.sides[0], images.sides[1]};
    } else {
        ASSERT_EQ(ZyrReader_ImagePostProcessImage(true, snapshot, 1, 300, false, options, 0, 0, 1.0f,
                                                  &settings, &settings.Locate, &side1, keepImage, &processed,
                                                  0, nullptr, &settings.Process),
                  ZYR_OK);
        images.sides[0] = processed;
        decoded = {processed};
        // The crop is the card (1012 x 638), give or take the platen's edge.
        EXPECT_NEAR(processed->Width, 1012, 16);
        EXPECT_NEAR(processed->Height, 638, 16);
    }

    std::multiset<std::string> found, expected;
    for (const ZyrImage* image : decoded) {
        ASSERT_NE(image, nullptr);
        ZyrReader_ImagePluginDecode(true, plugin, image, "", 1, "", collect, &found, 1, 0, 0);
    }
    for (const auto& symbol : c.document->front.symbols)
        expected.insert(symbol.payload);
    if (c.document->back && c.device->twoSided)
        for (const auto& symbol : c.document->back->symbols)
            expected.insert(symbol.payload);
    EXPECT_EQ(found, expected);
    EXPECT_EQ(ZyrReader_DocumentProcessingComplete(), ZYR_OK);
}

INSTANTIATE_TEST_SUITE_P(Samples, CaptureDevices, ::testing::ValuesIn(allDocuments()),
                         [](const ::testing::TestParamInfo<DocumentCase>& info) {
                             std::string name = info.param.device->name + "_" + info.param.document->name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

} // namespace
