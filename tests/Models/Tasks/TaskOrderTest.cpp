#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::Names;
using testing::V;

class Order : public ModelFixture {
protected:
    Order()
    {
        addApplication(1, "Mail", 3);
        addApplication(2, "Notes", 1);
        start();
        desktop.defaults.takeWrites();
    }
    bool wroteOrder()
    {
        const auto writes = desktop.defaults.takeWrites();
        return std::find(writes.begin(), writes.end(), "taskOrder") != writes.end();
    }
    Names entries(bool groupAll = true)
    {
        Names result;
        for (const TaskbarEntry &entry : model->taskbarEntries(groupAll))
            result.push_back(entry.id);
        return result;
    }
};

TEST_F(Order, AnUnknownTaskIsNotMoved)
{
    auto published = countPublished(ModelProperty::runningApps);
    model->setTaskPosition("nothing", true);
    EXPECT_FALSE(wroteOrder());
    EXPECT_EQ(published->value, 0);
}

TEST_F(Order, AGroupOfNoProcessIsNothing)
{
    for (const char *id : {"group::auto:x", "group::auto:", "group::auto:99999999999", "group::other"})
        EXPECT_TRUE(model->windowsForDragID(id).empty()) << id;
    model->dropTaskOnRow("group::auto:x", idOf(1, 0), true);
    EXPECT_FALSE(wroteOrder());
}

TEST_F(Order, ATaskPutBesideItselfStaysAlsoWithAnAnchor)
{
    model->moveTaskAfter(idOf(1, 0), idOf(1, 0), idOf(1, 1));
    model->moveTask(idOf(1, 0), idOf(1, 0), idOf(1, 1));
    EXPECT_FALSE(wroteOrder());
    EXPECT_TRUE(model->settings().taskOrder.empty());
}

TEST_F(Order, TasksAreNotPutBesideOneOfThemselves)
{
    model->moveTasks({idOf(1, 0), idOf(1, 1)}, idOf(1, 1), true);
    EXPECT_FALSE(wroteOrder());
}

TEST_F(Order, TheGroupKeepsItsPlaceWhenItsFirstWindowIsDraggedAway)
{
    ASSERT_EQ(entries(), (Names{"auto:1", "auto:2"}));
    model->setTaskPosition("groupwindow::" + idOf(1, 0), false);
    EXPECT_EQ(entries(), (Names{"auto:1", "auto:2", idOf(1, 0)}));
    EXPECT_EQ(ids(), (Names{idOf(1, 1), idOf(1, 2), idOf(2, 0), idOf(1, 0)}));
    EXPECT_TRUE(model->settings().forcedUngroupedWindows.contains(idOf(1, 0)));
}

TEST_F(Order, TheSecondWindowOfAGroupLeavesWithoutMovingTheOthers)
{
    model->setTaskPosition("groupwindow::" + idOf(1, 1), false);
    EXPECT_EQ(ids(), (Names{idOf(1, 0), idOf(1, 2), idOf(2, 0), idOf(1, 1)}));
}

TEST_F(Order, TheOnlyWindowOfAGroupTakesTheGroupAway)
{
    model->setTaskPosition("groupwindow::" + idOf(2, 0), true);
    EXPECT_EQ(entries(), (Names{idOf(2, 0), "auto:1"}));
}

TEST_F(Order, TwoNewWindowsThatGoFirstStandThereAsTheyWereFound)
{
    model->set(&V::newWindowsGo, NewWindowsPlace::first);
    desktop.applications.openWindow(2, window(901, "new of Notes"));
    desktop.applications.openWindow(1, window(900, "new of Mail"));
    advance(0.1);
    EXPECT_EQ(ids()[0], "ax:1:hash:900");
    EXPECT_EQ(ids()[1], "ax:2:hash:901");
}

TEST_F(Order, InTheFirstListTheStoredOrderDecidesWhereverNewOnesGo)
{
    desktop.defaults.put("newWindowsGo", std::string("first"));
    desktop.defaults.put("taskOrder", Names{"gone", idOf(2, 0), idOf(1, 2)});
    makeModel();
    start();
    EXPECT_EQ(ids(), (Names{idOf(2, 0), idOf(1, 2), idOf(1, 0), idOf(1, 1)}));
}

TEST_F(Order, AWindowWithAStoredPlaceTakesItInsteadOfTheEnd)
{
    desktop.defaults.put("taskOrder", Names{idOf(1, 0), "ax:2:hash:950", idOf(1, 1)});
    makeModel();
    start();
    desktop.applications.openWindow(2, window(950, "back again"));
    advance(0.1);
    EXPECT_EQ(ids()[1], "ax:2:hash:950");
}

TEST_F(Order, ADropBeyondARowsEndLandsOnTheFarSideOfItsTarget)
{
    model->dropTaskAtOverflowRowEnd(idOf(1, 0), idOf(1, 2));
    EXPECT_EQ(ids(), (Names{idOf(1, 1), idOf(1, 2), idOf(1, 0), idOf(2, 0)}));
    model->dropTaskAtOverflowRowEnd(idOf(2, 0), idOf(1, 1));
    EXPECT_EQ(ids(), (Names{idOf(2, 0), idOf(1, 1), idOf(1, 2), idOf(1, 0)}));
}

TEST_F(Order, AWindowDroppedOnAVanishedTargetStaysUngroupedInItsPlace)
{
    const auto before = ids();
    model->dropTaskOnRow(idOf(1, 1), "gone", true);
    EXPECT_EQ(ids(), before);
    EXPECT_TRUE(model->settings().forcedUngroupedWindows.contains(idOf(1, 1)));
    EXPECT_TRUE(model->settings().taskOrder.empty());
}

}  // namespace
}  // namespace korvane
