#include "Controllers/TaskbarPanelController.h"

#include "Controllers/EaseOut.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <QAccessible>
#include <QPointer>

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::settle;
using testing::V;

class Panels : public ModelFixture {
protected:
    void show()
    {
        makeModel();
        model->set(&V::groupingMode, GroupingMode::never);
        controller = std::make_unique<TaskbarPanelController>(*model, platform, TaskbarCallbacks{});
        controller->show();
        model->start();
        advance(1);
        settle();
    }
    std::vector<double> heights()
    {
        std::vector<double> result;
        for (const auto &panel : controller->panels())
            result.push_back(panel->panelHeight());
        return result;
    }
    std::unique_ptr<TaskbarPanelController> controller;
};

TEST_F(Panels, OneStandsAlongTheBottomOfEveryScreen)
{
    desktop.screens.set({{1, {0, 0, 1920, 1080}, 1}, {2, {1920, 200, 1280, 720}, 1}, {3, {-1024, 0, 1024, 600}, 1}});
    show();
    ASSERT_EQ(controller->panels().size(), 3U);
    for (const auto &panel : controller->panels()) {
        EXPECT_EQ(panel->windowTitle(), "Korvane Taskbar");
        EXPECT_TRUE(panel->isVisible());
        EXPECT_EQ(panel->frame().y, panel->screen().frame.y);
        EXPECT_EQ(panel->width(), panel->screen().frame.width);
    }
    // In the toolkit's coordinates, which count from the top.
    EXPECT_EQ(controller->panels()[1]->geometry().bottom() + 1, 1080 - 200);
    EXPECT_EQ(controller->panels()[2]->geometry().left(), -1024);
}

TEST_F(Panels, TheAccessibilityTreeHasAWindowWithAToolBar)
{
    show();
    TaskbarPanel &panel = *controller->panels()[0];
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&panel)->role(), QAccessible::Window);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&panel.view())->role(), QAccessible::ToolBar);
}

TEST_F(Panels, EachIsDecoratedBeforeItIsShown)
{
    show();
    ASSERT_EQ(desktop.panels.applied.size(), 1U);
    const auto &traits = desktop.panels.applied.begin()->second;
    EXPECT_EQ(traits.level, platform::Level::statusBar);
    EXPECT_TRUE(traits.allSpaces && traits.stationary && traits.fullScreenAuxiliary && traits.nonActivating);
    EXPECT_EQ(desktop.panels.orderedFront.size(), 1U);
}

TEST_F(Panels, AScreenPluggedInMakesAllOfThemNew)
{
    show();
    const QPointer<QWidget> first = controller->panels()[0].get();
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}, {2, {1440, 0, 1280, 720}, 1}});
    advance(0.01);
    ASSERT_EQ(controller->panels().size(), 2U);
    EXPECT_TRUE(first.isNull());
    desktop.screens.set({});
    advance(0.01);
    EXPECT_TRUE(controller->panels().empty());
    advance(10);
}

TEST_F(Panels, TheHeightFollowsTheRowsInATenthOfASecond)
{
    addApplication(1, "Mail", 30);
    show();
    const double full = controller->overflowGeometry().normalHeight;
    EXPECT_GT(full, 34 + 30);
    EXPECT_EQ(heights(), std::vector<double>{full});
    EXPECT_EQ(controller->panels()[0]->geometry().bottom() + 1, 900);

    for (int i = 2; i < 30; ++i)
        desktop.applications.closeWindow(1, hashOf(1, i));
    advance(0.05);
    EXPECT_LT(heights()[0], full);
    EXPECT_GT(heights()[0], controller->overflowGeometry().normalHeight);
    EXPECT_EQ(controller->panels()[0]->geometry().bottom() + 1, 900);
    advance(0.1);
    EXPECT_EQ(heights()[0], controller->overflowGeometry().normalHeight);
}

TEST_F(Panels, ATaskResizeHoldsTheHeight)
{
    addApplication(1, "Mail", 2);
    show();
    const auto before = heights();
    model->beginTaskResize();
    EXPECT_TRUE(controller->isTaskResizePaused());
    model->setTaskOverflowRowCount(6);
    advance(1);
    EXPECT_EQ(heights(), before);
    model->endTaskResize();
    EXPECT_FALSE(controller->isTaskResizePaused());
    advance(0.2);
    EXPECT_EQ(heights()[0], controller->overflowGeometry().normalHeight);
}

TEST_F(Panels, TheGeometryIsWorkedOutAnewForEachOfItsFiveValues)
{
    show();
    const auto height = [&] { return controller->overflowGeometry().normalHeight; };
    model->setTaskOverflowRowCount(0);
    EXPECT_EQ(height(), 34);
    model->setTaskOverflowRowCount(1);
    EXPECT_EQ(height(), 34);
    model->setTaskOverflowRowCount(4);
    model->set(&V::overflowCardOverlapPixels, 4.0);
    EXPECT_EQ(height(), 34 + 84 + 20);
    model->set(&V::autoHideOverflow, false);
    EXPECT_EQ(height(), controller->overflowGeometry().collapsedHeight);
    model->setTaskRowsExpanded(true);
    EXPECT_EQ(height(), 34 + 84);
    model->set(&V::tuckAwayOverflowPixels, 9.0);
    EXPECT_EQ(controller->overflowGeometry().collapsedHeight, 34 + 3 * 5);
}

TEST_F(Panels, ManyChangesInOneTurnAreOneLook)
{
    addApplication(1, "Mail", 1);
    show();
    // Each look of the controller reads whether the desktop shines through.
    desktop.loop.runPosted();
    const int before = desktop.panels.translucencyReads;
    for (int i = 0; i < 100; ++i)
        model->setTaskRowsExpanded(i % 2 == 0);
    EXPECT_EQ(desktop.panels.translucencyReads, before);
    desktop.loop.runPosted();
    EXPECT_EQ(desktop.panels.translucencyReads, before + 1);
}

TEST_F(Panels, AKeyBringsTheFrameOfThePanelOnTheScreenWithTheFocus)
{
    desktop.screens.set({{1, {0, 0, 1440, 900}, 1}, {2, {1440, 0, 1280, 720}, 1}});
    show();
    desktop.screens.setMain(1);
    model->setTaskbarHidden(true);
    const auto frame = controller->revealForShortcut();
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->x, 1440);
    EXPECT_FALSE(model->inspect().taskbarIsHidden);
    desktop.screens.set({});
    advance(0.1);
    EXPECT_FALSE(controller->revealForShortcut());
}

TEST(EaseOut, StartsQuicklyAndEndsExactly)
{
    EXPECT_EQ(easeOut(0), 0);
    EXPECT_EQ(easeOut(1), 1);
    EXPECT_GT(easeOut(0.5), 0.5);
    for (double time = 0.05; time < 1; time += 0.05)
        EXPECT_GT(easeOut(time), easeOut(time - 0.05));
}

}  // namespace
}  // namespace korvane
