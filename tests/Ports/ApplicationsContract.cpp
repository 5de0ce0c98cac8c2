#include "tests/Ports/DesktopWorld.h"

namespace korvane::platform {

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ApplicationsContract);

namespace {
constexpr Pid nobody = 4'000'000;
}

TEST_P(ApplicationsContract, AStartedApplicationIsListedUntilItEnds)
{
    const Pid mail = world->start("Mail", "Inbox");
    EXPECT_TRUE(isRunning(mail));
    const auto application = applications().find(mail);
    ASSERT_TRUE(application);
    EXPECT_EQ(application->pid, mail);
    EXPECT_EQ(application->localizedName, "Mail");
    EXPECT_EQ(application->policy, ActivationPolicy::regular);
    EXPECT_FALSE(application->terminated);
    world->quit(mail);
    EXPECT_TRUE(waitFor([&] { return !applications().find(mail); }));
    EXPECT_FALSE(isRunning(mail));
}

TEST_P(ApplicationsContract, ApplicationsKeepTheirOrder)
{
    const Pid first = world->start("First", "1"), second = world->start("Second", "2");
    const auto order = [&] {
        std::vector<Pid> pids;
        for (const Application &one : applications().running())
            if (one.pid == first || one.pid == second)
                pids.push_back(one.pid);
        return pids;
    };
    EXPECT_EQ(order(), (std::vector<Pid>{first, second}));
    world->click(first, onlyWindow(first));
    ASSERT_TRUE(waitFor([&] { return active(first); }));
    EXPECT_EQ(order(), (std::vector<Pid>{first, second}));
}

TEST_P(ApplicationsContract, OneApplicationIsActive)
{
    const Pid first = world->start("First", "1"), second = world->start("Second", "2");
    const auto actives = [&] {
        const auto &all = applications().running();
        return std::count_if(all.begin(), all.end(), [](const auto &one) { return one.active; });
    };
    ASSERT_TRUE(waitFor([&] { return active(second); }));
    EXPECT_EQ(actives(), 1);
    EXPECT_TRUE(applications().activate(first, Activate::none));
    EXPECT_TRUE(waitFor([&] { return active(first); }));
    EXPECT_EQ(actives(), 1);
}

TEST_P(ApplicationsContract, WhatIsNotThereIsRefused)
{
    EXPECT_FALSE(applications().find(nobody));
    EXPECT_FALSE(applications().hide(nobody));
    EXPECT_FALSE(applications().unhide(nobody));
    EXPECT_FALSE(applications().terminate(nobody));
    EXPECT_FALSE(applications().activate(nobody, Activate::none));
    EXPECT_EQ(applications().icon(nobody), nullptr);
    EXPECT_TRUE(applications().withBundleIdentifier("org.example.NotThere").empty());
}

TEST_P(ApplicationsContract, ChangesAreToldFromTheRunLoop)
{
    int notices = 0;
    const auto observers = countNotices(notices);
    EXPECT_EQ(notices, 0);
    const Pid mail = world->start("Mail", "Inbox");
    EXPECT_TRUE(waitFor([&] { return notices > 0; }));
    world->settle();
    notices = 0;
    const Window inbox = onlyWindow(mail);
    world->retitle(mail, inbox, "Inbox (1)");
    EXPECT_TRUE(waitFor([&] { return notices > 0; })) << "a new title";
    world->settle();
    notices = 0;
    world->minimize(mail, inbox);
    EXPECT_TRUE(waitFor([&] { return notices > 0; })) << "a minimised window";
    world->settle();
    notices = 0;
    world->open(mail, "Draft");
    EXPECT_TRUE(waitFor([&] { return notices > 0; })) << "a new window";
    world->settle();
    notices = 0;
    world->quit(mail);
    EXPECT_TRUE(waitFor([&] { return notices > 0; })) << "an application that ended";
}

