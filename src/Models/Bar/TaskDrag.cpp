#include "Models/Bar/TaskDrag.h"

#include <algorithm>
#include <utility>

namespace korvane {

TaskDrag::TaskDrag(std::string id, std::set<std::string> windowIDs, const Surroundings &parts)
    : surroundings(parts), dragID(std::move(id)), shared{dragID, std::nullopt}
{
    surroundings.lock.setDraggedWindowIDs(std::move(windowIDs));
}

TaskDrag::~TaskDrag()
{
    giveUp();
}

DropProposal TaskDrag::movedTo(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout)
{
    if (hasEnded())
        return DropProposal::none;
    enter(place, x, layout);
    return delegate ? delegate->dropUpdated(x - currentPlace->left) : DropProposal::none;
}

void TaskDrag::layoutChanged(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout)
{
    if (hasEnded() || (currentPlace && currentPlace->kind == TaskDropPlace::Kind::arrow))
        return;
    left();
    enter(place, x, layout);
}

void TaskDrag::left()
{
    if (hasEnded())
        return;
    currentPlace.reset();
    if (const auto before = std::exchange(delegate, nullptr))
        before->dropExited();
    currentState = State::began;
}

bool TaskDrag::drop(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout)
{
    if (hasEnded())
        return false;
    // The layout may have changed since the pointer came to rest.
    left();
    enter(place, x, layout);
    const bool taken = delegate && delegate->performDrop(x - currentPlace->left);
    end(taken ? State::dropped : State::givenUp);
    return taken;
}

void TaskDrag::giveUp()
{
    if (!hasEnded())
        end(State::givenUp);
}

void TaskDrag::enter(const std::optional<TaskDropPlace> &place, double x, const TaskbarLayout &layout)
{
    const bool same = place && currentPlace && place->isSamePlaceAs(*currentPlace);
    if (same && place->left == currentPlace->left && place->width == currentPlace->width)
        return;
    // The new place takes over the cue before the old place is told that the drag has left it.
    const auto before = std::exchange(delegate, nullptr);
    currentPlace = place;
    currentState = place ? State::overPlace : State::began;
    if (place) {
        delegate = delegateOf(*place, layout);
        // This may open rows and so change what is under the pointer. The next move of the pointer handles that.
        delegate->dropEntered(x - place->left);
    }
    if (before && !same)
        before->dropExited();
}

// This is also called for a drag that was given up, so that nothing of it remains.
void TaskDrag::end(State state)
{
    left();
    currentState = state;
    shared = {};
    surroundings.lock.setDraggedWindowIDs({});
    surroundings.hover.dragEnded();
}

std::unique_ptr<TaskDropDelegate> TaskDrag::delegateOf(const TaskDropPlace &place, const TaskbarLayout &layout)
{
    using Kind = TaskDropPlace::Kind;
    auto &[requests, hover, lock] = surroundings;
    const auto row = std::ranges::find(layout.overflowRows, place.rowID, &OverflowRow::id);
    const bool overflow = row != layout.overflowRows.end(), reversed = overflow;
    const std::size_t lower = overflow ? static_cast<std::size_t>(row->lower) : 0;
    const std::size_t count = overflow ? static_cast<std::size_t>(row->count) : layout.mainCount;
    const DropCommitted committed = [&heldRows = lock, overflow](const std::string &, bool) {
        if (overflow)
            heldRows.recordManualOverflowDrop();
        else
            heldRows.recordManualMainDrop();
    };
    switch (place.kind) {
    case Kind::task:
        return std::make_unique<TaskReorderDropDelegate>(shared, requests, *layout.entries.at(place.entry).item,
                                                         place.width, reversed, committed);
    case Kind::group:
        return std::make_unique<CustomGroupDropDelegate>(shared, requests, *layout.entries.at(place.entry).group,
                                                         place.width, reversed, committed);
    case Kind::row:
        return std::make_unique<TaskRowDropDelegate>(
            shared, requests, TaskDrops::orderedRowTarget(layout.entries, lower, count, reversed), committed);
    case Kind::endZone:
        return std::make_unique<TaskEdgeDropDelegate>(
            shared, requests, TaskDrops::orderedRowEndTarget(layout.entries, lower, count, reversed).value_or(""), true,
            committed);
    case Kind::endCap: {
        // A drop on a row without tasks sends the task to the end of the order.
        const auto target = count > 0 ? TaskDrops::orderedRowEndTarget(layout.entries, lower, count, reversed)
                                      : TaskDrops::orderedRowEndTarget(layout.entries, 0, layout.entries.size(), false);
        return std::make_unique<OverflowRowEndDropDelegate>(
            shared, requests, target,
            [&heldRows = lock, wasEmpty = count == 0, entries = layout.entries, mainCount = layout.mainCount](
                const std::string &) { heldRows.recordOverflowRowEndDrop(wasEmpty, entries, mainCount); });
    }
    case Kind::arrow:
        return std::make_unique<OverflowArrowHoverDropDelegate>(
            [&rows = hover] { rows.overflowArrowHoverChanged(true); },
            [&rows = hover] { rows.overflowArrowHoverChanged(false); });
    case Kind::tuckedRows:
        return std::make_unique<OverflowDragRevealDropDelegate>([&rows = hover] { rows.revealForDrag(); });
    }
    return nullptr;
}

}  // namespace korvane
