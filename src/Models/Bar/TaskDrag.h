// One drag of a task over its bar, from the moment it begins until it is dropped or given up. It owns the delegate of
// the place under it, and ends exactly once.
#pragma once

#include "Models/Bar/OverflowHover.h"
#include "Models/Bar/OverflowReturnLock.h"
#include "Models/Bar/TaskDropDelegates.h"
#include "Models/Bar/TaskbarPass.h"

#include <memory>
#include <optional>
#include <set>
#include <string>

namespace korvane {

// A place of the bar that takes drags, and where the view has found it.
struct TaskDropPlace {
    enum class Kind { arrow, endCap, task, group, endZone, row, tuckedRows };

    Kind kind = Kind::row;
    int rowID = mainRowID;
    std::size_t entry = 0;       // index in the layout; only for a task or a group
    std::string entryID;         // of the same entry
    double left = 0, width = 0;  // in the view

    // Whether the other one is the same place, even if the place has moved.
    bool isSamePlaceAs(const TaskDropPlace &other) const
    {
        return kind == other.kind && rowID == other.rowID && entryID == other.entryID;
    }
};

class TaskDrag {
public:
    enum class State { began, overPlace, dropped, givenUp };

    // What a drag acts on besides the layout. All of it outlives the drag.
    struct Surroundings {
        TaskDropRequests &requests;
        OverflowHover &hover;
        OverflowReturnLock &lock;
    };

    // `windowIDs`: the windows that `dragID` stands for.
    TaskDrag(std::string dragID, std::set<std::string> windowIDs, const Surroundings &surroundings);
    TaskDrag(const TaskDrag &) = delete;
    TaskDrag &operator=(const TaskDrag &) = delete;
    // Gives the drag up if it has not ended.
    ~TaskDrag();

    State state() const { return currentState; }
    bool hasEnded() const { return currentState == State::dropped || currentState == State::givenUp; }
    const std::string &draggedTaskID() const { return dragID; }
    const std::optional<std::string> &taskDropCue() const { return shared.taskDropCue; }
    const std::optional<TaskDropPlace> &place() const { return currentPlace; }

    // The pointer is over that place, or over no place, at `x` in the view. Returns whether a drop there would be
    // taken. After the end of the drag, this and the following operations do nothing.
    DropProposal movedTo(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout);
    // The layout has changed under a drag that rests, so its place has another target now. Only the arrow stays the
    // same, and its wait continues.
    void layoutChanged(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout);
    // The pointer left the bar; the drag goes on.
    void left();
    // Drops over that place and ends the drag. Returns whether the drop was taken.
    bool drop(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout);
    void giveUp();

private:
    void enter(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout);
    void end(State state);
    std::unique_ptr<TaskDropDelegate> delegateOf(const TaskDropPlace &place, const TaskbarLayout &layout);

    Surroundings surroundings;
    std::string dragID;
    State currentState = State::began;
    TaskDragState shared;
    std::optional<TaskDropPlace> currentPlace;
    std::unique_ptr<TaskDropDelegate> delegate;  // of the place
};

}  // namespace korvane
