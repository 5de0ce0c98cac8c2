#include "Views/Kit/Metrics.h"
#include "Views/Tasks/TaskButton.h"
#include "tests/Views/Bar/GesturesFixture.h"

namespace korvane {
namespace {

using testing::barTop;
using testing::Gestures;
using testing::height;
using testing::settle;
using testing::V;
using testing::width;

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
    EXPECT_TRUE(view->bar().overflowHover().overflowOpen());
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
    model->set(&V::mediaSliderDisplay, MediaSliderDisplay::overflow);
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
    const std::size_t main = view->bar().layout().mainCount;
    const std::string waiting = entryID(main);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    settle();
    EXPECT_EQ(view->bar().overflowReturnLock().lockedMainWindowIDs().size(), main);
    desktop.applications.closeWindow(1, hashOf(1, 0));
    desktop.applications.closeWindow(1, hashOf(1, 1));
    model->refresh();
    pass();
    EXPECT_EQ(view->bar().layout().mainCount, main - 2);
    QTest::mouseClick(control("Unlock overflow return"), Qt::LeftButton);
    settle();
    EXPECT_GE(view->bar().layout().mainCount, main);
    EXPECT_EQ(entryID(main - 2), waiting);
}

TEST_F(Gestures, WithEveryLockedWindowGoneTheMainRowIsEmptyUntilOneIsPlaced)
{
    show(30);
    const std::size_t main = view->bar().layout().mainCount;
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    settle();
    for (std::size_t i = 0; i < main; ++i)
        desktop.applications.closeWindow(1, hashOf(1, static_cast<int>(i)));
    model->refresh();
    pass();
    EXPECT_EQ(view->bar().layout().mainCount, 0U);
    const std::string id = idOf(1, 29);
    view->bar().setTaskPosition(id, {id}, true);
    pass();
    EXPECT_EQ(view->bar().layout().mainCount, 1U);
    EXPECT_EQ(entryID(0), id);
}

TEST_F(Gestures, SetLastSendsALockedTaskOffTheMainRow)
{
    show(30);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    settle();
    const std::string id = entryID(0);
    view->bar().setTaskPosition(id, {id}, false);
    pass();
    EXPECT_FALSE(view->bar().overflowReturnLock().lockedMainWindowIDs().contains(id));
    EXPECT_EQ(view->bar().layout().entries.back().id, id);
}

TEST_F(Gestures, WhatANarrowerScreenPushesOutStaysOut)
{
    show(30);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    settle();
    view->resize(900, height);
    settle();
    const std::size_t narrow = view->bar().layout().mainCount;
    view->resize(width, height);
    settle();
    EXPECT_EQ(view->bar().layout().mainCount, narrow);
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
    EXPECT_EQ(view->bar().drag()->taskDropCue(), "before:" + entryID(0));
    EXPECT_TRUE(cue()->isVisible());
    const QImage before = view->grab().toImage();
    EXPECT_EQ(before.pixelColor(target.left() - 2, target.center().y()).blue(), 255);
    EXPECT_TRUE(dragTo(target.topRight() - QPoint(5, -10)));
    EXPECT_EQ(view->bar().drag()->taskDropCue(), "into:" + entryID(0));
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
    EXPECT_FALSE(view->bar().drag());
    EXPECT_FALSE(cue()->isVisible());
}

TEST_F(Gestures, ADropOnATabsMiddleMakesAGroup)
{
    show(3);
    drag(entryID(2));
    dragTo(tab(0).center() + QPoint(20, 0));
    EXPECT_TRUE(drop(tab(0).center() + QPoint(20, 0)));
    ASSERT_EQ(view->bar().layout().entries.size(), 2U);
    EXPECT_TRUE(view->bar().layout().entries[0].group->isCustom);
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
    EXPECT_TRUE(view->bar().overflowHover().overflowOpen());
    const std::size_t target = view->bar().layout().mainCount + 1;
    const std::string neighbour = entryID(target);
    const QPoint place = tab(target).topLeft() + QPoint(5, 10);
    EXPECT_TRUE(dragTo(place));
    EXPECT_TRUE(drop(place));
    EXPECT_FALSE(view->bar().overflowHover().overflowOpen());
    // On a row from right to left the left side is behind the target.
    const auto &entries = view->bar().layout().entries;
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
    view->bar().endDrag();
    EXPECT_FALSE(view->bar().overflowHover().overflowOpen());
    EXPECT_FALSE(view->bar().drag());
    EXPECT_TRUE(view->bar().overflowReturnLock().draggedWindowIDs().empty());
    EXPECT_EQ(model->settings().taskOrder, before);
}

TEST_F(Gestures, ATaskDroppedOnTheEmptyRowsEndCapStaysThere)
{
    show(4);
    model->set(&V::mediaSliderDisplay, MediaSliderDisplay::overflow);
    pass();
    const std::string moved = entryID(1);
    drag(moved);
    dragTo(overRow(1));
    const CardPlace &card = *view->geometryOfBar().card(1);
    const QPoint cap = card.endCap.translated(card.shown.topLeft()).center();
    EXPECT_TRUE(dragTo(cap));
    EXPECT_TRUE(drop(cap));
    EXPECT_TRUE(view->bar().overflowReturnLock().overflowReturnLocked());
    EXPECT_EQ(view->bar().layout().mainCount, 3U);
    EXPECT_EQ(entryID(3), moved);
}

TEST_F(Gestures, ADropOnTheMainRowIsKeptThereByTheLock)
{
    show(30);
    QTest::mouseClick(control("Lock overflow return"), Qt::LeftButton);
    settle();
    const std::string moved = entryID(view->bar().layout().mainCount);
    drag(moved);
    const QPoint place = tab(1).topLeft() + QPoint(5, 10);
    dragTo(place);
    EXPECT_TRUE(drop(place));
    EXPECT_TRUE(view->bar().overflowReturnLock().lockedMainWindowIDs().contains(moved));
    EXPECT_EQ(entryID(1), moved);
}

TEST_F(Gestures, ADragThatRestsOnTheArrowOpensTheRows)
{
    show(30);
    drag(entryID(0));
    const QRect arrow = view->geometryOfBar().arrow.translated(0, barTop);
    dragTo(arrow.center());
    advance(0.59);
    EXPECT_FALSE(view->bar().overflowHover().overflowOpen());
    advance(0.01);
    EXPECT_TRUE(view->bar().overflowHover().overflowOpen());
    dragTo(tab(0).center());
    EXPECT_FALSE(view->bar().overflowHover().overflowArrowHovered());
}

TEST_F(Gestures, TheGapBehindTheLastTabOfAFullRowTakesATaskToItsEnd)
{
    show(30);
    const std::string moved = entryID(0);
    const std::size_t last = view->bar().layout().mainCount - 1;
    drag(moved);
    const QPoint gap(tab(last).right() + 2, barTop + 17);
    EXPECT_TRUE(dragTo(gap));
    EXPECT_TRUE(drop(gap));
    EXPECT_EQ(entryID(last), moved);
}

TEST_F(Gestures, AListThatChangesUnderARestingDragHasOtherTargets)
{
    show(4);
    const std::string moved = entryID(3), next = entryID(2);
    drag(moved);
    const QPoint place = tab(1).center();
    ASSERT_TRUE(dragTo(place));
    desktop.applications.closeWindow(1, hashOf(1, 1));
    model->refresh();
    pass();
    ASSERT_EQ(entryID(1), next);
    EXPECT_TRUE(cue()->isVisible());
    EXPECT_EQ(view->bar().drag()->taskDropCue(), TaskDrops::intoCue(next));
    EXPECT_TRUE(drop(place));
    const TaskbarEntry &entry = view->bar().layout().entries[1];
    ASSERT_TRUE(entry.group);
    EXPECT_EQ(entry.group->windows.size(), 2U);
}

TEST_F(Gestures, AWindowDroppedOnItselfStaysWhereItIs)
{
    show(3);
    const std::string id = entryID(1);
    drag(id);
    EXPECT_FALSE(dragTo(tab(1).center()));
    EXPECT_FALSE(cue()->isVisible());
    EXPECT_FALSE(drop(tab(1).center()));
    EXPECT_EQ(entryID(1), id);
    EXPECT_FALSE(view->bar().drag());
}

TEST_F(Gestures, AGroupDroppedOnItselfIsRefused)
{
    show(3);
    model->set(&V::groupingMode, GroupingMode::always);
    pass();
    ASSERT_TRUE(view->bar().layout().entries[0].group);
    view->bar().beginDrag("group::" + view->bar().layout().entries[0].group->id, {idOf(1, 0), idOf(1, 1), idOf(1, 2)});
    EXPECT_FALSE(dragTo(tab(0).center()));
    EXPECT_FALSE(drop(tab(0).center()));
}

TEST_F(Gestures, EachTuckedRowShowsAPointHoweverMuchTheCardsOverlap)
{
    show(30);
    model->set(&V::tuckAwayOverflowPixels, 5);
    model->set(&V::overflowCardOverlapPixels, 20);
    pass();
    int lower = barTop;
    for (auto *card : cards()) {
        EXPECT_EQ(card->y(), lower - 1);
        lower = card->y();
    }
}

TEST_F(Gestures, AHighStripDoesNotOpenAndLeaveItsRowInTurn)
{
    show(30);
    model->set(&V::tuckAwayOverflowPixels, 28);
    pass();
    const QPoint top = view->geometryOfBar().cards.back().hoverStrip.topRight() - QPoint(5, 0);
    for (int i = 0; i < 10; ++i) {
        view->pointerMoved(top + QPoint(i % 2, 0));
        advance(0.15);
    }
    EXPECT_TRUE(view->bar().overflowHover().overflowOpen());
    advance(0.5);
    EXPECT_TRUE(view->bar().overflowHover().overflowOpen());
}

}  // namespace
}  // namespace korvane
