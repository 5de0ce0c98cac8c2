// A bar that fades away and comes back, in virtual time.
#include "Views/Tasks/RunningAppGroupButton.h"
#include "Views/Tasks/TaskButton.h"
#include "tests/Controllers/HidingFixture.h"

#include <QMenu>
#include <gtest/gtest.h>

namespace korvane {
namespace {

using testing::away;
using testing::edge;
using testing::Hiding;
using testing::onBar;
using testing::PaintCounter;
using testing::settle;
using testing::V;

TEST_F(Hiding, TheBarStaysWhileThePointerIsOnIt)
{
    show();
    advance(10);
    EXPECT_EQ(opacity(), 1);
    EXPECT_FALSE(model->inspect().taskbarIsHidden);
}

TEST_F(Hiding, ItFadesAfterTheGraceTimeAndIsGoneAtItsEnd)
{
    show();
    pointAt(away);
    advance(0.19);
    EXPECT_EQ(opacity(), 1);
    advance(0.25);
    EXPECT_LT(opacity(), 1);
    EXPECT_GT(opacity(), 0.2);
    EXPECT_DOUBLE_EQ(menuOpacity, opacity());
    EXPECT_FALSE(ignoredByDesktop());
    EXPECT_TRUE(controller->fadeTimerInterval());
    advance(0.5);
    EXPECT_TRUE(hidden());
    EXPECT_TRUE(ignoredByDesktop());
    EXPECT_TRUE(model->inspect().taskbarIsHidden);
    EXPECT_FALSE(controller->fadeTimerInterval());
}

TEST_F(Hiding, AfterALongRestOnTheBarTheGraceTimeStillHolds)
{
    show();
    advance(100);
    EXPECT_FALSE(controller->visibilityTimerInterval());
    pointAt(away);
    advance(0.19);
    EXPECT_EQ(opacity(), 1);
    advance(1);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, APointerThatComesBackInTimeKeepsTheBar)
{
    show();
    pointAt(away);
    advance(0.4);
    ASSERT_LT(opacity(), 1);
    pointAt(onBar);
    advance(0.1);
    EXPECT_EQ(opacity(), 1);
    advance(5);
    EXPECT_EQ(opacity(), 1);
}

TEST_F(Hiding, OnlyTheScreensEdgeBringsItBack)
{
    show();
    pointAt(away);
    advance(2);
    pointAt({500, 5});
    advance(1);
    EXPECT_TRUE(hidden());
    pointAt(edge);
    advance(0.1);
    EXPECT_EQ(opacity(), 1);
    EXPECT_FALSE(ignoredByDesktop());
    EXPECT_FALSE(model->inspect().taskbarIsHidden);
}

TEST_F(Hiding, WithoutAFadeRateItVanishesAtTheNextLook)
{
    show(0);
    pointAt(away);
    advance(0.19);
    EXPECT_EQ(opacity(), 1);
    advance(0.1);
    EXPECT_TRUE(hidden());
    EXPECT_EQ(menuOpacity, 0);
    EXPECT_FALSE(controller->fadeTimerInterval());
}

TEST_F(Hiding, AFadeOfNoLengthIsOverAtOnce)
{
    show();
    model->set(&V::animationDurationMS, 0);
    pointAt(away);
    advance(0.3);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, AnOpenWindowListKeepsItWhereverThePointerIs)
{
    show();
    model->setGroupedListOpen(true, "auto:1");
    pointAt(away);
    advance(5);
    EXPECT_EQ(opacity(), 1);
    model->setGroupedListOpen(false, "auto:1");
    advance(2);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, AListThatOpensBringsAHiddenBarBack)
{
    show();
    pointAt(away);
    advance(2);
    model->setGroupedListOpen(true, "auto:1");
    advance(0.1);
    EXPECT_EQ(opacity(), 1);
}

TEST_F(Hiding, TheStartMenuKeepsItToo)
{
    show();
    inStartMenu = true;
    pointAt(away);
    advance(3);
    EXPECT_EQ(opacity(), 1);
}

TEST_F(Hiding, AStartMenuThatClosesBeneathARestingPointerLetsTheBarGo)
{
    show();
    inStartMenu = true;
    pointAt(away);
    advance(30);
    ASSERT_EQ(opacity(), 1);
    inStartMenu = false;
    advance(1);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, AMenuOfTheBarHoldsItAndThatOfAnotherWindowDoesNot)
{
    show();
    QWidget other;
    auto *menus = new QMenu(&panel().view());
    menus->addAction(QStringLiteral("Something"));
    QMenu foreign(&other);
    foreign.addAction(QStringLiteral("Something"));
    menus->popup({});
    pointAt(away);
    advance(5);
    EXPECT_EQ(opacity(), 1);
    menus->close();
    advance(1);
    EXPECT_TRUE(hidden());
    foreign.popup({});
    pointAt({500, 601});
    advance(1);
    EXPECT_TRUE(hidden());
    foreign.close();
}

TEST_F(Hiding, ABarThatIsGoneDrawsNothingAndIsUpToDateWhenItIsBack)
{
    show();
    pointAt(away);
    advance(2);
    ASSERT_TRUE(hidden());
    PaintCounter paints;
    settle();
    model->set(&V::groupingMode, GroupingMode::always);
    advance(1);
    settle();
    EXPECT_EQ(paints.countOf<TaskButton>(), 0);
    EXPECT_EQ(paints.countOf<RunningAppGroupButton>(), 0);
    paints.reset();
    pointAt(edge);
    advance(0.2);
    settle();
    EXPECT_GT(paints.countOf<RunningAppGroupButton>(), 0);
}

TEST_F(Hiding, TheEmptyPartOfATallPanelDoesNotKeepIt)
{
    addApplication(2, "Notes", 40);
    show();
    ASSERT_GT(panel().panelHeight(), 60);
    pointAt({700, panel().panelHeight() - 2});
    advance(2);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, TurningItOffBringsEveryPanelBack)
{
    show();
    pointAt(away);
    advance(2);
    model->set(&V::autoHideEnabled, false);
    advance(0.1);
    EXPECT_EQ(opacity(), 1);
    EXPECT_FALSE(panel().ignoresMouseEvents());
    advance(5);
    EXPECT_EQ(opacity(), 1);
}

TEST_F(Hiding, ARevealedBarBringsItsLockedStartMenuAlong)
{
    show();
    model->set(&V::lockApplicationsContainerToTaskbar, true);
    pointAt(away);
    advance(2);
    pointAt(edge);
    advance(0.1);
    EXPECT_EQ(starts, std::vector<platform::Rect>{panel().frame()});
}

TEST_F(Hiding, EachScreensBarHidesByItself)
{
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}, {2, {1440, 0, 1280, 720}, 1}});
    show();
    EXPECT_EQ(opacity(0), 1);
    EXPECT_TRUE(hidden(1));
    EXPECT_FALSE(model->inspect().taskbarIsHidden);
    pointAt({2000, 0});
    advance(0.1);
    EXPECT_EQ(opacity(1), 1);
    advance(2);
    EXPECT_TRUE(hidden(0));
    EXPECT_EQ(opacity(1), 1);
}

