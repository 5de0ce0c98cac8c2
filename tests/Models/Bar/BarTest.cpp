// The passes of a bar, its lock and its rows.
#include "tests/Models/Bar/BarFixture.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>

namespace korvane {
namespace {

using testing::BarOnADesktop;
using testing::V;

// ---------------------------------------------------------------------------------------------------- the pass

TEST_F(BarOnADesktop, APassLaysOutOnceUnlessTheLockChanges)
{
    show(20);
    measured = 0;
    model->set(&V::showCloseGlyph, false);
    bar->update(width);
    EXPECT_EQ(measured, 2 * 20);  // as a plain window and as an entry
    measured = 0;
    bar->update(width);
    EXPECT_EQ(measured, 0);
}

TEST_F(BarOnADesktop, TheModelHearsOfTheRowsOfEachBarOnlyWhenTheyChangeThere)
{
    show(40);
    const int rows = bar->layout().rowCount;
    EXPECT_GT(rows, 1);
    EXPECT_EQ(model->taskOverflowRowCount(), rows);
    model->setTaskOverflowRowCount(77);
    bar->update(width);
    EXPECT_EQ(model->taskOverflowRowCount(), 77);
    bar->update(100 * width);
    EXPECT_EQ(model->taskOverflowRowCount(), 1);
}

TEST_F(BarOnADesktop, APassThatWasWantedDoesNotComeAfterOneThatCameFirst)
{
    show(20);
    bar->clickOverflowReturnLock();
    bar->clickOverflowReturnLock();
    advance(0);
    EXPECT_EQ(passes, 1);
    bar->clickOverflowReturnLock();
    bar->update(width);
    advance(0);
    EXPECT_EQ(passes, 1);
}

TEST_F(BarOnADesktop, APassThatWasWantedDoesNotComeToABarThatIsGone)
{
    show(20);
    bar->clickOverflowReturnLock();
    bar.reset();
    advance(1);
    EXPECT_EQ(passes, 0);
}

TEST_F(BarOnADesktop, ANewTitleIsMeasuredAloneAndConcernsOneButton)
{
    show(20);
    measured = 0;
    desktop.applications.setTitle(1, hashOf(1, 3), "Another title, and a longer one");
    model->refresh();
    bar->update(width);
    EXPECT_EQ(measured, 2);  // as a plain window and as an entry
    for (std::size_t i = 0; i < 20; ++i)
        EXPECT_EQ(bar->buttonChanged(i), id(i) == idOf(1, 3)) << i;
}

TEST_F(BarOnADesktop, AnotherActiveWindowConcernsTheTwoButtonsAndThatOfThePreviousOne)
{
    show(20);
    desktop.applications.setActive(1);
    for (const int index : {2, 5}) {
        desktop.applications.focusWindow(1, hashOf(1, index));
        model->refresh();
        bar->update(width);
    }
    desktop.applications.focusWindow(1, hashOf(1, 7));
    model->refresh();
    bar->update(width);
    std::set<std::string> changed;
    for (std::size_t i = 0; i < 20; ++i)
        if (bar->buttonChanged(i))
            changed.insert(id(i));
    EXPECT_EQ(changed, (std::set<std::string>{idOf(1, 2), idOf(1, 5), idOf(1, 7)}));
}

TEST_F(BarOnADesktop, ANewWindowLeavesTheButtonsOfTheOthersAlone)
{
    show(20);
    desktop.applications.openWindow(1, window(9999, "New"));
    model->refresh();
    bar->update(width);
    ASSERT_EQ(bar->layout().entries.size(), 21U);
    for (std::size_t i = 0; i < 21; ++i)
        EXPECT_EQ(bar->buttonChanged(i), i == 20) << i;
}

TEST_F(BarOnADesktop, AfterAGroupWasMadeANewTitleAgainConcernsOneButton)
{
    show(20);
    model->createCustomGroup({task(idOf(1, 0)), task(idOf(1, 1))});
    bar->update(width);
    EXPECT_TRUE(bar->buttonChanged(5));
    desktop.applications.setTitle(1, hashOf(1, 9), "Another title");
    model->refresh();
    bar->update(width);
    for (std::size_t i = 0; i < bar->layout().entries.size(); ++i)
        EXPECT_EQ(bar->buttonChanged(i), id(i) == idOf(1, 9)) << i;
}

TEST_F(BarOnADesktop, WhateverChangesTheLayoutIsThatOfAWholePass)
{
    addApplication(1, "Mail", 8);
    addApplication(2, "Notes", 5);
    makeModel();
    model->set(&V::groupingMode, GroupingMode::asNeeded);
    start();
    makeBar();
    std::uint32_t state = 7;
    const auto below = [&state](int limit) {
        state = state * 1664525U + 1013904223U;
        return static_cast<int>((state >> 16U) % static_cast<std::uint32_t>(limit));
    };
    int opened = 0, partial = 0;
    for (int step = 0; step < 400; ++step) {
        const Pid pid = 1 + below(2);
        const auto hash = hashOf(pid, below(pid == 1 ? 8 : 5));
        switch (below(8)) {
        case 0:
            desktop.applications.openWindow(pid, window(static_cast<std::uint64_t>(10000 + ++opened), "Opened"));
            break;
        case 1:
            if (opened > 0)
                desktop.applications.closeWindow(pid, static_cast<std::uint64_t>(10000 + opened--));
            break;
        case 2:
            model->set(&V::groupingMode, std::array{GroupingMode::never, GroupingMode::asNeeded,
                                                    GroupingMode::always}[static_cast<std::size_t>(below(3))]);
            break;
        case 3:
            desktop.applications.setActive(pid);
            desktop.applications.focusWindow(pid, hash);
            break;
        default:
            desktop.applications.setTitle(pid, hash, std::string(static_cast<std::size_t>(1 + below(40)), 'x'));
        }
        model->refresh();
        bar->update(width);
        for (std::size_t i = 0; i < bar->layout().entries.size(); ++i)
            if (!bar->buttonChanged(i)) {
                ++partial;
                break;
            }
        Bar whole(*model, desktop.loop, [](std::string_view text) { return static_cast<double>(text.size()) * 7; },
                  {[] {}, [] {}, [] {}});
        whole.update(width);
        const TaskbarLayout &got = bar->layout(), &expected = whole.layout();
        ASSERT_EQ(got.widths, expected.widths) << step;
        ASSERT_EQ(got.mainCount, expected.mainCount) << step;
        ASSERT_EQ(got.overflowRows.size(), expected.overflowRows.size()) << step;
        ASSERT_EQ(got.entries.size(), expected.entries.size()) << step;
        for (std::size_t i = 0; i < got.entries.size(); ++i) {
            ASSERT_EQ(got.entries[i].id, expected.entries[i].id) << step;
            ASSERT_EQ(got.entries[i].title(), expected.entries[i].title()) << step;
            ASSERT_EQ(got.entries[i].group.has_value(), expected.entries[i].group.has_value()) << step;
            if (got.entries[i].group) {
                ASSERT_EQ(got.entries[i].group->windows, expected.entries[i].group->windows) << step;
            }
        }
    }
    EXPECT_GT(partial, 100);
}

// ---------------------------------------------------------------------------------------------------- the lock

TEST_F(BarOnADesktop, LockedTasksDoNotComeBackToTheMainRow)
{
    show(30);
    const std::size_t main = bar->layout().mainCount;
    bar->clickOverflowReturnLock();
    advance(0);
    EXPECT_EQ(locked().size(), main);
    close(0);
    bar->update(width);
    EXPECT_EQ(bar->layout().mainCount, main - 1);
    EXPECT_EQ(locked().size(), main - 1);
    bar->clickOverflowReturnLock();
    advance(0);
    EXPECT_EQ(bar->layout().mainCount, main);
}

TEST_F(BarOnADesktop, WhatTheLayoutPushesOutOfTheMainRowStaysOut)
{
    show(30);
    bar->clickOverflowReturnLock();
    advance(0);
    bar->update(width - 200);
    const std::size_t narrow = bar->layout().mainCount;
    EXPECT_EQ(locked().size(), narrow);
    bar->update(width);
    EXPECT_EQ(bar->layout().mainCount, narrow);
}

TEST_F(BarOnADesktop, AWindowThatJoinsALockedGroupComesToTheMainRowWithIt)
{
    show(30);
    model->createCustomGroup({task(idOf(1, 0)), task(idOf(1, 1))});
    bar->update(width);
    bar->clickOverflowReturnLock();
    advance(0);
    const std::string joining = bar->layout().entries.back().id;
    EXPECT_FALSE(locked().contains(joining));
    const auto group = std::ranges::find_if(bar->layout().entries, &TaskbarEntry::isGrouped);
    ASSERT_NE(group, bar->layout().entries.end());
    model->dropTask(joining, RunningAppGroup(*group->group));
    bar->update(width);
    EXPECT_TRUE(locked().contains(joining));
}

// ---------------------------------------------------------------------------------------------------- rows

TEST_F(BarOnADesktop, APointerThatRestsOverATuckedRowOpensIt)
{
    show(30);
    bar->pointerOverRow(1, true, 700);
    advance(0.119);
    EXPECT_FALSE(bar->overflowHover().overflowOpen());
    advance(0.001);
    EXPECT_TRUE(bar->overflowHover().overflowOpen());
    EXPECT_TRUE(model->taskOverflowRowsVisible());
    EXPECT_GT(arranged, 0);
    bar->pointerOverRow(std::nullopt, false, 700);
    advance(0.4);
    EXPECT_FALSE(bar->overflowHover().overflowOpen());
}

TEST_F(BarOnADesktop, AMoveWithinOneRowIsNoSecondEnter)
{
    show(30);
    bar->pointerOverRow(1, true, 700);
    advance(0.1);
    bar->pointerOverRow(1, true, 710);
    advance(0.02);
    EXPECT_TRUE(bar->overflowHover().overflowOpen());
}

}  // namespace
}  // namespace korvane
