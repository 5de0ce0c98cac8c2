#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::Names;
using testing::V;

class Refresh : public ModelFixture {
protected:
    Refresh()
    {
        addApplication(1, "Mail", 2);
        addApplication(2, "Notes", 1);
    }
    void badge(const std::string &name)
    {
        platform::simulated::DockItem item;
        item.title = name;
        item.subrole = "AXApplicationDockItem";
        item.statusLabel = "3";
        platform::simulated::DockItem root;
        root.children = std::vector<platform::simulated::DockItem>{item};
        desktop.applications.setDock(root);
    }
};

TEST_F(Refresh, TheListStandsHalfASecondAfterThePermission)
{
    makeModel();
    model->start();
    advance(0.499);
    EXPECT_TRUE(model->runningApps().empty());
    advance(0.001);
    EXPECT_EQ(names(), (Names{"Mail 1", "Mail 2", "Notes 1"}));
}

TEST_F(Refresh, WithoutThePermissionTheBarWaitsHoweverLong)
{
    desktop.accessibility.setTrusted(false);
    makeModel();
    model->start();
    advance(61);
    EXPECT_TRUE(model->runningApps().empty());
    ASSERT_TRUE(model->settingsTaskItem());
    EXPECT_EQ(model->settingsTaskItem()->name, "⚠️ Korvane Settings");
    desktop.accessibility.setTrusted(true);
    advance(2.5);
    EXPECT_EQ(model->runningApps().size(), 3U);
    EXPECT_FALSE(model->settingsTaskItem());
}

TEST_F(Refresh, DuringATaskResizeNothingChangesNotEvenTheBadges)
{
    start();
    model->beginTaskResize();
    EXPECT_FALSE(model->inspect().refreshTimerInterval);
    desktop.applications.openWindow(2, window(999, "New"));
    badge("Mail");
    model->refresh(true);
    advance(10);
    EXPECT_EQ(model->runningApps().size(), 3U);
    EXPECT_TRUE(model->inspect().cachedBadgedApps.empty());
    model->endTaskResize();
    EXPECT_EQ(model->runningApps().size(), 4U);
    EXPECT_EQ(model->inspect().refreshTimerInterval, 2.0);
}

TEST_F(Refresh, BeforeTheFirstListAnyRefreshEmptiesTheList)
{
    start();
    ASSERT_FALSE(model->runningApps().empty());
    model->start();
    EXPECT_TRUE(model->runningApps().empty());
    model->refresh();
    EXPECT_TRUE(model->runningApps().empty());
}

TEST_F(Refresh, AChangeOfWindowOrderAloneIsNotSeenByTheTimer)
{
    start();
    auto published = countPublished(ModelProperty::runningApps);
    platform::simulated::Process swapped;
    swapped.application = *desktop.applications.find(1);
    swapped.windows = {window(hashOf(1, 1), "Mail 2"), window(hashOf(1, 0), "Mail 1")};
    swapped.focusedWindow = desktop.applications.focusedWindow(1);
    desktop.applications.put(swapped);
    model->refresh(false, true);
    EXPECT_EQ(published->value, 0);
    EXPECT_EQ(names(), (Names{"Mail 1", "Mail 2", "Notes 1"}));
}

TEST_F(Refresh, BetweenTwoScansTheAttentionListStandsWhileWindowsRefresh)
{
    badge("Mail");
    start();
    ASSERT_EQ(model->attentionApps().size(), 1U);
    badge("Notes");
    desktop.applications.openWindow(2, window(999, "New"));
    advance(2.0);
    EXPECT_EQ(model->runningApps().size(), 4U);
    EXPECT_EQ(model->attentionApps()[0].name, "Mail");
    advance(4.0);
    EXPECT_EQ(model->attentionApps()[0].name, "Notes");
}

TEST_F(Refresh, BadgesThatNobodyWantsAreNotLookedFor)
{
    badge("Mail");
    makeModel();
    model->set(&V::notificationBadgeStyle, NotificationBadgeStyle::none);
    model->set(&V::showAttentionApps, false);
    start();
    advance(20);
    EXPECT_EQ(desktop.applications.dockQueries(), 0);
    EXPECT_FALSE(model->runningApps()[0].hasNotificationBadge);
}

TEST_F(Refresh, WindowsOfTheFirstListAreNotRecentOnesOpenedLaterAre)
{
    start();
    EXPECT_TRUE(model->settings().recentWindowIDs.empty());
    for (int i = 0; i < 10; ++i) {
        desktop.applications.openWindow(2, window(static_cast<std::uint64_t>(1000 + i), "New"));
        advance(0.1);
    }
    ASSERT_EQ(model->settings().recentWindowIDs.size(), 8U);
    EXPECT_EQ(model->settings().recentWindowIDs[0], "ax:2:hash:1009");
    EXPECT_EQ(model->recentWindows().size(), 8U);
}

