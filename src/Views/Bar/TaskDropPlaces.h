// What lies under a drag: the part of the bar that would take the drop.
#pragma once

#include "Models/Bar/TaskDrag.h"
#include "Views/Bar/TaskbarGeometry.h"

#include <optional>

namespace korvane {

// The topmost place that takes drags. Absent when there is no such place under the point.
std::optional<TaskDropPlace> taskDropPlaceAt(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                             const QPoint &point);

}  // namespace korvane
