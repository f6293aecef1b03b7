// Objects the library hands out, tested against the core linked in directly so that the test can
// create them the way the library's areas do.
#include "ZyrReaderLowLevelAPI.h"
#include "core/LibraryImage.h"
#include "core/ObjectRegistry.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

using zyr::LibraryImage;
using zyr::ObjectRegistry;

namespace {

struct Kind {
    const char* name;
    std::function<const void*()> make; // hands out one object the way an area of the library does
};

const Kind kinds[] = {
    {"grey_image", [] { return static_cast<const void*>(LibraryImage::create(7, 3, ZYR_PIXEL_GREY8)); }},
    {"colour_image", [] { return static_cast<const void*>(LibraryImage::create(5, 5, ZYR_PIXEL_RGB24)); }},
    {"symbol_result",
     [] {
         return static_cast<const void*>(
             ObjectRegistry::instance().adopt(std::make_unique<ZyrSymbolResult>()));
     }},
    {"aamva_record",
     [] {
         return static_cast<const void*>(ObjectRegistry::instance().adopt(std::make_unique<AAMVARecord>()));
     }},
};

class ObjectLifetime : public ::testing::TestWithParam<Kind> {
protected:
    void TearDown() override { ZyrReader_DestroyCachedData(); }
};

// Freed once, then unknown; what the client leaves is freed with the cached data.
TEST_P(ObjectLifetime, FreedOnceThenUnknown) {
    const void* first = GetParam().make();
    const void* second = GetParam().make();
    ASSERT_TRUE(first != nullptr && second != nullptr && first != second);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(first), ZYR_OK);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(first), ZYR_ERR_UNKNOWN_HANDLE) << "double free";
    EXPECT_EQ(ZyrReader_DestroyCachedData(), ZYR_OK);
    EXPECT_EQ(ObjectRegistry::instance().size(), 0u);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(second), ZYR_ERR_UNKNOWN_HANDLE);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ObjectLifetime, ::testing::ValuesIn(kinds),
                         [](const ::testing::TestParamInfo<Kind>& info) { return info.param.name; });

TEST(ObjectRelease, ADeleterMayReleaseAnotherObject) {
    // A record that owns a nested object frees it from its own deleter, through the registry.
    static int inner;
    static int outer;
    int innerDeleted = 0;
    ASSERT_TRUE(ObjectRegistry::instance().add(&inner, [&] { ++innerDeleted; }));
    ASSERT_TRUE(ObjectRegistry::instance().add(&outer, [] { ObjectRegistry::instance().destroy(&inner); }));
    EXPECT_EQ(ZyrReader_DestroyCachedObject(&outer), ZYR_OK);
    EXPECT_EQ(innerDeleted, 1);
    EXPECT_EQ(ZyrReader_DestroyCachedObject(&inner), ZYR_ERR_UNKNOWN_HANDLE);
}

} // namespace
