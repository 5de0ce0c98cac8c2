#include "tests/Ports/LevelContracts.h"

#include <cmath>

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(AudioContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(BrightnessContract);

namespace {
constexpr std::uint32_t wholeDevice = 0, beyond = 3;
constexpr float tolerance = 0.005F;  // a percent, as people see it
}  // namespace

std::optional<float> AudioContract::now()
{
    const auto output = audio().defaultOutput();
    return output ? audio().volume(*output, wholeDevice) : std::nullopt;
}

bool AudioContract::becomes(std::optional<float> volume)
{
    return harness->waitFor([&] {
        const auto found = now();
        return found.has_value() == volume.has_value() && (!found || std::abs(*found - *volume) < tolerance);
    });
}

TEST_P(AudioContract, WithoutAnOutputThereIsNothingToReadOrSet)
{
    EXPECT_FALSE(audio().defaultOutput());
    EXPECT_FALSE(audio().hasVolume(1, wholeDevice));
    EXPECT_FALSE(audio().volume(1, wholeDevice));
    EXPECT_FALSE(audio().setVolume(1, wholeDevice, 0.5F));
}

TEST_P(AudioContract, TheDefaultOutputHasANumberAndAVolume)
{
    harness->plug(0.4F);
    ASSERT_TRUE(becomes(0.4F));
    const auto output = audio().defaultOutput().value();
    EXPECT_NE(output, 0U);
    EXPECT_TRUE(audio().hasVolume(output, wholeDevice));
}

TEST_P(AudioContract, WhatIsSetIsReadAtOnceAndStays)
{
    harness->plug(0.4F);
    ASSERT_TRUE(becomes(0.4F));
    const auto output = audio().defaultOutput().value();
    EXPECT_TRUE(audio().setVolume(output, wholeDevice, 0.75F));
    EXPECT_NEAR(audio().volume(output, wholeDevice).value(), 0.75F, tolerance);
    harness->settle();
    EXPECT_NEAR(audio().volume(output, wholeDevice).value(), 0.75F, tolerance);
}

TEST_P(AudioContract, AnotherDeviceOrElementIsRefused)
{
    harness->plug(0.4F);
    ASSERT_TRUE(becomes(0.4F));
    const auto output = audio().defaultOutput().value();
    EXPECT_FALSE(audio().hasVolume(output, beyond));
    EXPECT_FALSE(audio().volume(output, beyond));
    EXPECT_FALSE(audio().setVolume(output, beyond, 0.5F));
    EXPECT_FALSE(audio().hasVolume(output + 1, wholeDevice));
    EXPECT_FALSE(audio().setVolume(output + 1, wholeDevice, 0.5F));
    harness->settle();
    EXPECT_NEAR(now().value(), 0.4F, tolerance);
}

TEST_P(AudioContract, AChangeByAnotherProgramIsToldFromTheRunLoop)
{
    harness->plug(0.4F);
    ASSERT_TRUE(becomes(0.4F));
    harness->settle();
    int told = 0;
    const auto observer = audio().observeChanges([&] { ++told; });
    harness->changeElsewhere(0.2F);
    EXPECT_EQ(told, 0);
    EXPECT_TRUE(harness->waitFor([&] { return told > 0 && std::abs(now().value_or(1) - 0.2F) < tolerance; }));
}

TEST_P(AudioContract, AnOutputThatGoesIsTold)
{
    harness->plug(0.4F);
    ASSERT_TRUE(becomes(0.4F));
    harness->settle();
    int told = 0;
    const auto observer = audio().observeChanges([&] { ++told; });
    harness->unplug();
    EXPECT_TRUE(harness->waitFor([&] { return told > 0 && !audio().defaultOutput(); }));
}

TEST_P(AudioContract, AnObserverThatIsGoneIsNotTold)
{
    harness->plug(0.4F);
    ASSERT_TRUE(becomes(0.4F));
    harness->settle();
    int gone = 0, present = 0;
    auto one = audio().observeChanges([&] { ++gone; });
    const auto other = audio().observeChanges([&] { ++present; });
    one.reset();
    harness->changeElsewhere(0.2F);
    EXPECT_TRUE(harness->waitFor([&] { return present > 0; }));
    EXPECT_EQ(gone, 0);
}

TEST_P(AudioContract, AnObserverMayEndItselfAndAnotherWhileItIsTold)
{
    harness->plug(0.4F);
    ASSERT_TRUE(becomes(0.4F));
    harness->settle();
    int first = 0, second = 0, last = 0;
    Subscription one, two;
    one = audio().observeChanges([&] {
        ++first;
        one.reset();
        two.reset();
    });
    two = audio().observeChanges([&] { ++second; });
    const auto three = audio().observeChanges([&] { ++last; });
    harness->changeElsewhere(0.2F);
    EXPECT_TRUE(harness->waitFor([&] { return last > 0; }));
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
}

TEST_P(BrightnessContract, AScreenWithoutOneSaysSo)
{
    EXPECT_FALSE(harness->brightness().current());
    EXPECT_FALSE(harness->brightness().set(0.5F));
    EXPECT_FALSE(harness->brightness().current());
}

TEST_P(BrightnessContract, WhatIsSetIsRead)
{
    harness->changeElsewhere(0.25F);
    ASSERT_TRUE(harness->brightness().current());
    for (const float level : {0.0F, 0.6F, 1.0F}) {
        EXPECT_TRUE(harness->brightness().set(level));
        EXPECT_NEAR(harness->brightness().current().value(), level, 0.001F);
    }
}

TEST_P(BrightnessContract, WhatOthersSetIsRead)
{
    harness->changeElsewhere(0.25F);
    EXPECT_NEAR(harness->brightness().current().value(), 0.25F, 0.001F);
    harness->brightness().set(0.5F);
    harness->changeElsewhere(0.75F);
    EXPECT_NEAR(harness->brightness().current().value(), 0.75F, 0.001F);
}

}  // namespace korvane::platform
