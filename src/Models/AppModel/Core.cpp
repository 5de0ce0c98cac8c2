// Making the model, observing it, and the small state that the bar writes back.
#include "Models/AppModel/AppModel.h"

#include "Models/Base/Assert.h"

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
    published.notify(property);
    changed.notify();
}

void AppModel::setTasks(std::vector<RunningAppItem> items)
{
    tasks = std::move(items);
    taskPlaces = OrderIndex(tasks);
    listChangedOutside = true;
    publish(ModelProperty::runningApps);
}

void AppModel::clearTasks()
{
    if (!tasks.empty())
        setTasks({});
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
