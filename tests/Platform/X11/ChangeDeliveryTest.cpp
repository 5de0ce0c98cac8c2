#include "tests/Platform/X11/X11Test.h"

#include <algorithm>

namespace korvane::platform {
namespace {

using Names = std::vector<std::string>;
using testing::SampleClient;

class ChangeDelivery : public X11Test {
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

TEST_F(ChangeDelivery, TheNewTitleIsToldAndRead)
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

TEST_F(ChangeDelivery, WhatChangesNothingTellsNothing)
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

TEST_F(ChangeDelivery, AChangeOfOneApplicationLeavesTheStampOfAnother)
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

TEST_F(ChangeDelivery, ManyChangesAreToldAtMostOnceAFrame)
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

TEST_F(ChangeDelivery, AnApplicationIsToldToComeWithItsFirstWindowAndToGoWithItsLast)
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

TEST_F(ChangeDelivery, AnObserverMayRunALoopOfItsOwn)
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

TEST_F(ChangeDelivery, NothingWakesTheLoopWhileNothingHappens)
{
    openDesktop();
    SampleClient mail(server, "Mail");
    ASSERT_TRUE(appears(mail.pid(), mail.open(1, "Inbox")));
    loop.turnFor(Seconds(0.5));
    EXPECT_EQ(loop.turnsWithin(Seconds(1)), 0);
}

}  // namespace
}  // namespace korvane::platform
