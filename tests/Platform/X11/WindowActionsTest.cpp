#include "tests/Platform/X11/X11Test.h"

#include <csignal>

namespace korvane::platform {
namespace {

using testing::SampleClient;

// The same for every window manager that people use.
class WindowActions : public X11Test, public ::testing::WithParamInterface<std::string> {
protected:
    void SetUp() override { openDesktop(GetParam()); }

    std::uint32_t opened(SampleClient &client, int number, const std::string &title)
    {
        const auto id = client.open(number, title);
        EXPECT_TRUE(appears(client.pid(), id));
        EXPECT_TRUE(waitFor([&] { return focused(client.pid()) == id; })) << "a new window did not get the focus";
        return id;
    }
    AxStatus setMinimized(Pid pid, std::uint32_t window, bool value)
    {
        return accessibility().set(elementOf(pid, window), "AXMinimized", value);
    }
    void raise(Pid pid, std::uint32_t window)
    {
        EXPECT_EQ(accessibility().perform(elementOf(pid, window), "AXRaise"), AxStatus::success);
        EXPECT_EQ(accessibility().set(accessibility().application(pid), "AXFrontmost", true), AxStatus::success);
    }
    bool gains(Pid pid, std::uint32_t window)
    {
        return waitFor([&] { return focused(pid) == window; });
    }
    // Of the windows on the screen, from the top.
    std::vector<std::int64_t> stack()
    {
        std::vector<std::int64_t> list;
        const auto windows = platform->windowList().onScreen();
        for (const OnScreenWindow &window : windows.value())
            list.push_back(*window.number);
        return list;
    }
};

INSTANTIATE_TEST_SUITE_P(Managers, WindowActions,
                         ::testing::Values("openbox --sm-disable", "icewm",
                                           "xfwm4 --compositor=off --sm-client-disable"),
                         [](const auto &manager) { return manager.param.substr(0, manager.param.find(' ')); });

TEST_P(WindowActions, AMinimisedWindowStaysATaskAndComesBack)
{
    SampleClient mail(server, "Mail");
    const auto inbox = opened(mail, 1, "Inbox");
    EXPECT_EQ(setMinimized(mail.pid(), inbox, true), AxStatus::success);
    ASSERT_TRUE(waitFor([&] { return minimized(mail.pid(), inbox); }));
    EXPECT_TRUE(waitFor([&] { return stack().empty(); }));
    EXPECT_EQ(setMinimized(mail.pid(), inbox, false), AxStatus::success);
    ASSERT_TRUE(waitFor([&] { return !minimized(mail.pid(), inbox); }));
    EXPECT_TRUE(waitFor([&] { return stack() == std::vector<std::int64_t>{inbox}; }));
}

TEST_P(WindowActions, AClickOnAMinimisedTaskRestoresAndActivatesThatWindow)
{
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = opened(mail, 1, "Inbox"), draft = opened(mail, 2, "Draft"), text = opened(editor, 1, "Text");
    setMinimized(mail.pid(), inbox, true);
    ASSERT_TRUE(waitFor([&] { return minimized(mail.pid(), inbox); }));
    setMinimized(mail.pid(), inbox, false);
    raise(mail.pid(), inbox);
    applications().unhide(mail.pid());
    applications().activate(mail.pid(), Activate::none);
    EXPECT_TRUE(gains(mail.pid(), inbox));
    EXPECT_FALSE(minimized(mail.pid(), inbox));
    // The other window of the application was not brought up on the way.
    ASSERT_EQ(stack().size(), 3U);
    EXPECT_EQ(stack(), (std::vector<std::int64_t>{inbox, text, draft}));
}

TEST_P(WindowActions, AClickOnATaskBehindBringsUpThatWindowAlone)
{
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = opened(mail, 1, "Inbox"), draft = opened(mail, 2, "Draft"), text = opened(editor, 1, "Text");
    // The application first, then the window, as the core does it.
    applications().unhide(mail.pid());
    applications().activate(mail.pid(), Activate::none);
    raise(mail.pid(), inbox);
    EXPECT_TRUE(gains(mail.pid(), inbox));
    EXPECT_TRUE(waitFor([&] { return stack() == std::vector<std::int64_t>{inbox, text, draft}; }));
}

TEST_P(WindowActions, TheFocusGoesFromOneWindowToTheOtherWithoutAGap)
{
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = opened(mail, 1, "Inbox");
    opened(editor, 1, "Text");
    loop.turnFor(Seconds(0.1));
    int gaps = 0;
    const auto watch = applications().observe(ApplicationEvent::activated, [&] {
        if (!isActive(mail.pid()) && !isActive(editor.pid()))
            ++gaps;
    });
    raise(mail.pid(), inbox);
    ASSERT_TRUE(gains(mail.pid(), inbox));
    EXPECT_EQ(gaps, 0);
    // When none is left, none has it.
    setMinimized(mail.pid(), inbox, true);
    EXPECT_TRUE(waitFor([&] { return isActive(editor.pid()); }));
    EXPECT_EQ(gaps, 0);
    editor.destroy(1);
    EXPECT_TRUE(waitFor([&] { return !isActive(mail.pid()) && focused(mail.pid()) == 0; }));
}

TEST_P(WindowActions, AnApplicationComesForwardWithTheWindowThatWasActiveLast)
{
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = opened(mail, 1, "Inbox");
    opened(mail, 2, "Draft");
    applications().activate(mail.pid(), Activate::none);
    raise(mail.pid(), inbox);
    ASSERT_TRUE(gains(mail.pid(), inbox));
    opened(editor, 1, "Text");
    EXPECT_TRUE(applications().activate(mail.pid(), Activate::none));
    EXPECT_TRUE(gains(mail.pid(), inbox));
}

TEST_P(WindowActions, AllWindowsOfAnApplicationComeForwardInTheirOrder)
{
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = opened(mail, 1, "Inbox"), draft = opened(mail, 2, "Draft"), text = opened(editor, 1, "Text");
    EXPECT_TRUE(applications().activate(mail.pid(), Activate::allWindows));
    EXPECT_TRUE(gains(mail.pid(), draft));
    EXPECT_TRUE(waitFor([&] { return stack().size() == 3 && stack().front() == draft; }));
    // Not every manager restacks at the wish of another program; those that don't leave the rest as it was.
    if (GetParam().starts_with("openbox")) {
        EXPECT_TRUE(waitFor([&] { return stack() == std::vector<std::int64_t>{draft, inbox, text}; }));
    }
}

TEST_P(WindowActions, AllMinimisedWindowsOfAnApplicationComeBack)
{
    SampleClient mail(server, "Mail");
    const auto inbox = opened(mail, 1, "Inbox"), draft = opened(mail, 2, "Draft");
    for (const auto window : {inbox, draft})
        setMinimized(mail.pid(), window, true);
    ASSERT_TRUE(waitFor([&] { return minimized(mail.pid(), inbox) && minimized(mail.pid(), draft); }));
    for (const auto window : {inbox, draft})
        setMinimized(mail.pid(), window, false);
    raise(mail.pid(), inbox);
    applications().unhide(mail.pid());
    applications().activate(mail.pid(), Activate::allWindows);
    EXPECT_TRUE(waitFor([&] { return !minimized(mail.pid(), inbox) && !minimized(mail.pid(), draft); }));
    EXPECT_TRUE(gains(mail.pid(), inbox));
}

TEST_P(WindowActions, HidingMinimisesAllWindowsAndShowingRestoresJustThose)
{
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = opened(mail, 1, "Inbox"), draft = opened(mail, 2, "Draft"), old = opened(mail, 3, "Old");
    const auto text = opened(editor, 1, "Text");
    setMinimized(mail.pid(), old, true);
    ASSERT_TRUE(waitFor([&] { return minimized(mail.pid(), old); }));
    // One notice stands for all that happens within a frame, so those before have to be through.
    loop.turnFor(Seconds(0.05));
    int hidden = 0, shown = 0;
    const auto hiddenSubscription = applications().observe(ApplicationEvent::hidden, [&] { ++hidden; });
    const auto shownSubscription = applications().observe(ApplicationEvent::unhidden, [&] { ++shown; });

    EXPECT_TRUE(applications().hide(mail.pid()));
    ASSERT_TRUE(waitFor([&] { return applications().find(mail.pid())->hidden; }));
    EXPECT_TRUE(minimized(mail.pid(), inbox) && minimized(mail.pid(), draft));
    EXPECT_TRUE(waitFor([&] { return hidden == 1; }));
    EXPECT_EQ(stack(), std::vector<std::int64_t>{text});

    EXPECT_TRUE(applications().unhide(mail.pid()));
    ASSERT_TRUE(waitFor([&] { return !minimized(mail.pid(), inbox) && !minimized(mail.pid(), draft); }));
    EXPECT_FALSE(applications().find(mail.pid())->hidden);
    EXPECT_TRUE(minimized(mail.pid(), old));
    EXPECT_TRUE(waitFor([&] { return shown == 1; }));
}

TEST_P(WindowActions, AHiddenApplicationWhoseWindowIsRestoredByHandIsHiddenNoMore)
{
    SampleClient mail(server, "Mail");
    const auto inbox = opened(mail, 1, "Inbox"), draft = opened(mail, 2, "Draft");
    applications().hide(mail.pid());
    ASSERT_TRUE(waitFor([&] { return applications().find(mail.pid())->hidden; }));
    server.run({"xdotool", "windowactivate", std::to_string(inbox)});
    ASSERT_TRUE(waitFor([&] { return !minimized(mail.pid(), inbox); }));
    EXPECT_FALSE(applications().find(mail.pid())->hidden);
    // What was not asked for stays away.
    applications().unhide(mail.pid());
    loop.turnFor(Seconds(0.2));
    EXPECT_TRUE(minimized(mail.pid(), draft));
}

TEST_P(WindowActions, ShowingWhatWasNotHiddenDoesNothing)
{
    SampleClient mail(server, "Mail");
    const auto inbox = opened(mail, 1, "Inbox");
    setMinimized(mail.pid(), inbox, true);
    ASSERT_TRUE(waitFor([&] { return minimized(mail.pid(), inbox); }));
    EXPECT_TRUE(applications().unhide(mail.pid()));
    loop.turnFor(Seconds(0.2));
    EXPECT_TRUE(minimized(mail.pid(), inbox));
}

TEST_P(WindowActions, AWindowIsClosedByItsCloseButton)
{
    SampleClient mail(server, "Mail");
    const auto inbox = opened(mail, 1, "Inbox"), draft = opened(mail, 2, "Draft");
    Value button;
    ASSERT_EQ(accessibility().copy(elementOf(mail.pid(), inbox), "AXCloseButton", button), AxStatus::success);
    EXPECT_EQ(accessibility().perform(std::get<Element>(button), "AXPress"), AxStatus::success);
    EXPECT_TRUE(waitFor([&] { return !elementOf(mail.pid(), inbox); }));
    EXPECT_TRUE(elementOf(mail.pid(), draft));
    EXPECT_TRUE(mail.running());
}

TEST_P(WindowActions, AWindowThatCannotBeAskedHasNoCloseButton)
{
    SampleClient mail(server, "Mail");
    const auto inbox = mail.create(1, "Inbox");
    mail.remove(1, "WM_PROTOCOLS");
    mail.show(1);
    ASSERT_TRUE(appears(mail.pid(), inbox));
    Value button;
    EXPECT_EQ(accessibility().copy(elementOf(mail.pid(), inbox), "AXCloseButton", button), AxStatus::noValue);
}

TEST_P(WindowActions, TerminatingClosesEveryWindow)
{
    SampleClient mail(server, "Mail");
    opened(mail, 1, "Inbox");
    opened(mail, 2, "Draft");
    EXPECT_TRUE(applications().terminate(mail.pid()));
    EXPECT_TRUE(waitFor([&] { return !applications().find(mail.pid()); }));
    EXPECT_TRUE(mail.running());
    EXPECT_FALSE(applications().terminate(mail.pid()));
}

TEST_P(WindowActions, AProgramThatNeverAnswersHoldsNobodyUp)
{
    SampleClient stuck(server, "Stuck"), mail(server, "Mail");
    const auto frozen = opened(stuck, 1, "Frozen"), inbox = opened(mail, 1, "Inbox");
    stuck.signal(SIGSTOP);
    const auto start = loop.monotonicNow();
    applications().activate(stuck.pid(), Activate::none);
    raise(stuck.pid(), frozen);
    Value value;
    EXPECT_EQ(accessibility().copy(elementOf(stuck.pid(), frozen), "AXCloseButton", value), AxStatus::success);
    EXPECT_EQ(accessibility().perform(std::get<Element>(value), "AXPress"), AxStatus::success);
    EXPECT_LT((loop.monotonicNow() - start).count(), 0.5);
    mail.retitle(1, "Inbox (1)");
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()) == std::vector<std::string>{"Inbox (1)"}; }));
    raise(mail.pid(), inbox);
    EXPECT_TRUE(gains(mail.pid(), inbox));
}

