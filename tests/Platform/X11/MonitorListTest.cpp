#include "Platform/X11/MonitorList.h"

#include <gtest/gtest.h>

namespace korvane::platform::x11 {
namespace {

TEST(MonitorList, ThePrimaryMonitorComesFirstAndEmptyOnesAreLeftOut)
{
    const Monitor left{1, 0, 0, 800, 600, false}, primary{2, 800, 0, 1920, 1080, true}, off{3, 0, 0, 0, 0, false},
        right{4, 2720, 0, 800, 600, false};
    EXPECT_EQ(arranged({left, off, primary, right}), (std::vector<Monitor>{primary, left, right}));
    EXPECT_TRUE(arranged({off}).empty());
}

TEST(MonitorList, EveryPixelOfAMonitorLiesInItsFrame)
{
    const Monitor main{1, 100, 50, 640, 480, true}, above{2, 100, -400, 640, 450, false};
    const DesktopSpace space({main, above}, 1.5);
    for (const Monitor &monitor : {main, above})
        for (const int x : {monitor.x, monitor.x + monitor.width - 1})
            for (const int y : {monitor.y, monitor.y + monitor.height - 1}) {
                EXPECT_TRUE(space.screen(monitor).frame.contains(space.location(x, y))) << x << ' ' << y;
                for (const Monitor &other : {main, above})
                    EXPECT_EQ(space.screen(other).frame.contains(space.location(x, y)), other == monitor);
            }
}

TEST(MonitorList, DisplayPlacesComeBackAsTheirPixels)
{
    const DesktopSpace space({{1, 100, 50, 640, 480, true}}, 2);
    EXPECT_EQ(space.pixel({0, 0}), std::pair(100, 50));
    EXPECT_EQ(space.pixel({319.5, 239.5}), std::pair(739, 529));
    EXPECT_EQ(space.pixel({-1e300, 1e300}), std::pair(-32768, 32767));
}

}  // namespace
}  // namespace korvane::platform::x11