TEST_F(Hiding, AKeyShowsEveryBarAndGivesTheMainScreensFrame)
{
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}, {2, {1440, 0, 1280, 720}, 1}});
    show();
    desktop.screens.setMain(1);
    pointAt({700, 500});
    advance(2);
    const auto frame = controller->revealForShortcut();
    EXPECT_EQ(frame, panel(1).frame());
    EXPECT_EQ(opacity(0), 1);
    EXPECT_EQ(opacity(1), 1);
    EXPECT_FALSE(model->inspect().taskbarIsHidden);
    advance(2);
    EXPECT_TRUE(hidden(0) && hidden(1));
}

TEST_F(Hiding, AResizeByHandStopsBothTimers)
{
    show();
    model->beginTaskResize();
    EXPECT_FALSE(controller->visibilityTimerInterval());
    pointAt(away);
    advance(3);
    EXPECT_EQ(opacity(), 1);
    model->endTaskResize();
    EXPECT_TRUE(controller->visibilityTimerInterval());
    advance(2);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, ASleepingDisplayStopsThemAndWakingLooksAtOnce)
{
    show();
    model->setInactiveReason("display", true);
    advance(0.01);
    EXPECT_FALSE(controller->visibilityTimerInterval());
    pointAt(away);
    advance(5);
    EXPECT_EQ(opacity(), 1);
    model->set(&V::appRefreshRate, 0);
    model->setInactiveReason("display", false);
    desktop.loop.runPosted();
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, ARateThatChangesInTheMiddleOfAFadeTakesEffect)
{
    show(30);
    pointAt(away);
    advance(0.4);
    ASSERT_EQ(controller->fadeTimerInterval(), 1 / 30.0);
    model->set(&V::appRefreshRate, 60);
    desktop.loop.runPosted();
    EXPECT_EQ(controller->fadeTimerInterval(), 1 / 60.0);
    model->set(&V::appRefreshRate, 0);
    desktop.loop.runPosted();
    EXPECT_FALSE(controller->fadeTimerInterval());
    advance(0.1);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, AMenuOnOneScreenLeavesTheHiddenBarOfAnother)
{
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}, {2, {1440, 0, 1280, 720}, 1}});
    show();
    ASSERT_TRUE(hidden(1));
    model->set(&V::lockApplicationsContainerToTaskbar, true);
    QMenu menu(&panel().view());
    menu.addAction(QStringLiteral("Something"));
    menu.popup({});
    pointAt(away);
    advance(5);
    EXPECT_EQ(opacity(0), 1);
    EXPECT_TRUE(hidden(1));
    EXPECT_TRUE(starts.empty());
    menu.close();
}

