// Post-processing of snapshots: finding the card on the platen and what each option bit does.
#include "CaptureFixtures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <tuple>

namespace {

using capture::Card;
using capture::Delivered;
using capture::GreyView;

// One card, 400 x 250, on a 640 x 480 platen, marker top-left.
const Card kCard{100, 120, 400, 250};

class PostProcess : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(ZyrReader_ImageProcessingInitialise(nullptr, 0, &processing), ZYR_OK);
        settings.VisibleParameters.DetectThreshold = 60;
        settings.DarkObjectValue = 40;
        settings.Locate.MinimumArea = 2000;
        settings.Process.DenoiseRadius = 1;
    }
    void TearDown() override { ZyrReader_DestroyCachedData(); }

    int32_t process(const ZyrImage* snapshot, uint32_t options, Delivered& out,
                    ZyrLocation* location = nullptr, uint32_t border = 0, float scale = 0,
                    bool colour = false) {
        return ZyrReader_ImagePostProcessImage(true, snapshot, ZYR_LIGHT_VISIBLE, 300, colour, options, 0,
                                               border, scale, &settings, nullptr, location,
                                               Delivered::callback, &out, 0, nullptr, nullptr);
    }
    int32_t processTwoSided(const ZyrImage* snapshot, uint32_t options, Delivered& out, ZyrLocation* side1,
                            ZyrLocation* side2) {
        return ZyrReader_ImagePostProcessImageTwoSided(true, snapshot, ZYR_LIGHT_VISIBLE, 300, false, options,
                                                       0, 0, 0, &settings, nullptr, side1, side2,
                                                       Delivered::callback, &out, 0, nullptr, nullptr, nullptr);
    }

    ZyrImageProcessingSettings processing{};
    ZyrReaderSettings settings{};
};

// An image as "WxH corner": its size and where its card's marker lies, which shows turns and mirrors.
std::string shape(const ZyrImage& image) {
    return std::to_string(image.Width) + "x" + std::to_string(image.Height) + " " +
           capture::cornerName(capture::markerCorner(image));
}

struct OptionCase {
    const char* name;
    uint32_t options;
    uint32_t border;
    float scale;
    const char* image; // as shape() gives it
};

class PostProcessOptions : public PostProcess, public ::testing::WithParamInterface<OptionCase> {};

TEST_P(PostProcessOptions, GivesTheImageTheOptionsAskFor) {
    const OptionCase& c = GetParam();
    const GreyView snapshot(capture::scene(640, 480, {kCard}));
    Delivered out;
    ASSERT_EQ(process(snapshot.image(), c.options, out, nullptr, c.border, c.scale), ZYR_OK);
    ASSERT_EQ(out.images.size(), 1u);
    const Delivered::Entry& entry = out.images[0];
    EXPECT_EQ(shape(*entry.image), c.image);
    EXPECT_EQ(std::make_tuple(entry.image->PixelFormat, entry.side, entry.lightMask),
              std::make_tuple(int32_t(ZYR_PIXEL_GREY8), 0, uint32_t(ZYR_LIGHT_VISIBLE)));
}

constexpr uint32_t kLocate = ZYR_OPT_LOCATE;
constexpr uint32_t kCrop = ZYR_OPT_LOCATE | ZYR_OPT_CROP;
constexpr uint32_t kTurn270 = ZYR_OPT_ROTATE_90 | ZYR_OPT_ROTATE_180;

INSTANTIATE_TEST_SUITE_P(
    Options, PostProcessOptions,
    ::testing::Values(
        OptionCase{"nothing_keeps_the_frame", 0, 0, 0, "640x480 top-left"},
        OptionCase{"locate_alone_does_not_cut", kLocate, 0, 0, "640x480 top-left"},
        OptionCase{"crop_without_locate_has_nothing_to_cut_to", ZYR_OPT_CROP, 0, 0, "640x480 top-left"},
        OptionCase{"crop_both", kCrop, 0, 0, "400x250 top-left"},
        OptionCase{"crop_width_only", kLocate | ZYR_OPT_CROP_WIDTH, 0, 0, "400x480 top-left"},
        OptionCase{"border_kept_around_the_crop", kCrop, 10, 0, "420x270 top-left"},
        OptionCase{"border_stops_at_the_frame", kCrop, 500, 0, "640x480 top-left"},
        OptionCase{"rotate_90_clockwise", kCrop | ZYR_OPT_ROTATE_90, 0, 0, "250x400 top-right"},
        OptionCase{"rotate_180", kCrop | ZYR_OPT_ROTATE_180, 0, 0, "400x250 bottom-right"},
        OptionCase{"both_rotations_make_270", kCrop | kTurn270, 0, 0, "250x400 bottom-left"},
        OptionCase{"mirror_horizontal", kCrop | ZYR_OPT_MIRROR_H, 0, 0, "400x250 top-right"},
        OptionCase{"mirror_vertical", kCrop | ZYR_OPT_MIRROR_V, 0, 0, "400x250 bottom-left"},
        OptionCase{"turned_then_mirrored", kCrop | ZYR_OPT_ROTATE_90 | ZYR_OPT_MIRROR_H, 0, 0,
                   "250x400 top-left"},
        OptionCase{"scale_half", kCrop, 0, 0.5f, "200x125 top-left"},
        OptionCase{"scale_nan_is_none", kCrop, 0, std::nanf(""), "400x250 top-left"},
        OptionCase{"greyscale_sharpen_extra_keep_the_size",
                   kCrop | ZYR_OPT_GREYSCALE | ZYR_OPT_SHARPEN | ZYR_OPT_EXTRA, 0, 0, "400x250 top-left"}),
    [](const ::testing::TestParamInfo<OptionCase>& info) { return info.param.name; });

