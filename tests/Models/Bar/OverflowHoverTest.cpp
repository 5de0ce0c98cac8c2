#include "Models/Bar/OverflowHover.h"

#include "Platform/Simulated/VirtualLoop.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace korvane {
namespace {

class Hovering : public ::testing::Test {
protected:
    void advance(double seconds) { loop.advance(platform::Seconds(seconds)); }
    void enter(int row, double x = 700) { hover.overflowHoverChanged(true, row, x); }
    void leave(int row) { hover.overflowHoverChanged(false, row, std::nullopt); }

    platform::simulated::VirtualLoop loop;
    std::vector<bool> visible, expanded;
    int changes = 0;
    OverflowHover hover{loop,
                        {[this](bool value) { visible.push_back(value); },
                         [this](bool value) { expanded.push_back(value); }, [this] { ++changes; }},
                        true};
};

TEST_F(Hovering, ARestingPointerOpensTheRowsAfterTwelveHundredthsOfASecondAndNotBefore)
{
    enter(1);
    advance(0.119);
    EXPECT_FALSE(hover.overflowOpen());
    advance(0.001);
    EXPECT_TRUE(hover.overflowOpen());
    EXPECT_EQ(visible, std::vector<bool>{true});
    EXPECT_EQ(changes, 1);
}

TEST_F(Hovering, ThePointerMayLeaveForFourTenthsOfASecond)
{
    enter(1);
    advance(0.12);
    leave(1);
    advance(0.399);
    EXPECT_TRUE(hover.overflowOpen());
    advance(0.001);
    EXPECT_FALSE(hover.overflowOpen());
    EXPECT_EQ(visible, (std::vector<bool>{true, false}));
}

TEST_F(Hovering, ComingBackInTimeKeepsTheRowOpenWithoutAFlicker)
{
    enter(1);
    advance(0.12);
    leave(1);
    advance(0.3);
    enter(1);
    advance(2);
    EXPECT_TRUE(hover.overflowOpen());
    EXPECT_EQ(visible, std::vector<bool>{true});
}

TEST_F(Hovering, APointerThatLeavesBeforeItRestedOpensNothing)
{
    enter(2);
    advance(0.1);
    leave(2);
    advance(2);
    EXPECT_TRUE(visible.empty());
}

TEST_F(Hovering, OverTheStartAreaAPointerOpensNothingAndDropsAPendingEntry)
{
    enter(1);
    advance(0.05);
    enter(1, 399);
    EXPECT_TRUE(hover.pendingHoverEnters().empty());
    advance(2);
    EXPECT_FALSE(hover.overflowOpen());
    enter(1, 400);
    advance(0.12);
    EXPECT_TRUE(hover.overflowOpen());
}

TEST_F(Hovering, OffEveryScreenItOpensNothing)
{
    hover.overflowHoverChanged(true, 1, std::nullopt);
    advance(2);
    EXPECT_FALSE(hover.overflowOpen());
}

TEST_F(Hovering, TheArrowOpensThemAfterSixTenthsOfASecond)
{
    hover.overflowArrowHoverChanged(true);
    advance(0.599);
    EXPECT_FALSE(hover.overflowOpen());
    advance(0.001);
    EXPECT_TRUE(hover.overflowOpen());
    hover.overflowArrowHoverChanged(false);
    EXPECT_FALSE(hover.overflowOpen());
}

TEST_F(Hovering, HalfASecondOnTheArrowOpensNothing)
{
    hover.overflowArrowHoverChanged(true);
    advance(0.5);
    hover.overflowArrowHoverChanged(false);
    advance(2);
    EXPECT_FALSE(hover.overflowOpen());
    EXPECT_TRUE(visible.empty());
}

TEST_F(Hovering, AStaleArrowTimerDoesNotOpenAfterASecondVisit)
{
    hover.overflowArrowHoverChanged(true);
    advance(0.5);
    hover.overflowArrowHoverChanged(false);
    hover.overflowArrowHoverChanged(true);
    advance(0.1);
    EXPECT_FALSE(hover.overflowOpen());
    advance(0.5);
    EXPECT_TRUE(hover.overflowOpen());
}

TEST_F(Hovering, TheArrowPinsTheRowsOpenUntilItIsClickedAgain)
{
    hover.toggleArrow(false);
    EXPECT_TRUE(hover.overflowOpen());
    enter(1);
    advance(1);
    leave(1);
    advance(1);
    EXPECT_TRUE(hover.overflowOpen());
    hover.toggleArrow(false);
    EXPECT_FALSE(hover.overflowOpen());
    EXPECT_TRUE(expanded.empty());
}

TEST_F(Hovering, WithoutAutoHideOverflowTheArrowCollapsesAndExpandsInstead)
{
    hover.setAutoHideOverflow(false);
    visible.clear();
    hover.toggleArrow(false);
    hover.toggleArrow(true);
    EXPECT_EQ(expanded, (std::vector<bool>{true, false}));
    enter(1);
    advance(1);
    EXPECT_FALSE(hover.overflowOpen());
    EXPECT_TRUE(visible.empty());
}

TEST_F(Hovering, TurningTheSettingForgetsWhatHeldTheRowsOpen)
{
    hover.toggleArrow(false);
    enter(1);
    advance(0.12);
    leave(1);
    enter(2);
    hover.setAutoHideOverflow(false);
    EXPECT_FALSE(hover.overflowLatchedOpen());
    EXPECT_TRUE(hover.hoveredOverflowRows().empty());
    EXPECT_TRUE(hover.pendingHoverEnters().empty());
    EXPECT_TRUE(hover.pendingHoverLeaves().empty());
    EXPECT_FALSE(visible.back());
    EXPECT_TRUE(expanded.empty());
    hover.setAutoHideOverflow(true);
    EXPECT_EQ(expanded, std::vector<bool>{true});
    advance(2);
    EXPECT_FALSE(hover.overflowOpen());
}

TEST_F(Hovering, ADragOpensThemAtOnceAndItsEndTucksThemAway)
{
    hover.revealForDrag();
    EXPECT_TRUE(hover.overflowOpen());
    hover.dragEnded();
    EXPECT_FALSE(hover.overflowOpen());
}

TEST(HoverMachine, WhatWasScheduledDoesNotOutliveTheBar)
{
    platform::simulated::VirtualLoop loop;
    int calls = 0;
    auto hover = std::make_unique<OverflowHover>(
        loop, OverflowHoverActions{[&](bool) { ++calls; }, [&](bool) { ++calls; }, [&] { ++calls; }}, true);
    hover->overflowHoverChanged(true, 1, 700.0);
    hover->overflowArrowHoverChanged(true);
    hover.reset();
    loop.advance(platform::Seconds(2));
    EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace korvane
