#include "Views/Tray/ClockView.h"

#include "tests/Views/Tray/TrayFixture.h"

namespace korvane {
namespace {

using testing::PaintCounter;
using testing::settle;

class Clock : public testing::TrayFixture {
protected:
    // A moment in UTC on 3 February 2026, a Tuesday.
    void setTime(int hour, int minute, int second)
    {
        desktop.loop.setWallNow(platform::Seconds(1770076800.0 + hour * 3600 + minute * 60 + second));
        desktop.loop.runPosted();
    }
};

TEST_F(Clock, ShowsTheTimeAndTheDate)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    EXPECT_EQ(clock->time(), "3:04 PM");
    EXPECT_EQ(clock->date(), "Tue 02/03/26");
}

TEST_F(Clock, TurnsWithTheMinuteAndSleepsBetween)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    PaintCounter paints;
    EXPECT_EQ(desktop.loop.pendingTimers(), 1U);
    advance(49.9);
    settle();
    EXPECT_EQ(paints.count(), 0);
    EXPECT_EQ(clock->time(), "3:04 PM");
    advance(0.1);
    EXPECT_EQ(clock->time(), "3:05 PM");
    settle();
    EXPECT_EQ(paints.countOf<ClockLine>(), 1);
}

TEST_F(Clock, IsRightAtOnceWhenTheClockIsSet)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    setTime(9, 30, 0);
    EXPECT_EQ(clock->time(), "9:30 AM");
}

TEST_F(Clock, WhereNobodyTellsThatItWasSetItLooksEverySecondOrTwo)
{
    setTime(15, 4, 10);
    desktop.loop.keepClockChangesSecret();
    auto *clock = add<ClockView>(platform);
    clock->setRefreshSeconds(60);
    advance(2);
    setTime(9, 30, 0);
    EXPECT_EQ(clock->time(), "3:04 PM");
    advance(1.9);
    EXPECT_EQ(clock->time(), "3:04 PM");
    advance(0.1);
    EXPECT_EQ(clock->time(), "9:30 AM");
    clock->setRefreshSeconds(0);
    advance(2);
    setTime(18, 0, 0);
    advance(1);
    EXPECT_EQ(clock->time(), "6:00 PM");
    settle();
    PaintCounter paints;
    advance(10);
    settle();
    EXPECT_EQ(paints.count(), 0);
}

TEST_F(Clock, StandsStillWhilePausedAndCatchesUp)
{
    setTime(15, 4, 10);
    auto *clock = add<ClockView>(platform);
    clock->setPaused(true);
    advance(200);
    EXPECT_EQ(clock->time(), "3:04 PM");
    clock->setPaused(false);
    EXPECT_EQ(clock->time(), "3:07 PM");
}

TEST_F(Clock, OpensItsApplications)
{
    desktop.launching.install("com.apple.iCal", "/Applications/Calendar");
    auto *clock = add<ClockView>(platform);
    const auto lines = clock->findChildren<ClockLine *>();
    ASSERT_EQ(lines.size(), 2);
    desktop.actions.take();
    QTest::mouseClick(lines[0], Qt::LeftButton);
    EXPECT_TRUE(desktop.actions.take().empty());
    QTest::mouseClick(lines[1], Qt::LeftButton);
    EXPECT_EQ(desktop.actions.take().size(), 1U);
    EXPECT_EQ(lines[0]->toolTip(), "Open Clock");
    EXPECT_EQ(lines[1]->toolTip(), "Open Calendar");
}

}  // namespace
}  // namespace korvane
