// Making the model, observing it, and the small state that the bar writes back.
#include "Models/AppModel/AppModel.h"

#include "Models/Base/Assert.h"

#include <algorithm>
#include <array>
#include <utility>

namespace korvane {

AppModel::AppModel(platform::Platform &system, UuidSource uuids)
    : platform(system), makeUuid(std::move(uuids)), store(system.defaults), discovery(system), nameFilter(system.text),
      trusted(system.accessibility.trusted()), delayed(system.loop)
{
    settingsObservation = store.changed.add([this](const Setting &setting) { settingChanged(setting); });
}

AppModel::~AppModel() = default;

void AppModel::publish(Property property)
{
    // Neither the list nor a task's button depends on these.
    static const std::array besideTheTasks{Property(ModelProperty::attentionApps),
                                           Property(ModelProperty::openGroupedLists),
                                           Property(ModelProperty::systemIsInactive),
                                           Property(ModelProperty::taskOverflowRowCount),
                                           Property(ModelProperty::taskOverflowRowsVisible),
                                           Property(ModelProperty::taskRowsExpanded),
                                           Property(&SettingsValues::recentWindowIDs),
                                           Property(&SettingsValues::startFavorites),
                                           Property(&SettingsValues::taskOrder)};
    TaskChanges changes;
    // These two decide whether the settings window has a task.
    changes.list = property == ModelProperty::accessibilityTrusted || property == ModelProperty::settingsWindowVisible;
    changes.everything = !changes.list && std::ranges::find(besideTheTasks, property) == besideTheTasks.end();
    publish(property, changes);
}

void AppModel::publish(Property property, const TaskChanges &changes)
{
    if (!changes.none())
        tasksChanged.notify(changes);
    published.notify(property);
    changed.notify();
}

void AppModel::setTasks(std::vector<RunningAppItem> items)
{
    TaskChanges changes;
    changes.list = true;
    for (const RunningAppItem &item : items) {
        const RunningAppItem *before = taskWithID(item.id);
        if (!before || !isSameRecord(*before, item))
            changes.ids.insert(item.id);
    }
    tasks = std::move(items);
    taskPlaces = OrderIndex(tasks);
    listChangedOutside = true;
    listIsSorted = false;
    publish(ModelProperty::runningApps, changes);
}

// Copies what a reading found into tasks that keep their places. Returns false and does nothing when one of the tasks
// is not in the list or now belongs at another place.
bool AppModel::patchTasks(const ItemList &items)
{
    std::vector<std::pair<RunningAppItem *, const RunningAppItem *>> patches;
    for (const RunningAppItem *item : items) {
        const std::size_t place = taskPlaces.orderedIndex(item->id);
        if (place >= tasks.size() || tasks[place].appName != item->appName
            || tasks[place].processIdentifier != item->processIdentifier || tasks[place].icon != item->icon
            || tasks[place].windowIndex != item->windowIndex)
            return false;
        patches.emplace_back(&tasks[place], item);
    }
    TaskChanges changes;
    for (const auto &[task, item] : patches) {
        if (showsTheSame(*task, *item))
            continue;
        changes.ids.insert(item->id);
        // The identifier is not assigned, because the index of the list refers to its text.
        task->name = item->name;
        task->bundleIdentifier = item->bundleIdentifier;
        task->isActive = item->isActive;
        task->hasNotificationBadge = item->hasNotificationBadge;
    }
    if (!changes.ids.empty())
        publish(ModelProperty::runningApps, changes);
    return true;
}

void AppModel::clearTasks()
{
    if (!tasks.empty())
        setTasks({});
}

std::optional<std::size_t> AppModel::placeOfTask(std::string_view id) const
{
    const std::size_t place = taskPlaces.orderedIndex(id);
    return place < tasks.size() ? std::optional(place) : std::nullopt;
}

const RunningAppItem *AppModel::taskWithID(std::string_view id) const
{
    const std::size_t place = taskPlaces.orderedIndex(id);
    return place < tasks.size() ? &tasks[place] : nullptr;
}

std::optional<RunningAppItem> AppModel::settingsTaskItem() const
{
    if (!settingsVisible && trusted)
        return std::nullopt;
    RunningAppItem item;
    item.id = Identifiers::settingsTask;
    item.processIdentifier = platform.applications.self();
    item.name = trusted ? "Korvane Settings" : "⚠️ Korvane Settings";
    item.appName = "Korvane";
    item.icon = platform.icons.ownIcon();
    item.isActive = settingsVisible;
    return item;
}

void AppModel::setSettingsWindowVisible(bool visible)
{
    if (visible)
        setTrusted(platform.accessibility.trusted());
    if (settingsVisible == visible)
        return;
    settingsVisible = visible;
    publish(ModelProperty::settingsWindowVisible);
}

void AppModel::closeSettingsWindow()
{
    if (settingsCloseHandler)
        settingsCloseHandler();
}

void AppModel::setTaskOverflowRowCount(int count)
{
    if (overflowRowCount == count)
        return;
    overflowRowCount = count;
    publish(ModelProperty::taskOverflowRowCount);
}

void AppModel::setTaskOverflowRowsVisible(bool visible)
{
    if (overflowRowsVisible == visible)
        return;
    overflowRowsVisible = visible;
    publish(ModelProperty::taskOverflowRowsVisible);
}

void AppModel::setTaskRowsExpanded(bool expanded)
{
    if (rowsExpanded == expanded)
        return;
    rowsExpanded = expanded;
    publish(ModelProperty::taskRowsExpanded);
}

AppModel::Inspection AppModel::inspect() const
{
    Inspection inspection{};
    inspection.inactiveReasons.assign(inactive.begin(), inactive.end());
    inspection.taskbarIsHidden = taskbarIsHidden;
    inspection.deferredWorkspaceRefresh = deferredWorkspaceRefresh;
    inspection.taskResizeSuspended = taskResizeSuspended;
    inspection.initialWindowListReady = initialWindowListReady;
    inspection.hasCompletedInitialRefresh = hasCompletedInitialRefresh;
    inspection.refreshing = refreshing;
    if (refreshTimer) {
        inspection.refreshTimerInterval = refreshTimerInterval;
        inspection.refreshTimerTolerance = refreshTimerInterval * 0.1;
    }
    inspection.cachedBadgedApps.assign(cachedBadgedApps.begin(), cachedBadgedApps.end());
    for (const auto &[pid, known] : knownApplications)
        if (known.metadata)
            inspection.appMetadataCache.push_back(pid);
    return inspection;
}

}  // namespace korvane
