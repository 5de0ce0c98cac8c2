// The refresh timer rests while nothing can change without a notification.
#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::V;

class RefreshTimer : public ModelFixture {
protected:
    void startAnnounced()
    {
        desktop.applications.setAnnouncesEveryChange(true);
        addApplication(1, "Mail", 3);
        start();
    }
    bool runs() const { return model->inspect().refreshTimerInterval.has_value(); }
    void letItRest()
    {
        advance(20);
        ASSERT_FALSE(runs());
    }
};

TEST_F(RefreshTimer, RunsForEverWhereChangesAreNotAnnounced)
{
    addApplication(1, "Mail", 3);
    start();
    advance(100);
    EXPECT_TRUE(runs());
}

TEST_F(RefreshTimer, RestsOnceATickHasFoundNothing)
{
    startAnnounced();
    EXPECT_TRUE(runs());
    letItRest();
    const int queries = desktop.applications.dockQueries();
    advance(100);
    EXPECT_EQ(desktop.applications.dockQueries(), queries);
}

TEST_F(RefreshTimer, RunsAgainFromTheNextChangeAndFindsIt)
{
    startAnnounced();
    letItRest();
    desktop.applications.setTitle(1, hashOf(1, 1), "Renamed");
    advance(0.01);
    EXPECT_EQ(task(idOf(1, 1)).name, "Renamed");
    EXPECT_TRUE(runs());
    letItRest();
}

TEST_F(RefreshTimer, DoesNotRestBeforeTheBadgesWereReadSinceTheLastChange)
{
    startAnnounced();
    model->set(&V::expertBadgeScanSeconds, 10);
    letItRest();
    const int queries = desktop.applications.dockQueries();
    desktop.applications.setTitle(1, hashOf(1, 1), "One");
    advance(5);
    desktop.applications.setTitle(1, hashOf(1, 1), "Two");
    advance(4);
    EXPECT_TRUE(runs());
    letItRest();
    EXPECT_GT(desktop.applications.dockQueries(), queries);
}

TEST_F(RefreshTimer, RunsAgainWhenASettingChanges)
{
    startAnnounced();
    letItRest();
    model->set(&V::notificationBadgeStyle, NotificationBadgeStyle::dot);
    EXPECT_TRUE(runs());
    letItRest();
}

TEST_F(RefreshTimer, RestsWhileTheBarIsHiddenAndRunsWhenItIsBack)
{
    startAnnounced();
    model->setTaskbarHidden(true);
    advance(2);
    EXPECT_FALSE(runs());
    desktop.applications.setTitle(1, hashOf(1, 1), "Meanwhile");
    advance(1);
    EXPECT_FALSE(runs());
    model->setTaskbarHidden(false);
    EXPECT_TRUE(runs());
    EXPECT_EQ(task(idOf(1, 1)).name, "Meanwhile");
}

TEST_F(RefreshTimer, DoesNotRestWithoutThePermission)
{
    startAnnounced();
    desktop.accessibility.setTrusted(false);
    model->setTaskbarHidden(true);
    model->setTaskbarHidden(false);
    advance(100);
    EXPECT_TRUE(runs());
}

TEST_F(RefreshTimer, StaysStoppedAfterTheEnd)
{
    startAnnounced();
    letItRest();
    model->stop();
    model->refresh();
    EXPECT_FALSE(runs());
}

}  // namespace
}  // namespace korvane
