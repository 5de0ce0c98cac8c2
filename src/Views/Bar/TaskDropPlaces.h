// What lies under a drag: the place of the bar that answers for it.
#pragma once

#include "Models/Bar/TaskDrag.h"
#include "Views/Bar/TaskbarGeometry.h"

#include <optional>

namespace korvane {

// The topmost place that takes drags; absent over nothing.
std::optional<TaskDropPlace> taskDropPlaceAt(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                             const QPoint &point);

}  // namespace korvane
