// Grouping, custom groups and the order: what the user arranges by hand.
#include "Models/AppModel/AppModel.h"

#include <algorithm>

namespace korvane {

using V = SettingsValues;

// ---------------------------------------------------------------------------------------------------- grouping

std::vector<TaskbarEntry> AppModel::taskbarEntries(bool groupAll) const
{
    return TaskGrouping::taskbarEntries(tasks, settings(), groupAll);
}

void AppModel::regroupTaskbarForCurrentSettings()
{
    auto &ungrouped = store.edit().forcedUngroupedWindows;
    if (!ungrouped.empty()) {
        ungrouped.clear();
        store.save(&V::forcedUngroupedWindows);
    }
    announceChange();
}

std::vector<std::string> AppModel::availableGroupingApps() const
{
    std::set<std::string> names;
    for (const RunningAppItem &task : tasks)
        names.insert(task.appName);
    return {names.begin(), names.end()};
}

void AppModel::addSpecificGroupingApp(const std::string &appName)
{
    auto &apps = store.edit().specificGroupingApps;
    if (appName.empty() || std::find(apps.begin(), apps.end(), appName) != apps.end())
        return;
    apps.push_back(appName);
    std::sort(apps.begin(), apps.end());
    saveAppearanceSettings();
    regroupTaskbarForCurrentSettings();
}

void AppModel::removeSpecificGroupingApp(const std::string &appName)
{
    std::erase(store.edit().specificGroupingApps, appName);
    saveAppearanceSettings();
    regroupTaskbarForCurrentSettings();
}

void AppModel::setGroupedListOpen(bool open, const std::string &groupID)
{
    const bool didChange = open ? openLists.insert(groupID).second : openLists.erase(groupID) > 0;
    if (didChange)
        publish(ModelProperty::openGroupedLists);
}

// ---------------------------------------------------------------------------------------------------- custom groups

std::string AppModel::makeGroup(const std::string &name)
{
    std::string key = makeUuid();
    store.edit().customGroupNames[key] = name;
    store.edit().customGroupIcons[key] = TaskGrouping::newGroupGlyph;
    return key;
}

void AppModel::join(const std::vector<RunningAppItem> &items, const std::string &groupKey)
{
    for (const RunningAppItem &item : items) {
        store.edit().customGroupMembers[item.id] = groupKey;
        store.edit().forcedUngroupedWindows.erase(item.id);
    }
}

void AppModel::createCustomGroup(const std::vector<RunningAppItem> &items)
{
    if (items.empty())
        return;
    join(items, makeGroup(std::string(TaskGrouping::newGroupName)));
    saveCustomGroups();
}

void AppModel::returnToParentGroup(const RunningAppItem &item)
{
    if (settings().groupingMode != GroupingMode::never && store.edit().forcedUngroupedWindows.erase(item.id) > 0)
        saveCustomGroups();
}

void AppModel::renameCustomGroup(const RunningAppGroup &group, const std::string &name)
{
    if (!group.isCustom)
        return;
    store.edit().customGroupNames[std::string(TaskGrouping::customGroupKey(group.id))] = name;
    saveCustomGroups();
}

void AppModel::setCustomGroupIcon(const RunningAppGroup &group, const std::string &glyph)
{
    if (!group.isCustom)
        return;
    store.edit().customGroupIcons[std::string(TaskGrouping::customGroupKey(group.id))] = glyph;
    saveCustomGroups();
}

void AppModel::dropTask(const std::string &id, const RunningAppGroup &group)
{
    const auto windows = windowsForDragID(id);
    if (windows.empty())
        return;
    std::string key(TaskGrouping::customGroupKey(group.id));
    if (!group.isCustom) {
        key = makeGroup(group.appName);
        for (const RunningAppItem &member : group.windows)
            store.edit().customGroupMembers[member.id] = key;
    }
    join(windows, key);
    removeEmptyCustomGroups();
    saveCustomGroups();
}

void AppModel::groupTask(const std::string &id, const std::string &targetID)
{
    const auto windows = windowsForDragID(id);
    const RunningAppItem *target = taskWithID(targetID);
    if (!target
        || std::any_of(windows.begin(), windows.end(), [&](const RunningAppItem &item) { return item.id == targetID; }))
        return;
    const std::string key = makeGroup(std::string(TaskGrouping::newGroupName));
    join({*target}, key);
    join(windows, key);
    removeEmptyCustomGroups();
    saveCustomGroups();
}

void AppModel::removeEmptyCustomGroups()
{
    std::set<std::string_view> used;
    for (const auto &[id, key] : settings().customGroupMembers)
        used.insert(key);
    const auto isUnused = [&](const auto &entry) { return !used.contains(entry.first); };
    std::erase_if(store.edit().customGroupNames, isUnused);
    std::erase_if(store.edit().customGroupIcons, isUnused);
}

// ---------------------------------------------------------------------------------------------------- order

std::vector<std::string> AppModel::taskIDs() const
{
    std::vector<std::string> ids;
    ids.reserve(tasks.size());
    for (const RunningAppItem &task : tasks)
        ids.push_back(task.id);
    return ids;
}

void AppModel::storeOrder(std::vector<std::string> order)
{
    saveTaskOrder(std::move(order));
    refresh();
}

std::vector<RunningAppItem> AppModel::windowsForDragID(const std::string &id) const
{
    std::vector<RunningAppItem> windows;
    for (const RunningAppItem *item : TaskOrder::windowsForDragID(id, tasks, settings()))
        windows.push_back(*item);
    return windows;
}

// A window that the user has placed by hand stays separate.
void AppModel::ungroup(const std::vector<RunningAppItem> &windows)
{
    for (const RunningAppItem &window : windows) {
        store.edit().customGroupMembers.erase(window.id);
        store.edit().forcedUngroupedWindows.insert(window.id);
    }
    removeEmptyCustomGroups();
    saveCustomGroups();
}

std::optional<std::string> AppModel::replacementAnchor(const std::string &id) const
{
    return TaskOrder::replacementAnchor(id, TaskOrder::windowsForDragID(id, tasks, settings()), tasks, settings());
}

void AppModel::setTaskPosition(const std::string &id, bool first)
{
    const auto windows = windowsForDragID(id);
    if (windows.empty())
        return;
    std::optional<std::string> anchor;
    if (!id.starts_with(Identifiers::groupDragPrefix)) {
        anchor = replacementAnchor(id);
        ungroup(windows);
    }
    auto order = taskIDs();
    TaskOrder::promoteReplacementAnchor(anchor, windows.front().id, order);
    std::vector<std::string> moving;
    for (const RunningAppItem &window : windows)
        moving.push_back(window.id);
    if (TaskOrder::moveToEnd(order, moving, first))
        storeOrder(std::move(order));
}

void AppModel::dropTaskOnRow(const std::string &id, const std::string &adjacentTo, bool after)
{
    const auto windows = windowsForDragID(id);
    if (windows.empty())
        return;
    if (id.starts_with(Identifiers::groupDragPrefix)) {
        std::vector<std::string> ids;
        for (const RunningAppItem &window : windows)
            ids.push_back(window.id);
        moveTasks(ids, adjacentTo, after);
        return;
    }
    const auto anchor = replacementAnchor(id);
    ungroup(windows);
    if (after)
        moveTaskAfter(windows.front().id, adjacentTo, anchor);
    else
        moveTask(windows.front().id, adjacentTo, anchor);
}

void AppModel::dropTaskAtOverflowRowEnd(const std::string &id, const std::string &targetID)
{
    const auto windows = windowsForDragID(id);
    if (windows.empty())
        return;
    const std::size_t dragged = taskPlaces.orderedIndex(windows.front().id);
    const std::size_t target = taskPlaces.orderedIndex(targetID);
    if (target < tasks.size())
        dropTaskOnRow(id, targetID, dragged < target);
}

void AppModel::moveTasks(const std::vector<std::string> &ids, const std::string &adjacentTo, bool after)
{
    auto order = taskIDs();
    if (TaskOrder::moveTasks(order, ids, adjacentTo, after))
        storeOrder(std::move(order));
}

void AppModel::moveTaskAfter(const std::string &id, const std::string &targetID,
                             const std::optional<std::string> &replacementAnchorID)
{
    auto order = taskIDs();
    TaskOrder::promoteReplacementAnchor(replacementAnchorID, id, order);
    if (TaskOrder::moveTaskAfter(order, id, targetID))
        storeOrder(std::move(order));
}

void AppModel::moveTask(const std::string &id, const std::string &before,
                        const std::optional<std::string> &replacementAnchorID)
{
    auto order = taskIDs();
    TaskOrder::promoteReplacementAnchor(replacementAnchorID, id, order);
    if (TaskOrder::moveTaskBefore(order, id, before))
        storeOrder(std::move(order));
}

}  // namespace korvane
