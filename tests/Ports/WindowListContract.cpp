#include "tests/Ports/DesktopWorld.h"

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(WindowListContract);

TEST_P(WindowListContract, TheFrontWindowComesFirst)
{
    const Pid mail = world->start("Mail", "Inbox"), editor = world->start("Editor", "Text");
    using Entry = std::pair<std::int64_t, std::string>;
    const auto entries = [&] {
        std::vector<Entry> list;
        const auto windows = world->windowList().onScreen();
        for (const OnScreenWindow &window : windows.value())
            if (window.layer == 0)
                list.emplace_back(window.ownerPid.value(), window.name.value_or(""));
        return list;
    };
    EXPECT_TRUE(waitFor([&] { return entries() == std::vector<Entry>{{editor, "Text"}, {mail, "Inbox"}}; }));
    world->click(mail, onlyWindow(mail));
    EXPECT_TRUE(waitFor([&] { return entries() == std::vector<Entry>{{mail, "Inbox"}, {editor, "Text"}}; }));
    world->minimize(mail, onlyWindow(mail));
    EXPECT_TRUE(waitFor([&] { return entries() == std::vector<Entry>{{editor, "Text"}}; }));
}

TEST_P(WindowListContract, EveryWindowHasANumberOfItsOwn)
{
    const Pid mail = world->start("Mail", "Inbox");
    world->open(mail, "Draft");
    ASSERT_TRUE(waitFor([&] { return world->windowList().onScreen()->size() == 2; }));
    const auto windows = world->windowList().onScreen().value();
    ASSERT_TRUE(windows[0].number && windows[1].number);
    EXPECT_NE(windows[0].number, windows[1].number);
}

}  // namespace korvane::platform
