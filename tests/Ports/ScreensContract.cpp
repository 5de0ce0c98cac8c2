#include "tests/Ports/DesktopWorld.h"

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ScreensContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PointerContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PanelsContract);

TEST_P(ScreensContract, TheFirstScreenHoldsTheOrigin)
{
    const auto screens = world->screens().all();
    ASSERT_FALSE(screens.empty());
    EXPECT_EQ(screens.front().frame.x, 0);
    EXPECT_EQ(screens.front().frame.y, 0);
    EXPECT_GT(screens.front().frame.width, 0);
    EXPECT_GT(screens.front().scale, 0);
    ASSERT_TRUE(screens.front().number);
    EXPECT_TRUE(world->screens().main());
}

TEST_P(ScreensContract, ScreensThatComeAndGoAreTold)
{
    int told = 0;
    const auto observer = world->screens().observeChanges([&] { ++told; });
    const auto before = world->screens().all();
    const Rect first = before.front().frame;
    const Rect left{-800, 10, 800, 600}, above{40, first.height, 640, 480};
    world->setFurtherScreens({left, above});
    const auto frames = [&] {
        std::vector<Rect> list;
        for (const Screen &screen : world->screens().all())
            list.push_back(screen.frame);
        return list;
    };
    ASSERT_TRUE(waitFor([&] { return frames() == std::vector<Rect>{first, left, above}; }));
    EXPECT_TRUE(waitFor([&] { return told > 0; }));
    world->settle();
    told = 0;
    const auto screens = world->screens().all();
    EXPECT_EQ(world->screens().displayBounds(screens[0].number.value()), (Rect{0, 0, first.width, first.height}));
    EXPECT_EQ(world->screens().displayBounds(screens[1].number.value()), (Rect{-800, first.height - 610, 800, 600}));
    EXPECT_EQ(world->screens().displayBounds(screens[2].number.value()), (Rect{40, -480, 640, 480}));
    world->setFurtherScreens({});
    EXPECT_TRUE(waitFor([&] { return world->screens().all() == before && told > 0; }));
    EXPECT_EQ(world->screens().displayBounds(screens[1].number.value()), Rect{});
}

TEST_P(PointerContract, ThePointerIsWhereItWasPut)
{
    const double height = world->screens().all().front().frame.height;
    // Display coordinates go down, the desktop's go up; a pixel more or less is the platform's.
    world->pointer().warp({10, 20});
    EXPECT_TRUE(waitFor([&] {
        const Point place = world->pointer().location();
        return std::abs(place.x - 10) <= 1 && std::abs(place.y - (height - 20)) <= 1;
    }));
}

TEST_P(PanelsContract, TranslucencyIsKnownWithoutAView)
{
    const bool translucent = world->panels().translucencyAvailable();
    world->settle();
    EXPECT_EQ(world->panels().translucencyAvailable(), translucent);
}

}  // namespace korvane::platform
