#include "CaptureFixtures.h"
#include "ZyrReaderLowLevelAPI.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <string>

namespace {

struct ServiceCalls {
    const char* name;
    int32_t (*start)(ZyrReaderSettings*);
    bool (*isUp)();
    int32_t (*stop)();
};

int32_t startCamera(ZyrReaderSettings* s) {
    if (s != nullptr)
        std::snprintf(s->DeviceFolder, sizeof s->DeviceFolder, "%s", capture::emptyDevice().c_str());
    return ZyrReader_CameraInitialise(s, 7, 0);
}
int32_t startImageProcessing(ZyrReaderSettings* s) {
    return ZyrReader_ImageProcessingInitialise(s, 0, s ? &s->ImageProcessing : nullptr);
}
int32_t startSignal(ZyrReaderSettings* s) {
    return ZyrReader_SignalInitialise(s);
}
int32_t startParsing(ZyrReaderSettings*) {
    return ZyrReader_ParseInitialise();
}

const ServiceCalls services[] = {
    {"camera", startCamera, ZyrReader_IsCameraInitialised, ZyrReader_CameraShutdown},
    {"image processing", startImageProcessing, ZyrReader_IsImageProcessingInitialised,
     ZyrReader_ImageProcessingShutdown},
    {"signal", startSignal, ZyrReader_IsSignalInitialised, ZyrReader_SignalShutdown},
    {"parsing", startParsing, ZyrReader_IsParsingInitialised, ZyrReader_ParseShutdown},
};

class ServiceState : public ::testing::TestWithParam<ServiceCalls> {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
    ZyrReaderSettings settings{};
};

// Start, stop and query follow each other, each service on its own; the cached data stops it.
TEST_P(ServiceState, StartStopAndQueryFollowEachOther) {
    const ServiceCalls& s = GetParam();
    EXPECT_FALSE(s.isUp());
    EXPECT_EQ(s.stop(), ZYR_ERR_NOT_INITIALISED) << "stopping a service that never started";
    ASSERT_EQ(s.start(&settings), ZYR_OK);
    EXPECT_TRUE(s.isUp());
    for (const ServiceCalls& other : services)
        EXPECT_EQ(other.isUp(), other.isUp == s.isUp) << "starting " << s.name << ": " << other.name;
    EXPECT_EQ(s.start(&settings), ZYR_OK) << "a second start is accepted";
    EXPECT_TRUE(s.isUp());
    EXPECT_EQ(s.stop(), ZYR_OK);
    EXPECT_FALSE(s.isUp());
    EXPECT_EQ(s.stop(), ZYR_ERR_NOT_INITIALISED);
    ASSERT_EQ(s.start(&settings), ZYR_OK);
    EXPECT_EQ(ZyrReader_DestroyCachedData(), ZYR_OK);
    EXPECT_FALSE(s.isUp());
}

INSTANTIATE_TEST_SUITE_P(Services, ServiceState, ::testing::ValuesIn(services),
                         [](const ::testing::TestParamInfo<ServiceCalls>& info) {
                             std::string name = info.param.name;
                             for (char& c : name)
                                 if (c == ' ')
                                     c = '_';
                             return name;
                         });

TEST(ServiceArguments, StartsThatNeedSettingsRefuseNull) {
    EXPECT_EQ(ZyrReader_CameraInitialise(nullptr, 0, 0), ZYR_ERR_BAD_ARGUMENT);
    EXPECT_EQ(ZyrReader_ImageProcessingInitialise(nullptr, 0, nullptr), ZYR_ERR_BAD_ARGUMENT);
    EXPECT_EQ(ZyrReader_SignalInitialise(nullptr), ZYR_ERR_BAD_ARGUMENT);
    EXPECT_FALSE(ZyrReader_IsCameraInitialised());
    EXPECT_FALSE(ZyrReader_IsImageProcessingInitialised());
    EXPECT_FALSE(ZyrReader_IsSignalInitialised());
}

TEST(ErrorText, EveryCodeHasItsOwnTextAndUnknownCodesAreNamedSo) {
    std::set<std::string> texts;
    for (int32_t code = ZYR_OK; code <= ZYR_ERR_ALREADY_INITIALISED; ++code) {
        const char* text = ZyrReader_ErrorText(code);
        ASSERT_NE(text, nullptr);
        EXPECT_STRNE(text, "Unknown error") << "code " << code;
        EXPECT_TRUE(texts.insert(text).second) << "code " << code << " shares its text";
    }
    for (int32_t code : {-1, ZYR_ERR_ALREADY_INITIALISED + 1, 1000000})
        EXPECT_STREQ(ZyrReader_ErrorText(code), "Unknown error");
}

} // namespace
