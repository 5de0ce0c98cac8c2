#include "App/MemoryRelease.h"

#include "Platform/Simulated/VirtualLoop.h"

#include <gtest/gtest.h>

namespace korvane {
namespace {

class Crowd : public ::testing::Test {
protected:
    void advance(double seconds) { loop.advance(platform::Seconds(seconds)); }

    platform::simulated::VirtualLoop loop;
    int releases = 0;
    MemoryRelease memory{loop, [this] { ++releases; }};
};

TEST_F(Crowd, WhatItTookIsReleasedOnceWhenHalfOfItHasGone)
{
    memory.windowCount(200);
    for (std::size_t left = 199; left >= 10; --left)
        memory.windowCount(left);
    EXPECT_EQ(releases, 0);
    advance(3);
    EXPECT_EQ(releases, 1);
    memory.windowCount(9);
    advance(10);
    EXPECT_EQ(releases, 1);
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(Crowd, ThatComesBackInTimeKeepsItsMemory)
{
    memory.windowCount(200);
    memory.windowCount(80);
    advance(1);
    memory.windowCount(190);
    advance(10);
    EXPECT_EQ(releases, 0);
}

TEST_F(Crowd, OfAFewWindowsIsNone)
{
    memory.windowCount(49);
    memory.windowCount(0);
    advance(10);
    EXPECT_EQ(releases, 0);
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST_F(Crowd, EachOneIsReleasedAnew)
{
    for (int i = 0; i < 2; ++i) {
        memory.windowCount(100);
        memory.windowCount(5);
        advance(3);
    }
    EXPECT_EQ(releases, 2);
}

}  // namespace
}  // namespace korvane
