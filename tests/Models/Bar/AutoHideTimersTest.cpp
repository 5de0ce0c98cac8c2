// When auto-hide looks, and when it rests, in virtual time.
#include "tests/Models/Bar/AutoHideFixture.h"

namespace korvane {
namespace {

using namespace testing;

TEST_F(Looks, LooksRestOnceNothingCanChangeAndGoOnWhenSomethingDoes)
{
    settings.appMonitorRefreshRate = 10;
    machine.configureVisibilityTimer();
    pointer = onBar;
    loop.advance(Seconds(1));
    EXPECT_FALSE(machine.visibilityTimerInterval());
    // The bar has not been left while nobody looked.
    pointer = away;
    machine.resume();
    EXPECT_EQ(machine.visibilityTimerInterval(), 0.1);
    EXPECT_EQ(lastInside(), loop.monotonicNow());
    loop.advance(Seconds(2));
    EXPECT_EQ(panel.opacity, 0);
    EXPECT_FALSE(machine.visibilityTimerInterval());
    machine.resumeIfInputsChanged();
    EXPECT_FALSE(machine.visibilityTimerInterval());
    listOpen = true;
    machine.resumeIfInputsChanged();
    EXPECT_TRUE(machine.visibilityTimerInterval());
    loop.advance(Seconds(1));
    EXPECT_EQ(panel.opacity, 1);
}

TEST_F(Looks, AnOpenStartMenuKeepsLookingSinceItMayCloseUnderAPointerThatRests)
{
    machine.configureVisibilityTimer();
    inStartMenu = true;
    loop.advance(Seconds(5));
    EXPECT_TRUE(machine.visibilityTimerInterval());
    inStartMenu = false;
    loop.advance(Seconds(5));
    EXPECT_EQ(panel.opacity, 0);
    EXPECT_EQ(hidden.back(), true);
}

TEST_F(Looks, AFadeLooksAtItsOwnRateAndStopsWithIt)
{
    settings.appRefreshRate = 20;
    machine.configureVisibilityTimer();
    lookAfter(0.2);
    EXPECT_EQ(machine.fadeTimerInterval(), 0.05);
    settings.appRefreshRate = 40;
    EXPECT_EQ(machine.fadeTimerInterval(), 0.05);
    machine.restartFadeTimerIfActive();
    EXPECT_EQ(machine.fadeTimerInterval(), 0.025);
    loop.advance(Seconds(1));
    EXPECT_FALSE(machine.fadeTimerInterval());
    machine.restartFadeTimerIfActive();
    EXPECT_FALSE(machine.fadeTimerInterval());
}

TEST_F(Looks, NothingLooksWhileTheSystemPausesTheBarOrATaskIsResized)
{
    machine.configureVisibilityTimer();
    paused = true;
    machine.pauseChanged();
    EXPECT_FALSE(machine.visibilityTimerInterval());
    machine.resume();
    EXPECT_FALSE(machine.visibilityTimerInterval());
    machine.setTaskResizePaused(true);
    paused = false;
    machine.pauseChanged();
    EXPECT_FALSE(machine.visibilityTimerInterval());
    machine.setTaskResizePaused(false);
    EXPECT_TRUE(machine.visibilityTimerInterval());
}

TEST(AutoHideTimers, TheirRatesAreHeldToWhatIsUseful)
{
    EXPECT_DOUBLE_EQ(AutoHide::visibilityInterval(0), 1);
    EXPECT_DOUBLE_EQ(AutoHide::visibilityInterval(8), 0.125);
    EXPECT_DOUBLE_EQ(AutoHide::visibilityInterval(21), 0.05);
    EXPECT_DOUBLE_EQ(AutoHide::fadeInterval(1), 0.1);
    EXPECT_DOUBLE_EQ(AutoHide::fadeInterval(30), 1.0 / 30);
    EXPECT_DOUBLE_EQ(AutoHide::fadeInterval(120), 1.0 / 60);
}

TEST(AutoHideTimers, APauseOfTheSystemEndsBoth)
{
    const SettingsValues settings;
    EXPECT_TRUE(AutoHide::visibilityTimer(settings, false));
    EXPECT_FALSE(AutoHide::visibilityTimer(settings, true));
    EXPECT_FALSE(AutoHide::fadeTimer(std::nullopt, true, settings, true));
}

}  // namespace
}  // namespace korvane
