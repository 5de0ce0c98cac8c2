#include "tests/Platform/X11/X11Test.h"

#include <csignal>
#include <unistd.h>

namespace korvane::platform {
namespace {

using Names = std::vector<std::string>;
using testing::SampleClient;

class PropertyMirror : public X11Test {
protected:
    // Counts the notifications of every kind.
    void observeAll()
    {
        for (const auto event : {ApplicationEvent::launched, ApplicationEvent::terminated, ApplicationEvent::activated,
                                 ApplicationEvent::hidden, ApplicationEvent::unhidden})
            subscriptions.push_back(applications().observe(event, [this, event] { events.push_back(event); }));
    }
    bool told(ApplicationEvent event) const { return std::find(events.begin(), events.end(), event) != events.end(); }

    std::vector<Subscription> subscriptions;
    std::vector<ApplicationEvent> events;
};

TEST_F(PropertyMirror, WindowsThatWereThereBeforeAreKnownAtOnce)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    const auto first = mail.open(1, "Inbox");
    ASSERT_TRUE(appears(mail.pid(), first));
    openPlatform();
    EXPECT_TRUE(accessibility().trusted());
    EXPECT_EQ(titles(mail.pid()), Names{"Inbox"});
}

TEST_F(PropertyMirror, AWindowIsATaskOfTheProcessThatMadeIt)
{
    openDesktop();
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = mail.open(1, "Inbox");
    ASSERT_TRUE(appears(mail.pid(), inbox));
    const auto text = editor.open(1, "Text"), draft = mail.open(2, "Draft");
    ASSERT_TRUE(appears(editor.pid(), text));
    ASSERT_TRUE(appears(mail.pid(), draft));
    EXPECT_EQ(titles(mail.pid()), (Names{"Inbox", "Draft"}));
    EXPECT_EQ(titles(editor.pid()), Names{"Text"});

    std::vector<Pid> pids;
    for (const Application &application : applications().running())
        pids.push_back(application.pid);
    EXPECT_EQ(pids, (std::vector<Pid>{mail.pid(), editor.pid(), getpid()}));
    EXPECT_EQ(applications().find(mail.pid())->localizedName, "Mail");
    EXPECT_EQ(applications().find(mail.pid())->policy, ActivationPolicy::regular);
    EXPECT_EQ(applications().find(getpid())->policy, ActivationPolicy::accessory);
}

TEST_F(PropertyMirror, AMisleadingProcessNumberOfTheWindowIsNotBelieved)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    const auto inbox = mail.create(1, "Inbox");
    mail.setNumbers(1, "_NET_WM_PID", "CARDINAL", {1});
    mail.show(1);
    EXPECT_TRUE(appears(mail.pid(), inbox));
    EXPECT_EQ(applications().find(1), std::nullopt);
}

TEST_F(PropertyMirror, TheNewTitleIsToldAndRead)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    loop.turnFor(Seconds(0.1));
    observeAll();
    const auto before = accessibility().revision(mail.pid());
    mail.retitle(1, "Inbox (3)");
    ASSERT_TRUE(waitFor([&] { return titles(mail.pid()) == Names{"Inbox (3)"}; }));
    EXPECT_TRUE(waitFor([&] { return told(ApplicationEvent::activated); }));
    EXPECT_NE(accessibility().revision(mail.pid()), before);
}

TEST_F(PropertyMirror, WhatChangesNothingTellsNothing)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    loop.turnFor(Seconds(0.2));
    observeAll();
    const auto before = accessibility().revision(mail.pid());
    mail.retitle(1, "Inbox");
    mail.setBytes(1, "WM_ICON_NAME", "STRING", "other");
    mail.setNumbers(1, "_KORVANE_UNKNOWN", "CARDINAL", {1, 2, 3});
    loop.turnFor(Seconds(0.2));
    EXPECT_TRUE(events.empty());
    EXPECT_EQ(accessibility().revision(mail.pid()), before);
}

TEST_F(PropertyMirror, AChangeOfOneApplicationLeavesTheStampOfAnother)
{
    openDesktop();
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    ASSERT_TRUE(appears(editor.pid(), editor.open(1, "Text")));
    ASSERT_TRUE(waitFor([&] { return isActive(editor.pid()); }));
    const auto before = accessibility().revision(editor.pid());
    mail.retitle(1, "Inbox (3)");
    ASSERT_TRUE(waitFor([&] { return titles(mail.pid()) == Names{"Inbox (3)"}; }));
    EXPECT_EQ(accessibility().revision(editor.pid()), before);
}

