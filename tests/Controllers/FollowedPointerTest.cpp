// What the pointer does to the rows and the widths of a bar, and what holds them still.
#include "Views/Bar/TaskResizeHandle.h"
#include "tests/Controllers/HidingFixture.h"

#include <QTest>

namespace korvane {
namespace {

using testing::away;
using testing::Hiding;
using testing::settle;
using testing::V;

TEST_F(Hiding, RowsOpenUnderAPointerThatTheControllerFollows)
{
    addApplication(2, "Notes", 40);
    show();
    pointAt({1300, 36});
    advance(0.12);
    EXPECT_TRUE(model->taskOverflowRowsVisible());
    pointAt({1300, 10});
    advance(0.5);
    EXPECT_FALSE(model->taskOverflowRowsVisible());
}

TEST_F(Hiding, RowsStayTuckedUnderAListThatCoversThem)
{
    addApplication(2, "Notes", 40);
    show();
    QWidget list;
    list.setGeometry(1200, 700, 200, 200);
    list.show();
    pointAt({1300, 36});
    advance(1);
    EXPECT_FALSE(model->taskOverflowRowsVisible());
    list.hide();
    pointAt({1301, 36});
    advance(0.12);
    EXPECT_TRUE(model->taskOverflowRowsVisible());
}

TEST_F(Hiding, RowsHoldStillWhileAWidthIsBeingSet)
{
    addApplication(2, "Notes", 40);
    show();
    model->beginTaskResize();
    pointAt({1300, 36});
    advance(1);
    EXPECT_FALSE(model->taskOverflowRowsVisible());
    model->endTaskResize();
    pointAt({1301, 36});
    advance(0.12);
    EXPECT_TRUE(model->taskOverflowRowsVisible());
}

TEST_F(Hiding, NewScreensBeginWithTheirRowsTuckedAway)
{
    addApplication(2, "Notes", 40);
    show();
    pointAt({1300, 36});
    advance(0.12);
    ASSERT_TRUE(model->taskOverflowRowsVisible());
    pointAt(away);
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}, {2, {1440, 0, 1280, 720}, 1}});
    desktop.loop.runPosted();
    EXPECT_FALSE(model->taskOverflowRowsVisible());
}

TEST_F(Hiding, ADragAndAResizeEndWithThePanelsThatAChangeOfTheScreensTakesAway)
{
    show();
    const std::string id = idOf(1, 0);
    panel().view().bar().beginDrag(id, {id});
    panel().view().bar().armResize(id);
    model->beginTaskResize();
    desktop.screens.set({{1, {0, 0, 1280, 720}, 1}});
    desktop.loop.runPosted();
    settle();
    EXPECT_FALSE(panel().view().bar().drag());
    EXPECT_FALSE(panel().view().bar().armedResizeID());
    model->endTaskResize();
    pointAt(away);
    advance(2);
    EXPECT_TRUE(hidden());
}

TEST_F(Hiding, AWidthSetByHandIsOneScreensAndItsPauseEveryScreens)
{
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}, {2, {1440, 0, 1280, 720}, 1}});
    show();
    const std::string id = idOf(1, 0);
    panel(0).view().bar().armResize(id);
    auto *grip = panel(0).view().findChild<TaskResizeHandle *>();
    ASSERT_TRUE(grip);
    QTest::mousePress(grip, Qt::LeftButton, {}, grip->rect().center());
    EXPECT_FALSE(controller->visibilityTimerInterval());
    EXPECT_TRUE(model->inspect().taskResizeSuspended);
    pointAt(away);
    advance(5);
    EXPECT_EQ(opacity(0), 1);
    QTest::mouseRelease(grip, Qt::LeftButton, {}, grip->rect().center());
    settle();
    EXPECT_TRUE(panel(0).view().bar().taskWidthOverrides().contains(id));
    EXPECT_TRUE(panel(1).view().bar().taskWidthOverrides().empty());
    advance(2);
    EXPECT_TRUE(hidden(0));
}

}  // namespace
}  // namespace korvane
