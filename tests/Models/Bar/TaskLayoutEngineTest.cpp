#include "Models/Bar/TaskLayoutEngine.h"

#include <cmath>
#include <gtest/gtest.h>

namespace korvane::TaskLayoutEngine {
namespace {

using List = std::vector<double>;

TEST(TaskLayoutEngine, NoTasksNeedNoRows)
{
    const TaskLayout layout = makeLayout(1000, 100, 100, List{}, nullptr);
    EXPECT_EQ(layout, TaskLayout());
}

TEST(TaskLayoutEngine, TheFirstTaskStaysOnTheMainRowHoweverWideItIs)
{
    const TaskLayout layout = makeLayout(300, 100, 100, List{2000}, nullptr);
    EXPECT_EQ(layout.mainCount, 1);
    EXPECT_EQ(layout.widths, List{2000});
    EXPECT_TRUE(layout.overflowRows.empty());
}

TEST(TaskLayoutEngine, ATaskWiderThanTheOverflowRoomGetsARowOfItsOwnAndRunsOut)
{
    const TaskLayout layout = makeLayout(700, 100, 100, List{500, 900, 100}, nullptr);
    ASSERT_EQ(layout.overflowRows.size(), 2U);
    EXPECT_EQ(layout.overflowRows[0].count, 1);
    EXPECT_EQ(layout.overflowRows[0].leading, 400);
    EXPECT_EQ(layout.overflowRows[0].widths, List{900});
}

TEST(TaskLayoutEngine, LittleOrNegativeRoomCountsAsSixtyFour)
{
    EXPECT_EQ(packedCount(List{30, 30, 30}, -500), 2);
    EXPECT_EQ(packedCount(List{30, 30, 30}, 10), 2);
    // What sticks out is reckoned against the true room, so nothing more is squeezed in.
    EXPECT_EQ(compressedMainRow(List{30, 30, 100}, -500).count, 2);
}

TEST(TaskLayoutEngine, ATaskIsTakenInWhileAtMostHalfOfItSticksOut)
{
    const List widths{200, 100};
    EXPECT_EQ(compressedMainRow(widths, 254).count, 2);  // 304 wanted, 50 stick out
    EXPECT_EQ(compressedMainRow(widths, std::nextafter(254.0, 0.0)).count, 1);
    EXPECT_EQ(compressedMainRow(widths, 254).widths, (List{150, 100}));
}

TEST(TaskLayoutEngine, TasksAtTheirMinimumsAreNotSqueezed)
{
    const List widths{200, 100};
    EXPECT_EQ(compressedMainRow(widths, 290, &widths).count, 1);
    EXPECT_EQ(compressedMainRow(widths, 290).count, 2);
}

TEST(TaskLayoutEngine, ATaskBelowItsMinimumIsRaisedBeforeTheOthersGive)
{
    const List minimums{64, 64, 40};
    const MainRow row = compressedMainRow(List{70, 50, 60}, 180, &minimums);
    ASSERT_EQ(row.count, 3);
    EXPECT_EQ(row.widths[0], 64);  // gives 6 of 8
    EXPECT_EQ(row.widths[2], 58);  // gives the other 2 and is asked before the narrow one
    EXPECT_EQ(row.widths[1], 50);
}

TEST(TaskLayoutEngine, RowsAboveTheThirdHaveNoBufferAndOneHeight)
{
    const TaskLayout layout = makeLayout(800, 100, 100, List(12, 220), nullptr);
    ASSERT_GE(layout.overflowRows.size(), 6U);
    const double buffers[] = {96, 64, 32, 0, 0, 0}, heights[] = {34, 32, 30, 28, 28, 28};
    for (std::size_t i = 0; i < 6; ++i) {
        EXPECT_EQ(layout.overflowRows[i].bufferWidth, buffers[i]);
        EXPECT_EQ(layout.overflowRows[i].height, heights[i]);
        EXPECT_TRUE(layout.overflowRows[i].reversed);
    }
}

TEST(TaskLayoutEngine, ThePileNeverWidensAsItRises)
{
    const TaskLayout layout =
        makeLayout(1440, 127, 124, List{220, 90, 64, 180, 220, 75, 64, 64, 200, 210, 100, 64, 130,
                                        220, 99, 64, 180, 220, 75, 64, 64, 200, 210, 100, 64, 130},
                   nullptr);
    ASSERT_GT(layout.overflowRows.size(), 1U);
    for (std::size_t i = 1; i < layout.overflowRows.size(); ++i)
        EXPECT_GE(layout.overflowRows[i].leading, layout.overflowRows[i - 1].leading);
    EXPECT_GE(layout.overflowRows[0].leading, 400);
}

TEST(TaskLayoutEngine, PackingToMinimumsHoldsMoreTasksEachNarrower)
{
    const List widths(8, 200);
    const TaskLayout plain = makeLayout(1000, 100, 100, widths, nullptr);
    const TaskLayout packed = makeLayout(1000, 100, 100, widths, nullptr, true);
    EXPECT_GT(packed.mainCount, plain.mainCount);
    EXPECT_LT(packed.widths[0], plain.widths[0]);
}

TEST(TaskLayoutEngine, ALockedLayoutPullsNoOverflowTaskOntoTheMainRow)
{
    const TaskLayout layout = makeLockedLayout(2000, 100, 100, List{100}, List{100, 100}, nullptr);
    EXPECT_EQ(layout.mainCount, 1);
    ASSERT_EQ(layout.overflowRows.size(), 1U);
    EXPECT_EQ(layout.overflowRows[0].count, 2);
}

TEST(TaskLayoutEngine, LockedMainTasksWithoutRoomComeFirstOnTheOverflowRows)
{
    const TaskLayout layout = makeLockedLayout(700, 100, 100, List{220, 220, 220, 100}, List{90}, nullptr);
    EXPECT_LT(layout.mainCount, 4);
    EXPECT_EQ(layout.overflowRows[0].lower, layout.mainCount);
    EXPECT_EQ(layout.widths.back(), 90);
}

TEST(TaskLayoutEngineDeathTest, FewerMinimumWidthsThanTasksEndTheProcess)
{
    const List minimums{64};
    EXPECT_DEATH(compressedMainRow(List{200, 200}, 300, &minimums), "minimum widths");
}

}  // namespace
}  // namespace korvane::TaskLayoutEngine
