// A live desktop: actions take effect, the focus moves, and the applications tell of it at the next turn.
#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

namespace korvane::platform::simulated {
namespace {

using platform::Activate;
using platform::ApplicationEvent;
using platform::AxStatus;
using platform::Element;
using platform::Pid;
using platform::Value;

class LiveDesktop : public testing::Test {
protected:
    LiveDesktop()
    {
        // Mail (1: windows 10, 11) lies behind Notes (2: window 20), which is in front.
        for (const auto &[pid, hashes] :
             {std::pair(1, std::vector<std::uint64_t>{10, 11}), std::pair(2, std::vector<std::uint64_t>{20})}) {
            Process process;
            process.application.pid = pid;
            process.application.active = pid == 2;
            process.application.bundlePath = "/Applications/" + std::to_string(pid) + ".app";
            for (const std::uint64_t hash : hashes) {
                Window window;
                window.hash = hash;
                window.title = std::to_string(hash);
                process.windows->push_back(window);
            }
            process.focusedWindow = hashes.back();
            applications.put(process);
        }
        desktop.loop.runPosted();
        for (const auto event : {ApplicationEvent::launched, ApplicationEvent::terminated, ApplicationEvent::activated,
                                 ApplicationEvent::hidden, ApplicationEvent::unhidden})
            subscriptions.push_back(
                applications.observe(event, [this, event] { told += "LTAHU"[static_cast<int>(event)]; }));
    }

    Element window(Pid pid, std::uint64_t hash)
    {
        Value value;
        EXPECT_EQ(accessibility.copy(accessibility.application(pid), "AXWindows", value), AxStatus::success);
        for (const Element &element : std::get<std::vector<Element>>(value))
            if (accessibility.hash(element) == hash)
                return element;
        ADD_FAILURE() << "no window " << hash;
        return nullptr;
    }
    AxStatus pressCloseButton(Pid pid, std::uint64_t hash)
    {
        Value button;
        EXPECT_EQ(accessibility.copy(window(pid, hash), "AXCloseButton", button), AxStatus::success);
        return accessibility.perform(std::get<Element>(button), "AXPress");
    }
    // The hashes on the screen, front to back.
    std::vector<std::int64_t> stack()
    {
        std::vector<std::int64_t> hashes;
        const auto windows = desktop.windowList.onScreen();
        for (const auto &each : *windows)
            hashes.push_back(*each.number);
        return hashes;
    }
    std::string turn()
    {
        desktop.loop.runPosted();
        return std::exchange(told, {});
    }

