#include "Views/Bar/TaskDropPlaces.h"

#include "Views/Kit/Metrics.h"

namespace korvane {
namespace {

using Kind = TaskDropPlace::Kind;

TaskDropPlace placeAt(Kind kind, int rowID, const QRect &rectangle)
{
    TaskDropPlace place;
    place.kind = kind;
    place.rowID = rowID;
    place.left = rectangle.left();
    place.width = rectangle.width();
    return place;
}

TaskDropPlace placeOnTab(const TaskbarLayout &layout, int rowID, std::size_t index, const QRect &tab)
{
    const TaskbarEntry &entry = layout.entries[index];
    TaskDropPlace place = placeAt(entry.group ? Kind::group : Kind::task, rowID, tab);
    place.entry = index;
    place.entryID = entry.id;
    return place;
}

std::optional<TaskDropPlace> placeOnCard(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                         const CardPlace &card, const QPoint &point)
{
    if (card.tucked)
        return placeAt(Kind::tuckedRows, card.rowID, card.shown);
    QRect cap = card.endCap.translated(card.shown.topLeft());
    const int margin = (Metrics::endCapZoneHeight - cap.height()) / 2;
    cap.adjust(0, -margin, 0, margin);
    if (cap.contains(point))
        return placeAt(Kind::endCap, card.rowID, cap);
    for (std::size_t i = card.lower; i < card.lower + card.count; ++i)
        if (const QRect tab = geometry.tabInView(i); tab.contains(point))
            return placeOnTab(layout, card.rowID, i, tab);
    return placeAt(Kind::row, card.rowID, card.shown);
}

std::optional<TaskDropPlace> placeOnMainRow(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                            const QPoint &point)
{
    const QPoint origin = geometry.mainRow.topLeft();
    if (const QRect arrow = geometry.arrow.translated(origin); layout.hasOverflow && arrow.contains(point))
        return placeAt(Kind::arrow, mainRowID, arrow);
    if (!geometry.tabs.translated(origin).contains(point))
        return std::nullopt;
    for (std::size_t i = 0; i < layout.mainCount; ++i)
        if (const QRect tab = geometry.tabInView(i); tab.contains(point))
            return placeOnTab(layout, mainRowID, i, tab);
    if (const QRect zone = geometry.endZone.translated(origin); layout.mainCount > 0 && zone.contains(point))
        return placeAt(Kind::endZone, mainRowID, zone);
    // The start button and the launchers hold no tasks, so they take no drop.
    if (point.x() < layout.quicklyLaunchRightEdge)
        return std::nullopt;
    return placeAt(Kind::row, mainRowID, geometry.tabs.translated(origin));
}

}  // namespace

std::optional<TaskDropPlace> taskDropPlaceAt(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                             const QPoint &point)
{
    const auto overflowRow = geometry.overflowRowAt(point);
    if (overflowRow) {
        const CardPlace &card = *geometry.card(*overflowRow);
        if (card.shown.contains(point))
            return placeOnCard(geometry, layout, card, point);
        if (card.tucked)
            return placeAt(Kind::tuckedRows, card.rowID, card.hoverStrip);
    }
    return geometry.mainRow.contains(point) ? placeOnMainRow(geometry, layout, point) : std::nullopt;
}

}  // namespace korvane
