#include "Views/Tasks/TaskButtonLook.h"

#include "Models/Tasks/NotificationMark.h"
#include "tests/Models/AppModel/ModelFixture.h"

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::V;

class Look : public ModelFixture {
protected:
    Look()
    {
        addApplication(1, "Mail", 2);
        addApplication(2, "Notes", 1);
        desktop.applications.focusWindow(1, hashOf(1, 0));
        start();
    }
    TaskButtonLook of(Pid pid, int index) { return TaskButtonLooks::ofItem(*model, task(idOf(pid, index)), false); }
};

TEST_F(Look, TheActiveTabIsTheBrighterOneUnlessInverted)
{
    EXPECT_EQ(of(1, 0).fillOpacity, 0.13);
    EXPECT_EQ(of(1, 1).fillOpacity, 0.035);
    model->set(&V::invertTaskbarButtonHighlight, true);
    EXPECT_EQ(of(1, 0).fillOpacity, 0.035);
    EXPECT_EQ(of(1, 1).fillOpacity, 0.13);
}

TEST_F(Look, AColouredTabShowsTheSameFillActiveOrNot)
{
    model->setLiveTabColorName("Custom:#0D1F36", idOf(1, 0));
    model->setLiveTabColorName("Custom:#0D1F36", idOf(1, 1));
    const auto active = of(1, 0), other = of(1, 1);
    EXPECT_EQ(active.color, other.color);
    EXPECT_EQ(active.fillOpacity, 0.5);
    EXPECT_EQ(other.fillOpacity, 0.5);
    model->set(&V::blueStripsEnabled, false);
    EXPECT_FALSE(of(1, 0).strip);
}

TEST_F(Look, TheActiveTabAndTheOneBeforeItWearTheirStrips)
{
    desktop.applications.focusWindow(1, hashOf(1, 1));
    model->refresh();
    const auto active = of(1, 1), previous = of(1, 0);
    ASSERT_TRUE(active.strip && previous.strip);
    EXPECT_EQ(active.strip->opacity, 0.95);
    EXPECT_EQ(previous.strip->opacity, 0.72);
    EXPECT_EQ(active.strip->color, *TabColors::storedTabColor("Custom:#093D91"));
    EXPECT_EQ(previous.strip->color, *TabColors::storedTabColor("Custom:#674927"));
    EXPECT_FALSE(of(2, 0).strip);
}

TEST_F(Look, AStripColourThatIsNoneFallsBack)
{
    model->set(&V::activeWindowStripColor, "no colour");
    EXPECT_EQ(of(1, 0).strip->color, (Rgb{0.035, 0.24, 0.57}));
    model->set(&V::lastWindowStripColor, "no colour either");
    desktop.applications.focusWindow(1, hashOf(1, 1));
    model->refresh();
    EXPECT_EQ(of(1, 0).strip->color, (Rgb{0.025, 0.17, 0.4}));
}

TEST_F(Look, ABadgeShowsInTheStyleOfTheSettings)
{
    platform::simulated::DockItem item;
    item.title = "Notes";
    item.subrole = "AXApplicationDockItem";
    item.statusLabel = "3";
    platform::simulated::DockItem root;
    root.children = std::vector<platform::simulated::DockItem>{item};
    desktop.applications.setDock(root);
    model->refresh(true);
    EXPECT_EQ(of(2, 0).markStyle, NotificationBadgeStyle::triangle);
    EXPECT_EQ(of(1, 0).markStyle, NotificationBadgeStyle::none);
    RunningAppGroup group;
    group.windows = {task(idOf(1, 0)), task(idOf(2, 0))};
    EXPECT_EQ(TaskButtonLooks::ofGroup(*model, group, false).markStyle, NotificationBadgeStyle::triangle);
}

TEST(NotificationMark, AnotherTextThanTheFourStylesDrawsNothing)
{
    for (const char *style : {"none", "", "Dot", "TRIANGLE", "triangle "})
        EXPECT_FALSE(NotificationMarks::ofStyle(Choice<NotificationBadgeStyle>(style), 13)) << style;
}

TEST(NotificationMark, TheCornerShrinksWithItsSize)
{
    EXPECT_EQ(NotificationMarks::ofStyle(NotificationBadgeStyle::triangle, 13)->cornerRadius, 6);
    EXPECT_EQ(NotificationMarks::ofStyle(NotificationBadgeStyle::triangle, 4)->cornerRadius, 4);
}

TEST(NotificationMark, TheStripeStaysTenLongInALargerFrame)
{
    EXPECT_EQ(NotificationMarks::ofStyle(NotificationBadgeStyle::stripe, 13)->lineLength, 10);
    EXPECT_EQ(NotificationMarks::ofStyle(NotificationBadgeStyle::stripe, 13)->frame.width, 13);
    EXPECT_EQ(NotificationMarks::ofStyle(NotificationBadgeStyle::stripe, 8)->lineLength, 8);
}

TEST_F(Look, AGroupsButtonWearsTheActiveStripAlone)
{
    RunningAppGroup group;
    group.windows = {task(idOf(1, 0)), task(idOf(1, 1))};
    EXPECT_TRUE(TaskButtonLooks::ofGroup(*model, group, false).strip);
    group.windows = {task(idOf(2, 0))};
    EXPECT_FALSE(TaskButtonLooks::ofGroup(*model, group, false).strip);
}

}  // namespace
}  // namespace korvane
