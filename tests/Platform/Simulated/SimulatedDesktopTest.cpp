// A passive desktop: what it answers, what it notes, and that nothing happens by itself.
#include "Platform/Simulated/SimulatedDesktop.h"

#include <gtest/gtest.h>

namespace korvane::platform::simulated {
namespace {

using platform::Activate;
using platform::ApplicationEvent;
using platform::AxStatus;
using platform::Element;
using platform::SessionEvent;
using platform::Value;

Window window(std::uint64_t hash, const char *title)
{
    Window made;
    made.hash = hash;
    made.title = title;
    return made;
}

Process mail()
{
    Process process;
    process.application.pid = 101;
    process.application.localizedName = "Mail";
    process.application.bundleIdentifier = "com.example.mail";
    process.windows = {window(1, "Inbox"), window(2, "Draft")};
    process.focusedWindow = 2;
    return process;
}

class PassiveDesktop : public testing::Test {
protected:
    PassiveDesktop() { desktop.applications.put(mail()); }

    std::vector<Element> windows(platform::Pid pid = 101)
    {
        Value list;
        if (desktop.accessibility.copy(desktop.accessibility.application(pid), "AXWindows", list) != AxStatus::success)
            return {};
        return std::get<std::vector<Element>>(list);
    }
    AxStatus read(const Element &element, std::string_view attribute)
    {
        return desktop.accessibility.copy(element, attribute, value);
    }

