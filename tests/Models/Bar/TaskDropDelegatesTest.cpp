#include "Models/Bar/TaskDropDelegates.h"

#include "tests/Models/Base/Make.h"

#include <gtest/gtest.h>

namespace korvane {
namespace {

using testing::makeItem;
using Calls = std::vector<std::string>;

// Writes down what is asked of it.
class RecordedRequests final : public TaskDropRequests {
public:
    explicit RecordedRequests(Calls &list) : calls(list) {}
    void groupTask(const std::string &id, const std::string &targetID) override
    {
        calls.push_back("group " + id + " with " + targetID);
    }
    void dropTask(const std::string &id, const RunningAppGroup &group) override
    {
        calls.push_back(id + " into " + group.id);
    }
    void dropTaskOnRow(const std::string &id, const std::string &adjacentTo, bool after) override
    {
        calls.push_back(id + (after ? " after " : " before ") + adjacentTo);
    }
    void dropTaskAtOverflowRowEnd(const std::string &id, const std::string &targetID) override
    {
        calls.push_back(id + " to the end by " + targetID);
    }

private:
    Calls &calls;
};

class Dragging : public ::testing::Test {
protected:
    TaskReorderDropDelegate task(const std::string &id, double width = 200, bool after = false)
    {
        return {state, requests, makeItem(id), width, after, committed};
    }
    CustomGroupDropDelegate group(const std::string &id, std::vector<std::string> windows, bool after = false)
    {
        RunningAppGroup target;
        target.id = id;
        for (const std::string &window : windows)
            target.windows.push_back(makeItem(window));
        return {state, requests, target, 200, after, committed};
    }

    TaskDragState state;
    Calls calls;
    RecordedRequests requests{calls};
    DropCommitted committed = [this](const std::string &id, bool into) {
        calls.push_back("committed " + id + (into ? " into" : ""));
    };
};

TEST(DropCue, TheLeftPartReordersAndTheRestGroups)
{
    EXPECT_EQ(TaskDrops::cue("a", 200, 56), "before:a");
    EXPECT_EQ(TaskDrops::cue("a", 200, 56.1), "into:a");
    EXPECT_EQ(TaskDrops::cue("a", 64, 24), "before:a");
    EXPECT_EQ(TaskDrops::cue("a", 64, 24.1), "into:a");
}

TEST_F(Dragging, AWindowDroppedOnItselfNeitherMovesNorGroupsAndClearsTheCue)
{
    auto self = task("a");
    state = {"a", "into:b"};
    EXPECT_EQ(self.dropUpdated(100), DropProposal::none);
    EXPECT_FALSE(self.performDrop(100));
    EXPECT_FALSE(state.taskDropCue);
    EXPECT_TRUE(calls.empty());
}

TEST_F(Dragging, AQuickMoveFromOneButtonToTheNextKeepsTheSecondOnesCue)
{
    auto first = task("a"), second = task("b");
    state.draggedTaskID = "c";
    first.dropEntered(100);
    second.dropEntered(10);
    first.dropExited();
    EXPECT_EQ(state.taskDropCue, "before:b");
    second.dropExited();
    EXPECT_FALSE(state.taskDropCue);
}

TEST_F(Dragging, AGroupDraggedOntoItselfIsRefused)
{
    auto self = group("custom:K", {"a", "b"});
    state.draggedTaskID = "group::custom:K";
    EXPECT_EQ(self.dropUpdated(10), DropProposal::none);
    EXPECT_FALSE(self.performDrop(10));
    EXPECT_TRUE(calls.empty());
}

TEST_F(Dragging, OnARightToLeftRowTheLeftPartPlacesAfterTheTargetInTaskOrder)
{
    auto window = task("a", 200, true);
    state.draggedTaskID = "c";
    EXPECT_TRUE(window.performDrop(10));
    auto members = group("auto:7", {"m", "n"}, true);
    state.draggedTaskID = "c";
    EXPECT_TRUE(members.performDrop(10));
    EXPECT_EQ(calls, (Calls{"c after a", "committed c", "c after m", "committed c"}));
}

TEST_F(Dragging, TheMiddleGroupsAndEndsTheDrag)
{
    auto window = task("a");
    state.draggedTaskID = "groupwindow::c";
    window.dropEntered(150);
    EXPECT_TRUE(window.performDrop(150));
    EXPECT_FALSE(state.draggedTaskID);
    EXPECT_FALSE(state.taskDropCue);
    EXPECT_EQ(calls, (Calls{"group groupwindow::c with a", "committed groupwindow::c into"}));
}

TEST_F(Dragging, ADropCountsByItsPlaceAndNotByAStaleCue)
{
    auto window = task("a");
    state = {"c", "into:z"};
    EXPECT_TRUE(window.performDrop(10));
    EXPECT_EQ(calls, (Calls{"c before a", "committed c"}));
}

TEST_F(Dragging, DragsFromOtherProgramsDoNothing)
{
    EXPECT_FALSE(task("a").performDrop(10));
    EXPECT_FALSE(TaskRowDropDelegate(state, requests, "a", committed).performDrop(0));
    EXPECT_FALSE(TaskEdgeDropDelegate(state, requests, "a", true, committed).performDrop(0));
    EXPECT_FALSE(OverflowRowEndDropDelegate(state, requests, "a", [](const std::string &) {}).performDrop(0));
    EXPECT_TRUE(calls.empty());
}

TEST_F(Dragging, TheEndsOfARowTakeDrops)
{
    state.draggedTaskID = "c";
    EXPECT_TRUE(TaskRowDropDelegate(state, requests, "a", committed).performDrop(0));
    state.draggedTaskID = "c";
    EXPECT_TRUE(TaskEdgeDropDelegate(state, requests, "z", true, committed).performDrop(0));
    state.draggedTaskID = "c";
    EXPECT_TRUE(OverflowRowEndDropDelegate(state, requests, "z", [this](const std::string &id) {
                    calls.push_back("end " + id);
                }).performDrop(0));
    EXPECT_EQ(calls,
              (Calls{"c before a", "committed c into", "c after z", "committed c into", "c to the end by z", "end c"}));
}

TEST_F(Dragging, AnEmptyBarsEndCapTellsTheLockAlone)
{
    state.draggedTaskID = "c";
    int told = 0;
    EXPECT_TRUE(
        OverflowRowEndDropDelegate(state, requests, std::nullopt, [&](const std::string &) { ++told; }).performDrop(0));
    EXPECT_EQ(told, 1);
    EXPECT_TRUE(calls.empty());
}

}  // namespace
}  // namespace korvane
