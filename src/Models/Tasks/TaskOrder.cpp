#include "Models/Tasks/TaskOrder.h"

#include "Models/Base/Identifiers.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>

namespace korvane {

OrderIndex::OrderIndex(const std::vector<std::string> &order) : length(order.size())
{
    places.reserve(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        places.try_emplace(order[i], i);
}

OrderIndex::OrderIndex(std::span<const RunningAppItem> items) : length(items.size())
{
    places.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i)
        places.try_emplace(items[i].id, i);
}

namespace TaskOrder {
namespace {

using Dragged = std::vector<const RunningAppItem *>;

template <typename Predicate> Dragged select(Items items, Predicate predicate)
{
    Dragged selected;
    for (const RunningAppItem &item : items)
        if (predicate(item))
            selected.push_back(&item);
    return selected;
}

// The windows that an automatic group of the process may hold.
Dragged freeWindowsOf(Pid pid, Items items, const SettingsValues &settings)
{
    return select(items, [&](const RunningAppItem &item) {
        return item.processIdentifier == pid && !settings.customGroupMembers.contains(item.id)
               && !settings.forcedUngroupedWindows.contains(item.id);
    });
}

Dragged membersOf(std::string_view groupKey, Items items, const SettingsValues &settings)
{
    return select(items, [&](const RunningAppItem &item) {
        const auto member = settings.customGroupMembers.find(item.id);
        return member != settings.customGroupMembers.end() && member->second == groupKey;
    });
}

Dragged windowsOfGroup(std::string_view groupID, Items items, const SettingsValues &settings)
{
    if (groupID.starts_with(Identifiers::customGroupPrefix))
        return membersOf(groupID.substr(Identifiers::customGroupPrefix.size()), items, settings);
    if (!groupID.starts_with(Identifiers::automaticGroupPrefix))
        return {};
    const auto digits = groupID.substr(Identifiers::automaticGroupPrefix.size());
    Pid pid = 0;
    const auto *const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, pid);
    if (error != std::errc() || stop != end)
        return {};
    return freeWindowsOf(pid, items, settings);
}

std::unordered_set<std::string_view> setOf(const std::vector<std::string> &ids)
{
    return {ids.begin(), ids.end()};
}

// Removes the moving identifiers from the order and returns them. They keep their order.
Order extract(Order &order, const std::unordered_set<std::string_view> &moving)
{
    Order moved;
    for (const std::string &id : order)
        if (moving.contains(id))
            moved.push_back(id);
    std::erase_if(order, [&](const std::string &id) { return moving.contains(id); });
    return moved;
}

}  // namespace

void sort(std::vector<const RunningAppItem *> &items, const OrderIndex &order, const PreviousPosition &previousPosition)
{
    struct Key {
        std::size_t ordered, previous;
        const RunningAppItem *item;
    };
    std::vector<Key> keys;
    keys.reserve(items.size());
    for (const RunningAppItem *item : items)
        keys.push_back({order.orderedIndex(item->id), previousPosition(*item), item});
    std::stable_sort(keys.begin(), keys.end(), [](const Key &left, const Key &right) {
        if (left.ordered != right.ordered)
            return left.ordered < right.ordered;
        if (left.previous != right.previous)
            return left.previous < right.previous;
        if (left.item->processIdentifier != right.item->processIdentifier)
            return left.item->appName < right.item->appName;
        return left.item->windowIndex < right.item->windowIndex;
    });
    std::transform(keys.begin(), keys.end(), items.begin(), [](const Key &key) { return key.item; });
}

Dragged windowsForDragID(std::string_view id, Items items, const SettingsValues &settings)
{
    if (id.starts_with(Identifiers::groupDragPrefix))
        return windowsOfGroup(id.substr(Identifiers::groupDragPrefix.size()), items, settings);
    if (id.starts_with(Identifiers::groupWindowDragPrefix))
        id.remove_prefix(Identifiers::groupWindowDragPrefix.size());
    return select(items, [&](const RunningAppItem &item) { return item.id == id; });
}

std::optional<std::string> replacementAnchor(std::string_view dragID, const Dragged &dragged, Items items,
                                             const SettingsValues &settings)
{
    if (!dragID.starts_with(Identifiers::groupWindowDragPrefix) || dragged.empty())
        return std::nullopt;
    const RunningAppItem &first = *dragged.front();
    const auto member = settings.customGroupMembers.find(first.id);
    const Dragged siblings = member != settings.customGroupMembers.end()
                                 ? membersOf(member->second, items, settings)
                                 : freeWindowsOf(first.processIdentifier, items, settings);
    if (siblings.size() < 2 || siblings.front()->id != first.id)
        return std::nullopt;
    return siblings[1]->id;
}

std::size_t orderedIndex(std::string_view id, const Order &order)
{
    return static_cast<std::size_t>(std::find(order.begin(), order.end(), id) - order.begin());
}

void promoteReplacementAnchor(const std::optional<std::string> &anchor, std::string_view replacing, Order &order)
{
    if (!anchor)
        return;
    const std::size_t from = orderedIndex(*anchor, order);
    if (from == order.size() || orderedIndex(replacing, order) == order.size())
        return;
    order.erase(order.begin() + static_cast<std::ptrdiff_t>(from));
    order.insert(order.begin() + static_cast<std::ptrdiff_t>(orderedIndex(replacing, order)), *anchor);
}

bool moveToEnd(Order &order, const std::vector<std::string> &ids, bool first)
{
    const Order moved = extract(order, setOf(ids));
    if (moved.empty())
        return false;
    order.insert(first ? order.begin() : order.end(), moved.begin(), moved.end());
    return true;
}

bool moveTasks(Order &order, const std::vector<std::string> &ids, std::string_view target, bool after)
{
    const auto moving = setOf(ids);
    if (moving.contains(target))
        return false;
    const Order moved = extract(order, moving);
    const std::size_t place = orderedIndex(target, order);
    if (moved.empty() || place == order.size())
        return false;
    order.insert(order.begin() + static_cast<std::ptrdiff_t>(place + (after ? 1 : 0)), moved.begin(), moved.end());
    return true;
}

bool moveTaskAfter(Order &order, std::string_view id, std::string_view target)
{
    return id != target && moveTasks(order, {std::string(id)}, target, true);
}

bool moveTaskBefore(Order &order, std::string_view id, std::string_view target)
{
    return id != target && moveTasks(order, {std::string(id)}, target, false);
}

}  // namespace TaskOrder
}  // namespace korvane
