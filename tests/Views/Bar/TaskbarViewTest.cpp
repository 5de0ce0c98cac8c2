#include "Views/Bar/TaskbarView.h"

#include "Views/Bar/OverflowRowCard.h"
#include "Views/Kit/Metrics.h"
#include "Views/Kit/SymbolButton.h"
#include "Views/Tasks/TaskButton.h"
#include "tests/Models/AppModel/ModelFixture.h"
#include "tests/Views/Kit/PaintCounter.h"

#include <QAccessible>
#include <QTest>

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::PaintCounter;
using testing::settle;
using testing::V;

class Taskbar : public ModelFixture {
protected:
    void show(int width = 1280)
    {
        view = std::make_unique<TaskbarView>(*model, services, platform);
        view->resize(width, 200);
        view->updateFromModel();
        view->show();
        settle();
    }
    // What the controller does at the next turn after a change.
    void pass()
    {
        view->updateFromModel();
        settle();
    }
    QRect placeOf(const std::string &id) const
    {
        const TaskButton *task = view->button(id);
        return {task->mapTo(view.get(), QPoint()), task->size()};
    }

    // As its arrow does.
    void openRows()
    {
        for (auto *button : view->findChildren<SymbolButton *>())
            if (button->accessibleName() == "Expand all overflow")
                QTest::mouseClick(button, Qt::LeftButton);
        settle();
    }

    ViewServices services;
    std::unique_ptr<TaskbarView> view;
};

TEST_F(Taskbar, EachWindowStandsOnTheMainRowFromTheLaunchersOn)
{
    addApplication(1, "Mail", 2);
    addApplication(2, "Notes", 1);
    start();
    show();
    const QRect first = placeOf(idOf(1, 0)), second = placeOf(idOf(1, 1)), third = placeOf(idOf(2, 0));
    EXPECT_EQ(first.left(), 58);
    EXPECT_EQ(first.height(), 28);
    EXPECT_EQ(first.top(), 200 - 34 + 3);
    EXPECT_EQ(second.left() - (first.left() + first.width()), 4);
    EXPECT_EQ(third.left() - (second.left() + second.width()), 4);
    EXPECT_EQ(view->button(idOf(2, 0))->accessibleName(), "Notes 1");
}

TEST_F(Taskbar, NothingRepaintsWhenNothingChanged)
{
    addApplication(1, "Mail", 20);
    addApplication(2, "Notes", 20);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::never);
    start();
    show();
    PaintCounter paints;
    for (int i = 0; i < 3; ++i) {
        model->refresh();
        pass();
    }
    EXPECT_EQ(paints.count(), 0);
}

TEST_F(Taskbar, ARetitledWindowRepaintsItsTabAlone)
{
    addApplication(1, "Mail", 3);
    start();
    show();
    PaintCounter paints;
    desktop.applications.setTitle(1, hashOf(1, 1), "Mail 9");  // as wide as before
    model->refresh();
    pass();
    EXPECT_EQ(paints.countOf<TaskButton>(), 1);
    EXPECT_EQ(view->button(idOf(1, 1))->accessibleName(), "Mail 9");
}

TEST_F(Taskbar, ATabKeepsItsWidgetForAsLongAsItsWindowLives)
{
    addApplication(1, "Mail", 3);
    start();
    show();
    const TaskButton *second = view->button(idOf(1, 1));
    desktop.applications.closeWindow(1, hashOf(1, 0));
    desktop.applications.setTitle(1, hashOf(1, 1), "A much longer title than before");
    model->refresh();
    pass();
    EXPECT_EQ(view->button(idOf(1, 1)), second);
    EXPECT_EQ(view->button(idOf(1, 0)), nullptr);
}

TEST_F(Taskbar, LowerRowsLieOverHigherOnes)
{
    addApplication(1, "Mail", 30);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::never);
    start();
    show();
    // Children stand in the order in which they are drawn.
    const auto cards = view->findChildren<OverflowRowCard *>(Qt::FindDirectChildrenOnly);
    ASSERT_GE(cards.size(), 2);
    for (int i = 1; i < cards.size(); ++i)
        EXPECT_LT(cards[i - 1]->y(), cards[i]->y());
}

