#include "tests/Platform/X11/X11Test.h"

namespace korvane::platform {
namespace {

using testing::SampleClient;

class ScreensOnX11 : public X11Test {
protected:
    ScreensOnX11() : X11Test("4480x1944") {}

    void SetUp() override
    {
        server.run({"xrandr", "--setmonitor", "*PRI", "1920/508x1080/286+1280+864", "screen"});
        server.run({"xrandr", "--setmonitor", "LEFT", "1280/338x1024/270+0+920", "none"});
        server.run({"xrandr", "--setmonitor", "TOP", "1536/406x864/228+1280+0", "none"});
        openDesktop();
    }
    Screens &screens() { return platform->screens(); }
    std::vector<Rect> frames()
    {
        std::vector<Rect> list;
        for (const Screen &screen : screens().all())
            list.push_back(screen.frame);
        return list;
    }
};

TEST_F(ScreensOnX11, TheFirstScreenHoldsTheOriginAtItsBottomLeft)
{
    EXPECT_EQ(frames(), (std::vector<Rect>{{0, 0, 1920, 1080}, {-1280, 0, 1280, 1024}, {0, 1080, 1536, 864}}));
}

TEST_F(ScreensOnX11, DisplayCoordinatesGoDownFromTheTopLeftOfTheFirstScreen)
{
    std::vector<Rect> bounds;
    for (const Screen &screen : screens().all())
        bounds.push_back(screens().displayBounds(screen.number.value()));
    EXPECT_EQ(bounds, (std::vector<Rect>{{0, 0, 1920, 1080}, {-1280, 56, 1280, 1024}, {0, -864, 1536, 864}}));
    EXPECT_EQ(screens().displayBounds(4'000'000'000U), Rect{});
}

TEST_F(ScreensOnX11, AMonitorThatComesOrGoesIsToldOnceAndKeepsItsNumber)
{
    int told = 0;
    const auto subscription = screens().observeChanges([&] { ++told; });
    const auto before = screens().all();
    server.run({"xrandr", "--setmonitor", "RIGHT", "1280/338x720/190+3200+1000", "none"});
    ASSERT_TRUE(waitFor([&] { return screens().all().size() == 4; }));
    EXPECT_EQ(told, 1);
    const auto right = screens().all().back();
    EXPECT_EQ(right.frame, (Rect{1920, 224, 1280, 720}));
    server.run({"xrandr", "--delmonitor", "RIGHT"});
    ASSERT_TRUE(waitFor([&] { return screens().all().size() == 3; }));
    EXPECT_EQ(screens().all(), before);
    server.run({"xrandr", "--setmonitor", "RIGHT", "1000/338x600/190+3200+1000", "none"});
    ASSERT_TRUE(waitFor([&] { return screens().all().size() == 4; }));
    EXPECT_EQ(screens().all().back().number, right.number);
    EXPECT_EQ(screens().all().back().frame.width, 1000);
    EXPECT_EQ(told, 3);
}

TEST_F(ScreensOnX11, TheMainScreenIsThatOfTheActiveWindowElseOfThePointer)
{
    const auto isMain = [&](std::size_t index) { return screens().main() == index; };
    platform->pointer().warp({100, -100});
    EXPECT_TRUE(waitFor([&] { return isMain(2); }));
    platform->pointer().warp({-100, 500});
    EXPECT_TRUE(waitFor([&] { return isMain(1); }));
    SampleClient mail(server, "Mail");
    const auto inbox = mail.open(1, "Inbox");
    ASSERT_TRUE(appears(mail.pid(), inbox));
    ASSERT_TRUE(waitFor([&] { return isActive(mail.pid()); }));
    server.run({"xdotool", "windowmove", "--sync", std::to_string(inbox), "1400", "1000"});
    EXPECT_TRUE(waitFor([&] { return isMain(0); }));
}

TEST_F(ScreensOnX11, ThePointerIsWhereItWasPut)
{
    platform->pointer().warp({0, 1079});
    EXPECT_TRUE(waitFor([&] { return platform->pointer().location() == Point{0, 0}; }));
    platform->pointer().warp({0, 0});
    EXPECT_TRUE(waitFor([&] { return platform->pointer().location() == Point{0, 1079}; }));
    EXPECT_TRUE(screens().all().front().frame.contains(platform->pointer().location()));
    platform->pointer().warp({1e9, -1e9});
    EXPECT_TRUE(waitFor([&] { return platform->pointer().location().x == 3199; }));
}

TEST_F(ScreensOnX11, AScaleDividesAllLengths)
{
    platform = X11Platform::open({server.display(), 2, nullptr}, loop, catalogue, {});
    EXPECT_EQ(frames().front(), (Rect{0, 0, 960, 540}));
    EXPECT_EQ(frames()[1], (Rect{-640, 0, 640, 512}));
    EXPECT_EQ(screens().all().front().scale, 2);
    EXPECT_EQ(screens().displayBounds(screens().all()[1].number.value()), (Rect{-640, 28, 640, 512}));
    platform->pointer().warp({10, 20});
    EXPECT_TRUE(waitFor([&] { return platform->pointer().location() == Point{10, 519.5}; }));
}

}  // namespace
}  // namespace korvane::platform
