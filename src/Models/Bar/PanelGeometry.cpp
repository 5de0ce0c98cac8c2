#include "Models/Bar/PanelGeometry.h"

#include "Models/Bar/LayoutMetrics.h"
#include "Models/Bar/TaskLayoutEngine.h"

#include <algorithm>

namespace korvane::PanelGeometry {

OverflowGeometry overflowGeometry(const GeometryKey &key)
{
    double stack = 0;
    for (int row = 0; row < key.overflowCount; ++row)
        stack = stack + (TaskLayoutEngine::rowHeight(row) - key.overlap);
    const double tuckStep = std::max(1.0, key.tuck - key.overlap);

    OverflowGeometry geometry;
    geometry.collapsedHeight = LayoutMetrics::barHeight + key.overflowCount * tuckStep;
    if (key.autoHideOverflow)
        geometry.normalHeight = LayoutMetrics::barHeight + stack + (key.overflowCount > 0 ? hoverStripRoom : 0);
    else
        geometry.normalHeight = key.rowsExpanded ? LayoutMetrics::barHeight + stack : geometry.collapsedHeight;
    return geometry;
}

double shownHeight(double rowHeight, double tuck, bool autoHideOverflow, bool rowsExpanded, bool overflowOpen)
{
    const bool open = autoHideOverflow ? overflowOpen : rowsExpanded;
    return open ? rowHeight : std::min(rowHeight, tuck);
}

}  // namespace korvane::PanelGeometry