TEST_F(Taskbar, WhatDoesNotFitStacksUpFromTheRight)
{
    addApplication(1, "Mail", 30);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::never);
    start();
    show();
    openRows();
    const auto &layout = view->bar().layout();
    ASSERT_GE(layout.overflowRows.size(), 2U);
    const OverflowRow &row = layout.overflowRows[0];
    const auto first = static_cast<std::size_t>(row.lower);
    const QRect rightmost = placeOf(layout.entries[first].id), next = placeOf(layout.entries[first + 1].id);
    EXPECT_GT(rightmost.left(), next.left());
    EXPECT_EQ(rightmost.left() - (next.left() + next.width()), 4);
    // The padding, the buffer and the end cap stand between the last tab and the screen's edge.
    EXPECT_EQ(1280 - (rightmost.left() + rightmost.width()), 5 + 96 + 18);
    EXPECT_EQ(view->drawnRegion().boundingRect().left(), 0);
    // The first card reaches over the bar by the overlap and is as high as its row.
    auto cards = view->findChildren<OverflowRowCard *>();
    std::sort(cards.begin(), cards.end(), [](auto *left, auto *right) { return left->y() > right->y(); });
    ASSERT_EQ(static_cast<std::size_t>(cards.size()), layout.overflowRows.size());
    EXPECT_EQ(cards[0]->geometry().bottom() + 1, 200 - 34 + 2);
    EXPECT_EQ(cards[0]->height(), 34);
    EXPECT_EQ(cards[1]->height(), 32);
    EXPECT_EQ(cards[0]->geometry().left(), static_cast<int>(std::lround(row.leading)));
}

TEST_F(Taskbar, RowsThatAreNoLongerNeededGoAndTheirTabsComeDown)
{
    addApplication(1, "Mail", 30);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::never);
    model->set(&V::mediaSliderDisplay, MediaSliderDisplay::never);
    start();
    show();
    for (int i = 3; i < 30; ++i)
        desktop.applications.closeWindow(1, hashOf(1, i));
    model->refresh();
    pass();
    EXPECT_TRUE(view->findChildren<OverflowRowCard *>().isEmpty());
    EXPECT_EQ(view->findChildren<TaskButton *>().size(), 3);
    EXPECT_TRUE(view->button(idOf(1, 2))->isVisible());
    EXPECT_EQ(view->drawnRegion(), QRegion(0, 200 - 34, 1280, 34));
}

TEST_F(Taskbar, ItsRowCountReachesTheModelWithTheMainRowCounted)
{
    addApplication(1, "Mail", 1);
    start();
    show();
    EXPECT_EQ(model->taskOverflowRowCount(), 2);
    model->set(&V::mediaSliderDisplay, MediaSliderDisplay::never);
    pass();
    EXPECT_EQ(model->taskOverflowRowCount(), 1);
}

TEST_F(Taskbar, AClickActivatesTheWindow)
{
    addApplication(1, "Mail", 1);
    addApplication(2, "Notes", 1);
    start();
    show();
    QTest::mouseClick(view->button(idOf(2, 0)), Qt::LeftButton);
    EXPECT_EQ(desktop.applications.active(), 2);
}

TEST_F(Taskbar, TheAccessibleTabIsAButtonThatCanBePressed)
{
    addApplication(1, "Mail", 1);
    addApplication(2, "Notes & Co", 1);
    start();
    show();
    QAccessibleInterface *tab = QAccessible::queryAccessibleInterface(view->button(idOf(2, 0)));
    ASSERT_TRUE(tab);
    EXPECT_EQ(tab->role(), QAccessible::Button);
    EXPECT_EQ(tab->text(QAccessible::Name), "Notes & Co 1");
    ASSERT_TRUE(tab->actionInterface());
    tab->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    // The toolkit shows the press for a moment before it counts.
    EXPECT_TRUE(QTest::qWaitFor([&] { return desktop.applications.active() == 2; }, 2000));
}

TEST_F(Taskbar, HostileTitlesAreCutAndShownAsTheyStand)
{
    addApplication(1, "Mail", 0);
    std::string endless(100000, 'x');
    for (const std::string &title :
         {endless, std::string("<b>bold</b>"), std::string("a\nb\x01"), std::string("\xff\xfe"),
          std::string("שלום\u202e"), std::string("👩‍👩‍👧‍👦 family")})
        desktop.applications.openWindow(
            1, window(hashOf(1, static_cast<int>(desktop.applications.windowCount(1))), title));
    start();
    show();
    EXPECT_LE(view->button(idOf(1, 0))->accessibleName().size(), Metrics::longestText);
    EXPECT_EQ(view->button(idOf(1, 1))->accessibleName(), "<b>bold</b>");
    EXPECT_EQ(view->button(idOf(1, 2))->accessibleName(), "a b ");
    EXPECT_FALSE(view->grab().isNull());
}

TEST_F(Taskbar, AGroupStandsAsOneButtonWithItsName)
{
    addApplication(1, "Mail", 3);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::always);
    start();
    show();
    const TaskButton *group = view->button("auto:1");
    ASSERT_TRUE(group);
    EXPECT_EQ(group->accessibleName(), "Mail Tabs");
    EXPECT_TRUE(group->currentLook().chevron);
    EXPECT_EQ(group->toolTip(), "Show Mail windows");
}

}  // namespace
}  // namespace korvane