TEST_F(Hiding, AFasterLookTakesEffectAtOnce)
{
    show();
    pointAt(away);
    model->set(&V::appMonitorRefreshRate, 4);
    advance(0.01);
    EXPECT_EQ(controller->visibilityTimerInterval(), 0.25);
}

TEST_F(Hiding, ABarThatNothingHappensToIsNotLookedAt)
{
    show();
    advance(5);
    EXPECT_FALSE(controller->visibilityTimerInterval());
    pointAt(away);
    EXPECT_TRUE(controller->visibilityTimerInterval());
    advance(5);
    EXPECT_TRUE(hidden());
    EXPECT_FALSE(controller->visibilityTimerInterval());
    EXPECT_EQ(desktop.events.waitingForMotion(), 1U);
}

TEST_F(Hiding, WithoutHidingAndWithoutTuckedRowsNobodyWatchesThePointer)
{
    show();
    model->set(&V::autoHideEnabled, false);
    advance(5);
    EXPECT_EQ(desktop.events.waitingForMotion(), 0U);
    EXPECT_FALSE(controller->visibilityTimerInterval());
}

TEST_F(Hiding, AStripOfTheScreenIsReservedWhileTheBarDoesNotHide)
{
    show();
    EXPECT_TRUE(desktop.panels.strips.empty());
    model->set(&V::autoHideEnabled, false);
    advance(0.01);
    ASSERT_EQ(desktop.panels.strips.size(), 1U);
    EXPECT_EQ(desktop.panels.strips.begin()->second, (platform::Rect{0, 0, 1440, 34}));
    model->set(&V::autoHideEnabled, true);
    advance(0.01);
    EXPECT_TRUE(desktop.panels.strips.empty());
}

TEST_F(Hiding, AFadeDrawsNoTabAnew)
{
    show(60);
    pointAt(away);
    advance(0.25);
    settle();
    PaintCounter paints;
    for (int i = 0; i < 5; ++i) {
        const double before = opacity();
        advance(0.04);
        settle();
        EXPECT_LT(opacity(), before);
    }
    EXPECT_EQ(paints.countOf<TaskButton>(), 0);
}

TEST_F(Hiding, WithoutACompositorTheBarStaysOpaqueUntilItIsGone)
{
    show();
    desktop.panels.setTranslucencyAvailable(false);
    advance(0.01);
    const QImage before = panel().grab().toImage();
    pointAt(away);
    advance(0.4);
    ASSERT_LT(opacity(), 1);
    EXPECT_EQ(panel().grab().toImage(), before);
    advance(1);
    EXPECT_TRUE(ignoredByDesktop());
}

}  // namespace
}  // namespace korvane
