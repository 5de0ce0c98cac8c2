#include "Views/Tasks/GroupWindowList.h"

#include "Views/Kit/Popover.h"
#include "Views/Tasks/CloseGlyph.h"
#include "Views/Tasks/GroupListRows.h"
#include "Views/Tasks/RunningAppGroupButton.h"
#include "tests/Views/Tasks/ButtonFixture.h"

#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

namespace korvane {
namespace {

using testing::ButtonFixture;
using testing::Names;
using testing::PaintCounter;
using testing::settle;
using testing::V;

class GroupList : public ButtonFixture {
protected:
    void TearDown() override
    {
        delete button;
        EXPECT_FALSE(Popover::anyOpen());
    }
    // The list of an automatic group of so many windows.
    void openWith(int windows)
    {
        addApplication(1, "Mail", windows);
        addApplication(2, "Notes", 1);
        startWith(GroupingMode::always);
        id = "auto:1";
        button = add<RunningAppGroupButton>(entry(id));
        open();
    }
    void openCustom()
    {
        addApplication(1, "Mail", 2);
        startWith(GroupingMode::never);
        model->createCustomGroup({task(idOf(1, 0)), task(idOf(1, 1))});
        id = model->taskbarEntries(false).front().id;
        button = add<RunningAppGroupButton>(entry(id));
        open();
    }
    void open()
    {
        QTest::mouseClick(button, Qt::LeftButton);
        settle();
        ASSERT_TRUE(button->listIsOpen());
    }
    GroupWindowList &list() { return *button->windowList(); }
    Popover &popover() { return *button->findChild<Popover *>(); }
    std::vector<std::string> shownRows()
    {
        std::vector<std::string> names;
        for (const GroupWindowRow *row : list().windowRows())
            names.push_back(row->accessibleName().toStdString());
        return names;
    }
    bool reportedOpen() { return model->openGroupedLists().contains(id); }
    void update() { ButtonFixture::update(*button, id); }

