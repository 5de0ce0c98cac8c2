// The decisions one look at a time, at the moments and places where they turn, and the timers in virtual time.
#include "Models/Bar/AutoHide.h"

#include "Platform/Simulated/VirtualLoop.h"

#include <gtest/gtest.h>
#include <memory>

namespace korvane {
namespace {

using platform::Point;
using platform::Rect;
using platform::Seconds;

const Rect screen{0, 0, 1440, 900};
const Point onBar{500, 10}, away{500, 600};

class Panel final : public AutoHidePanel {
public:
    Rect frame() const override { return place; }
    std::optional<Rect> screenFrame() const override { return onScreen; }
    std::optional<double> contentOpacity() const override { return opacity; }
    bool ignoresMouseEvents() const override { return ignores; }
    void setContentOpacity(double value) override
    {
        opacity = value;
        ++writes;
    }
    void setIgnoresMouseEvents(bool value) override
    {
        ignores = value;
        ++writes;
    }
    void setHeight(double height, const Rect &) override { heights.push_back(height); }
    void hide()
    {
        opacity = 0;
        ignores = true;
    }

    Rect place{0, 0, 1440, 34};
    std::optional<Rect> onScreen = screen;
    std::optional<double> opacity = 1;
    bool ignores = false;
    int writes = 0;
    std::vector<double> heights;
};

class Looks : public ::testing::Test {
protected:
    Looks()
    {
        settings.autoHideEnabled = true;
        settings.appRefreshRate = 30;
        settings.animationDurationMS = 400;
        settings.lockApplicationsContainerToTaskbar = false;
        settings.expertAvoidRedundantPanelWrites = true;
        machine.addPanel(panel, std::nullopt);
    }
    AutoHideOutcome look(double now, Point place)
    {
        pointer = place;
        loop.advance(Seconds(now) - loop.monotonicNow());
        return machine.update();
    }
    // It was last on the bar at 0.
    AutoHideOutcome lookAfter(double elapsed)
    {
        machine.removePanels();
        machine.addPanel(panel, Seconds(0));
        return look(elapsed, away);
    }
    std::optional<Seconds> lastInside() const { return machine.lastPointerInside(panel); }

