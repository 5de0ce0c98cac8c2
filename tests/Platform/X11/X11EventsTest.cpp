#include "tests/Platform/X11/X11Test.h"

namespace korvane::platform {
namespace {

class EventsOnX11 : public X11Test {
protected:
    void SetUp() override
    {
        openDesktop();
        move(10, 10);
        loop.turnFor(Seconds(0.05));
    }
    void move(int x, int y)
    {
        server.run({"xdotool", "mousemove_relative", "--", std::to_string(x), std::to_string(y)});
    }
    void click() { server.run({"xdotool", "click", "1"}); }

    int told = 0;
};

TEST_F(EventsOnX11, TheNextMotionIsToldOnceAndNoLaterOne)
{
    const auto motion = platform->events().nextMotion([&] { ++told; });
    loop.turnFor(Seconds(0.05));
    EXPECT_EQ(told, 0);
    move(20, 20);
    EXPECT_TRUE(waitFor([&] { return told == 1; }));
    move(20, 20);
    click();
    loop.turnFor(Seconds(0.1));
    EXPECT_EQ(told, 1);
}

TEST_F(EventsOnX11, AMotionMayBeWaitedForAgainFromItsOwnCall)
{
    Subscription motion;
    std::function<void()> again = [&] {
        ++told;
        motion = platform->events().nextMotion(again);
    };
    motion = platform->events().nextMotion(again);
    move(20, 20);
    EXPECT_TRUE(waitFor([&] { return told >= 1; }));
    const int before = told;
    move(20, 20);
    EXPECT_TRUE(waitFor([&] { return told > before; }));
}

TEST_F(EventsOnX11, APressIsToldWhereverItGoesAndEveryTime)
{
    testing::SampleClient client(server, "Other");
    const auto window = client.open(1, "Window");
    ASSERT_TRUE(appears(client.pid(), window));
    const auto presses = platform->events().observePresses([&] { ++told; });
    loop.turnFor(Seconds(0.05));
    click();
    EXPECT_TRUE(waitFor([&] { return told == 1; }));
    server.run({"xdotool", "mousemove", "--window", std::to_string(window), "20", "20"});
    click();
    EXPECT_TRUE(waitFor([&] { return told == 2; }));
}

TEST_F(EventsOnX11, NobodyIsToldAfterTheSubscriptionHasEnded)
{
    auto presses = platform->events().observePresses([&] { ++told; });
    auto motion = platform->events().nextMotion([&] { ++told; });
    presses.reset();
    motion.reset();
    move(20, 20);
    click();
    loop.turnFor(Seconds(0.1));
    EXPECT_EQ(told, 0);
}

TEST_F(EventsOnX11, ASubscriptionMayOutliveThePlatform)
{
    const auto presses = platform->events().observePresses([&] { ++told; });
    platform.reset();
    SUCCEED();
}

}  // namespace
}  // namespace korvane::platform