    RunningAppGroupButton *button = nullptr;
    std::string id;
};

TEST_F(GroupList, AClickOpensTheListAndAnotherClosesItAndBothAreReported)
{
    openWith(3);
    EXPECT_TRUE(reportedOpen());
    EXPECT_TRUE(Popover::anyOpen());
    EXPECT_EQ(shownRows(), (Names{"Mail 1", "Mail 2", "Mail 3"}));
    QTest::mouseClick(button, Qt::LeftButton);
    settle();
    EXPECT_FALSE(button->listIsOpen());
    EXPECT_FALSE(reportedOpen());
    open();
    QTest::keyClick(&popover(), Qt::Key_Escape);
    settle();
    EXPECT_FALSE(reportedOpen());
}

TEST_F(GroupList, ItsPartsHaveTheSizesThatWereAskedFor)
{
    openWith(3);
    EXPECT_EQ(list().heading().geometry(), QRect(0, 4, 220, 28));
    const auto &rows = list().windowRows();
    EXPECT_EQ(rows[0]->size(), QSize(220, 28));
    EXPECT_EQ(rows[0]->mapTo(&list(), QPoint()).y(), 4 + 28 + 4 + 1 + 4);
    EXPECT_EQ(rows[1]->y() - rows[0]->y(), 28 + 4);
    EXPECT_EQ(list().hideAll().size(), QSize(220, 30));
    EXPECT_EQ(list().height(), 4 + 28 + 4 + 1 + 4 + 3 * 28 + 2 * 4 + 4 + 1 + 4 + 30 + 4);
    // Above the button.
    EXPECT_LT(popover().geometry().bottom(), button->mapToGlobal(QPoint()).y());
}

TEST_F(GroupList, TwentyWindowsStandDirectlyAndTwentyOneScroll)
{
    openWith(20);
    EXPECT_FALSE(list().scrollArea());
    desktop.applications.openWindow(1, window(hashOf(1, 20), "Mail 21"));
    update();
    ASSERT_TRUE(list().scrollArea());
    EXPECT_EQ(list().scrollArea()->height(), 420);
    EXPECT_GT(list().scrollArea()->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(shownRows().size(), 21U);
    desktop.applications.closeWindow(1, hashOf(1, 3));
    update();
    EXPECT_FALSE(list().scrollArea());
    EXPECT_TRUE(list().windowRows().front()->isVisible());
    EXPECT_EQ(shownRows()[3], "Mail 5");
}

TEST_F(GroupList, ARowBringsItsWindowForwardAndClosesTheList)
{
    openWith(2);
    desktop.actions.take();
    QTest::mouseClick(list().windowRows()[1], Qt::LeftButton);
    settle();
    EXPECT_FALSE(button->listIsOpen());
    EXPECT_FALSE(reportedOpen());
    EXPECT_EQ(model->settings().recentWindowIDs.front(), idOf(1, 1));
}

TEST_F(GroupList, TheHeadingActivatesTheApplicationAndOfACustomGroupJustCloses)
{
    openWith(2);
    QTest::mouseClick(&list().heading(), Qt::LeftButton);
    settle();
    EXPECT_FALSE(button->listIsOpen());
    EXPECT_EQ(desktop.applications.active(), 1);
}

TEST_F(GroupList, TheHeadingOfACustomGroupJustCloses)
{
    openCustom();
    desktop.actions.take();
    QTest::mouseClick(&list().heading(), Qt::LeftButton, {}, QPoint(10, 10));
    settle();
    EXPECT_FALSE(button->listIsOpen());
    EXPECT_TRUE(desktop.actions.take().empty());
}

TEST_F(GroupList, HidingAllMinimisesEveryWindowOfTheGroup)
{
    openWith(2);
    desktop.actions.take();
    QTest::mouseClick(&list().hideAll(), Qt::LeftButton);
    settle();
    EXPECT_FALSE(button->listIsOpen());
    int minimised = 0;
    for (const std::string &action : takeActions())
        minimised += action == "set";
    EXPECT_EQ(minimised, 2);
}

TEST_F(GroupList, ARowsGlyphClosesItsWindowAndTheListGoesOn)
{
    openWith(3);
    auto *glyph = list().windowRows()[0]->findChild<CloseGlyph *>();
    EXPECT_EQ(glyph->geometry(), QRect(220 - 11, 0, 11, 11));
    QTest::mouseClick(glyph, Qt::LeftButton);
    settle();
    update();
    EXPECT_TRUE(button->listIsOpen());
    EXPECT_EQ(shownRows(), (Names{"Mail 2", "Mail 3"}));
    EXPECT_EQ(list().height(), 4 + 28 + 4 + 1 + 4 + 2 * 28 + 4 + 4 + 1 + 4 + 30 + 4);
}

TEST_F(GroupList, TheListFollowsItsGroupAndKeepsItsRowsItsKeysAndItsScrolling)
{
    openWith(25);
    GroupWindowRow *kept = list().windowRows()[22];
    kept->setFocus();
    settle();
    const int scrolled = list().scrollArea()->verticalScrollBar()->value();
    EXPECT_GT(scrolled, 0);  // to the row that the keys are for
    desktop.applications.setTitle(1, hashOf(1, 24), "Last");
    desktop.applications.closeWindow(1, hashOf(1, 23));
    update();
    EXPECT_EQ(list().windowRows()[22], kept);
    EXPECT_EQ(popover().focusWidget(), kept);
    EXPECT_EQ(shownRows().back(), "Last");
    EXPECT_EQ(list().scrollArea()->verticalScrollBar()->value(), scrolled);
    // A row that goes leaves the keys to the one that takes its place.
    desktop.applications.closeWindow(1, hashOf(1, 22));
    update();
    EXPECT_EQ(popover().focusWidget(), list().windowRows()[22]);
    EXPECT_EQ(shownRows()[22], "Last");
}

TEST_F(GroupList, NothingOfItRepaintsWhenNothingChanged)
{
    openWith(3);
    PaintCounter paints;
    update();
    EXPECT_EQ(paints.count(), 0);
    desktop.applications.setTitle(1, hashOf(1, 2), "Mail 9");
    update();
    EXPECT_EQ(paints.countOf<GroupWindowRow>(), 1);
}

TEST_F(GroupList, ItClosesWithItsGroup)
{
    openWith(2);
    delete std::exchange(button, nullptr);
    settle();
    EXPECT_FALSE(Popover::anyOpen());
    EXPECT_FALSE(reportedOpen());
}

TEST_F(GroupList, TheKeysGoThroughTheListAndReturnPresses)
{
    openWith(2);
    EXPECT_EQ(popover().focusWidget(), &list().heading());
    QTest::keyClick(&popover(), Qt::Key_Down);
    EXPECT_EQ(popover().focusWidget(), list().windowRows()[0]);
    QTest::keyClick(popover().focusWidget(), Qt::Key_Down);
    EXPECT_EQ(popover().focusWidget(), list().windowRows()[1]);
    QTest::keyClick(popover().focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(popover().focusWidget(), &list().hideAll());
    QTest::keyClick(popover().focusWidget(), Qt::Key_Up);
    QTest::keyClick(popover().focusWidget(), Qt::Key_Return);
    settle();
    EXPECT_FALSE(button->listIsOpen());
    EXPECT_EQ(model->settings().recentWindowIDs.front(), idOf(1, 1));
}

TEST_F(GroupList, ANewWindowsRowComesAtItsPlaceAlsoForTheKeys)
{
    openWith(2);
    desktop.applications.openWindow(1, window(hashOf(1, 5), "Mail 6"));
    update();
    list().windowRows().back()->setFocus();
    QTest::keyClick(popover().focusWidget(), Qt::Key_Down);
    EXPECT_EQ(popover().focusWidget(), &list().hideAll());
}

TEST_F(GroupList, ACustomGroupIsRenamedWithEveryKey)
{
    openCustom();
    QLineEdit *field = list().heading().nameField();
    ASSERT_TRUE(field);
    EXPECT_EQ(field->text(), "New Group");
    EXPECT_EQ(field->placeholderText(), "Group Name");
    field->setFocus();
    field->selectAll();
    QTest::keyClicks(field, "Wo");
    EXPECT_EQ(model->settings().customGroupNames.begin()->second, "Wo");
    update();
    EXPECT_EQ(button->accessibleName(), "Wo");
    QTest::keyClicks(field, "rk");
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(model->settings().customGroupNames.begin()->second, "Work");
    EXPECT_TRUE(button->listIsOpen());
    EXPECT_EQ(field->text(), "Work");
}

TEST_F(GroupList, AnAutomaticGroupHasNoFieldForItsName)
{
    openWith(2);
    EXPECT_FALSE(list().heading().nameField());
    EXPECT_EQ(list().heading().accessibleName(), "Mail Tabs");
}

TEST_F(GroupList, TheHeadingsMenuIsThatOfTheGroupWithoutColoursAndWidth)
{
    openWith(2);
    QTest::keyClick(&list().heading(), Qt::Key_Menu);
    settle();
    ASSERT_TRUE(openedMenu());
    EXPECT_EQ(titles(*openedMenu()), (Names{"Set First", "Set Last", "-", "New Group", "Add Application to Favorites",
                                            "-", "Quit Mail && Group", "Close Group"}));
    openedMenu()->close();
    settle();
    EXPECT_TRUE(button->listIsOpen());
}

TEST_F(GroupList, ARowsMenuTakesItsWindowOutOfTheGroup)
{
    openWith(2);
    choose(*list().windowRows()[1], {"Set First"});
    choose(*list().windowRows()[1], {"Set Last"});
    EXPECT_EQ(takeCalls(),
              (Names{"first groupwindow::" + idOf(1, 1) + " of 1", "last groupwindow::" + idOf(1, 1) + " of 1"}));
    choose(*list().windowRows()[0], {"New Group"});
    EXPECT_EQ(model->settings().customGroupMembers.size(), 1U);
    choose(*list().windowRows()[0], {"Add Application to Favorites"});
    EXPECT_EQ(model->settings().startFavorites.back().id, "app:org.example.Mail");
    EXPECT_TRUE(button->listIsOpen());
}

TEST_F(GroupList, ARowIsDraggedAsAWindowOutOfItsGroup)
{
    openWith(2);
    press(*list().windowRows()[1], 50);
    EXPECT_EQ(takeCalls(), (Names{"drag groupwindow::" + idOf(1, 1) + " of 1"}));
    EXPECT_TRUE(button->listIsOpen());
    // Its window may be gone when the drag ends.
    whileDragging = [&] {
        desktop.applications.closeWindow(1, hashOf(1, 1));
        update();
    };
    press(*list().windowRows()[1], 50);
    EXPECT_EQ(shownRows(), (Names{"Mail 1"}));
}

TEST_F(GroupList, RowsWearTheStripsOfTheActiveAndThePreviousWindow)
{
    openWith(3);
    desktop.applications.focusWindow(1, hashOf(1, 0));
    model->refresh();
    desktop.applications.focusWindow(1, hashOf(1, 1));
    update();
    const auto &rows = list().windowRows();
    ASSERT_TRUE(rows[0]->currentLook().strip && rows[1]->currentLook().strip);
    EXPECT_EQ(rows[0]->currentLook().strip->opacity, 0.72);
    EXPECT_EQ(rows[1]->currentLook().strip->opacity, 0.95);
    EXPECT_FALSE(rows[2]->currentLook().strip);
}

TEST_F(GroupList, APressOutsideClosesIt)
{
    openWith(2);
    QCursor::setPos(5, 5);
    desktop.events.press();
    advance(0);
    settle();
    EXPECT_FALSE(button->listIsOpen());
    EXPECT_FALSE(reportedOpen());
}

}  // namespace
}  // namespace korvane
