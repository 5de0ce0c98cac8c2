#include "Views/Bar/TaskDropTargets.h"

#include "Views/Kit/Metrics.h"

namespace korvane {
namespace {

using Kind = TaskDropPlace::Kind;

TaskDropPlace placeOnTab(const TaskbarLayout &layout, int rowID, std::size_t index, const QRect &tab)
{
    const TaskbarEntry &entry = layout.entries[index];
    return {entry.group ? Kind::group : Kind::task, rowID, index, tab, entry.id};
}

std::optional<TaskDropPlace> placeOnCard(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                         const CardPlace &card, const QPoint &point)
{
    if (card.tucked)
        return TaskDropPlace{Kind::tuckedRows, card.rowID, 0, card.shown, {}};
    QRect cap = card.endCap.translated(card.shown.topLeft());
    const int margin = (Metrics::endCapZoneHeight - cap.height()) / 2;
    cap.adjust(0, -margin, 0, margin);
    if (cap.contains(point))
        return TaskDropPlace{Kind::endCap, card.rowID, 0, cap, {}};
    for (std::size_t i = card.lower; i < card.lower + card.count; ++i)
        if (const QRect tab = geometry.tabInView(i); tab.contains(point))
            return placeOnTab(layout, card.rowID, i, tab);
    return TaskDropPlace{Kind::row, card.rowID, 0, card.shown, {}};
}

std::optional<TaskDropPlace> placeOnMainRow(const TaskbarGeometry &geometry, const TaskbarLayout &layout,
                                            const QPoint &point)
{
    const QPoint origin = geometry.mainRow.topLeft();
    if (const QRect arrow = geometry.arrow.translated(origin); layout.hasOverflow && arrow.contains(point))
        return TaskDropPlace{Kind::arrow, mainRowID, 0, arrow, {}};
    if (!geometry.tabs.translated(origin).contains(point))
        return std::nullopt;
    for (std::size_t i = 0; i < layout.mainCount; ++i)
        if (const QRect tab = geometry.tabInView(i); tab.contains(point))
            return placeOnTab(layout, mainRowID, i, tab);
    if (const QRect zone = geometry.endZone.translated(origin); layout.mainCount > 0 && zone.contains(point))
        return TaskDropPlace{Kind::endZone, mainRowID, 0, zone, {}};
    // Not the start button and the launchers, which hold no tasks.
    if (point.x() < layout.quicklyLaunchRightEdge)
        return std::nullopt;
    return TaskDropPlace{Kind::row, mainRowID, 0, geometry.tabs.translated(origin), {}};
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
            return TaskDropPlace{Kind::tuckedRows, card.rowID, 0, card.hoverStrip, {}};
    }
    return geometry.mainRow.contains(point) ? placeOnMainRow(geometry, layout, point) : std::nullopt;
}

std::unique_ptr<TaskDropDelegate> taskDropDelegate(const TaskDropPlace &place, const TaskDropContext &context)
{
    const auto &[state, actions, hover, lock, layout, geometry] = context;
    const CardPlace *card = geometry.card(place.rowID);
    const std::size_t lower = card ? card->lower : 0, count = card ? card->count : layout.mainCount;
    const bool overflow = card != nullptr, reversed = overflow;
    const DropCommitted committed = [&lock = lock, overflow](const std::string &, bool) {
        if (overflow)
            lock.recordManualOverflowDrop();
        else
            lock.recordManualMainDrop();
    };
    switch (place.kind) {
    case Kind::task:
        return std::make_unique<TaskReorderDropDelegate>(state, actions, *layout.entries[place.entry].item,
                                                         place.rectangle.width(), reversed, committed);
    case Kind::group:
        return std::make_unique<CustomGroupDropDelegate>(state, actions, *layout.entries[place.entry].group,
                                                         place.rectangle.width(), reversed, committed);
    case Kind::row:
        return std::make_unique<TaskRowDropDelegate>(
            state, actions, TaskDrag::orderedRowTarget(layout.entries, lower, count, reversed), committed);
    case Kind::endZone:
        return std::make_unique<TaskEdgeDropDelegate>(
            state, actions, TaskDrag::orderedRowEndTarget(layout.entries, lower, count, reversed).value_or(""), true,
            committed);
    case Kind::endCap: {
        // The row without tasks sends to the end of the order.
        const auto target = count > 0 ? TaskDrag::orderedRowEndTarget(layout.entries, lower, count, reversed)
                                      : TaskDrag::orderedRowEndTarget(layout.entries, 0, layout.entries.size(), false);
        return std::make_unique<OverflowRowEndDropDelegate>(
            state, actions, target,
            [&lock = lock, wasEmpty = count == 0, entries = layout.entries, mainCount = layout.mainCount](
                const std::string &) { lock.recordOverflowRowEndDrop(wasEmpty, entries, mainCount); });
    }
    case Kind::arrow:
        return std::make_unique<OverflowArrowHoverDropDelegate>(
            [&hover = hover] { hover.overflowArrowHoverChanged(true); },
            [&hover = hover] { hover.overflowArrowHoverChanged(false); });
    case Kind::tuckedRows:
        return std::make_unique<OverflowDragRevealDropDelegate>([&hover = hover] { hover.revealForDrag(); });
    }
    return nullptr;
}

}  // namespace korvane
