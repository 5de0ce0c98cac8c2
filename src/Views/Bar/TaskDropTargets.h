// What lies under a drag: the place of the bar, and the delegate that answers for it.
#pragma once

#include "Models/Bar/OverflowHover.h"
#include "Models/Bar/OverflowReturnLock.h"
#include "Models/Bar/TaskDrag.h"
#include "Views/Bar/TaskbarGeometry.h"

#include <memory>
#include <optional>
#include <string>

namespace korvane {

struct TaskDropPlace {
    enum class Kind { arrow, endCap, task, group, endZone, row, tuckedRows };

    Kind kind = Kind::row;
    int rowID = mainRowID;
    std::size_t entry = 0;  // of a task or a group
    QRect rectangle;        // in the view
    std::string entryID;    // likewise

    // The same place, wherever it has moved to meanwhile.
    bool isSamePlaceAs(const TaskDropPlace &other) const
    {
        return kind == other.kind && rowID == other.rowID && entryID == other.entryID;
    }
};

// The topmost place that takes drags; absent over nothing.
std::optional<TaskDropPlace> taskDropPlaceAt(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                             const QPoint &point);

// What the delegates of one bar work on.
struct TaskDropContext {
    TaskDragState &state;
    const TaskDropActions &actions;
    OverflowHover &hover;
    OverflowReturnLock &lock;
    const TaskbarLayout &layout;
    const TaskbarGeometry &geometry;
};

std::unique_ptr<TaskDropDelegate> taskDropDelegate(const TaskDropPlace &place, const TaskDropContext &context);

}  // namespace korvane
