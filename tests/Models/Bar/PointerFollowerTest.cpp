#include "Models/Bar/PointerFollower.h"

#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>
#include <vector>

namespace korvane {
namespace {

class Following : public ::testing::Test {
protected:
    Following() { follower.start(); }
    void advance(double seconds) { desktop.loop.advance(platform::Seconds(seconds)); }
    // The hand moves the mouse; the system tells of it only if somebody waits.
    void move(double x)
    {
        desktop.pointer.moveTo({x, 0});
        desktop.events.move();
        desktop.loop.runPosted();
    }

    platform::simulated::SimulatedDesktop desktop;
    platform::Platform platform = desktop.platform();
    std::vector<double> told;
    PointerFollower follower{platform, [this](platform::Point place) { told.push_back(place.x); }};
};

TEST_F(Following, ARestingPointerCostsNothing)
{
    advance(1);
    told.clear();
    EXPECT_EQ(desktop.loop.pendingTimers(), 0U);
    advance(100);
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(desktop.events.waitingForMotion(), 1U);
}

TEST_F(Following, AMotionIsToldAtOnce)
{
    advance(1);
    told.clear();
    move(10);
    EXPECT_EQ(told, std::vector<double>{10});
}

TEST_F(Following, ThePlaceWhereAQuickMotionEndsIsNotMissed)
{
    advance(1);
    told.clear();
    move(10);
    desktop.pointer.moveTo({500, 0});
    advance(0.032);
    EXPECT_EQ(told, std::vector<double>{10});
    advance(0.1);
    EXPECT_EQ(told, (std::vector<double>{10, 500}));
    EXPECT_EQ(desktop.loop.pendingTimers(), 0U);
}

TEST_F(Following, ItStopsWhenItIsTold)
{
    advance(1);
    told.clear();
    follower.stop();
    move(10);
    advance(1);
    EXPECT_TRUE(told.empty());
    EXPECT_EQ(desktop.events.waitingForMotion(), 0U);
}

TEST_F(Following, WhereTheSystemDoesNotTellOfMotionsItLooksByItself)
{
    follower.stop();
    desktop.events.setTellsMotion(false);
    follower.start();
    advance(1);
    told.clear();
    desktop.pointer.moveTo({70, 0});
    advance(0.15);
    EXPECT_EQ(told, std::vector<double>{70});
    EXPECT_TRUE(follower.isFollowing());
}

}  // namespace
}  // namespace korvane
