#include "Models/Bar/TaskDropDelegates.h"

#include "Models/Base/Identifiers.h"

#include <algorithm>
#include <utility>

namespace korvane {
namespace TaskDrops {
namespace {

constexpr double narrowestEdge = 24;
constexpr double edgePart = 0.28;  // of the target's width

std::optional<std::string> windowID(const TaskbarEntry &entry)
{
    if (entry.item)
        return entry.item->id;
    if (entry.group && !entry.group->windows.empty())
        return entry.group->windows.front().id;
    return std::nullopt;
}

std::optional<std::string> rowEnd(std::span<const TaskbarEntry> entries, std::size_t lower, std::size_t count,
                                  bool last)
{
    if (count == 0 || lower + count > entries.size())
        return std::nullopt;
    return windowID(entries[last ? lower + count - 1 : lower]);
}

}  // namespace

std::string beforeCue(const std::string &targetID)
{
    return "before:" + targetID;
}

std::string intoCue(const std::string &targetID)
{
    return "into:" + targetID;
}

std::string cue(const std::string &targetID, double targetWidth, double x)
{
    return x <= std::max(narrowestEdge, targetWidth * edgePart) ? beforeCue(targetID) : intoCue(targetID);
}

std::optional<std::string> orderedRowTarget(std::span<const TaskbarEntry> entries, std::size_t lower, std::size_t count,
                                            bool reversed)
{
    return rowEnd(entries, lower, count, reversed);
}

std::optional<std::string> orderedRowEndTarget(std::span<const TaskbarEntry> entries, std::size_t lower,
                                               std::size_t count, bool reversed)
{
    return rowEnd(entries, lower, count, !reversed);
}

}  // namespace TaskDrops

namespace {

// Ends the drag before the model is asked, and returns what was dragged.
std::string takeDragged(TaskDragState &state)
{
    state.taskDropCue.reset();
    std::string dragged = std::move(*state.draggedTaskID);
    state.draggedTaskID.reset();
    return dragged;
}

}  // namespace

TaskTargetDropDelegate::TaskTargetDropDelegate(TaskDragState &dragState, TaskDropRequests &dropRequests,
                                               std::string target, double width, bool placeAfter,
                                               DropCommitted committed)
    : state(dragState), requests(dropRequests), targetID(std::move(target)), targetWidth(width),
      placeAfterTarget(placeAfter), onDropCommitted(std::move(committed))
{}

void TaskTargetDropDelegate::dropEntered(double x)
{
    if (!state.draggedTaskID || !isItself(*state.draggedTaskID))
        state.taskDropCue = TaskDrops::cue(targetID, targetWidth, x);
}

DropProposal TaskTargetDropDelegate::dropUpdated(double x)
{
    if (state.draggedTaskID && isItself(*state.draggedTaskID))
        return DropProposal::none;
    state.taskDropCue = TaskDrops::cue(targetID, targetWidth, x);
    return DropProposal::move;
}

// A cue that another target has taken over stays.
void TaskTargetDropDelegate::dropExited()
{
    if (state.taskDropCue == TaskDrops::beforeCue(targetID) || state.taskDropCue == TaskDrops::intoCue(targetID))
        state.taskDropCue.reset();
}

bool TaskTargetDropDelegate::performDrop(double x)
{
    if (!state.draggedTaskID || isItself(*state.draggedTaskID)) {
        state.taskDropCue.reset();
        return false;
    }
    // The place of the drop decides, because another target's exit may have cleared the cue that was shown.
    const bool into = TaskDrops::cue(targetID, targetWidth, x) == TaskDrops::intoCue(targetID);
    const std::string dragged = takeDragged(state);
    if (into)
        dropInto(dragged);
    else
        dropBefore(dragged);
    onDropCommitted(dragged, into);
    return true;
}

TaskReorderDropDelegate::TaskReorderDropDelegate(TaskDragState &dragState, TaskDropRequests &dropRequests,
                                                 const RunningAppItem &target, double width, bool placeAfter,
                                                 DropCommitted committed)
    : TaskTargetDropDelegate(dragState, dropRequests, target.id, width, placeAfter, std::move(committed))
{}

CustomGroupDropDelegate::CustomGroupDropDelegate(TaskDragState &dragState, TaskDropRequests &dropRequests,
                                                 RunningAppGroup group, double width, bool placeAfter,
                                                 DropCommitted committed)
    : TaskTargetDropDelegate(dragState, dropRequests, group.id, width, placeAfter, std::move(committed)),
      target(std::move(group))
{}

bool CustomGroupDropDelegate::isItself(const std::string &draggedID) const
{
    return draggedID == Identifiers::groupDrag(targetID);
}

void CustomGroupDropDelegate::dropBefore(const std::string &draggedID)
{
    if (target.windows.empty())
        requests.dropTask(draggedID, target);  // there is no window to place it beside
    else
        requests.dropTaskOnRow(draggedID, target.windows.front().id, placeAfterTarget);
}

bool TaskRowDropDelegate::performDrop(double)
{
    if (!state.draggedTaskID || !targetID) {
        state.taskDropCue.reset();
        return false;
    }
    const std::string dragged = takeDragged(state);
    requests.dropTaskOnRow(dragged, *targetID, false);
    onDropCommitted(dragged, true);
    return true;
}

bool TaskEdgeDropDelegate::performDrop(double)
{
    if (!state.draggedTaskID)
        return false;
    const std::string dragged = takeDragged(state);
    requests.dropTaskOnRow(dragged, targetID, after);
    if (onDropCommitted)
        onDropCommitted(dragged, true);
    return true;
}

bool OverflowRowEndDropDelegate::performDrop(double)
{
    if (!state.draggedTaskID)
        return false;
    const std::string dragged = takeDragged(state);
    if (targetID)
        requests.dropTaskAtOverflowRowEnd(dragged, *targetID);
    onDropCommitted(dragged);
    return true;
}

}  // namespace korvane
