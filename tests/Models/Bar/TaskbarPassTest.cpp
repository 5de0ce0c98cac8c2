#include "Models/Bar/TaskbarPass.h"
#include "tests/Models/Base/Make.h"

#include <gtest/gtest.h>

namespace korvane {
namespace {

using testing::makeItem;

double measure(std::string_view text)
{
    return static_cast<double>(text.size()) * 8;
}

std::vector<RunningAppItem> windows(int count)
{
    std::vector<RunningAppItem> items;
    for (int i = 0; i < count; ++i)
        items.push_back(makeItem("w" + std::to_string(i), 1 + i / 3, i % 3));
    return items;
}

TEST(TaskbarPass, AWidthSetByHandDoesNotCauseGrouping)
{
    const auto items = windows(5);
    const SettingsValues settings;
    TaskbarPassInput input{items, std::nullopt, settings, 0, 1000, false, {{"w0", 220}}, false, {}};
    const auto layout = TaskbarPass::run(input, measure);
    EXPECT_FALSE(layout.groupAll);
    EXPECT_EQ(layout.widths[0], 220);
}

TEST(TaskbarPass, GroupsAppearWhenThePlainWindowsNoLongerFit)
{
    const SettingsValues settings;
    for (const int count : {3, 6, 9, 12, 20}) {
        const auto items = windows(count);
        TaskbarPassInput input{items, std::nullopt, settings, 0, 1000, false, {}, false, {}};
        const auto layout = TaskbarPass::run(input, measure);
        EXPECT_EQ(layout.groupAll, layout.capacity < count) << count;
        EXPECT_EQ(layout.entries.size() < items.size(), layout.groupAll) << count;
    }
}

TEST(TaskbarPass, TheSettingsTaskStandsLast)
{
    const auto items = windows(2);
    const SettingsValues settings;
    TaskbarPassInput input{items, makeItem("korvane-settings"), settings, 0, 1000, false, {}, false, {}};
    EXPECT_EQ(TaskbarPass::run(input, measure).entries.back().id, "korvane-settings");
}

TEST(TaskbarPass, WithTheLockOnWindowsThatAreNotLockedOverflow)
{
    const auto items = windows(3);
    SettingsValues settings;
    settings.groupingMode = GroupingMode::never;
    TaskbarPassInput input{items, std::nullopt, settings, 0, 1000, false, {}, true, {"w1"}};
    auto layout = TaskbarPass::run(input, measure);
    EXPECT_EQ(layout.mainCount, 1U);
    EXPECT_EQ(layout.entries[0].id, "w1");
    ASSERT_EQ(layout.overflowRows.size(), 1U);
    EXPECT_EQ(layout.overflowRows[0].count, 2);

    input.lockedMainWindowIDs = {"gone"};
    layout = TaskbarPass::run(input, measure);
    EXPECT_EQ(layout.mainCount, 0U);
    EXPECT_EQ(layout.overflowRows[0].count, 3);
}

TEST(TaskbarPass, AnEmptyRowCarriesTheSlidersWhereTheyBelongToTheOverflow)
{
    SettingsValues settings;
    TaskbarPassInput input{{}, std::nullopt, settings, 0, 1440, false, {}, false, {}};
    auto layout = TaskbarPass::run(input, measure);
    ASSERT_TRUE(layout.hasOverflow);
    EXPECT_EQ(layout.overflowRows[0].count, 0);
    EXPECT_EQ(layout.overflowRows[0].leading, 1440 - 142);
    EXPECT_EQ(layout.rowCount, 2);
    settings.mediaSliderDisplay = MediaSliderDisplay::never;
    layout = TaskbarPass::run(input, measure);
    EXPECT_FALSE(layout.hasOverflow);
    EXPECT_EQ(layout.rowCount, 1);
}

}  // namespace
}  // namespace korvane
