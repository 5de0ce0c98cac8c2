#include "tests/Ports/LaunchingContract.h"

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LaunchingContract);

TEST_P(LaunchingContract, AnInstalledApplicationIsFoundByItsIdentifierAndBack)
{
    const auto path = launching().applicationPath(harness->identifier());
    ASSERT_TRUE(path);
    EXPECT_FALSE(path->empty());
    EXPECT_EQ(launching().bundleIdentifier(*path), harness->identifier());
}

TEST_P(LaunchingContract, WhatIsNotInstalledIsAbsent)
{
    EXPECT_EQ(launching().applicationPath("org.example.NotInstalled"), std::nullopt);
    EXPECT_EQ(launching().applicationPath(""), std::nullopt);
    EXPECT_EQ(launching().bundleIdentifier("/nowhere/at/all"), std::nullopt);
    EXPECT_EQ(launching().bundleIdentifier(""), std::nullopt);
}

TEST_P(LaunchingContract, AnApplicationStartsOnceForEachCall)
{
    const auto path = launching().applicationPath(harness->identifier());
    ASSERT_TRUE(path);
    launching().openApplication(*path, true);
    EXPECT_TRUE(harness->waitFor([this] { return harness->starts() == 1; }));
    launching().openApplication(*path, false);
    EXPECT_TRUE(harness->waitFor([this] { return harness->starts() == 2; }));
}

TEST_P(LaunchingContract, APathWithoutAnApplicationStartsNothing)
{
    launching().openApplication("/nowhere/at/all", true);
    launching().openApplication("", true);
    const auto path = launching().applicationPath(harness->identifier());
    ASSERT_TRUE(path);
    launching().openApplication(*path, true);
    EXPECT_TRUE(harness->waitFor([this] { return harness->starts() == 1; }));
}

TEST_P(LaunchingContract, AnAddressOpensWithTheApplicationForItsScheme)
{
    EXPECT_TRUE(launching().openUrl("https://example.org/a%20b?c=d&e"));
    EXPECT_TRUE(harness->waitFor([this] { return harness->openedAddresses() == 1; }));
}

TEST_P(LaunchingContract, AnAddressThatNothingOpensIsRefused)
{
    EXPECT_FALSE(launching().openUrl("korvane-unheard-of:thing"));
    EXPECT_FALSE(launching().openUrl("no scheme at all"));
    EXPECT_FALSE(launching().openUrl(""));
}

}  // namespace korvane::platform
