// The decisions one look at a time, at the moments and places where they turn.
#include "tests/Models/Bar/AutoHideFixture.h"

namespace korvane {
namespace {

using namespace testing;

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

}  // namespace
}  // namespace korvane