TEST_P(WindowActions, ActivatingAWindowOnAnotherDesktopGoesThere)
{
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = opened(mail, 1, "Inbox");
    server.run({"xdotool", "set_desktop", "1"});
    ASSERT_TRUE(waitFor([&] { return stack().empty(); })) << "the manager has one desktop only";
    opened(editor, 1, "Text");
    EXPECT_TRUE(elementOf(mail.pid(), inbox));
    applications().activate(mail.pid(), Activate::none);
    raise(mail.pid(), inbox);
    EXPECT_TRUE(gains(mail.pid(), inbox));
    EXPECT_TRUE(waitFor([&] { return stack() == std::vector<std::int64_t>{inbox}; }));
}

TEST_P(WindowActions, AProcessWithoutTasksIsAskedToEndByASignal)
{
    SampleClient dock(server, "Dock");
    dock.create(1, "dock");
    dock.setAtoms(1, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_DOCK"});
    dock.show(1);
    ASSERT_TRUE(waitFor([&] { return applications().find(dock.pid()).has_value(); }));
    EXPECT_EQ(applications().find(dock.pid())->policy, ActivationPolicy::accessory);
    EXPECT_TRUE(applications().terminate(dock.pid()));
    EXPECT_TRUE(waitFor([&] { return !dock.running(); }));
}

TEST_P(WindowActions, WhatIsNotThereIsRefused)
{
    constexpr Pid nobody = 1;
    EXPECT_FALSE(applications().find(nobody));
    EXPECT_FALSE(applications().hide(nobody));
    EXPECT_FALSE(applications().unhide(nobody));
    EXPECT_FALSE(applications().terminate(nobody));
    EXPECT_FALSE(applications().activate(nobody, Activate::allWindows));
    EXPECT_EQ(applications().icon(nobody), nullptr);
    Value value;
    const Element element = accessibility().application(nobody);
    ASSERT_TRUE(element);
    EXPECT_EQ(accessibility().copy(element, "AXWindows", value), AxStatus::gone);
    EXPECT_EQ(accessibility().set(element, "AXFrontmost", true), AxStatus::gone);
}

}  // namespace
}  // namespace korvane::platform
