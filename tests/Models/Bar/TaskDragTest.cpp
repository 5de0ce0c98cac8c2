// The states of one drag, and what each end of it leaves behind.
#include "Models/Bar/TaskDrag.h"

#include "Platform/Simulated/VirtualLoop.h"
#include "tests/Models/Base/Make.h"

#include <gtest/gtest.h>

namespace korvane {
namespace {

using testing::makeItem;
using State = TaskDrag::State;
using Kind = TaskDropPlace::Kind;

class Requests final : public TaskDropRequests {
public:
    void groupTask(const std::string &, const std::string &) override { ++count; }
    void dropTask(const std::string &, const RunningAppGroup &) override { ++count; }
    void dropTaskOnRow(const std::string &, const std::string &, bool) override { ++count; }
    void dropTaskAtOverflowRowEnd(const std::string &, const std::string &) override { ++count; }

    int count = 0;
};

class OneDrag : public ::testing::Test {
protected:
    OneDrag()
    {
        for (const char *id : {"a", "b", "c"})
            layout.entries.push_back(TaskbarEntry::ofItem(makeItem(id)));
        layout.mainCount = 3;
    }
    TaskDropPlace on(std::size_t index, double left)
    {
        TaskDropPlace place;
        place.kind = Kind::task;
        place.entry = index;
        place.entryID = layout.entries[index].id;
        place.left = left;
        place.width = 200;
        return place;
    }
    static TaskDropPlace ofKind(Kind kind)
    {
        TaskDropPlace place;
        place.kind = kind;
        return place;
    }

    platform::simulated::VirtualLoop loop;
    OverflowHover hover{loop, {[](bool) {}, [](bool) {}, [] {}}, true};
    OverflowReturnLock lock;
    Requests requests;
    TaskbarLayout layout;
    TaskDrag drag{"a", {"a"}, {requests, hover, lock}};
};

TEST_F(OneDrag, BeginsOverNothing)
{
    EXPECT_EQ(drag.state(), State::began);
    EXPECT_FALSE(drag.place());
    EXPECT_EQ(lock.draggedWindowIDs(), std::set<std::string>{"a"});
}

TEST_F(OneDrag, IsOverAPlaceUntilItLeavesTheBar)
{
    EXPECT_EQ(drag.movedTo(on(1, 100), 110, layout), DropProposal::move);
    EXPECT_EQ(drag.state(), State::overPlace);
    EXPECT_EQ(drag.taskDropCue(), "before:b");
    drag.left();
    EXPECT_EQ(drag.state(), State::began);
    EXPECT_FALSE(drag.taskDropCue());
    EXPECT_EQ(drag.movedTo(std::nullopt, 110, layout), DropProposal::none);
    EXPECT_EQ(drag.state(), State::began);
}

TEST_F(OneDrag, TheNextPlaceKeepsItsCueWhenTheLastOneIsLeft)
{
    drag.movedTo(on(1, 100), 290, layout);
    EXPECT_EQ(drag.taskDropCue(), "into:b");
    drag.movedTo(on(2, 300), 310, layout);
    EXPECT_EQ(drag.taskDropCue(), "before:c");
}

TEST_F(OneDrag, ADropIsTheEnd)
{
    EXPECT_TRUE(drag.drop(on(1, 100), 290, layout));
    EXPECT_EQ(drag.state(), State::dropped);
    EXPECT_EQ(requests.count, 1);
    drag.giveUp();
    EXPECT_EQ(drag.state(), State::dropped);
    EXPECT_FALSE(drag.drop(on(2, 300), 310, layout));
    EXPECT_EQ(drag.movedTo(on(2, 300), 310, layout), DropProposal::none);
    EXPECT_EQ(requests.count, 1);
    EXPECT_FALSE(drag.taskDropCue());
    EXPECT_TRUE(lock.draggedWindowIDs().empty());
}

TEST_F(OneDrag, ADropThatNoPlaceTakesGivesItUp)
{
    EXPECT_FALSE(drag.drop(std::nullopt, 0, layout));
    EXPECT_EQ(drag.state(), State::givenUp);
}

TEST_F(OneDrag, OnItselfADropIsNotTaken)
{
    EXPECT_EQ(drag.movedTo(on(0, 0), 100, layout), DropProposal::none);
    EXPECT_FALSE(drag.drop(on(0, 0), 100, layout));
    EXPECT_EQ(drag.state(), State::givenUp);
    EXPECT_EQ(requests.count, 0);
}

TEST_F(OneDrag, RestingOnTheArrowOpensTheRowsAlsoWhenTheLayoutChangesMeanwhile)
{
    drag.movedTo(ofKind(Kind::arrow), 0, layout);
    loop.advance(platform::Seconds(0.3));
    drag.layoutChanged(ofKind(Kind::arrow), 0, layout);
    loop.advance(platform::Seconds(0.3));
    EXPECT_TRUE(hover.overflowArrowHovered());
    drag.left();
    EXPECT_FALSE(hover.overflowArrowHovered());
}

TEST_F(OneDrag, OverNothingItTakesUpAPlaceThatALayoutBringsUnderIt)
{
    drag.movedTo(std::nullopt, 110, layout);
    drag.layoutChanged(on(1, 100), 110, layout);
    EXPECT_EQ(drag.taskDropCue(), "before:b");
    drag.giveUp();
    drag.layoutChanged(on(2, 100), 110, layout);
    EXPECT_FALSE(drag.taskDropCue());
}

TEST_F(OneDrag, RowsThatItOpenedCloseAtItsEndWhicheverItIs)
{
    drag.movedTo(ofKind(Kind::tuckedRows), 0, layout);
    EXPECT_TRUE(hover.overflowDragReveal());
    drag.giveUp();
    EXPECT_FALSE(hover.overflowDragReveal());
    {
        TaskDrag second("b", {"b"}, {requests, hover, lock});
        second.movedTo(ofKind(Kind::tuckedRows), 0, layout);
        EXPECT_TRUE(hover.overflowDragReveal());
    }
    EXPECT_FALSE(hover.overflowDragReveal());
    EXPECT_TRUE(lock.draggedWindowIDs().empty());
}

}  // namespace
}  // namespace korvane