TEST_F(PropertyMirror, ManyChangesAreToldAtMostOnceAFrame)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    loop.turnFor(Seconds(0.1));
    observeAll();
    const auto start = loop.monotonicNow();
    for (int i = 0; i < 100; ++i) {
        mail.retitle(1, "Inbox " + std::to_string(i));
        loop.turnUntil([&] { return titles(mail.pid()) == Names{"Inbox " + std::to_string(i)}; });
    }
    const auto elapsed = (loop.monotonicNow() - start).count();
    loop.turnFor(Seconds(0.05));
    EXPECT_GE(events.size(), 2U);
    EXPECT_LE(static_cast<double>(events.size()), elapsed / 0.016 + 3);
}

TEST_F(PropertyMirror, AnApplicationIsToldToComeWithItsFirstWindowAndToGoWithItsLast)
{
    openDesktop();
    observeAll();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    EXPECT_TRUE(waitFor([&] { return told(ApplicationEvent::launched); }));
    mail.destroy(1);
    ASSERT_TRUE(waitFor([&] { return !applications().find(mail.pid()); }));
    EXPECT_TRUE(waitFor([&] { return told(ApplicationEvent::terminated); }));
}

TEST_F(PropertyMirror, AWindowDestroyedDuringAQueryIsSimplyGone)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    // Windows come and go faster than they are read.
    for (int i = 0; i < 60; ++i) {
        mail.open(i, "short-lived");
        if (i % 3 == 0)
            loop.turnFor(Seconds(0.001));
        mail.destroy(i);
    }
    const auto last = mail.open(100, "staying");
    ASSERT_TRUE(appears(mail.pid(), last));
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()) == Names{"staying"}; }));
    EXPECT_FALSE(loop.terminated());
}

TEST_F(PropertyMirror, AWithdrawnWindowIsNoTask)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    ASSERT_TRUE(appears(mail.pid(), mail.open(2, "Draft")));
    mail.withdraw(1);
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()) == Names{"Draft"}; }));
    mail.show(1);
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()).size() == 2; }));
}

TEST_F(PropertyMirror, AnElementOfAWindowThatIsGoneSaysSo)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    const auto inbox = mail.open(1, "Inbox");
    ASSERT_TRUE(appears(mail.pid(), inbox));
    const Element element = elementOf(mail.pid(), inbox), application = accessibility().application(mail.pid());
    const Pid pid = mail.pid();
    mail.end();
    ASSERT_TRUE(waitFor([&] { return !applications().find(pid); }));
    Value value;
    EXPECT_EQ(accessibility().copy(element, "AXTitle", value), AxStatus::gone);
    EXPECT_EQ(accessibility().set(element, "AXMinimized", true), AxStatus::gone);
    EXPECT_EQ(accessibility().perform(element, "AXRaise"), AxStatus::gone);
    EXPECT_EQ(accessibility().copy(application, "AXWindows", value), AxStatus::gone);
}

TEST_F(PropertyMirror, DocksMenusAndWindowsThatAskToBeSkippedAreNoTasks)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    mail.create(2, "dock");
    mail.setAtoms(2, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_DOCK"});
    mail.create(3, "splash");
    mail.setAtoms(3, "_NET_WM_WINDOW_TYPE", {"_NET_WM_WINDOW_TYPE_SPLASH"});
    mail.create(4, "skipped");
    mail.setAtoms(4, "_NET_WM_STATE", {"_NET_WM_STATE_SKIP_TASKBAR"});
    mail.create(5, "unknown type first");
    mail.setAtoms(5, "_NET_WM_WINDOW_TYPE", {"_UNHEARD_OF", "_NET_WM_WINDOW_TYPE_UTILITY"});
    for (int i = 2; i <= 5; ++i)
        mail.show(i);
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()) == (Names{"Inbox", "unknown type first"}); }));
    // What is shown later of the same program is in the list as well, so the others have been looked at.
    ASSERT_TRUE(appears(mail.pid(), mail.open(6, "last")));
    EXPECT_EQ(titles(mail.pid()), (Names{"Inbox", "unknown type first", "last"}));
}

TEST_F(PropertyMirror, AModalDialogOfATaskIsItselfNoneButHoldsItsFocus)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    const auto inbox = mail.open(1, "Inbox");
    ASSERT_TRUE(appears(mail.pid(), inbox));
    mail.create(2, "Really?");
    mail.setTransient(2, inbox, true);
    mail.show(2);
    const auto other = mail.create(3, "Find");
    mail.setTransient(3, inbox, false);
    mail.show(3);
    ASSERT_TRUE(appears(mail.pid(), other));
    EXPECT_EQ(titles(mail.pid()), (Names{"Inbox", "Find"}));
    server.run({"xdotool", "windowactivate", std::to_string(mail.identifier(2))});
    EXPECT_TRUE(waitFor([&] { return focused(mail.pid()) == inbox; }));
}

