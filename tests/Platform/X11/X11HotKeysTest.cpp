#include "tests/Platform/X11/X11Test.h"

#include <cstdlib>
#include <xcb/xcb.h>

namespace korvane::platform {
namespace {

constexpr HotKey plain{53, 4096, 1}, shifted{53, 4096 | 512, 2};

class HotKeysOnX11 : public X11Test {
protected:
    void SetUp() override { openDesktop(); }

    void press(const std::string &keys)
    {
        // As fast as fingers are, no faster: the key has been up for a moment.
        loop.turnFor(Seconds(0.08));
        server.run({"xdotool", "key", keys});
    }

    std::vector<std::uint32_t> pressed;
};

TEST_F(HotKeysOnX11, AKeyReachesTheHandlerByItsNumber)
{
    const auto handler = platform->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    const auto first = platform->hotKeys().add(plain), second = platform->hotKeys().add(shifted);
    press("ctrl+Escape");
    EXPECT_TRUE(waitFor([&] { return pressed == std::vector<std::uint32_t>{1}; }));
    press("ctrl+shift+Escape");
    EXPECT_TRUE(waitFor([&] { return pressed == std::vector<std::uint32_t>{1, 2}; }));
    press("Escape");
    press("ctrl+alt+Escape");
    loop.turnFor(Seconds(0.1));
    EXPECT_EQ(pressed.size(), 2U);
}

TEST_F(HotKeysOnX11, LocksMakeNoDifference)
{
    const auto handler = platform->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    const auto key = platform->hotKeys().add(plain);
    press("Num_Lock");
    press("ctrl+Escape");
    EXPECT_TRUE(waitFor([&] { return pressed.size() == 1; }));
    press("Caps_Lock");
    press("ctrl+Escape");
    EXPECT_TRUE(waitFor([&] { return pressed.size() == 2; }));
    press("Num_Lock");
    press("ctrl+Escape");
    EXPECT_TRUE(waitFor([&] { return pressed.size() == 3; }));
    press("Caps_Lock");
}

TEST_F(HotKeysOnX11, AKeyOfAnotherProgramIsLeftToItInSilence)
{
    const auto other = X11Platform::open({server.display(), 1, nullptr}, loop, catalogue, {});
    std::vector<std::uint32_t> others;
    const auto otherHandler = other->hotKeys().install([&](std::uint32_t id) { others.push_back(id); });
    auto otherKey = other->hotKeys().add(plain);
    press("ctrl+Escape");
    ASSERT_TRUE(waitFor([&] { return others.size() == 1; }));
    const auto handler = platform->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    {
        const auto key = platform->hotKeys().add(plain);
        EXPECT_TRUE(key);
        press("ctrl+Escape");
        EXPECT_TRUE(waitFor([&] { return others.size() == 2; }));
        EXPECT_TRUE(pressed.empty());
    }
    otherKey.reset();
    const auto key = platform->hotKeys().add(plain);
    press("ctrl+Escape");
    EXPECT_TRUE(waitFor([&] { return pressed.size() == 1; }));
    EXPECT_EQ(others.size(), 2U);
}

TEST_F(HotKeysOnX11, TheKeyboardIsFreeWhenTheHandlerRuns)
{
    bool taken = false;
    const auto handler = platform->hotKeys().install([&](std::uint32_t) {
        // A menu that opens now grabs the keyboard while the key is still down.
        auto *menu = xcb_connect(server.display().c_str(), nullptr);
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(menu)).data->root;
        auto *reply = xcb_grab_keyboard_reply(
            menu, xcb_grab_keyboard(menu, 0, root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
            nullptr);
        taken = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
        std::free(reply);
        xcb_disconnect(menu);
        pressed.push_back(0);
    });
    const auto key = platform->hotKeys().add(plain);
    server.run({"xdotool", "keydown", "ctrl", "keydown", "Escape"});
    ASSERT_TRUE(waitFor([&] { return !pressed.empty(); }));
    EXPECT_TRUE(taken);
    server.run({"xdotool", "keyup", "Escape", "keyup", "ctrl"});
}

TEST_F(HotKeysOnX11, AKeyThatIsHeldDownCountsOnce)
{
    const auto handler = platform->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    const auto key = platform->hotKeys().add(plain);
    server.run({"xset", "r", "rate", "150", "50"});
    server.run({"xdotool", "keydown", "ctrl", "keydown", "Escape"});
    ASSERT_TRUE(waitFor([&] { return !pressed.empty(); }));
    loop.turnFor(Seconds(0.6));
    EXPECT_EQ(pressed.size(), 1U);
    server.run({"xdotool", "keyup", "Escape"});
    loop.turnFor(Seconds(0.08));
    server.run({"xdotool", "keydown", "Escape"});
    EXPECT_TRUE(waitFor([&] { return pressed.size() == 2; }));
    server.run({"xdotool", "keyup", "Escape", "keyup", "ctrl"});
}

TEST_F(HotKeysOnX11, AKeyThatWasGivenBackIsSilent)
{
    auto handler = platform->hotKeys().install([&](std::uint32_t id) { pressed.push_back(id); });
    auto key = platform->hotKeys().add(plain);
    const auto other = platform->hotKeys().add(shifted);
    key.reset();
    press("ctrl+Escape");
    press("ctrl+shift+Escape");
    EXPECT_TRUE(waitFor([&] { return pressed == std::vector<std::uint32_t>{2}; }));
    handler.reset();
    press("ctrl+shift+Escape");
    loop.turnFor(Seconds(0.1));
    EXPECT_EQ(pressed.size(), 1U);
}

TEST_F(HotKeysOnX11, SubscriptionsMayOutliveThePlatform)
{
    const auto handler = platform->hotKeys().install([](std::uint32_t) {});
    const auto key = platform->hotKeys().add(plain);
    const auto unknown = platform->hotKeys().add({9999, 4096, 3});
    const auto news = applications().observe(ApplicationEvent::activated, [] {});
    platform.reset();
}

TEST_F(HotKeysOnX11, TheScreenSaverIsReported)
{
    int started = 0, stopped = 0;
    const auto first = applications().observe(SessionEvent::screensaverStarted, [&] { ++started; });
    const auto second = applications().observe(SessionEvent::screensaverStopped, [&] { ++stopped; });
    server.run({"xset", "s", "activate"});
    EXPECT_TRUE(waitFor([&] { return started == 1; }));
    server.run({"xset", "s", "reset"});
    EXPECT_TRUE(waitFor([&] { return stopped == 1; }));
}

}  // namespace
}  // namespace korvane::platform