    using Hashes = std::vector<std::int64_t>;
    SimulatedDesktop desktop;
    SimulatedApplications &applications = desktop.applications;
    SimulatedAccessibility &accessibility = desktop.accessibility;
    std::vector<platform::Subscription> subscriptions;
    std::string told;
};

TEST_F(LiveDesktop, ActivatingBringsTheFocusedWindowOrAllOfThemForward)
{
    EXPECT_EQ(stack(), (Hashes{20, 11, 10}));
    applications.focusWindow(1, 10);
    applications.focusWindow(2, 20);
    EXPECT_EQ(stack(), (Hashes{20, 10, 11}));
    turn();
    EXPECT_TRUE(applications.activate(1, Activate::none));
    EXPECT_EQ(stack(), (Hashes{10, 20, 11}));
    EXPECT_EQ(applications.active(), 1);
    EXPECT_EQ(told, "");
    EXPECT_EQ(turn(), "A");
    applications.activate(2, Activate::none);
    applications.activate(1, Activate::allWindows);
    EXPECT_EQ(stack(), (Hashes{10, 11, 20}));
}

TEST_F(LiveDesktop, MinimisingTheFocusedWindowPassesTheFocusOn)
{
    accessibility.set(window(2, 20), "AXMinimized", true);
    EXPECT_EQ(applications.active(), 1);
    EXPECT_EQ(applications.focusedWindow(1), 11u);
    EXPECT_FALSE(applications.focusedWindow(2));
    EXPECT_EQ(stack(), (Hashes{11, 10}));
    EXPECT_FALSE(turn().empty());

    accessibility.set(window(1, 11), "AXMinimized", true);
    EXPECT_EQ(applications.focusedWindow(1), 10u);
    EXPECT_EQ(applications.active(), 1);

    accessibility.set(window(2, 20), "AXMinimized", false);
    EXPECT_EQ(applications.focusedWindow(2), 20u);
    EXPECT_EQ(stack().front(), 20);
}

TEST_F(LiveDesktop, RaisingAWindowAndBringingItsApplicationForwardFocusesIt)
{
    accessibility.perform(window(1, 10), "AXRaise");
    EXPECT_EQ(applications.focusedWindow(1), 10u);
    EXPECT_EQ(applications.active(), 2);
    accessibility.set(accessibility.application(1), "AXFrontmost", true);
    EXPECT_EQ(applications.active(), 1);
    EXPECT_EQ(stack(), (Hashes{10, 20, 11}));
}

TEST_F(LiveDesktop, ClosingTakesTheWindowAwayUnlessTheButtonFails)
{
    const Element closed = window(2, 20);
    EXPECT_EQ(pressCloseButton(2, 20), AxStatus::success);
    EXPECT_EQ(applications.windowCount(2), 0u);
    Value value;
    EXPECT_EQ(accessibility.copy(closed, "AXTitle", value), AxStatus::gone);
    EXPECT_EQ(applications.active(), 1);
    EXPECT_FALSE(turn().empty());
    applications.changeWindow(1, 11, [](Window &each) { each.closeButton = CloseButton::fails; });
    EXPECT_EQ(pressCloseButton(1, 11), AxStatus::failure);
    EXPECT_EQ(applications.windowCount(1), 2u);
}

TEST_F(LiveDesktop, HidingAndTerminatingPassTheFocusOnAndAreTold)
{
    applications.hide(2);
    EXPECT_TRUE(applications.find(2)->hidden);
    EXPECT_EQ(applications.active(), 1);
    EXPECT_EQ(stack(), (Hashes{11, 10}));
    EXPECT_EQ(turn(), "HA");
    applications.unhide(2);
    EXPECT_EQ(turn(), "U");
    applications.terminate(1);
    EXPECT_EQ(applications.active(), 2);
    EXPECT_EQ(turn(), "TA");
    EXPECT_EQ(applications.running().size(), 1u);
}

TEST_F(LiveDesktop, ManyWindowChangesOfOneTurnAreToldOnce)
{
    applications.setTitle(1, 10, "a");
    applications.setTitle(1, 11, "b");
    applications.openWindow(2, Window{.hash = 21, .title = "c", .identifier = {}});
    EXPECT_EQ(turn(), "A");
    EXPECT_EQ(turn(), "");
    EXPECT_EQ(stack(), (Hashes{21, 20, 11, 10}));
}

TEST_F(LiveDesktop, OpeningAnApplicationStartsItOnceAndThenBringsItForward)
{
    desktop.launching.install("com.example.new", "/Applications/New Thing.app");
    desktop.launching.openApplication("/Applications/New Thing.app", true);
    ASSERT_EQ(applications.running().size(), 3u);
    const auto started = applications.running().back();
    EXPECT_EQ(started.localizedName, "New Thing");
    EXPECT_EQ(started.bundleIdentifier, "com.example.new");
    EXPECT_EQ(applications.active(), started.pid);
    EXPECT_EQ(applications.windowCount(started.pid), 1u);
    EXPECT_EQ(turn().find('L'), 1u) << "told of the focus, then of the start";
    desktop.launching.openApplication("/Applications/1.app", true);
    EXPECT_EQ(applications.active(), 1);
    EXPECT_EQ(applications.running().size(), 3u);
}

TEST_F(LiveDesktop, RevisionsAreKeptAndPermissionLossIsSeen)
{
    const auto before = accessibility.revision(1);
    ASSERT_TRUE(before);
    accessibility.set(window(1, 10), "AXMinimized", true);
    EXPECT_NE(accessibility.revision(1), before);
    EXPECT_EQ(accessibility.resetGrant("com.example.Korvane").status, 0);
    EXPECT_FALSE(accessibility.trusted());
}

}  // namespace
}  // namespace korvane::platform::simulated
