#include "tests/Ports/LoginItemContract.h"

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LoginItemContract);

TEST_P(LoginItemContract, IsNotEnabledBeforeItWasAsked)
{
    EXPECT_FALSE(harness->item().enabled());
}

TEST_P(LoginItemContract, IsEnabledAfterASuccessAlsoWhenAskedTwice)
{
    EXPECT_EQ(harness->item().enable(), std::nullopt);
    EXPECT_TRUE(harness->item().enabled());
    EXPECT_EQ(harness->item().enable(), std::nullopt);
    EXPECT_TRUE(harness->item().enabled());
}

TEST_P(LoginItemContract, ARefusalHasAReasonAndEnablesNothing)
{
    harness->refuse();
    const auto reason = harness->item().enable();
    ASSERT_TRUE(reason);
    EXPECT_FALSE(reason->empty());
    EXPECT_FALSE(harness->item().enabled());
}

}  // namespace korvane::platform
