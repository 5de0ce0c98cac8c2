// The places of a bar that take a dragged task: for each kind of place, the cue under the drag and the request that a
// drop sends to the model. Nothing here reads the data of the drag: only drags that began on this bar count, and the
// bar knows them.
#pragma once

#include "Models/Base/Records.h"
#include "Models/Tasks/TaskDropRequests.h"

#include <functional>
#include <optional>
#include <span>
#include <string>

namespace korvane {

// What the delegates of one drag share.
struct TaskDragState {
    std::optional<std::string> draggedTaskID;  // a drag id; absent once it was dropped
    std::optional<std::string> taskDropCue;    // "before:" or "into:" and a target's id
};

namespace TaskDrops {

// A drop on the left part of a button reorders. A drop on the rest groups. `x` and `targetWidth` are in the button's
// own coordinates.
std::string cue(const std::string &targetID, double targetWidth, double x);
std::string beforeCue(const std::string &targetID);
std::string intoCue(const std::string &targetID);

// The entry at the row's visual left end, and the entry at its right end, as window ids. Absent on a row without tasks.
std::optional<std::string> orderedRowTarget(std::span<const TaskbarEntry> entries, std::size_t lower, std::size_t count,
                                            bool reversed);
std::optional<std::string> orderedRowEndTarget(std::span<const TaskbarEntry> entries, std::size_t lower,
                                               std::size_t count, bool reversed);

}  // namespace TaskDrops

enum class DropProposal { none, move };

// One place of the bar under a drag. `x` counts from its left edge.
class TaskDropDelegate {
public:
    virtual ~TaskDropDelegate() = default;
    virtual void dropEntered(double) {}
    virtual DropProposal dropUpdated(double) { return DropProposal::move; }
    virtual void dropExited() {}
    // Whether the drop was taken.
    virtual bool performDrop(double x) = 0;
};

using DropCommitted = std::function<void(const std::string &draggedID, bool)>;

// What the delegates of tasks share.
class TaskTargetDropDelegate : public TaskDropDelegate {
public:
    TaskTargetDropDelegate(TaskDragState &state, TaskDropRequests &requests, std::string targetID, double targetWidth,
                           bool placeAfterTarget, DropCommitted onDropCommitted);

    void dropEntered(double x) override;
    DropProposal dropUpdated(double x) override;
    void dropExited() override;
    bool performDrop(double x) override;

protected:
    virtual bool isItself(const std::string &draggedID) const = 0;
    virtual void dropInto(const std::string &draggedID) = 0;
    virtual void dropBefore(const std::string &draggedID) = 0;

    TaskDragState &state;
    TaskDropRequests &requests;
    std::string targetID;
    double targetWidth;
    bool placeAfterTarget;

private:
    DropCommitted onDropCommitted;
};

// A one-window button.
class TaskReorderDropDelegate final : public TaskTargetDropDelegate {
public:
    TaskReorderDropDelegate(TaskDragState &state, TaskDropRequests &requests, const RunningAppItem &target,
                            double targetWidth, bool placeAfterTarget, DropCommitted onDropCommitted);

protected:
    bool isItself(const std::string &draggedID) const override { return draggedID == targetID; }
    void dropInto(const std::string &draggedID) override { requests.groupTask(draggedID, targetID); }
    void dropBefore(const std::string &draggedID) override
    {
        requests.dropTaskOnRow(draggedID, targetID, placeAfterTarget);
    }
};

// A group's button, custom or automatic.
class CustomGroupDropDelegate final : public TaskTargetDropDelegate {
public:
    CustomGroupDropDelegate(TaskDragState &state, TaskDropRequests &requests, RunningAppGroup target,
                            double targetWidth, bool placeAfterTarget, DropCommitted onDropCommitted);

protected:
    bool isItself(const std::string &draggedID) const override;
    void dropInto(const std::string &draggedID) override { requests.dropTask(draggedID, target); }
    void dropBefore(const std::string &draggedID) override;

private:
    RunningAppGroup target;
};

// The row beside its buttons: a drop goes to the visual left end.
class TaskRowDropDelegate final : public TaskDropDelegate {
public:
    TaskRowDropDelegate(TaskDragState &dragState, TaskDropRequests &dropRequests, std::optional<std::string> target,
                        DropCommitted committed)
        : state(dragState), requests(dropRequests), targetID(std::move(target)), onDropCommitted(std::move(committed))
    {}
    bool performDrop(double x) override;

private:
    TaskDragState &state;
    TaskDropRequests &requests;
    std::optional<std::string> targetID;
    DropCommitted onDropCommitted;
};

// The free room at the end of a row.
class TaskEdgeDropDelegate final : public TaskDropDelegate {
public:
    TaskEdgeDropDelegate(TaskDragState &dragState, TaskDropRequests &dropRequests, std::string target, bool placeAfter,
                         DropCommitted committed)
        : state(dragState), requests(dropRequests), targetID(std::move(target)), after(placeAfter),
          onDropCommitted(std::move(committed))
    {}
    bool performDrop(double x) override;

private:
    TaskDragState &state;
    TaskDropRequests &requests;
    std::string targetID;
    bool after;
    DropCommitted onDropCommitted;
};

// An overflow row's end cap. On a bar without tasks there is no target, and only the callback is called.
class OverflowRowEndDropDelegate final : public TaskDropDelegate {
public:
    OverflowRowEndDropDelegate(TaskDragState &dragState, TaskDropRequests &dropRequests,
                               std::optional<std::string> target,
                               std::function<void(const std::string &draggedID)> committed)
        : state(dragState), requests(dropRequests), targetID(std::move(target)), onDropCommitted(std::move(committed))
    {}
    bool performDrop(double x) override;

private:
    TaskDragState &state;
    TaskDropRequests &requests;
    std::optional<std::string> targetID;
    std::function<void(const std::string &)> onDropCommitted;
};

// The arrow button: a drag that rests on it opens the rows.
class OverflowArrowHoverDropDelegate final : public TaskDropDelegate {
public:
    OverflowArrowHoverDropDelegate(std::function<void()> onEntered, std::function<void()> onExited)
        : entered(std::move(onEntered)), exited(std::move(onExited))
    {}
    void dropEntered(double) override { entered(); }
    void dropExited() override { exited(); }
    bool performDrop(double) override
    {
        exited();
        return false;
    }

private:
    std::function<void()> entered, exited;
};

// The room of tucked rows: they open at once, so that a task can be dropped on them.
class OverflowDragRevealDropDelegate final : public TaskDropDelegate {
public:
    explicit OverflowDragRevealDropDelegate(std::function<void()> onEntered) : reveal(std::move(onEntered)) {}
    void dropEntered(double) override { reveal(); }
    bool performDrop(double) override { return false; }

private:
    std::function<void()> reveal;
};

}  // namespace korvane
