#include "Models/Tasks/TaskGrouping.h"
#include "tests/Models/Base/Make.h"

#include <gtest/gtest.h>

namespace korvane::TaskGrouping {
namespace {

using testing::idsOf;
using testing::makeItem;
using Ids = std::vector<std::string>;

Ids entryIDs(const std::vector<TaskbarEntry> &entries)
{
    Ids ids;
    for (const TaskbarEntry &entry : entries)
        ids.push_back(entry.id);
    return ids;
}

SettingsValues withMode(GroupingMode mode)
{
    SettingsValues settings;
    settings.groupingMode = mode;
    return settings;
}

TEST(TaskGrouping, NoWindowsGiveNoEntries)
{
    EXPECT_TRUE(taskbarEntries({}, SettingsValues(), true).empty());
}

TEST(TaskGrouping, CustomGroupsStandWhateverTheMode)
{
    SettingsValues settings = withMode(GroupingMode::never);
    settings.customGroupNames["K"] = "Work";
    settings.customGroupMembers = {{"a", "K"}, {"c", "K"}};
    const std::vector<RunningAppItem> items{makeItem("a", 1), makeItem("b", 1), makeItem("c", 2)};
    const auto entries = taskbarEntries(items, settings, false);
    EXPECT_EQ(entryIDs(entries), (Ids{"custom:K", "b"}));
    EXPECT_EQ(entries[0].group->appName, "Work");
    EXPECT_EQ(entries[0].group->customIconGlyph, "📁");
}

TEST(TaskGrouping, AWhitelistOfNothingGroupsNothingAndABlacklistOfNothingGroupsAll)
{
    SettingsValues settings = withMode(GroupingMode::specific);
    const std::vector<RunningAppItem> items{makeItem("a", 1), makeItem("b", 1)};
    EXPECT_EQ(entryIDs(taskbarEntries(items, settings, false)), (Ids{"a", "b"}));
    settings.specificGroupingPolicy = FilterPolicy::blacklist;
    EXPECT_EQ(entryIDs(taskbarEntries(items, settings, false)), Ids{"auto:1"});
}

TEST(TaskGrouping, AMembershipInAGroupWithoutANameIsNone)
{
    SettingsValues settings;
    settings.customGroupMembers = {{"a", "gone"}};
    const std::vector<RunningAppItem> items{makeItem("a", 1)};
    EXPECT_EQ(entryIDs(taskbarEntries(items, settings, false)), Ids{"a"});
    EXPECT_EQ(entryIDs(taskbarEntries(items, settings, true)), Ids{"auto:1"});
}

TEST(TaskGrouping, ASpreadCustomGroupStandsOnceAtItsEarliestMember)
{
    SettingsValues settings;
    settings.customGroupNames["K"] = "Work";
    settings.customGroupMembers = {{"b", "K"}, {"d", "K"}};
    const std::vector<RunningAppItem> items{makeItem("a", 1), makeItem("b", 2), makeItem("c", 1), makeItem("d", 1)};
    const auto entries = taskbarEntries(items, settings, false);
    EXPECT_EQ(entryIDs(entries), (Ids{"a", "custom:K", "c"}));
    EXPECT_EQ(idsOf(entries[1].group->windows), (Ids{"b", "d"}));
}

TEST(TaskGrouping, AWindowUngroupedByHandStandsBesideItsGroup)
{
    SettingsValues settings = withMode(GroupingMode::always);
    settings.forcedUngroupedWindows = {"a"};
    const std::vector<RunningAppItem> items{makeItem("a", 1), makeItem("b", 1), makeItem("c", 1)};
    const auto entries = taskbarEntries(items, settings, true);
    EXPECT_EQ(entryIDs(entries), (Ids{"a", "auto:1"}));
    EXPECT_EQ(idsOf(entries[1].group->windows), (Ids{"b", "c"}));
    EXPECT_EQ(entries[1].group->icon, items[0].icon);
}

TEST(TaskGrouping, ANewProcessOfAnApplicationIsAnotherGroup)
{
    const auto before = taskbarEntries(std::vector{makeItem("a", 1)}, withMode(GroupingMode::always), true);
    const auto after = taskbarEntries(std::vector{makeItem("a", 2)}, withMode(GroupingMode::always), true);
    EXPECT_NE(before[0].id, after[0].id);
}

TEST(TaskGrouping, ByNeedGroupsOnlyWhatDoesNotFit)
{
    EXPECT_FALSE(groupAll(GroupingMode::asNeeded, 5, 5));
    EXPECT_TRUE(groupAll(GroupingMode::asNeeded, 5, 6));
    EXPECT_TRUE(groupAll(GroupingMode::always, 5, 0));
    EXPECT_FALSE(groupAll(GroupingMode::never, 0, 100));
    EXPECT_FALSE(groupAll(GroupingMode::specific, 0, 100));
}

}  // namespace
}  // namespace korvane::TaskGrouping
