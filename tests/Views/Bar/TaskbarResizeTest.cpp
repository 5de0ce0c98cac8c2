#include "Views/Bar/TaskResizeHandle.h"
#include "tests/Views/Bar/GesturesFixture.h"

namespace korvane {
namespace {

using testing::barTop;
using testing::Gestures;
using testing::height;
using testing::settle;
using testing::V;
using testing::width;

class Resizing : public Gestures {
protected:
    TaskResizeHandle *handle() { return view->findChild<TaskResizeHandle *>(); }
};

TEST_F(Resizing, TheGripStandsAtTheTabsRightEdge)
{
    show(3);
    view->bar().armResize(entryID(1));
    ASSERT_TRUE(handle());
    const QRect button = tab(1);
    EXPECT_EQ(handle()->height(), 17);
    EXPECT_EQ(handle()->width(), 13);
    EXPECT_EQ(handle()->y(), button.top() + 11);
    EXPECT_NEAR(handle()->geometry().center().x(), button.left() + button.width() - 5.5, 1);
}

TEST_F(Resizing, AClickOnTheGripKeepsTheWidthAndDisarms)
{
    show(3);
    const std::string id = entryID(1);
    const int before = tab(1).width();
    view->bar().armResize(id);
    QTest::mouseClick(handle(), Qt::LeftButton);
    settle();
    EXPECT_FALSE(view->bar().armedResizeID());
    EXPECT_FALSE(handle());
    EXPECT_EQ(view->bar().taskWidthOverrides().at(id), before);
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
}

TEST_F(Resizing, AClickKeepsTheWidthOfTheLayoutAndNotThatOfThePixels)
{
    show(3);
    view->bar().armResize(entryID(1));
    TaskResizeHandle grip(view->bar(), nullptr);
    grip.setButton({10, 3, 100, 28}, 100.4);
    QTest::mouseClick(&grip, Qt::LeftButton);
    EXPECT_EQ(view->bar().taskWidthOverrides().at(entryID(1)), 100.4);
}

TEST_F(Resizing, ATuckedRowHidesTheGripOfItsTask)
{
    show(30);
    view->bar().armResize(entryID(view->bar().layout().mainCount));
    ASSERT_TRUE(handle());
    EXPECT_TRUE(handle()->isHidden());
    view->pointerMoved(overRow(1));
    advance(0.12);
    EXPECT_FALSE(handle()->isHidden());
    const QRect button = tab(view->bar().layout().mainCount);
    EXPECT_EQ(handle()->y(), button.top() + 11);
}

TEST_F(Resizing, TheGripGoesAlongWhenThePanelGrows)
{
    show(3);
    view->bar().armResize(entryID(1));
    view->resize(width, height + 60);
    settle();
    EXPECT_EQ(handle()->y(), tab(1).top() + 11);
}

TEST_F(Resizing, TheTabKeepsItsWidthUntilTheGripIsLetGo)
{
    show(3);
    view->bar().armResize(entryID(1));
    const QRect before = tab(1);
    const int gripBefore = handle()->x();
    const QPoint grip = handle()->rect().center();
    QTest::mousePress(handle(), Qt::LeftButton, {}, grip);
    EXPECT_TRUE(model->inspect().taskResizeSuspended);
    QMouseEvent move(QEvent::MouseMove, grip + QPoint(30, 0), handle()->mapToGlobal(grip + QPoint(30, 0)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(handle(), &move);
    EXPECT_EQ(tab(1), before);
    EXPECT_EQ(handle()->x(), gripBefore + 30);
    QMouseEvent release(QEvent::MouseButtonRelease, grip, handle()->mapToGlobal(grip), Qt::LeftButton, Qt::NoButton,
                        Qt::NoModifier);
    QApplication::sendEvent(handle(), &release);
    settle();
    EXPECT_EQ(tab(1).width(), before.width() + 30);
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
}

TEST_F(Resizing, ABarThatGoesAwayUnderADragDoesNotLeaveTheListStanding)
{
    show(3);
    view->bar().armResize(entryID(1));
    QTest::mousePress(handle(), Qt::LeftButton, {}, handle()->rect().center());
    ASSERT_TRUE(model->inspect().taskResizeSuspended);
    view.reset();
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
}

TEST_F(Resizing, TheGripGoesWithItsWindow)
{
    show(3);
    view->bar().armResize(entryID(1));
    desktop.applications.closeWindow(1, hashOf(1, 1));
    model->refresh();
    pass();
    EXPECT_FALSE(view->bar().armedResizeID());
    EXPECT_FALSE(handle());
}

TEST_F(Resizing, AWidthSetByHandEndsWithItsWindow)
{
    show(3);
    view->bar().armResize(entryID(1));
    QTest::mouseClick(handle(), Qt::LeftButton);
    desktop.applications.closeWindow(1, hashOf(1, 1));
    model->refresh();
    pass();
    EXPECT_TRUE(view->bar().taskWidthOverrides().empty());
}

}  // namespace
}  // namespace korvane
