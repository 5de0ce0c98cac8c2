#include "tests/Platform/X11/X11Test.h"

#include <unistd.h>

namespace korvane::platform {
namespace {

using Names = std::vector<std::string>;
using testing::SampleClient;

class PropertyMirror : public X11Test {};

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
