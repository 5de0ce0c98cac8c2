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
    settingsConnection = store.changed.connect([this](const Setting &setting) { settingChanged(setting); });
}

AppModel::~AppModel() = default;

namespace {

// Properties that no task's button depends on.
constexpr std::array<std::string_view, 10> besideTheButtons{
    "accessibilityTrusted", "attentionApps",    "openGroupedLists", "recentWindowIDs",      "settingsWindowVisible",
    "startFavorites",       "systemIsInactive", "taskOrder",        "taskOverflowRowCount", "taskOverflowRowsVisible"};
// Properties that change the list of entries, yet leave the buttons of the others as they are.
constexpr std::array<std::string_view, 2> ofTheSettingsTask{"accessibilityTrusted", "settingsWindowVisible"};

}  // namespace

void AppModel::publish(std::string_view property)
{
    TaskChanges changes;
    changes.list = std::ranges::find(ofTheSettingsTask, property) != ofTheSettingsTask.end();
    changes.everything = std::ranges::find(besideTheButtons, property) == besideTheButtons.end();
    publish(property, changes);
}

void AppModel::publish(std::string_view property, const TaskChanges &changes)
{
    if (!changes.none())
        tasksChanged.emit(changes);
    published.emit(property);
    changed.emit();
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
    publish("runningApps", changes);
}

// Takes over what a reading found out about tasks that stand where they stood. False, and nothing is done, when one of
// them is not in the list or belongs elsewhere now.
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
        if (*task == *item)
            continue;
        changes.ids.insert(item->id);
        // The identifier stays where it is: the index of the list refers to its text.
        task->name = item->name;
        task->bundleIdentifier = item->bundleIdentifier;
        task->isActive = item->isActive;
        task->hasNotificationBadge = item->hasNotificationBadge;
    }
    if (!changes.ids.empty())
        publish("runningApps", changes);
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

void AppModel::setTrusted(bool value)
{
    if (trusted == value)
        return;
    trusted = value;
    publish("accessibilityTrusted");
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
    publish("settingsWindowVisible");
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
    publish("taskOverflowRowCount");
}

void AppModel::setTaskOverflowRowsVisible(bool visible)
{
    if (overflowRowsVisible == visible)
        return;
    overflowRowsVisible = visible;
    publish("taskOverflowRowsVisible");
}

void AppModel::setTaskRowsExpanded(bool expanded)
{
    if (rowsExpanded == expanded)
        return;
    rowsExpanded = expanded;
    publish("taskRowsExpanded");
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
