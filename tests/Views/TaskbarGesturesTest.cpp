#include "Models/ModelFixture.h"
#include "Views/Metrics.h"
#include "Views/OverflowRowCard.h"
#include "Views/PaintCounter.h"
#include "Views/SymbolButton.h"
#include "Views/TaskButton.h"
#include "Views/TaskDropCue.h"
#include "Views/TaskResizeHandle.h"
#include "Views/TaskbarView.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QTest>

namespace korvane {
namespace {

using testing::ModelFixture;
using testing::PaintCounter;
using testing::settle;
using testing::V;

constexpr int width = 1280, height = 300, barTop = height - 34;

class Gestures : public ModelFixture {
protected:
    // So many windows of one program, none grouped.
    void show(int windows)
    {
        addApplication(1, "Mail", windows);
        makeModel();
        model->set(&V::groupingMode, "never");
        model->set(&V::mediaSliderDisplay, "Never");
        start();
        view = std::make_unique<TaskbarView>(*model, services, platform);
        view->resize(width, height);
        view->updateFromModel();
        view->show();
        settle();
    }
    void pass()
    {
        view->updateFromModel();
        settle();
    }
    SymbolButton *control(const QString &name)
    {
        for (auto *button : view->findChildren<SymbolButton *>())
            if (button->accessibleName() == name && button->isVisibleTo(view.get()))
                return button;
        return nullptr;
    }
    std::vector<OverflowRowCard *> cards()
    {
        auto found = view->findChildren<OverflowRowCard *>(Qt::FindDirectChildrenOnly);
        std::vector<OverflowRowCard *> list(found.begin(), found.end());
        std::sort(list.begin(), list.end(), [](auto *left, auto *right) { return left->y() > right->y(); });
        return list;
    }
    const std::string &entryID(std::size_t index) { return view->taskbarLayout().entries[index].id; }
    QRect tab(std::size_t index) { return view->geometryOfBar().tabInView(index); }
    // Over a tucked row, well to the right of the start area.
    QPoint overRow(int row) { return view->geometryOfBar().card(row)->shown.center(); }