TEST_F(PropertyMirror, OneApplicationIsActiveAndOneOfItsWindowsHasTheFocus)
{
    openDesktop();
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = mail.open(1, "Inbox"), text = editor.open(1, "Text");
    ASSERT_TRUE(appears(mail.pid(), inbox));
    ASSERT_TRUE(appears(editor.pid(), text));
    server.run({"xdotool", "windowactivate", std::to_string(inbox)});
    ASSERT_TRUE(waitFor([&] { return isActive(mail.pid()); }));
    EXPECT_EQ(focused(mail.pid()), inbox);
    EXPECT_EQ(focused(editor.pid()), 0U);
    server.run({"xdotool", "windowactivate", std::to_string(text)});
    ASSERT_TRUE(waitFor([&] { return isActive(editor.pid()); }));
    EXPECT_FALSE(isActive(mail.pid()));
    EXPECT_EQ(focused(editor.pid()), text);
    EXPECT_EQ(focused(mail.pid()), 0U);
}

TEST_F(PropertyMirror, TheRoleIsTheIdentifier)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    const auto inbox = mail.open(1, "Inbox");
    ASSERT_TRUE(appears(mail.pid(), inbox));
    Value value;
    EXPECT_EQ(accessibility().copy(elementOf(mail.pid(), inbox), "AXIdentifier", value), AxStatus::noValue);
    mail.setBytes(1, "WM_WINDOW_ROLE", "STRING", "browser");
    ASSERT_TRUE(waitFor([&] {
        return accessibility().copy(elementOf(mail.pid(), inbox), "AXIdentifier", value) == AxStatus::success;
    }));
    EXPECT_EQ(std::get<std::string>(value), "browser");
}

TEST_F(PropertyMirror, AnInstalledApplicationGivesItsNameIdentifierAndIcon)
{
    catalogue.byClass["Mail"] = {"Post", "com.apple.mail", "/applications/mail.desktop", "mail-icon"};
    iconFiles["mail-icon"] = std::make_shared<Image>(Image{1, 1, {1, 2, 3, 255}});
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    const auto application = applications().find(mail.pid());
    ASSERT_TRUE(application);
    EXPECT_EQ(application->localizedName, "Post");
    EXPECT_EQ(application->bundlePath, "/applications/mail.desktop");
    ASSERT_EQ(applications().withBundleIdentifier("com.apple.mail").size(), 1U);
    EXPECT_EQ(applications().icon(mail.pid()), iconFiles["mail-icon"]);

    catalogue.byClass["Mail"].name = "Courrier";
    catalogue.change();
    EXPECT_EQ(applications().running().front().localizedName, "Courrier");
}

TEST_F(PropertyMirror, WithoutAnInstalledApplicationTheWindowsIconServes)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    const auto inbox = mail.create(1, "Inbox");
    mail.setNumbers(1, "_NET_WM_ICON", "CARDINAL", {1, 1, 0xff0000ff});
    mail.show(1);
    ASSERT_TRUE(appears(mail.pid(), inbox));
    const ImagePtr first = applications().icon(mail.pid());
    ASSERT_TRUE(first);
    EXPECT_EQ(first->pixels, (std::vector<std::uint8_t>{0, 0, 255, 255}));
    EXPECT_EQ(applications().icon(mail.pid()), first);
    mail.setNumbers(1, "_NET_WM_ICON", "CARDINAL", {2, 1, 0xff102030, 0x80ff0000});
    ASSERT_TRUE(waitFor([&] { return applications().icon(mail.pid())->width == 2; }));
    const ImagePtr icon = applications().icon(mail.pid());
    EXPECT_EQ(icon->pixels, (std::vector<std::uint8_t>{0x10, 0x20, 0x30, 255, 128, 0, 0, 128}));
}

