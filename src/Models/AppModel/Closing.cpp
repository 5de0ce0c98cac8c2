// Closing, hiding and quitting, and the questions before them.
#include "Models/AppModel/AppModel.h"

#include <algorithm>

namespace korvane {

using platform::AxStatus;
using platform::Element;
using platform::Value;
using V = SettingsValues;

namespace {

constexpr std::string_view fileManager = "com.apple.finder";

}  // namespace

// Returns whether the press succeeded. A window is only ever closed through its own close button.
bool AppModel::pressCloseButton(const Element &window)
{
    Value value;
    const bool read = platform.accessibility.copy(window, "AXCloseButton", value) == AxStatus::success;
    const auto *button = read ? std::get_if<Element>(&value) : nullptr;
    return button && platform.accessibility.perform(*button, "AXPress") == AxStatus::success;
}

// Removes the tasks at once, without waiting for the window server. If a window stays open, its task comes back with a
// refresh.
void AppModel::forgetTasks(const std::set<std::string> &ids)
{
    std::vector<RunningAppItem> remaining;
    for (const RunningAppItem &task : tasks)
        if (!ids.contains(task.id))
            remaining.push_back(task);
    if (remaining.size() != tasks.size())
        setTasks(std::move(remaining));
    auto order = settings().taskOrder;
    std::erase_if(order, [&](const std::string &id) { return ids.contains(id); });
    for (const std::string &id : ids) {
        store.edit().customGroupMembers.erase(id);
        store.edit().forcedUngroupedWindows.erase(id);
    }
    removeEmptyCustomGroups();
    saveTaskOrder(std::move(order));
    saveCustomGroups();
    refreshAfterWindowStateChange(false);
}

void AppModel::closeFrontWindow(const RunningAppItem &item)
{
    if (!trusted) {
        requestAccessibilityPermission();
        return;
    }
    const Element window = resolveWindow(item);
    if (window && pressCloseButton(window))
        forgetTasks({item.id});
}

void AppModel::closeWindows(const RunningAppGroup &group)
{
    if (!trusted) {
        requestAccessibilityPermission();
        return;
    }
    std::set<std::string> ids;
    for (const RunningAppItem &item : group.windows)
        ids.insert(item.id);
    for (const RunningAppItem &item : group.windows)
        if (const Element window = resolveWindow(item))
            pressCloseButton(window);
    forgetTasks(ids);
}

void AppModel::closeAndRemoveCustomGroup(const RunningAppGroup &group)
{
    if (!group.isCustom)
        return;
    for (const RunningAppItem &item : group.windows)
        closeFrontWindow(item);
    const std::string key(TaskGrouping::customGroupKey(group.id));
    std::erase_if(store.edit().customGroupMembers, [&](const auto &member) { return member.second == key; });
    store.edit().customGroupNames.erase(key);
    store.edit().customGroupIcons.erase(key);
    saveCustomGroups();
    refreshAfterWindowStateChange();
}

void AppModel::minimizeAllWindows(const RunningAppGroup &group)
{
    if (!trusted) {
        requestAccessibilityPermission();
        return;
    }
    for (const RunningAppItem &item : group.windows)
        if (const Element window = resolveWindow(item))
            platform.accessibility.set(window, "AXMinimized", true);
    refreshAfterWindowStateChange();
}

void AppModel::closeAllWindows()
{
    if (!trusted) {
        requestAccessibilityPermission();
        return;
    }
    const auto applications = platform.applications.running();
    for (const platform::Application &application : applications) {
        if (application.policy != platform::ActivationPolicy::regular
            || application.pid == platform.applications.self())
            continue;
        const auto windows = discovery.windows(application.pid);
        if (!windows)
            continue;
        for (const Element &window : *windows) {
            // The desktop of the file manager is a window without a title.
            if (application.bundleIdentifier == fileManager && !discovery.title(window))
                continue;
            pressCloseButton(window);
        }
    }
    refreshAfterWindowStateChange(false);
}

void AppModel::hideVisibleWindows()
{
    const auto applications = platform.applications.running();
    for (const platform::Application &application : applications) {
        if (application.policy != platform::ActivationPolicy::regular || application.pid == platform.applications.self()
            || application.hidden)
            continue;
        const auto windows = discovery.windows(application.pid);
        if (application.bundleIdentifier == fileManager) {
            for (const Element &window : windows.value_or(std::vector<Element>{}))
                if (discovery.title(window) && !discovery.isMinimized(window))
                    platform.accessibility.set(window, "AXMinimized", true);
        } else if (!windows || !std::all_of(windows->begin(), windows->end(), [&](const Element &window) {
                       return discovery.isMinimized(window);
                   })) {
            platform.applications.hide(application.pid);
        }
    }
    refreshAfterWindowStateChange();
}

void AppModel::quit(const RunningAppItem &item)
{
    if (platform.applications.find(item.processIdentifier))
        platform.applications.terminate(item.processIdentifier);
}

bool AppModel::confirmed(const std::string &message, const std::string &informative, const std::string &button)
{
    return runKorvaneModal({message, informative, {button, "Cancel"}}) == platform::firstAlertButton;
}

int AppModel::runKorvaneModal(const platform::Alert &alert, double horizontalCenterFraction)
{
    return platform.dialogs.runModal(alert, horizontalCenterFraction);
}

void AppModel::confirmQuitApplication(const RunningAppItem &item)
{
    if (confirmed(item.appName + " will be terminated and all windows in this group will be closed. Continue?", {}))
        quit(item);
}

void AppModel::confirmQuitGroup(const RunningAppGroup &group)
{
    if (!group.isCustom) {
        if (!group.windows.empty())
            confirmQuitApplication(group.windows.front());
    } else if (confirmed("All windows in " + group.appName + " will be closed. Continue?", {})) {
        closeAndRemoveCustomGroup(group);
    }
}

void AppModel::confirmCloseGroup(const RunningAppGroup &group)
{
    if (confirmed("All windows in this group will be closed. Continue?", {}))
        closeWindows(group);
}

void AppModel::confirmCloseAllWindows()
{
    if (confirmed("Close All Windows?", "All open windows will be closed. Continue?"))
        closeAllWindows();
}

void AppModel::confirmClearRecents()
{
    if (confirmed("Clear Recents?", "Remove all items from the Recents list?", "Clear"))
        clearRecents();
}

void AppModel::terminateApp()
{
    platform.loop.terminate();
}

}  // namespace korvane