// What polls rests between the notices, so what comes without one is not seen.
TEST_P(ApplicationsContract, WhateverElseAnApplicationShowsIsToldTooWhenItChanges)
{
    using Badges = std::map<std::string, std::string>;
    const Pid mail = world->start("Mail", "Inbox");
    const Window inbox = onlyWindow(mail);
    world->settle();
    int notices = 0;
    const auto observers = countNotices(notices);
    // The change is there to be read when it is told.
    const auto tells = [&](const char *what, const std::function<bool()> &shows) {
        EXPECT_TRUE(waitFor([&] { return notices > 0 && shows(); })) << what;
        world->settle();
        notices = 0;
    };
    const auto name = [&] { return applications().find(mail)->localizedName.value_or(""); };
    world->install(mail, "Post");
    tells("an entry that was installed", [&] { return name() == "Post"; });
    world->setBadge(mail, "7");
    tells("a badge", [&] { return badges() == Badges{{"Post", "7"}}; });
    world->setBadge(mail, "8");
    tells("another badge", [&] { return badges() == Badges{{"Post", "8"}}; });
    world->setBadge(mail, "");
    tells("a badge that went", [&] { return badges().empty(); });
    world->setAttention(mail, inbox, true);
    tells("a window that wants attention", [&] { return badges() == Badges{{"Post", "!"}}; });
    world->setAttention(mail, inbox, false);
    tells("a window that has attention", [&] { return badges().empty(); });
    const ImagePtr before = applications().icon(mail);
    world->setIcon(mail, inbox);
    tells("an icon", [&] { return applications().icon(mail) && applications().icon(mail) != before; });
    world->rename(mail, inbox, "Letters");
    tells("a name", [&] { return name() == "Letters"; });
}

TEST_P(ApplicationsContract, NothingIsToldWhenNothingHappens)
{
    world->start("Mail", "Inbox");
    world->settle();
    int notices = 0;
    const auto observers = countNotices(notices);
    world->settle();
    EXPECT_EQ(notices, 0);
}

TEST_P(ApplicationsContract, ADestroyedObserverIsNotTold)
{
    int notices = 0;
    auto observers = countNotices(notices);
    observers.clear();
    world->start("Mail", "Inbox");
    world->settle();
    EXPECT_EQ(notices, 0);
}

TEST_P(ApplicationsContract, AnObserverMayLeaveWhileItIsTold)
{
    const Pid mail = world->start("Mail", "Inbox");
    world->settle();
    int notices = 0;
    std::vector<Subscription> observers;
    for (int i = 0; i < 2; ++i)
        for (const auto event : {ApplicationEvent::activated, ApplicationEvent::launched})
            observers.push_back(applications().observe(event, [&] {
                ++notices;
                observers.clear();
            }));
    world->retitle(mail, onlyWindow(mail), "Inbox (1)");
    EXPECT_TRUE(waitFor([&] { return notices > 0; }));
    world->settle();
    EXPECT_EQ(notices, 1);
}

TEST_P(ApplicationsContract, AHiddenApplicationSaysSoUntilItIsShown)
{
    const Pid mail = world->start("Mail", "Inbox");
    EXPECT_FALSE(applications().find(mail)->hidden);
    EXPECT_TRUE(applications().hide(mail));
    EXPECT_TRUE(waitFor([&] { return applications().find(mail)->hidden; }));
    EXPECT_EQ(titles(mail), Titles{"Inbox"});
    EXPECT_TRUE(applications().unhide(mail));
    EXPECT_TRUE(waitFor([&] { return !applications().find(mail)->hidden; }));
}

TEST_P(ApplicationsContract, ATerminatedApplicationIsGone)
{
    const Pid mail = world->start("Mail", "Inbox");
    world->open(mail, "Draft");
    EXPECT_TRUE(applications().terminate(mail));
    EXPECT_TRUE(waitFor([&] { return !isRunning(mail); }));
}

}  // namespace korvane::platform