TEST_F(Refresh, ANewWindowStandsLastUnlessItIsToGoFirst)
{
    start();
    desktop.applications.openWindow(1, window(999, "Mail 3"));
    advance(0.1);
    EXPECT_EQ(names(), (Names{"Mail 1", "Mail 2", "Notes 1", "Mail 3"}));
    EXPECT_TRUE(model->settings().taskOrder.empty());
    model->set(&V::newWindowsGo, NewWindowsPlace::first);
    desktop.applications.openWindow(2, window(998, "Notes 2"));
    advance(0.1);
    EXPECT_EQ(names(), (Names{"Notes 2", "Mail 1", "Mail 2", "Notes 1", "Mail 3"}));
}

TEST_F(Refresh, TheEndOfTheLastInactiveReasonForcesAScan)
{
    start();
    const int scans = desktop.applications.dockQueries();
    model->setInactiveReason("display", true);
    model->setInactiveReason("session", true);
    model->setInactiveReason("display", false);
    EXPECT_EQ(desktop.applications.dockQueries(), scans);
    EXPECT_TRUE(model->systemIsInactive());
    model->setInactiveReason("session", false);
    EXPECT_EQ(desktop.applications.dockQueries(), scans + 1);
}

TEST_F(Refresh, AStoredIntervalBeyondTheRangeGivesTwoSeconds)
{
    desktop.defaults.put("taskbarRefreshSeconds", std::int64_t{5});
    start();
    EXPECT_EQ(model->inspect().refreshTimerInterval, 2.0);
    EXPECT_EQ(model->inspect().refreshTimerTolerance, 0.2);
    model->set(&V::taskbarRefreshSeconds, 1);
    EXPECT_EQ(model->inspect().refreshTimerInterval, 1.0);
}

TEST_F(Refresh, AHiddenBarIsBroughtUpToDateWhenItShows)
{
    start();
    model->setTaskbarHidden(true);
    desktop.applications.openWindow(2, window(999, "New"));
    advance(30);
    EXPECT_EQ(model->runningApps().size(), 3U);
    EXPECT_TRUE(model->inspect().deferredWorkspaceRefresh);
    model->setTaskbarHidden(false);
    EXPECT_EQ(model->runningApps().size(), 4U);
    EXPECT_FALSE(model->inspect().deferredWorkspaceRefresh);
}

TEST_F(Refresh, ANoticeOfTheDesktopIsFollowedAtOnce)
{
    start();
    desktop.applications.setTitle(1, hashOf(1, 0), "Renamed");
    desktop.loop.runPosted();
    EXPECT_EQ(names()[0], "Renamed");
}

TEST_F(Refresh, UnchangedWindowsAreNotReadAgainWhereTheDesktopTellsOfChanges)
{
    start();
    const auto reads = desktop.accessibility.readCount();
    advance(3.9);  // a tick, no scan
    EXPECT_EQ(desktop.accessibility.readCount(), reads);
    desktop.accessibility.setRevisionsSupported(false);
    advance(2.0);
    EXPECT_GT(desktop.accessibility.readCount(), reads);
}

TEST_F(Refresh, WithAndWithoutNoticesOfChangesTheListIsTheSame)
{
    desktop.accessibility.setRevisionsSupported(false);
    start();
    desktop.applications.setTitle(1, hashOf(1, 1), "Renamed");
    desktop.applications.closeWindow(2, hashOf(2, 0));
    model->refresh(false, true);
    const auto without = names();
    desktop.accessibility.setRevisionsSupported(true);
    model->refresh(false, true);
    EXPECT_EQ(names(), without);
    EXPECT_EQ(without, (Names{"Mail 1", "Renamed"}));
}

TEST_F(Refresh, ThePermissionLostAndFoundAgainLeavesNoTaskOfTheOtherReading)
{
    start();
    desktop.accessibility.setTrusted(false);
    model->refreshForStartMenuShow();
    for (const std::string &id : ids())
        EXPECT_TRUE(id.starts_with("cg:")) << id;
    desktop.accessibility.setTrusted(true);
    model->setTaskbarHidden(true);
    model->setTaskbarHidden(false);
    model->refresh(false, true);
    EXPECT_EQ(model->runningApps().size(), 3U);
    for (const std::string &id : ids())
        EXPECT_TRUE(id.starts_with("ax:")) << id;
}

TEST_F(Refresh, TwoWindowsOfOneIdentifierEndTheProcess)
{
    platform::simulated::Process twins;
    twins.application.pid = 5;
    twins.windows = {window(7, "A"), window(7, "B")};
    desktop.applications.put(twins);
    start();
    EXPECT_DEATH(model->refresh(false, true), "one identifier");
}

}  // namespace
}  // namespace korvane
