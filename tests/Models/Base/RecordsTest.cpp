#include "Models/Base/Records.h"
#include "Models/Base/Identifiers.h"
#include "tests/Models/Base/Make.h"

#include <gtest/gtest.h>
#include <set>

namespace korvane {
namespace {

using testing::makeItem;

TEST(RunningAppItem, DifferencesThatNeedNoRedrawAreNoDifference)
{
    const RunningAppItem item = makeItem("a");
    RunningAppItem moved = item;
    moved.windowIndex = 7;
    moved.icon = std::make_shared<platform::Image>();
    moved.processIdentifier = 5;
    moved.appName = "Other";
    moved.bundleIdentifier.reset();
    EXPECT_EQ(item, moved);
}

TEST(RunningAppItem, EachFieldThatIsDrawnIsADifference)
{
    const RunningAppItem item = makeItem("a");
    RunningAppItem other = item;
    other.isActive = true;
    EXPECT_FALSE(item == other);
    other = item;
    other.name = "b";
    EXPECT_FALSE(item == other);
    other = item;
    other.id = "b";
    EXPECT_FALSE(item == other);
    other = item;
    other.hasNotificationBadge = true;
    EXPECT_FALSE(item == other);
}

TEST(AttentionAppItem, ComparesEveryField)
{
    const AttentionAppItem item{"id", 1, "Mail", std::make_shared<platform::Image>(), "org.mail"};
    AttentionAppItem other = item;
    EXPECT_EQ(item, other);
    other.icon = std::make_shared<platform::Image>();
    EXPECT_FALSE(item == other);
    other = item;
    other.processIdentifier = 2;
    EXPECT_FALSE(item == other);
}

TEST(RunningAppGroup, AnAutomaticGroupOfOneShowsItsWindowsTitle)
{
    RunningAppGroup group;
    group.appName = "Mail";
    group.windows = {makeItem("a")};
    EXPECT_EQ(group.displayName(), "Window a");
    group.windows.push_back(makeItem("b"));
    EXPECT_EQ(group.displayName(), "Mail Tabs");
}

TEST(RunningAppGroup, ACustomGroupAlwaysShowsItsName)
{
    RunningAppGroup group;
    group.appName = "Work";
    group.isCustom = true;
    EXPECT_EQ(group.displayName(), "Work");
    group.windows = {makeItem("a")};
    EXPECT_EQ(group.displayName(), "Work");
    group.windows.push_back(makeItem("b"));
    EXPECT_EQ(group.displayName(), "Work");
}

TEST(RunningAppGroup, WithoutWindowsItHasNoProcessAndIsInactive)
{
    RunningAppGroup group;
    group.appName = "Mail";
    EXPECT_EQ(group.processIdentifier(), 0);
    EXPECT_FALSE(group.isActive());
    EXPECT_EQ(group.displayName(), "Mail");
}

TEST(RunningAppGroup, IsActiveWithAnyOfItsWindows)
{
    RunningAppGroup group;
    group.windows = {makeItem("a", 7), makeItem("b", 8)};
    group.windows[1].isActive = true;
    EXPECT_TRUE(group.isActive());
    EXPECT_EQ(group.processIdentifier(), 7);
}

TEST(TaskbarEntry, WithNeitherItemNorGroupHasNoTitle)
{
    EXPECT_EQ(TaskbarEntry().title(), "");
    EXPECT_FALSE(TaskbarEntry().isGrouped());
}

TEST(Identifiers, AWindowWithAnEmptyIdentifierIsNamedByItsHashAlone)
{
    EXPECT_EQ(Identifiers::stableWindow("", 1357924), "hash:1357924");
    EXPECT_EQ(Identifiers::stableWindow(std::nullopt, 1357924), "hash:1357924");
    EXPECT_EQ(Identifiers::stableWindow("_NS:14", 1357924), "identifier:_NS:14:hash:1357924");
    EXPECT_EQ(Identifiers::accessibilityWindowPrefix(812) + Identifiers::stableWindow("_NS:14", 1357924),
              "ax:812:identifier:_NS:14:hash:1357924");
}

TEST(Identifiers, MemoryIsKeptByBundleElseByProcess)
{
    EXPECT_EQ(Identifiers::applicationMemoryKey("org.mail", 3), "org.mail");
    EXPECT_EQ(Identifiers::applicationMemoryKey(std::nullopt, -3), "pid:-3");
}

TEST(Identifiers, FreshIdentifiersHaveTheStandardFormAndDiffer)
{
    std::set<std::string> seen;
    for (int i = 0; i < 100; ++i) {
        const std::string uuid = Identifiers::makeUuid();
        ASSERT_EQ(uuid.size(), 36U);
        for (const int dash : {8, 13, 18, 23})
            EXPECT_EQ(uuid[static_cast<std::size_t>(dash)], '-');
        EXPECT_EQ(uuid[14], '4');
        seen.insert(uuid);
    }
    EXPECT_EQ(seen.size(), 100U);
}

}  // namespace
}  // namespace korvane