struct SceneCase {
    const char* name;
    std::vector<Card> cards;
    uint8_t platen;
    bool darkObject;   // settings' dark-object detection
    int width, height; // of the crop; 0 x 0: no document found
    int threshold = 60; // 0: chosen from the picture
};

class PostProcessScenes : public PostProcess, public ::testing::WithParamInterface<SceneCase> {};

TEST_P(PostProcessScenes, FindsTheLargestDocumentOrNothing) {
    const SceneCase& c = GetParam();
    settings.DarkObjectDetect = c.darkObject;
    settings.VisibleParameters.DetectThreshold = c.threshold;
    const GreyView snapshot(capture::scene(640, 480, c.cards, c.platen));
    Delivered out;
    ASSERT_EQ(process(snapshot.image(), kCrop, out), c.width > 0 ? ZYR_OK : ZYR_ERR_NO_DOCUMENT);
    if (c.width == 0) {
        EXPECT_TRUE(out.images.empty()) << "no image is handed out on failure";
        return;
    }
    ASSERT_EQ(out.images.size(), 1u);
    EXPECT_EQ(out.images[0].image->Width, c.width);
    EXPECT_EQ(out.images[0].image->Height, c.height);
}

const uint8_t kPlaten = capture::kPlaten;
const SceneCase sceneCases[] = {
    {"empty_platen", {}, kPlaten, false, 0, 0},
    {"speck_below_the_minimum_area", {{300, 200, 30, 30}}, kPlaten, false, 0, 0},
    {"largest_of_two", {{20, 20, 150, 100}, {250, 150, 300, 200}}, kPlaten, false, 300, 200},
    {"card_touching_the_edge", {{0, 0, 300, 200}}, kPlaten, false, 300, 200},
    {"dim_card_only_seen_with_dark_object_value", {{100, 100, 300, 200, 0, 50}}, 20, true, 300, 200},
    {"dim_card_missed_with_the_normal_threshold", {{100, 100, 300, 200, 0, 50}}, 20, false, 0, 0},
    {"dark_document_on_a_light_platen", {{100, 100, 300, 200, 0, 15}}, 200, false, 300, 200},
    {"threshold_chosen_from_the_picture", {kCard}, kPlaten, false, 400, 250, 0},
};

INSTANTIATE_TEST_SUITE_P(Scenes, PostProcessScenes, ::testing::ValuesIn(sceneCases),
                         [](const ::testing::TestParamInfo<SceneCase>& info) { return info.param.name; });

TEST_F(PostProcess, BadCallsAreRefused) {
    const GreyView snapshot(capture::scene(64, 48, {}));
    ZyrImage noPixels = *snapshot.image(), badFormat = *snapshot.image(), shortStride = *snapshot.image();
    noPixels.Pixels = nullptr, badFormat.PixelFormat = 2, shortStride.Stride = 10;
    Delivered out;
    const ZyrImage* const images[] = {nullptr, &noPixels, &badFormat, &shortStride};
    for (const ZyrImage* image : images) {
        EXPECT_EQ(process(image, 0, out), ZYR_ERR_BAD_ARGUMENT);
        EXPECT_EQ(processTwoSided(image, 0, out, nullptr, nullptr), ZYR_ERR_BAD_ARGUMENT);
    }
    EXPECT_EQ(ZyrReader_ImagePostProcessImage(true, snapshot.image(), 1, 0, false, 0, 0, 0, 0, &settings, nullptr,
                                              nullptr, nullptr, nullptr, 0, nullptr, nullptr),
              ZYR_ERR_BAD_ARGUMENT)
        << "no callback to hand the image to";
    ASSERT_EQ(ZyrReader_ImageProcessingShutdown(), ZYR_OK);
    EXPECT_EQ(process(snapshot.image(), kCrop, out), ZYR_ERR_NOT_INITIALISED);
    EXPECT_EQ(processTwoSided(snapshot.image(), kCrop, out, nullptr, nullptr), ZYR_ERR_NOT_INITIALISED);
    EXPECT_TRUE(out.images.empty());
}

} // namespace