    // The events of one drag, as the toolkit sends them.
    bool dragTo(const QPoint &point)
    {
        QMimeData payload;
        payload.setText("payload");
        if (!entered) {
            QDragEnterEvent enter(point, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(view.get(), &enter);
            entered = enter.isAccepted();
        }
        if (!entered)
            return false;
        QDragMoveEvent move(point, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &move);
        return move.isAccepted();
    }
    bool drop(const QPoint &point)
    {
        QMimeData payload;
        payload.setText("payload");
        QDropEvent dropped(point, Qt::MoveAction, &payload, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view.get(), &dropped);
        entered = false;
        settle();
        return dropped.isAccepted();
    }
    void leave()
    {
        QDragLeaveEvent left;
        QApplication::sendEvent(view.get(), &left);
        entered = false;
    }
    void drag(const std::string &id) { view->dragBegan(id, {id}); }
    TaskDropCue *cue() { return view->findChild<TaskDropCue *>(); }

    ViewServices services;
    std::unique_ptr<TaskbarView> view;
    bool entered = false;
};

// ---------------------------------------------------------------------------------------------------- rows

TEST_F(Gestures, ATuckedRowShowsItsTopStripAndLetsTheRestOfThePanelGo)
{
    show(30);
    const auto tuck = static_cast<int>(model->settings().tuckAwayOverflowPixels);
    ASSERT_GE(cards().size(), 2U);
    for (auto *card : cards())
        EXPECT_EQ(card->height(), tuck);
    EXPECT_FALSE(view->drawnRegion().contains(view->geometryOfBar().card(1)->hoverStrip.topLeft()));
    EXPECT_EQ(view->geometryOfBar().card(1)->hoverStrip.height(), tuck + 20);
    EXPECT_EQ(view->geometryOfBar().card(1)->hoverStrip.top(), cards()[0]->y() - 20);
}

TEST_F(Gestures, ARestingPointerOpensTheRowsAndLeavingTucksThemAway)
{
    show(30);
    view->pointerMoved(overRow(1));
    advance(0.12);
    EXPECT_EQ(cards()[0]->height(), 34);
    EXPECT_EQ(cards()[1]->height(), 32);
    EXPECT_TRUE(model->taskOverflowRowsVisible());
    view->pointerMoved(std::nullopt);
    advance(0.4);
    EXPECT_EQ(cards()[0]->height(), static_cast<int>(model->settings().tuckAwayOverflowPixels));
    EXPECT_FALSE(model->taskOverflowRowsVisible());
}

TEST_F(Gestures, TheStripAboveATuckedRowOpensItToo)
{
    show(30);
    const QRect strip = view->geometryOfBar().cards.back().hoverStrip;
    view->pointerMoved(QPoint(strip.right() - 5, strip.top()));
    advance(0.12);
    EXPECT_TRUE(view->overflowHover().overflowOpen());
}

TEST_F(Gestures, TheArrowPinsTheRowsOpen)
{
    show(30);
    EXPECT_EQ(control("Tuck overflow"), nullptr);
    QTest::mouseClick(control("Expand all overflow"), Qt::LeftButton);
    EXPECT_EQ(cards()[0]->height(), 34);
    EXPECT_EQ(control("Tuck overflow")->currentLook().symbol, "chevron.down.bold");
    QTest::mouseClick(control("Tuck overflow"), Qt::LeftButton);
    EXPECT_LT(cards()[0]->height(), 34);
}

TEST_F(Gestures, WithoutAutoHideOverflowTheArrowCollapsesAndShowsTheRows)
{
    show(30);
    model->set(&V::autoHideOverflow, false);
    pass();
    ASSERT_TRUE(control("Show remaining tasks"));
    QTest::mouseClick(control("Show remaining tasks"), Qt::LeftButton);
    pass();
    EXPECT_EQ(cards()[0]->height(), 34);
    EXPECT_TRUE(control("Collapse tasks"));
}

TEST_F(Gestures, TurningAutoHideOverflowOnExpandsTheRowsOfTheModel)
{
    show(30);
    model->set(&V::autoHideOverflow, false);
    pass();
    model->set(&V::autoHideOverflow, true);
    pass();
    EXPECT_TRUE(model->taskRowsExpanded());
    EXPECT_LT(cards()[0]->height(), 34);
}

TEST_F(Gestures, WithoutOverflowThereIsNoArrowButItsColumnKeepsItsWidth)
{
    show(2);
    const QRect clock = view->geometryOfBar().clock;
    EXPECT_EQ(control("Expand all overflow"), nullptr);
    EXPECT_EQ(view->geometryOfBar().attention.width(), 18);
    EXPECT_EQ(view->geometryOfBar().attention.right() + 1, clock.left());
}

TEST_F(Gestures, TheEmptyRowIsDrawnWhereTheSlidersBelongToTheOverflow)
{
    show(2);
    model->set(&V::mediaSliderDisplay, "Overflow");
    pass();
    ASSERT_EQ(cards().size(), 1U);
    EXPECT_EQ(cards()[0]->x(), width - 142);
    EXPECT_EQ(cards()[0]->width(), 142);
    EXPECT_TRUE(control("Lock overflow return"));
    EXPECT_TRUE(control("Refresh Tasks"));
}

// ---------------------------------------------------------------------------------------------------- lock

TEST_F(Gestures, LockedTasksDoNotComeBackToTheMainRowUntilItIsUnlocked)
{
    show(30);
    const std::size_t main = view->taskbarLayout().mainCount;
    const std::string waiting = entryID(main);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    EXPECT_EQ(view->overflowReturnLock().lockedMainWindowIDs().size(), main);
    desktop.applications.closeWindow(1, hashOf(1, 0));
    desktop.applications.closeWindow(1, hashOf(1, 1));
    model->refresh();
    pass();
    EXPECT_EQ(view->taskbarLayout().mainCount, main - 2);
    QTest::mouseClick(control("Unlock overflow return"), Qt::LeftButton);
    EXPECT_GE(view->taskbarLayout().mainCount, main);
    EXPECT_EQ(entryID(main - 2), waiting);
}

TEST_F(Gestures, WithEveryLockedWindowGoneTheMainRowIsEmptyUntilOneIsPlaced)
{
    show(30);
    const std::size_t main = view->taskbarLayout().mainCount;
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    for (std::size_t i = 0; i < main; ++i)
        desktop.applications.closeWindow(1, hashOf(1, static_cast<int>(i)));
    model->refresh();
    pass();
    EXPECT_EQ(view->taskbarLayout().mainCount, 0U);
    const std::string id = idOf(1, 29);
    view->setTaskPosition(id, {id}, true);
    pass();
    EXPECT_EQ(view->taskbarLayout().mainCount, 1U);
    EXPECT_EQ(entryID(0), id);
}

TEST_F(Gestures, SetLastSendsALockedTaskOffTheMainRow)
{
    show(30);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    const std::string id = entryID(0);
    view->setTaskPosition(id, {id}, false);
    pass();
    EXPECT_FALSE(view->overflowReturnLock().lockedMainWindowIDs().contains(id));
    EXPECT_EQ(view->taskbarLayout().entries.back().id, id);
}

TEST_F(Gestures, WhatANarrowerScreenPushesOutStaysOut)
{
    show(30);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    view->resize(900, height);
    settle();
    const std::size_t narrow = view->taskbarLayout().mainCount;
    view->resize(width, height);
    settle();
    EXPECT_EQ(view->taskbarLayout().mainCount, narrow);
}

// ---------------------------------------------------------------------------------------------------- drags

TEST_F(Gestures, ADragThatDidNotBeginOnTheBarIsNotTaken)
{
    show(3);
    EXPECT_FALSE(dragTo(tab(1).center()));
    EXPECT_FALSE(cue()->isVisible());
}

TEST_F(Gestures, TheLeftPartOfATabShowsABarAtItsEdgeAndTheRestAnOutline)
{
    show(3);
    drag(entryID(2));
    const QRect target = tab(0);
    EXPECT_TRUE(dragTo(target.topLeft() + QPoint(5, 10)));
    EXPECT_EQ(view->dragState().taskDropCue, "before:" + entryID(0));
    EXPECT_TRUE(cue()->isVisible());
    const QImage before = view->grab().toImage();
    EXPECT_EQ(before.pixelColor(target.left() - 2, target.center().y()).blue(), 255);
    EXPECT_TRUE(dragTo(target.topRight() - QPoint(5, -10)));
    EXPECT_EQ(view->dragState().taskDropCue, "into:" + entryID(0));
    const QImage into = view->grab().toImage();
    EXPECT_NE(into.pixelColor(target.left() - 2, target.center().y()).blue(), 255);
    EXPECT_EQ(into.pixelColor(target.center().x(), target.top()).blue(), 255);
}

TEST_F(Gestures, ADropAtATabsLeftReordersAndEndsTheDrag)
{
    show(3);
    const std::string moved = entryID(2);
    drag(moved);
    dragTo(tab(0).topLeft() + QPoint(5, 10));
    EXPECT_TRUE(drop(tab(0).topLeft() + QPoint(5, 10)));
    EXPECT_EQ(entryID(0), moved);
    EXPECT_FALSE(view->dragState().draggedTaskID);
    EXPECT_FALSE(cue()->isVisible());
}

TEST_F(Gestures, ADropOnATabsMiddleMakesAGroup)
{
    show(3);
    drag(entryID(2));
    dragTo(tab(0).center() + QPoint(20, 0));
    EXPECT_TRUE(drop(tab(0).center() + QPoint(20, 0)));
    ASSERT_EQ(view->taskbarLayout().entries.size(), 2U);
    EXPECT_TRUE(view->taskbarLayout().entries[0].group->isCustom);
}

TEST_F(Gestures, TheFreeRoomBehindTheLastTabTakesATaskToTheEnd)
{
    show(3);
    const std::string moved = entryID(0);
    drag(moved);
    const QPoint free(width - 300, barTop + 17);
    EXPECT_TRUE(dragTo(free));
    EXPECT_TRUE(drop(free));
    EXPECT_EQ(entryID(2), moved);
}

TEST_F(Gestures, ADragOverTuckedRowsOpensThemAndTheyTakeTheDrop)
{
    show(30);
    const std::string moved = entryID(0);
    drag(moved);
    dragTo(overRow(1));
    EXPECT_TRUE(view->overflowHover().overflowOpen());
    const std::size_t target = view->taskbarLayout().mainCount + 1;
    const std::string neighbour = entryID(target);
    const QPoint place = tab(target).topLeft() + QPoint(5, 10);
    EXPECT_TRUE(dragTo(place));
    EXPECT_TRUE(drop(place));
    EXPECT_FALSE(view->overflowHover().overflowOpen());
    // On a row from right to left the left side is behind the target.
    const auto &entries = view->taskbarLayout().entries;
    const auto at = std::find_if(entries.begin(), entries.end(), [&](auto &entry) { return entry.id == neighbour; });
    ASSERT_NE(at + 1, entries.end());
    EXPECT_EQ((at + 1)->id, moved);
}

TEST_F(Gestures, ADragThatIsGivenUpLeavesNoTrace)
{
    show(30);
    const auto before = model->settings().taskOrder;
    drag(entryID(0));
    dragTo(overRow(1));
    dragTo(tab(1).center());
    leave();
    EXPECT_FALSE(cue()->isVisible());
    view->dragEnded();
    EXPECT_FALSE(view->overflowHover().overflowOpen());
    EXPECT_FALSE(view->dragState().draggedTaskID);
    EXPECT_TRUE(view->overflowReturnLock().draggedWindowIDs().empty());
    EXPECT_EQ(model->settings().taskOrder, before);
}

TEST_F(Gestures, ATaskDroppedOnTheEmptyRowsEndCapStaysThere)
{
    show(4);
    model->set(&V::mediaSliderDisplay, "Overflow");
    pass();
    const std::string moved = entryID(1);
    drag(moved);
    dragTo(overRow(1));
    const CardPlace &card = *view->geometryOfBar().card(1);
    const QPoint cap = card.endCap.translated(card.shown.topLeft()).center();
    EXPECT_TRUE(dragTo(cap));
    EXPECT_TRUE(drop(cap));
    EXPECT_TRUE(view->overflowReturnLock().overflowReturnLocked());
    EXPECT_EQ(view->taskbarLayout().mainCount, 3U);
    EXPECT_EQ(entryID(3), moved);
}

TEST_F(Gestures, ADropOnTheMainRowIsKeptThereByTheLock)
{
    show(30);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    const std::string moved = entryID(view->taskbarLayout().mainCount);
    drag(moved);
    const QPoint place = tab(1).topLeft() + QPoint(5, 10);
    dragTo(place);
    EXPECT_TRUE(drop(place));
    EXPECT_TRUE(view->overflowReturnLock().lockedMainWindowIDs().contains(moved));
    EXPECT_EQ(entryID(1), moved);
}

TEST_F(Gestures, ADragThatRestsOnTheArrowOpensTheRows)
{
    show(30);
    drag(entryID(0));
    const QRect arrow = view->geometryOfBar().arrow.translated(0, barTop);
    dragTo(arrow.center());
    advance(0.59);
    EXPECT_FALSE(view->overflowHover().overflowOpen());
    advance(0.01);
    EXPECT_TRUE(view->overflowHover().overflowOpen());
    dragTo(tab(0).center());
    EXPECT_FALSE(view->overflowHover().overflowArrowHovered());
}

// ---------------------------------------------------------------------------------------------------- widths

class Resizing : public Gestures {
protected:
    TaskResizeHandle *handle() { return view->findChild<TaskResizeHandle *>(); }
};

TEST_F(Resizing, TheGripStandsAtTheTabsRightEdge)
{
    show(3);
    view->armResize(entryID(1));
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
    view->armResize(id);
    QTest::mouseClick(handle(), Qt::LeftButton);
    settle();
    EXPECT_FALSE(view->armedResizeID());
    EXPECT_FALSE(handle());
    EXPECT_EQ(view->taskWidthOverrides().at(id), before);
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
}

TEST_F(Resizing, TheTabKeepsItsWidthUntilTheGripIsLetGo)
{
    show(3);
    view->armResize(entryID(1));
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
    view->armResize(entryID(1));
    QTest::mousePress(handle(), Qt::LeftButton, {}, handle()->rect().center());
    ASSERT_TRUE(model->inspect().taskResizeSuspended);
    view.reset();
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
}

TEST_F(Resizing, TheGripGoesWithItsWindow)
{
    show(3);
    view->armResize(entryID(1));
    desktop.applications.closeWindow(1, hashOf(1, 1));
    model->refresh();
    pass();
    EXPECT_FALSE(view->armedResizeID());
    EXPECT_FALSE(handle());
}

TEST_F(Resizing, AWidthSetByHandEndsWithItsWindow)
{
    show(3);
    view->armResize(entryID(1));
    QTest::mouseClick(handle(), Qt::LeftButton);
    desktop.applications.closeWindow(1, hashOf(1, 1));
    model->refresh();
    pass();
    EXPECT_TRUE(view->taskWidthOverrides().empty());
}

}  // namespace
}  // namespace korvane
