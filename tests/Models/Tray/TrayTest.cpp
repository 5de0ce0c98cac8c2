#include "Models/Tray/Tray.h"
#include "Models/Tray/SystemLevels.h"

#include "Platform/Simulated/SimulatedDesktop.h"

#include <cmath>
#include <gtest/gtest.h>

namespace korvane {
namespace {

using platform::simulated::SimulatedDesktop;

TEST(TraySymbols, ThreeTenthsAndAHalfAreTheLimits)
{
    EXPECT_EQ(TrayRules::brightnessSymbol(0.339F), "sun.min.fill");
    EXPECT_EQ(TrayRules::brightnessSymbol(0.34F), "sun.max");
    EXPECT_EQ(TrayRules::brightnessSymbol(0.67F), "sun.max.fill");
    EXPECT_EQ(TrayRules::volumeSymbol(0.001F), "speaker.slash.fill");
    EXPECT_EQ(TrayRules::volumeSymbol(0.0011F), "speaker.wave.1.fill");
    EXPECT_EQ(TrayRules::volumeSymbol(1), "speaker.wave.3.fill");
}

TEST(TrayClock, TheIntervalIsOneOrTwoSecondsWhateverTheSetting)
{
    EXPECT_EQ(TrayRules::clockInterval(60), 2);
    EXPECT_EQ(TrayRules::clockInterval(0), 1);
}

class Level : public ::testing::Test {
protected:
    void advance(double seconds) { loop.advance(platform::Seconds(seconds)); }

