// Window managers that come and go.
#include "tests/Platform/X11/X11Test.h"

#include <csignal>
#include <unistd.h>

namespace korvane::platform {
namespace {

using Names = std::vector<std::string>;
using testing::SampleClient;

class WindowManagers : public X11Test {
protected:
    Names onScreen()
    {
        Names names;
        const auto windows = platform->windowList().onScreen();
        for (const OnScreenWindow &window : windows.value())
            names.push_back(window.name.value_or(""));
        std::sort(names.begin(), names.end());
        return names;
    }
    std::size_t runningWithWindows()
    {
        const auto &all = applications().running();
        return static_cast<std::size_t>(
            std::count_if(all.begin(), all.end(), [](const auto &one) { return one.pid != getpid(); }));
    }
};

TEST_F(WindowManagers, WithoutOneNothingIsTrustedAndTheTreeServesAsList)
{
    openDesktop("");
    EXPECT_FALSE(accessibility().trusted());
    EXPECT_FALSE(accessibility().trustedPrompting());
    EXPECT_FALSE(accessibility().resetGrant("org.example.Mail").launched);
    EXPECT_EQ(accessibility().resetGrant("org.example.Mail").error, "This desktop keeps no such permission.");
    SampleClient mail(server, "Mail");
    mail.open(1, "Inbox");
    mail.create(2, "never shown");
    EXPECT_TRUE(waitFor([&] { return onScreen() == Names{"Inbox"}; }));
    EXPECT_EQ(platform->windowList().onScreen()->front().ownerPid, mail.pid());
    EXPECT_TRUE(applications().find(mail.pid()));
    // Whoever still believes in a manager that has gone finds the windows all the same.
    EXPECT_EQ(titles(mail.pid()), Names{"Inbox"});
    EXPECT_EQ(accessibility().perform(elementOf(mail.pid(), mail.identifier(1)), "AXRaise"), AxStatus::noPermission);
    mail.open(3, "Draft");
    EXPECT_TRUE(waitFor([&] { return onScreen() == (Names{"Draft", "Inbox"}); }));
    mail.retitle(3, "Letter");
    EXPECT_TRUE(waitFor([&] { return onScreen() == (Names{"Inbox", "Letter"}); }));
    mail.withdraw(3);
    EXPECT_TRUE(waitFor([&] { return onScreen() == Names{"Inbox"}; }));
    mail.destroy(1);
    EXPECT_TRUE(waitFor([&] { return onScreen().empty() && runningWithWindows() == 0; }));
}

TEST_F(WindowManagers, WithoutOneTheTopmostWindowComesFirst)
{
    openDesktop("");
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = mail.open(1, "Inbox"), text = editor.open(1, "Text");
    const auto top = [&] {
        const auto windows = platform->windowList().onScreen().value();
        return windows.empty() ? 0 : *windows.front().number;
    };
    ASSERT_TRUE(waitFor([&] { return top() == text; }));
    applications().activate(mail.pid(), Activate::allWindows);
    EXPECT_TRUE(waitFor([&] { return top() == inbox; }));
}

TEST_F(WindowManagers, AWindowManagerThatStartsTakesTheWindowsOver)
{
    openDesktop("");
    SampleClient mail(server, "Mail");
    const auto inbox = mail.open(1, "Inbox");
    ASSERT_TRUE(waitFor([&] { return runningWithWindows() == 1; }));
    startManager("openbox --sm-disable");
    EXPECT_TRUE(appears(mail.pid(), inbox));
    EXPECT_EQ(titles(mail.pid()), Names{"Inbox"});
}

// A manager that is killed, and one that leaves in order.
class EndOfManager : public WindowManagers, public ::testing::WithParamInterface<std::tuple<std::string, int>> {};

INSTANTIATE_TEST_SUITE_P(Managers, EndOfManager,
                         ::testing::Combine(::testing::Values("openbox --sm-disable", "icewm",
                                                              "xfwm4 --compositor=off --sm-client-disable"),
                                            ::testing::Values(SIGKILL, SIGTERM)),
                         [](const auto &manager) {
                             const std::string command = std::get<0>(manager.param);
                             return command.substr(0, command.find(' '))
                                    + (std::get<1>(manager.param) == SIGKILL ? "Killed" : "Ended");
                         });

TEST_P(EndOfManager, TheWindowsAreNeverLostBetweenOneManagerAndTheNext)
{
    openDesktop(std::get<0>(GetParam()));
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    const auto inbox = mail.open(1, "Inbox"), text = editor.open(1, "Text"), draft = mail.open(2, "Draft");
    for (const auto &[client, window] : {std::pair(&mail, inbox), std::pair(&editor, text), std::pair(&mail, draft)})
        ASSERT_TRUE(appears(client->pid(), window));
    loop.turnFor(Seconds(0.1));
    std::size_t fewest = 3;
    const auto watch =
        applications().observe(ApplicationEvent::activated, [&] { fewest = std::min(fewest, runningWithWindows()); });
    const auto watchEnd =
        applications().observe(ApplicationEvent::terminated, [&] { fewest = std::min(fewest, runningWithWindows()); });
    server.stopManager(std::get<1>(GetParam()));
    ASSERT_TRUE(waitFor([&] { return !accessibility().trusted(); }));
    EXPECT_TRUE(waitFor([&] { return onScreen() == (Names{"Draft", "Inbox", "Text"}); }));
    // The next one is another.
    startManager(std::get<0>(GetParam()).starts_with("openbox") ? "icewm" : "openbox --sm-disable");
    EXPECT_TRUE(waitFor([&] { return titles(mail.pid()).size() == 2 && titles(editor.pid()).size() == 1; }));
    loop.turnFor(Seconds(0.5));
    EXPECT_EQ(titles(mail.pid()).size(), 2U);
    EXPECT_EQ(titles(editor.pid()), Names{"Text"});
    EXPECT_EQ(fewest, 2U) << "an application had no window for a moment";
}

// Enough of them that a manager takes a while to let go of them and to find them again.
TEST_P(EndOfManager, ManyWindowsStayInTheirOrderWhileTheSameOneStopsAndStarts)
{
    openDesktop(std::get<0>(GetParam()));
    constexpr int each = 22;
    std::vector<std::unique_ptr<SampleClient>> clients;
    for (const char *name : {"Mail", "Editor", "Notes"}) {
        clients.push_back(std::make_unique<SampleClient>(server, name));
        clients.back()->openMany(0, each);
        const int pid = clients.back()->pid();
        ASSERT_TRUE(waitFor([&] { return titles(pid).size() == each; }));
    }
    // The order of the screen is another one than that of the tabs.
    for (const int window : {3, 17, 8})
        for (const auto &client : clients)
            accessibility().perform(elementOf(client->pid(), client->identifier(window)), "AXRaise");
    for (const auto &client : clients)
        accessibility().set(elementOf(client->pid(), client->identifier(5)), "AXMinimized", true);
    for (const auto &client : clients)
        ASSERT_TRUE(waitFor([&] { return minimized(client->pid(), client->identifier(5)); }));
    loop.turnFor(Seconds(0.3));
    const auto all = [&] {
        Names names;
        for (const Application &application : applications().running())
            for (const std::string &title : titles(application.pid))
                names.push_back(application.localizedName.value_or("") + " " + title);
        return names;
    };
    const Names before = all();
    ASSERT_EQ(before.size(), 3U * each);
    std::size_t fewest = before.size();
    bool ordered = true;
    std::vector<Subscription> watches;
    for (const auto event : {ApplicationEvent::activated, ApplicationEvent::terminated, ApplicationEvent::launched})
        watches.push_back(applications().observe(event, [&] {
            const Names now = all();
            fewest = std::min(fewest, now.size());
            ordered = ordered && now == before;
        }));
    for (int round = 0; round < 3; ++round) {
        server.signalManager(std::get<1>(GetParam()));
        ASSERT_TRUE(waitFor([&] { return !accessibility().trusted(); }));
        server.startManager(words(std::get<0>(GetParam())));
        ASSERT_TRUE(waitFor([&] { return accessibility().trusted(); }));
        loop.turnFor(Seconds(1.5));
        EXPECT_EQ(all(), before) << "round " << round;
    }
    EXPECT_EQ(fewest, before.size()) << "windows were lost for a moment";
    EXPECT_TRUE(ordered) << "the order was another one for a moment";
}

TEST_F(WindowManagers, AWindowThatEndsWithTheManagerIsGone)
{
    openDesktop();
    SampleClient mail(server, "Mail"), editor(server, "Editor");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    ASSERT_TRUE(appears(editor.pid(), editor.open(1, "Text")));
    server.stopManager(SIGKILL);
    const Pid pid = mail.pid();
    mail.end();
    EXPECT_TRUE(waitFor([&] { return !applications().find(pid) && onScreen() == Names{"Text"}; }));
}

TEST_F(WindowManagers, TheNameThatADeadManagerLeftIsNotBelieved)
{
    openDesktop();
    server.stopManager(SIGKILL);
    ASSERT_TRUE(waitFor([&] { return !accessibility().trusted(); }));
    SampleClient pretender(server, "Pretender");
    const auto window = pretender.create(1, "no manager");
    server.run({"xprop", "-root", "-f", "_NET_SUPPORTING_WM_CHECK", "32x", "-set", "_NET_SUPPORTING_WM_CHECK",
                std::to_string(window)});
    loop.turnFor(Seconds(0.2));
    EXPECT_FALSE(accessibility().trusted());
    pretender.setNumbers(1, "_NET_SUPPORTING_WM_CHECK", "WINDOW", {window});
    EXPECT_TRUE(waitFor([&] { return accessibility().trusted(); }));
    pretender.destroy(1);
    EXPECT_TRUE(waitFor([&] { return !accessibility().trusted(); }));
}

}  // namespace
}  // namespace korvane::platform