TEST_F(PropertyMirror, AWindowThatDemandsAttentionPutsABadgeOnTheDock)
{
    openDesktop();
    const auto docks = applications().withBundleIdentifier("com.apple.dock");
    ASSERT_EQ(docks.size(), 1U);
    const auto badges = [&] {
        std::map<std::string, std::string> found;
        Value lists, items, title, label, subrole;
        const Element root = accessibility().application(docks.front().pid);
        EXPECT_EQ(accessibility().copy(root, "AXChildren", lists), AxStatus::success);
        for (const Element &list : std::get<std::vector<Element>>(lists)) {
            EXPECT_EQ(accessibility().copy(list, "AXChildren", items), AxStatus::success);
            for (const Element &item : std::get<std::vector<Element>>(items)) {
                accessibility().copy(item, "AXTitle", title);
                accessibility().copy(item, "AXStatusLabel", label);
                accessibility().copy(item, "AXSubrole", subrole);
                EXPECT_EQ(std::get<std::string>(subrole), "AXApplicationDockItem");
                found[std::get<std::string>(title)] = std::get<std::string>(label);
            }
        }
        return found;
    };
    using Badges = std::map<std::string, std::string>;
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    EXPECT_EQ(badges(), Badges{});
    mail.setNumbers(1, "WM_HINTS", "WM_HINTS", {1 << 8, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_TRUE(waitFor([&] { return badges() == Badges{{"Mail", "!"}}; }));
    mail.setNumbers(1, "WM_HINTS", "WM_HINTS", {0, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_TRUE(waitFor([&] { return badges() == Badges{}; }));
}

TEST_F(PropertyMirror, ALaunchersBadgeGoesToTheApplicationOfItsEntry)
{
    catalogue.byClass["Mail"] = {"Post", "com.apple.mail", "/applications/org.example.Mail.desktop", ""};
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    const auto label = [&] {
        Value lists, items, text = std::string();
        const Element dock = accessibility().application(applications().withBundleIdentifier("com.apple.dock")[0].pid);
        accessibility().copy(dock, "AXChildren", lists);
        accessibility().copy(std::get<std::vector<Element>>(lists).front(), "AXChildren", items);
        for (const Element &item : std::get<std::vector<Element>>(items))
            accessibility().copy(item, "AXStatusLabel", text);
        return std::get<std::string>(text);
    };
    platform->setBadgedPrograms({{{"org.example.Mail.desktop", "7"}, {"org.example.Other.desktop", "9"}}, {}});
    EXPECT_EQ(label(), "7");
    platform->setBadgedPrograms({});
    EXPECT_EQ(label(), "");
}

TEST_F(PropertyMirror, AnObserverMayRunALoopOfItsOwn)
{
    openDesktop();
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    ASSERT_TRUE(appears(editor.pid(), editor.open(1, "Text")));
    loop.turnFor(Seconds(0.1));
    int depth = 0;
    bool seen = false;
    const auto alert = applications().observe(ApplicationEvent::activated, [&] {
        if (depth++ == 0) {
            editor.retitle(1, "while an alert is open");
            seen = waitFor([&] { return titles(editor.pid()) == Names{"while an alert is open"}; });
        }
    });
    mail.retitle(1, "Inbox (1)");
    EXPECT_TRUE(waitFor([&] { return depth > 0; }));
    EXPECT_TRUE(seen);
    mail.retitle(1, "Inbox (2)");
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()) == Names{"Inbox (2)"}; }));
}

TEST_F(PropertyMirror, NothingWakesTheLoopWhileNothingHappens)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    loop.turnFor(Seconds(0.5));
    EXPECT_EQ(loop.turnsWithin(Seconds(1)), 0);
}

TEST_F(PropertyMirror, ReadingAsksTheServerForNothing)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    loop.turnFor(Seconds(0.1));
    // A server that has stopped answers nobody: whoever asks it waits until this test is ended.
    server.suspend(true);
    EXPECT_EQ(titles(mail.pid()), Names{"Inbox"});
    EXPECT_TRUE(accessibility().trusted());
    EXPECT_EQ(applications().running().size(), 2U);
    EXPECT_EQ(platform->windowList().onScreen()->size(), 1U);
    EXPECT_TRUE(accessibility().revision(mail.pid()));
    EXPECT_EQ(platform->screens().all().size(), 1U);
    EXPECT_EQ(accessibility().set(elementOf(mail.pid(), mail.pid()), "AXMinimized", true), AxStatus::failure);
    applications().activate(mail.pid(), Activate::none);
    applications().hide(mail.pid());
    server.suspend(false);
}

TEST_F(PropertyMirror, TheLoopEndsWhenTheServerGoesAway)
{
    openDesktop();
    server.kill();
    EXPECT_TRUE(waitFor([&] { return loop.terminated(); }));
    EXPECT_TRUE(applications().running().size() <= 1);
}

TEST_F(PropertyMirror, NoPlatformWithoutAServer)
{
    EXPECT_FALSE(X11Platform::open({":59999", 1, nullptr}, loop, catalogue, {}));
}

}  // namespace
}  // namespace korvane::platform
