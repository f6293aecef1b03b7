#include <gtest/gtest.h>

#include <cstdint>
#include <cwchar>

// The Windows-derived records rely on these widths; catch a toolchain that differs.
TEST(BuildEnvironment, FixedWidthAssumptions) {
    EXPECT_EQ(sizeof(std::int32_t), 4u);
    EXPECT_EQ(sizeof(void*), 8u);
    EXPECT_EQ(sizeof(long), 8u);
    EXPECT_EQ(sizeof(wchar_t), 4u);
}