    platform::simulated::VirtualLoop loop;
    SettingsValues settings;
    Panel panel;
    Point pointer = away;
    std::vector<Rect> screens{screen};
    OverflowGeometry geometry{34, 34};
    bool rowsVisible = false, listOpen = false, held = false, inStartMenu = false, paused = false;
    std::vector<double> menuOpacities;
    std::vector<Rect> starts;
    std::vector<bool> hidden;
    AutoHide machine{loop,
                     settings,
                     {.pointer = [this] { return pointer; },
                      .screens = [this] { return screens; },
                      .inputs =
                          [this] {
                              return AutoHideInputs{geometry, rowsVisible, listOpen};
                          },
                      .held = [this] { return held; },
                      .startMenuContainsMouse = [this] { return inStartMenu; },
                      .paused = [this] { return paused; }},
                     {.setTaskbarHidden = [this](bool value) { hidden.push_back(value); },
                      .setStartMenuOpacity = [this](double value) { menuOpacities.push_back(value); },
                      .onStart = [this](const Rect &frame) { starts.push_back(frame); }}};
};

TEST_F(Looks, TheGraceTimeEndsAtAFifthOfASecond)
{
    EXPECT_TRUE(lookAfter(0.199).waiting);
    EXPECT_EQ(panel.writes, 0);
    EXPECT_TRUE(menuOpacities.empty());
    const auto begun = lookAfter(0.2);
    EXPECT_TRUE(begun.fading);
    EXPECT_EQ(menuOpacities, std::vector<double>{1});
    lookAfter(0.3);
    EXPECT_NEAR(*panel.opacity, 0.75, 1e-9);
}

TEST_F(Looks, AFadeIsLinearAndMissedLooksDoNotSlowIt)
{
    for (const auto &[elapsed, expected] : {std::pair(0.25, 0.875), {0.4, 0.5}, {0.5, 0.25}}) {
        EXPECT_TRUE(lookAfter(elapsed).fading);
        EXPECT_NEAR(*panel.opacity, expected, 1e-9);
        EXPECT_FALSE(panel.ignores);
    }
}

TEST_F(Looks, AtAHundredthItIsHidden)
{
    // 0.596 s leave 0.01, and what is above it still shows.
    EXPECT_TRUE(lookAfter(0.5959).fading);
    EXPECT_FALSE(panel.ignores);
    const auto outcome = lookAfter(0.5961);
    EXPECT_FALSE(outcome.fading);
    EXPECT_EQ(panel.opacity, 0);
    EXPECT_TRUE(panel.ignores);
    // The look that hides it still finds it there; the next one does not.
    EXPECT_FALSE(outcome.allHidden);
    EXPECT_TRUE(look(0.7, away).allHidden);
}

TEST_F(Looks, AFadeOfNoLengthIsOverAtTheEndOfTheGraceTime)
{
    settings.animationDurationMS = 0;
    lookAfter(0.199);
    EXPECT_EQ(panel.opacity, 1);
    // Nothing divided by nothing is no number, and counts as hidden too.
    lookAfter(0.2);
    EXPECT_EQ(panel.opacity, 0);
    EXPECT_TRUE(panel.ignores);
    panel.opacity = 1;
    panel.ignores = false;
    EXPECT_FALSE(lookAfter(0.201).fading);
    EXPECT_EQ(panel.opacity, 0);
}

TEST_F(Looks, WithoutAFadeRateItIsGoneAtOnceAndTheQuickTimerStaysOff)
{
    settings.appRefreshRate = 0;
    EXPECT_FALSE(lookAfter(0.2).fading);
    EXPECT_EQ(panel.opacity, 0);
    EXPECT_TRUE(panel.ignores);
    EXPECT_EQ(menuOpacities, std::vector<double>{0});
    EXPECT_FALSE(AutoHide::fadeTimer(std::nullopt, true, settings, false));
}

TEST_F(Looks, TheTimeCountsFromTheLastLookThatSawThePointerOnTheBar)
{
    look(10, onBar);
    look(10.05, onBar);
    EXPECT_EQ(lastInside(), Seconds(10.05));
    look(10.2, away);
    EXPECT_EQ(lastInside(), Seconds(10.05));
    EXPECT_FALSE(look(10.249, away).fading);
    EXPECT_TRUE(look(10.26, away).fading);
}

TEST_F(Looks, APanelThatWasNeverPointedAtHasItsGraceTime)
{
    EXPECT_TRUE(look(1000, away).waiting);
    EXPECT_EQ(panel.opacity, 1);
}

TEST_F(Looks, TheEdgeOfAVisibleBarIsPartOfIt)
{
    // Below the panel's rectangle only the edge's strip would count, which is for bars that are hidden.
    look(1, {500, 0});
    EXPECT_EQ(lastInside(), Seconds(1));
    look(2, {1440, 0});
    EXPECT_EQ(lastInside(), Seconds(1));
    panel.hide();
    look(3, {1440, 0});
    EXPECT_EQ(lastInside(), Seconds(3));
}

TEST_F(Looks, TheStripOfAHiddenBarIsOnePointHighAndHasAllItsEdges)
{
    for (const Point place : {Point{0, 0}, {1440, 0}, {0, 1}, {1440, 1}}) {
        panel.hide();
        look(1, place);
        EXPECT_EQ(panel.opacity, 1);
        EXPECT_FALSE(panel.ignores);
    }
    for (const Point place : {Point{-0.5, 0}, {1440.5, 0}, {700, 1.01}, {700, -0.5}}) {
        panel.hide();
        look(1, place);
        EXPECT_EQ(panel.opacity, 0);
        EXPECT_TRUE(panel.ignores);
    }
}

TEST_F(Looks, OnlyTheLowerPartOfATallPanelWithTuckedRowsIsTheBar)
{
    panel.place.height = 160;
    geometry = {50, 160};
    settings.autoHideOverflow = true;
    look(1, {500, 49.9});
    EXPECT_EQ(lastInside(), Seconds(1));
    look(2, {500, 50});
    EXPECT_EQ(lastInside(), Seconds(1));
    EXPECT_EQ(panel.opacity, 0);
    panel.opacity = 1;
    panel.ignores = false;
    rowsVisible = true;
    look(3, {500, 150});
    EXPECT_EQ(lastInside(), Seconds(3));
    rowsVisible = false;
    settings.autoHideOverflow = false;
    look(4, {500, 150});
    EXPECT_EQ(lastInside(), Seconds(4));
}

TEST_F(Looks, AnOpenListAndTheStartMenuHoldAVisibleBarAndBringAHiddenOneBack)
{
    double now = 5;
    for (bool *holds : {&listOpen, &inStartMenu}) {
        *holds = true;
        look(++now, away);
        EXPECT_EQ(lastInside(), Seconds(now));
        panel.hide();
        EXPECT_FALSE(look(++now, away).allHidden);
        EXPECT_EQ(panel.opacity, 1);
        EXPECT_FALSE(panel.ignores);
        *holds = false;
    }
}

TEST_F(Looks, WhatHoldsAVisibleBarDoesNotBringAHiddenOneBack)
{
    held = true;
    look(5, away);
    EXPECT_EQ(lastInside(), Seconds(5));
    panel.hide();
    EXPECT_TRUE(look(6, away).allHidden);
    EXPECT_TRUE(panel.ignores);
}

TEST_F(Looks, ABarThatComesBackBringsALockedStartMenuOnce)
{
    settings.lockApplicationsContainerToTaskbar = true;
    panel.hide();
    look(1, {500, 0});
    look(1.1, {500, 0});
    EXPECT_EQ(starts, std::vector<Rect>{panel.place});
}

TEST_F(Looks, AHeightWithinHalfAPointIsLeft)
{
    panel.place.height = 34.5;
    look(1, onBar);
    EXPECT_TRUE(panel.heights.empty());
    panel.place.height = 34.51;
    look(2, onBar);
    EXPECT_EQ(panel.heights, std::vector<double>{34});
}

TEST_F(Looks, AHiddenBarKeepsItsHeight)
{
    panel.hide();
    geometry = {50, 160};
    look(1, away);
    EXPECT_TRUE(panel.heights.empty());
    look(2, {500, 0});
    EXPECT_EQ(panel.heights, std::vector<double>{160});
}

TEST_F(Looks, WhatIsAlreadySoIsWrittenOnlyWhereThatIsNotAvoided)
{
    look(1, onBar);
    EXPECT_EQ(panel.writes, 0);
    panel.opacity = 0.9995;
    look(2, onBar);
    EXPECT_EQ(panel.writes, 0);
    panel.opacity = 0.998;
    look(3, onBar);
    EXPECT_EQ(panel.writes, 1);
    settings.expertAvoidRedundantPanelWrites = false;
    look(4, onBar);
    EXPECT_EQ(panel.writes, 3);
}

TEST_F(Looks, WithoutHidingEveryBarIsShownWhereverThePointerIs)
{
    settings.autoHideEnabled = false;
    panel.hide();
    const auto outcome = look(9, away);
    EXPECT_EQ(panel.opacity, 1);
    EXPECT_FALSE(panel.ignores);
    EXPECT_FALSE(outcome.allHidden || outcome.waiting || outcome.fading);
    EXPECT_EQ(lastInside(), Seconds(9));
}

TEST_F(Looks, APanelWithoutAScreenIsOnTheOneItTouchesAndElseLeftAlone)
{
    panel.onScreen.reset();
    look(1, onBar);
    EXPECT_EQ(lastInside(), Seconds(1));
    screens = {{5000, 0, 800, 600}};
    look(2, onBar);
    EXPECT_EQ(lastInside(), Seconds(1));
}

TEST_F(Looks, WithoutPanelsNothingIsHidden)
{
    machine.removePanels();
    EXPECT_FALSE(look(1, away).allHidden);
}

TEST_F(Looks, TheBarIsHiddenWhenAllItsPanelsAre)
{
    Panel second;
    second.place.x = 1440;
    second.onScreen = Rect{1440, 0, 1280, 720};
    machine.addPanel(second, std::nullopt);
    panel.hide();
    EXPECT_FALSE(look(1, away).allHidden);
    second.hide();
    EXPECT_TRUE(look(2, away).allHidden);
}

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
