#include "Platform/Simulated/VirtualLoop.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace korvane::platform::simulated {
namespace {

using platform::Seconds;
using platform::Subscription;

TEST(VirtualLoop, TimeStandsStillUntilItIsToldToPass)
{
    VirtualLoop loop;
    bool fired = false;
    const Subscription once = loop.after(Seconds(0), [&] { fired = true; });
    loop.runPosted();
    EXPECT_FALSE(fired);
    EXPECT_EQ(loop.monotonicNow().count(), 0.0);
    loop.advance(Seconds(0));
    EXPECT_TRUE(fired);
}

TEST(VirtualLoop, WhatFallsDueAtTheVeryEndIsServed)
{
    VirtualLoop loop;
    int calls = 0;
    const Subscription often = loop.repeat(Seconds(2), Seconds(0.2), [&] { ++calls; });
    loop.advance(Seconds(1.999));
    EXPECT_EQ(calls, 0);
    loop.advance(Seconds(0.001));
    EXPECT_EQ(calls, 1);
    loop.advance(Seconds(10));
    EXPECT_EQ(calls, 6);
}

TEST(VirtualLoop, AThousandSmallStepsEndWhereALargeOneDoes)
{
    VirtualLoop small, large;
    for (int i = 0; i < 1000; ++i)
        small.advance(Seconds(0.003));
    large.advance(Seconds(3));
    EXPECT_EQ(small.monotonicNow(), large.monotonicNow());
    EXPECT_EQ(small.monotonicNow().count(), 3.0);
}

TEST(VirtualLoop, TimersOfOneMomentComeInTheOrderOfTheirCreationAlsoWhenRepeated)
{
    VirtualLoop loop;
    std::string order;
    const Subscription a = loop.repeat(Seconds(2), Seconds(0), [&] { order += 'a'; });
    const Subscription b = loop.repeat(Seconds(1), Seconds(0), [&] { order += 'b'; });
    const Subscription c = loop.after(Seconds(2), [&] { order += 'c'; });
    loop.advance(Seconds(4));
    EXPECT_EQ(order, "babcbab");
}

TEST(VirtualLoop, PostedCallsComeBeforeTheTimersOfTheSameMoment)
{
    VirtualLoop loop;
    std::string order;
    const Subscription a = loop.after(Seconds(1), [&] {
        order += 'a';
        loop.post([&] { order += 'p'; });
    });
    const Subscription b = loop.after(Seconds(1), [&] { order += 'b'; });
    loop.advance(Seconds(1));
    EXPECT_EQ(order, "apb");
}

TEST(VirtualLoop, AWaitInsideACallLetsTheOthersComeMeanwhile)
{
    VirtualLoop loop;
    std::string order;
    const Subscription alert = loop.after(Seconds(1), [&] {
        order += '(';
        loop.advance(Seconds(5));
        order += ')';
    });
    const Subscription often = loop.repeat(Seconds(2), Seconds(0), [&] { order += 't'; });
    loop.advance(Seconds(2));
    EXPECT_EQ(order, "(ttt)");
    EXPECT_EQ(loop.monotonicNow().count(), 6.0);
}

TEST(VirtualLoop, ASubscriptionMayOutliveTheLoop)
{
    Subscription once;
    {
        VirtualLoop loop;
        once = loop.after(Seconds(1), [] {});
        EXPECT_EQ(loop.pendingTimers(), 1u);
    }
    once.reset();
    EXPECT_FALSE(once);
}

TEST(VirtualLoop, SettingTheWallClockLeavesElapsedTimeAlone)
{
    VirtualLoop loop;
    loop.advance(Seconds(3));
    loop.setWallNow(Seconds(1800000000));
    loop.advance(Seconds(2));
    EXPECT_EQ(loop.wallNow().count(), 1800000002.0);
    EXPECT_EQ(loop.monotonicNow().count(), 5.0);
}

TEST(VirtualLoop, WaitingForAConditionStopsAtTheMomentThatFulfilsIt)
{
    VirtualLoop loop;
    int calls = 0;
    const Subscription often = loop.repeat(Seconds(0.5), Seconds(0), [&] { ++calls; });
    EXPECT_TRUE(loop.runUntil([&] { return calls == 3; }, Seconds(10)));
    EXPECT_EQ(loop.monotonicNow().count(), 1.5);
    EXPECT_FALSE(loop.runUntil([&] { return calls == 100; }, Seconds(1)));
    EXPECT_EQ(loop.monotonicNow().count(), 2.5);
}

}  // namespace
}  // namespace korvane::platform::simulated
