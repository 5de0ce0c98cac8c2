#include "tests/Ports/DesktopWorld.h"

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(HotKeysContract);

namespace {
constexpr HotKey first{53, 4096, 1}, second{53, 4096 | 512, 2};
using Ids = std::vector<std::uint32_t>;
}  // namespace

TEST_P(HotKeysContract, TheHandlerIsToldTheKeyFromTheRunLoop)
{
    Ids pressed;
    const auto handler = world->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    const auto one = world->hotKeys().add(first), other = world->hotKeys().add(second);
    world->press(first);
    EXPECT_TRUE(waitFor([&] { return pressed == Ids{1}; }));
    world->press(second);
    EXPECT_TRUE(waitFor([&] { return pressed == (Ids{1, 2}); }));
}

TEST_P(HotKeysContract, AKeyThatWasGivenBackIsSilent)
{
    Ids pressed;
    const auto handler = world->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    auto one = world->hotKeys().add(first);
    const auto other = world->hotKeys().add(second);
    one.reset();
    world->press(first);
    world->press(second);
    EXPECT_TRUE(waitFor([&] { return !pressed.empty(); }));
    EXPECT_EQ(pressed, Ids{2});
}

TEST_P(HotKeysContract, AHandlerThatIsGoneIsNotTold)
{
    Ids pressed;
    auto handler = world->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    const auto one = world->hotKeys().add(first);
    handler.reset();
    world->press(first);
    world->settle();
    EXPECT_EQ(pressed, Ids{});
}

TEST_P(HotKeysContract, AKeyOfAnotherProgramIsSilent)
{
    world->takeKey(first);
    Ids pressed;
    const auto handler = world->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    const auto one = world->hotKeys().add(first);
    EXPECT_TRUE(one);
    world->press(first);
    world->settle();
    EXPECT_EQ(pressed, Ids{});
}

}  // namespace korvane::platform
