// The order of the tasks: the sort of a refresh, and what a drag does to a list of window identifiers. The operations
// work on the identifiers of the present tasks and answer whether the list is to be stored.
#pragma once

#include "Models/Base/Records.h"
#include "Models/Settings/SettingsTable.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace korvane {

// From an identifier to its first place in a list. Holds views: the list must outlive the index and must not change.
class OrderIndex {
public:
    OrderIndex() = default;
    explicit OrderIndex(const std::vector<std::string> &order);
    explicit OrderIndex(std::span<const RunningAppItem> items);

    std::size_t size() const { return length; }
    bool contains(std::string_view id) const { return places.contains(id); }
    bool hasDuplicates() const { return places.size() != length; }

    // The first index of the identifier, or the length of the list when it is absent.
    std::size_t orderedIndex(std::string_view id) const
    {
        const auto found = places.find(id);
        return found == places.end() ? length : found->second;
    }

private:
    std::unordered_map<std::string_view, std::size_t> places;
    std::size_t length = 0;
};

namespace TaskOrder {

// Where a task stood before; the largest number for a new one.
using PreviousPosition = std::function<std::size_t(const RunningAppItem &)>;

// Sorts by the stored order, then by the previous place, then by application name, within a process by window index.
// The sort is stable: windows of two processes with the same name deliberately stay in the order of their discovery.
void sort(std::vector<const RunningAppItem *> &items, const OrderIndex &order,
          const PreviousPosition &previousPosition);

using Items = std::span<const RunningAppItem>;
// The windows that a drag identifier stands for, in task order.
std::vector<const RunningAppItem *> windowsForDragID(std::string_view id, Items items, const SettingsValues &settings);
// The window that must take over the dragged window's place, so that the group stays where it is. Absent when the
// dragged window is not the first of a larger group, or is not dragged out of a group's list.
std::optional<std::string> replacementAnchor(std::string_view dragID,
                                             const std::vector<const RunningAppItem *> &dragged, Items items,
                                             const SettingsValues &settings);

using Order = std::vector<std::string>;
std::size_t orderedIndex(std::string_view id, const Order &order);
// Puts the anchor directly before the window it replaces. Does nothing when one of the two is not in the order.
void promoteReplacementAnchor(const std::optional<std::string> &anchor, std::string_view replacing, Order &order);
// Moves the windows to the very start or end. They keep their order among themselves. False: store nothing.
bool moveToEnd(Order &order, const std::vector<std::string> &ids, bool first);
// Puts the windows as a block beside the target. False when the target is among them or absent: store nothing.
bool moveTasks(Order &order, const std::vector<std::string> &ids, std::string_view target, bool after);
// Puts one window directly after the target. False: store nothing.
bool moveTaskAfter(Order &order, std::string_view id, std::string_view target);
// Puts one window directly before the target. False: store nothing.
bool moveTaskBefore(Order &order, std::string_view id, std::string_view target);

}  // namespace TaskOrder
}  // namespace korvane
