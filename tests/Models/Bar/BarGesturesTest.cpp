// What a person does to a bar: drags, and widths set by hand.
#include "tests/Models/Bar/BarFixture.h"

#include <algorithm>

namespace korvane {
namespace {

using testing::BarOnADesktop;
using testing::V;
using Place = TaskDropPlace;

// ---------------------------------------------------------------------------------------------------- drags

TEST_F(BarOnADesktop, ADropEndsTheDragOnceAndCausesOnePass)
{
    show(5);
    const std::string dragged = id(0), target = id(3);
    advance(1);
    bar->beginDrag(dragged, {dragged});
    EXPECT_EQ(bar->dragMovedTo(on(3), edge), DropProposal::move);
    EXPECT_EQ(bar->drag()->taskDropCue(), "before:" + target);
    EXPECT_TRUE(bar->drop(on(3), edge));
    EXPECT_EQ(bar->drag(), nullptr);
    bar->endDrag();  // the toolkit's own drag returns later
    advance(0);
    EXPECT_EQ(passes, 1);
    EXPECT_EQ(id(2), dragged);
    EXPECT_EQ(id(3), target);
    advance(5);
    EXPECT_EQ(passes, 1);
}

TEST_F(BarOnADesktop, ADragThatIsGivenUpLeavesNothingBehind)
{
    show(30);
    const auto before = ids();
    bar->beginDrag(id(0), {id(0)});
    bar->pointerOverRow(1, true, 700);
    EXPECT_TRUE(bar->overflowHover().overflowOpen());
    bar->dragMovedTo(on(2), middle);
    const int told = cues;
    bar->endDrag();
    EXPECT_GT(cues, told);
    EXPECT_EQ(bar->drag(), nullptr);
    EXPECT_TRUE(bar->overflowReturnLock().draggedWindowIDs().empty());
    EXPECT_FALSE(bar->overflowHover().overflowOpen());
    EXPECT_EQ(ids(), before);
    advance(0);
    EXPECT_EQ(passes, 1);
}

TEST_F(BarOnADesktop, ADropOfWhatWasClosedOnTheWayIsRefused)
{
    show(5);
    const std::string dragged = idOf(1, 0);
    bar->beginDrag(dragged, {dragged});
    close(0);
    bar->update(width);
    EXPECT_FALSE(bar->drop(on(2), middle));
    EXPECT_EQ(bar->drag(), nullptr);
    EXPECT_TRUE(model->settings().customGroupMembers.empty());
}

TEST_F(BarOnADesktop, AListThatChangesUnderARestingDragGivesItAnotherTarget)
{
    show(5);
    const std::string dragged = idOf(1, 4), target = idOf(1, 1);
    bar->beginDrag(dragged, {dragged});
    bar->dragMovedTo(on(0), edge);
    close(0);
    bar->update(width);
    bar->dragRestsOver(on(0), edge);
    EXPECT_EQ(bar->drag()->taskDropCue(), "before:" + target);
}

TEST_F(BarOnADesktop, ADropOnTheMainRowKeepsTheTaskThereWhileItIsLocked)
{
    show(30);
    bar->clickOverflowReturnLock();
    advance(0);
    const std::string moved = id(bar->layout().mainCount + 2);
    bar->beginDrag(moved, {moved});
    EXPECT_TRUE(bar->drop(on(0), edge));
    advance(0);
    EXPECT_TRUE(locked().contains(moved));
    EXPECT_LT(std::ranges::find(bar->layout().entries, moved, &TaskbarEntry::id) - bar->layout().entries.begin(),
              static_cast<std::ptrdiff_t>(bar->layout().mainCount));
}

TEST_F(BarOnADesktop, ADropOnTheEmptyRowsEndCapLocksTheOthersToTheMainRow)
{
    show(3);
    model->set(&V::mediaSliderDisplay, MediaSliderDisplay::overflow);
    bar->update(width);
    ASSERT_EQ(bar->layout().overflowRows.size(), 1U);
    const std::string moved = id(0);
    bar->beginDrag(moved, {moved});
    EXPECT_TRUE(bar->drop(ofKind(Place::Kind::endCap, 1), 5));
    advance(0);
    EXPECT_TRUE(bar->overflowReturnLock().overflowReturnLocked());
    EXPECT_EQ(bar->layout().mainCount, 2U);
    EXPECT_EQ(bar->layout().entries.back().id, moved);
}

// ---------------------------------------------------------------------------------------------------- widths

TEST_F(BarOnADesktop, AWidthSetByHandIsKeptForTheEntryAndEndsWithIt)
{
    show(5);
    const std::string wide = idOf(1, 1);
    bar->armResize(wide);
    ASSERT_TRUE(bar->grip());
    bar->grip()->changed(120, 60);
    bar->grip()->ended();
    EXPECT_FALSE(bar->armedResizeID());
    EXPECT_FALSE(bar->grip());
    advance(0);
    EXPECT_EQ(passes, 1);
    EXPECT_EQ(bar->taskWidthOverrides().at(wide), 180);
    EXPECT_EQ(bar->layout().widths[1], 180);
    close(1);
    bar->update(width);
    EXPECT_TRUE(bar->taskWidthOverrides().empty());
}

TEST_F(BarOnADesktop, TheGripOfATaskThatIsGoneHoldsNothingStill)
{
    show(5);
    bar->armResize(idOf(1, 1));
    bar->grip()->changed(120, 60);
    EXPECT_TRUE(model->inspect().taskResizeSuspended);
    // The list stands still under the grip, so the task goes away by another road.
    model->endTaskResize();
    close(1);
    bar->update(width);
    EXPECT_FALSE(bar->armedResizeID());
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
    EXPECT_TRUE(bar->taskWidthOverrides().empty());
}

TEST_F(BarOnADesktop, ABarThatGoesAwayUnderAGripSetsNoWidthAndLetsTheListGoOn)
{
    show(5);
    bar->armResize(idOf(1, 1));
    bar->grip()->changed(120, 60);
    bar.reset();
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
}

TEST_F(BarOnADesktop, ASecondGripTakesThePlaceOfTheFirst)
{
    show(5);
    bar->armResize(idOf(1, 1));
    bar->grip()->changed(120, 60);
    bar->armResize(idOf(1, 2));
    EXPECT_EQ(bar->armedResizeID(), idOf(1, 2));
    EXPECT_FALSE(bar->grip()->resizing());
    EXPECT_FALSE(model->inspect().taskResizeSuspended);
    const int before = arranged;
    bar->armResize(idOf(1, 2));
    EXPECT_EQ(arranged, before);
}

}  // namespace
}  // namespace korvane