    SimulatedDesktop desktop{Behaviour::passive};
    Value value;
};

TEST_F(PassiveDesktop, AnswersTheAttributesOfItsWindows)
{
    const auto elements = windows();
    ASSERT_EQ(elements.size(), 2u);
    EXPECT_EQ(desktop.accessibility.hash(elements[1]), 2u);
    ASSERT_EQ(read(elements[0], "AXTitle"), AxStatus::success);
    EXPECT_EQ(std::get<std::string>(value), "Inbox");
    EXPECT_EQ(read(elements[0], "AXIdentifier"), AxStatus::noValue);
    ASSERT_EQ(read(elements[0], "AXMinimized"), AxStatus::success);
    EXPECT_FALSE(std::get<bool>(value));
    EXPECT_EQ(read(elements[0], "AXRole"), AxStatus::unsupported);
    ASSERT_EQ(read(desktop.accessibility.application(101), "AXFocusedWindow"), AxStatus::success);
    EXPECT_TRUE(desktop.accessibility.equal(std::get<Element>(value), elements[1]));
    EXPECT_FALSE(desktop.accessibility.equal(std::get<Element>(value), elements[0]));
}

TEST_F(PassiveDesktop, NotesActionsAndChangesNothing)
{
    const auto elements = windows();
    auto &accessibility = desktop.accessibility;
    EXPECT_EQ(accessibility.perform(elements[0], "AXRaise"), AxStatus::success);
    EXPECT_EQ(accessibility.set(elements[0], "AXMinimized", true), AxStatus::success);
    EXPECT_EQ(accessibility.set(accessibility.application(101), "AXFrontmost", true), AxStatus::success);
    ASSERT_EQ(read(elements[1], "AXCloseButton"), AxStatus::success);
    EXPECT_EQ(accessibility.perform(std::get<Element>(value), "AXPress"), AxStatus::success);
    EXPECT_TRUE(desktop.applications.activate(101, Activate::allWindows));
    EXPECT_TRUE(desktop.applications.terminate(101));
    EXPECT_FALSE(desktop.applications.hide(999));

    using Arguments = std::vector<ActionArgument>;
    const std::int64_t pid = 101, first = 1, second = 2, all = 1;
    const std::vector<Action> expected{{"perform", Arguments{pid, first, std::string("AXRaise")}},
                                       {"set", Arguments{pid, first, std::string("AXMinimized"), true}},
                                       {"setApplication", Arguments{pid, std::string("AXFrontmost"), true}},
                                       {"press", Arguments{pid, second}},
                                       {"activate", Arguments{pid, all}},
                                       {"terminate", Arguments{pid}}};
    EXPECT_EQ(desktop.actions.take(), expected);
    EXPECT_TRUE(desktop.actions.all().empty());
    EXPECT_EQ(desktop.applications.window(101, 1)->minimized, false);
    EXPECT_EQ(desktop.applications.windowCount(101), 2u);
    EXPECT_FALSE(desktop.applications.active());
    EXPECT_FALSE(desktop.loop.hasPosted());
}

TEST_F(PassiveDesktop, EveryReadFailsWithoutThePermission)
{
    const auto elements = windows();
    desktop.accessibility.setTrusted(false);
    EXPECT_FALSE(desktop.accessibility.trusted());
    EXPECT_EQ(read(elements[0], "AXTitle"), AxStatus::noPermission);
    EXPECT_EQ(desktop.accessibility.perform(elements[0], "AXRaise"), AxStatus::noPermission);
    EXPECT_FALSE(desktop.accessibility.trustedPrompting());
    desktop.accessibility.setGrantsWhenPrompted(true);
    EXPECT_TRUE(desktop.accessibility.trustedPrompting());
    EXPECT_EQ(read(elements[0], "AXTitle"), AxStatus::success);
}

TEST_F(PassiveDesktop, ReadsFailAsTheyAreTold)
{
    const auto elements = windows();
    desktop.applications.changeWindow(101, 1, [](Window &each) { each.readStatus = AxStatus::cannotComplete; });
    desktop.applications.changeWindow(101, 2, [](Window &each) { each.minimized.reset(); });
    EXPECT_EQ(read(elements[0], "AXTitle"), AxStatus::cannotComplete);
    EXPECT_EQ(read(elements[1], "AXMinimized"), AxStatus::noValue);
    EXPECT_EQ(read(elements[1], "AXTitle"), AxStatus::success);
    desktop.applications.setReadStatus(101, AxStatus::failure);
    EXPECT_EQ(read(elements[1], "AXTitle"), AxStatus::failure);
    EXPECT_EQ(read(desktop.accessibility.application(101), "AXWindows"), AxStatus::failure);

    Process silent = mail();
    silent.application.pid = 102;
    silent.windows.reset();
    desktop.applications.put(silent);
    EXPECT_EQ(read(desktop.accessibility.application(102), "AXWindows"), AxStatus::cannotComplete);
    EXPECT_EQ(read(desktop.accessibility.application(103), "AXWindows"), AxStatus::gone);
}

TEST_F(PassiveDesktop, AWindowThatIsGoneStaysGoneAlsoForAnOldHandle)
{
    const auto elements = windows();
    desktop.applications.closeWindow(101, 1);
    EXPECT_EQ(read(elements[0], "AXTitle"), AxStatus::gone);
    EXPECT_EQ(read(elements[1], "AXTitle"), AxStatus::success);
    desktop.applications.remove(101);
    EXPECT_EQ(read(elements[1], "AXTitle"), AxStatus::gone);
    EXPECT_FALSE(desktop.applications.find(101));
}

TEST_F(PassiveDesktop, AnApplicationIsReplacedInPlaceAndItsWindowsStayTheSame)
{
    Process notes = mail();
    notes.application.pid = 102;
    desktop.applications.put(notes);
    const auto before = windows();
    Process changed = mail();
    changed.application.localizedName = "Post";
    changed.windows = {window(2, "Sent"), window(3, "New")};
    desktop.applications.put(changed);
    ASSERT_EQ(desktop.applications.running().size(), 2u);
    EXPECT_EQ(desktop.applications.running().front().localizedName, "Post");
    EXPECT_EQ(read(before[0], "AXTitle"), AxStatus::gone);
    ASSERT_EQ(read(before[1], "AXTitle"), AxStatus::success);
    EXPECT_EQ(std::get<std::string>(value), "Sent");
}

TEST_F(PassiveDesktop, ARevisionIsEqualExactlyWhileNothingChanges)
{
    auto &accessibility = desktop.accessibility;
    EXPECT_FALSE(accessibility.revision(101));
    accessibility.setRevisionsSupported(true);
    Process other = mail();
    other.application.pid = 102;
    desktop.applications.put(other);

    auto last = accessibility.revision(101);
    const auto untouched = accessibility.revision(102);
    ASSERT_TRUE(last && untouched);
    EXPECT_EQ(accessibility.revision(101), last);
    const auto changed = [&] {
        const auto now = accessibility.revision(101);
        const bool differs = now != last;
        last = now;
        return differs;
    };
    desktop.applications.setTitle(101, 1, "Retitled");
    EXPECT_TRUE(changed());
    desktop.applications.setFocusedWindow(101, 1);
    EXPECT_TRUE(changed());
    desktop.applications.setMinimized(101, 1, true);
    EXPECT_TRUE(changed());
    desktop.applications.openWindow(101, window(3, "Third"));
    EXPECT_TRUE(changed());
    desktop.applications.closeWindow(101, 3);
    EXPECT_TRUE(changed());
    desktop.applications.put(mail());
    EXPECT_TRUE(changed());
    desktop.applications.setReadStatus(101, AxStatus::failure);
    EXPECT_TRUE(changed());
    EXPECT_FALSE(changed());
    EXPECT_EQ(accessibility.revision(102), untouched);

    accessibility.setTrusted(false);
    EXPECT_FALSE(accessibility.revision(102));
    accessibility.setTrusted(true);
    EXPECT_NE(accessibility.revision(102), untouched);
    EXPECT_FALSE(accessibility.revision(999));
}

TEST_F(PassiveDesktop, ANoticeComesAtTheNextTurnAndNotToWhoeverLeft)
{
    int launched = 0, slept = 0;
    auto subscription = desktop.applications.observe(ApplicationEvent::launched, [&] { ++launched; });
    const auto sleep = desktop.applications.observe(SessionEvent::screensSlept, [&] { ++slept; });
    EXPECT_EQ(desktop.applications.observerCount(), 2u);
    desktop.applications.notify(ApplicationEvent::launched);
    desktop.applications.notify(SessionEvent::screensSlept);
    EXPECT_EQ(launched + slept, 0);
    desktop.loop.runPosted();
    EXPECT_EQ(launched, 1);
    EXPECT_EQ(slept, 1);
    desktop.applications.notify(ApplicationEvent::launched);
    subscription.reset();
    desktop.loop.runPosted();
    EXPECT_EQ(launched, 1);
}

TEST_F(PassiveDesktop, TheDockIsATreeOfItsOwnProcess)
{
    EXPECT_TRUE(desktop.applications.withBundleIdentifier("com.apple.dock").empty());
    DockItem item;
    item.title = "Mail";
    item.subrole = std::int64_t(5);
    item.statusLabel = "3";
    DockItem root;
    root.children = std::vector<DockItem>{item};
    desktop.applications.setDock(root);
    const auto docks = desktop.applications.withBundleIdentifier("com.apple.dock");
    ASSERT_EQ(docks.size(), 1u);
    EXPECT_EQ(desktop.applications.dockQueries(), 2);
    const Element dock = desktop.accessibility.application(docks.front().pid);
    EXPECT_EQ(read(dock, "AXTitle"), AxStatus::noValue);
    ASSERT_EQ(read(dock, "AXChildren"), AxStatus::success);
    const Element child = std::get<std::vector<Element>>(value).at(0);
    ASSERT_EQ(read(child, "AXStatusLabel"), AxStatus::success);
    EXPECT_EQ(std::get<std::string>(value), "3");
    ASSERT_EQ(read(child, "AXSubrole"), AxStatus::success);
    EXPECT_EQ(std::get<std::int64_t>(value), 5);
    EXPECT_EQ(read(child, "AXChildren"), AxStatus::noValue);
    desktop.applications.setDock(std::nullopt);
    EXPECT_EQ(desktop.applications.running().size(), 1u);
    EXPECT_EQ(read(child, "AXTitle"), AxStatus::gone);
}

TEST_F(PassiveDesktop, AlertsTakeTheQueuedAnswersFirst)
{
    desktop.dialogs.queueResponse(1001);
    EXPECT_EQ(desktop.dialogs.runModal({"Sure?", "", {"Yes", "No"}}, 0.5), 1001);
    EXPECT_EQ(desktop.dialogs.runModal({"Sure?", "Really", {"Yes"}}, 0.25), 1000);
    ASSERT_EQ(desktop.dialogs.shown().size(), 2u);
    EXPECT_EQ(desktop.dialogs.shown().back().horizontalCenterFraction, 0.25);
    EXPECT_EQ(desktop.actions.all().front().arguments.at(1), ActionArgument());
}

TEST_F(PassiveDesktop, AHotKeyWorksWhileItIsHeldAndFree)
{
    std::vector<std::uint32_t> pressed;
    const auto handler = desktop.hotKeys.install([&](std::uint32_t id) { pressed.push_back(id); });
    desktop.hotKeys.take(49, 4096);
    auto held = desktop.hotKeys.add({53, 4096, 1});
    const auto lost = desktop.hotKeys.add({49, 4096, 2});
    EXPECT_TRUE(desktop.hotKeys.press(1));
    EXPECT_FALSE(desktop.hotKeys.press(2));
    EXPECT_TRUE(pressed.empty());
    desktop.loop.runPosted();
    EXPECT_EQ(pressed, std::vector<std::uint32_t>{1});
    held.reset();
    EXPECT_FALSE(desktop.hotKeys.press(1));
}

TEST_F(PassiveDesktop, DisplaysCountFromTheTopOfTheFirstScreen)
{
    int changes = 0;
    const auto observer = desktop.screens.observeChanges([&] { ++changes; });
    desktop.screens.set({{1, {0, 0, 1920, 1080}, 1}, {2, {1920, 200, 1280, 720}, 2}});
    EXPECT_EQ(changes, 0);
    desktop.loop.runPosted();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(desktop.screens.displayBounds(2), (platform::Rect{1920, 160, 1280, 720}));
    EXPECT_EQ(desktop.screens.displayBounds(3), platform::Rect());
    desktop.pointer.warp({2000, 100});
    EXPECT_EQ(desktop.pointer.location(), (platform::Point{2000, 980}));
    desktop.screens.set({});
    EXPECT_FALSE(desktop.screens.main());
}

TEST_F(PassiveDesktop, TheWindowServerListsWhatItIsToldOrNothing)
{
    EXPECT_EQ(desktop.windowList.onScreen()->size(), 0u);
    desktop.windowList.set({{{0, 101, 5, "Inbox"}}});
    EXPECT_EQ(desktop.windowList.onScreen()->at(0).number, 5);
    desktop.windowList.set(std::nullopt);
    EXPECT_FALSE(desktop.windowList.onScreen());
}

}  // namespace
}  // namespace korvane::platform::simulated