    platform::simulated::VirtualLoop loop;
    std::optional<float> system = 0.5F;
    bool settable = true;
    double rate = 5;
    std::optional<int> levels;  // of a screen that has few
    LevelControl control{loop,
                         {[this] { return system; },
                          [this](float level) {
                              if (settable && levels)
                                  system =
                                      std::round(level * static_cast<float>(*levels)) / static_cast<float>(*levels);
                              else if (settable)
                                  system = level;
                              return settable;
                          },
                          [this] { return rate; }, [] {}}};
};

TEST_F(Level, TinyDeltasOfATouchpadArePassedOn)
{
    EXPECT_FALSE(control.scroll(0.01));
    EXPECT_FALSE(control.scroll(-0.01));
    EXPECT_EQ(control.level(), 0.5F);
    EXPECT_FALSE(control.showingSlider());
    EXPECT_TRUE(control.scroll(0.011));
}

TEST_F(Level, ScrollingUpAtTheTopStaysThereAndStillShowsTheSlider)
{
    system = 1.0F;
    EXPECT_TRUE(control.scroll(1));
    EXPECT_EQ(control.level(), 1.0F);
    EXPECT_TRUE(control.showingSlider());
}

TEST_F(Level, ScrollingDownStopsAtTheBottom)
{
    rate = 30;
    EXPECT_TRUE(control.scroll(-1));
    EXPECT_FLOAT_EQ(control.level(), 0.2F);
    EXPECT_TRUE(control.scroll(-1));
    EXPECT_EQ(control.level(), 0);
    EXPECT_EQ(system, 0.0F);
}

TEST_F(Level, SmallStepsAddUpOnAScreenOfFewLevels)
{
    levels = 7;
    system = 3 / 7.0F;
    int turns = 0;
    while (*system < 1 && turns < 30) {
        control.scroll(1);
        ++turns;
    }
    EXPECT_LE(turns, 12);
    for (turns = 0; *system > 0 && turns < 60; ++turns)
        control.scroll(-1);
    EXPECT_LE(turns, 21);
}

TEST_F(Level, WithoutALevelOfTheSystemTheStepsGoOnFromItsOwn)
{
    system.reset();
    LevelControl mute(loop, {[] { return std::nullopt; }, [](float) { return true; }, [] { return 5.0; }, [] {}});
    EXPECT_EQ(mute.level(), 0.5F);
    EXPECT_TRUE(mute.scroll(1));
    EXPECT_TRUE(mute.scroll(1));
    EXPECT_FLOAT_EQ(mute.level(), 0.6F);
    EXPECT_TRUE(mute.showingSlider());
}

TEST_F(Level, AClickReadsTheSystemAnew)
{
    system = 0.8F;
    control.click();
    EXPECT_EQ(control.level(), 0.8F);
}

TEST(LevelText, IsRoundedAsTheSmallFloatThatALevelIs)
{
    EXPECT_EQ(TrayRules::percent(345 / 1000.0F), 35);
    EXPECT_EQ(TrayRules::percent(0.125F), 13);
    EXPECT_EQ(TrayRules::percent(0), 0);
    EXPECT_EQ(TrayRules::percent(1), 100);
}

TEST_F(Level, TheSliderGoesOneAndAHalfSecondsAfterTheLastStep)
{
    control.scroll(1);
    advance(1.4);
    control.scroll(1);
    advance(1.499);
    EXPECT_TRUE(control.showingSlider());
    advance(0.001);
    EXPECT_FALSE(control.showingSlider());
}

TEST_F(Level, ASliderOpenedByAClickStays)
{
    control.click();
    advance(100);
    EXPECT_TRUE(control.showingSlider());
    control.click();
    EXPECT_FALSE(control.showingSlider());
}

TEST_F(Level, WhatCannotBeSetLeavesTheEventToOthers)
{
    settable = false;
    EXPECT_FALSE(control.scroll(1));
    EXPECT_EQ(control.level(), 0.5F);
    EXPECT_FALSE(control.showingSlider());
}

TEST_F(Level, AControlThatGoesAwayHasNothingToCome)
{
    control.scroll(1);
    control.disappeared();
    EXPECT_EQ(loop.pendingTimers(), 0U);
}

TEST(RestingPointer, OpensTheListOneAndTwoTenthsSecondsAfterItsLastEntry)
{
    platform::simulated::VirtualLoop loop;
    HoverList list(loop, platform::Seconds(1.2), [](bool) {});
    list.hover(true);
    loop.advance(platform::Seconds(0.5));
    list.hover(false);
    loop.advance(platform::Seconds(0.3));
    list.hover(true);
    loop.advance(platform::Seconds(1.199));
    EXPECT_FALSE(list.showing());
    loop.advance(platform::Seconds(0.001));
    EXPECT_TRUE(list.showing());
}

TEST(Volume, OfADeviceWithoutOneOfItsOwnIsThatOfItsChannels)
{
    SimulatedDesktop desktop;
    EXPECT_FALSE(SystemVolume::current(desktop.audio));
    SystemVolume::set(desktop.audio, 0.5F);
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 1}, 0.25F}, {{7, 2}, 0.75F}};
    EXPECT_EQ(SystemVolume::current(desktop.audio), 0.25F);
    SystemVolume::set(desktop.audio, 2);
    EXPECT_EQ((desktop.audio.volumes[{7, 1}]), 1.0F);
    EXPECT_EQ((desktop.audio.volumes[{7, 2}]), 1.0F);
    desktop.audio.unreadable = {1};
    EXPECT_EQ(SystemVolume::current(desktop.audio), 1.0F);
}

TEST(Volume, TheMainElementIsTakenAloneUnlessItRefuses)
{
    SimulatedDesktop desktop;
    desktop.audio.output = 7;
    desktop.audio.volumes = {{{7, 0}, 0.1F}, {{7, 1}, 0.2F}, {{7, 2}, 0.3F}};
    SystemVolume::set(desktop.audio, 0.5F);
    EXPECT_EQ((desktop.audio.volumes[{7, 0}]), 0.5F);
    EXPECT_EQ((desktop.audio.volumes[{7, 1}]), 0.2F);
    desktop.audio.fixed = {0};
    SystemVolume::set(desktop.audio, -1);
    EXPECT_EQ((desktop.audio.volumes[{7, 0}]), 0.5F);
    EXPECT_EQ((desktop.audio.volumes[{7, 1}]), 0.0F);
}

TEST(ScreenBrightness, IsHeldToItsRangeAndSaysWhenThereIsNone)
{
    SimulatedDesktop desktop;
    EXPECT_FALSE(SystemBrightness::set(desktop.brightness, 0.5F));
    desktop.brightness.level = 0.5F;
    EXPECT_TRUE(SystemBrightness::set(desktop.brightness, 1.5F));
    EXPECT_EQ(SystemBrightness::current(desktop.brightness), 1.0F);
}

}  // namespace
}  // namespace korvane
