#include "tests/Platform/X11/X11Test.h"

#include <map>

namespace korvane::platform {
namespace {

using testing::SampleClient;

class X11AccessibilityTree : public X11Test {};

TEST_F(X11AccessibilityTree, AnElementOfAWindowThatIsGoneSaysSo)
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

TEST_F(X11AccessibilityTree, OneApplicationIsActiveAndOneOfItsWindowsHasTheFocus)
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

TEST_F(X11AccessibilityTree, TheRoleIsTheIdentifier)
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

TEST_F(X11AccessibilityTree, AWindowThatDemandsAttentionPutsABadgeOnTheDock)
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

TEST_F(X11AccessibilityTree, ALaunchersBadgeGoesToTheApplicationOfItsEntry)
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

}  // namespace
}  // namespace korvane::platform
