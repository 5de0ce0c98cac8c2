// Starting and stopping, the timers, and when a refresh runs.
#include "Models/AppModel/AppModel.h"

#include <algorithm>
#include <array>

namespace korvane {

using platform::ApplicationEvent;
using platform::Seconds;
using platform::SessionEvent;
using V = SettingsValues;

namespace {

constexpr Seconds permissionPoll{2.0};
// After the login and after the permission, the system needs a moment until its window lists are complete.
constexpr Seconds firstListDelay{0.5};
constexpr Seconds followUpDelay{0.15};

struct InactiveReason {
    SessionEvent event;
    const char *reason;
    bool active;
};
constexpr std::array inactiveReasons{
    InactiveReason{SessionEvent::screensSlept, "display", true},
    InactiveReason{SessionEvent::screensWoke, "display", false},
    InactiveReason{SessionEvent::sessionResigned, "session", true},
    InactiveReason{SessionEvent::sessionActive, "session", false},
    InactiveReason{SessionEvent::screensaverStarted, "screensaver", true},
    InactiveReason{SessionEvent::screensaverStopped, "screensaver", false},
};

}  // namespace

void AppModel::start()
{
    regroupTaskbarForCurrentSettings();
    requestAccessibilityPermission();
    observers.clear();
    for (const auto event : {ApplicationEvent::launched, ApplicationEvent::terminated, ApplicationEvent::activated,
                             ApplicationEvent::hidden, ApplicationEvent::unhidden})
        observers.push_back(platform.applications.observe(event, [this] { workspaceNotification(); }));
    for (const auto &[event, reason, active] : inactiveReasons)
        observers.push_back(platform.applications.observe(
            event, [this, name = std::string(reason), active = active] { setInactiveReason(name, active); }));
    configureRefreshTimer();
    clearTasks();
    initialWindowListReady = false;
    delayed.cancel(startupRefreshTask);
    startupRefreshTask = delayed.schedule(Seconds(0), [this] { startupRound(); });
}

// Until the permission is granted, the bar shows an empty list instead of a wrong one.
void AppModel::startupRound()
{
    setTrusted(platform.accessibility.trusted());
    if (!trusted) {
        clearTasks();
        startupRefreshTask = delayed.schedule(permissionPoll, [this] { startupRound(); });
        return;
    }
    startupRefreshTask = delayed.schedule(firstListDelay, [this] {
        initialWindowListReady = true;
        refresh(true, false);
    });
}

void AppModel::stop()
{
    observers.clear();
    refreshTimer.reset();
    refreshTimerParked = false;
    delayed.cancel(delayedRefreshTask);
    delayed.cancel(startupRefreshTask);
}

void AppModel::configureRefreshTimer()
{
    refreshTimerInterval = static_cast<double>(std::clamp<std::int64_t>(settings().taskbarRefreshSeconds, 1, 2));
    refreshTimerParked = false;
    refreshTimer = platform.loop.repeat(Seconds(refreshTimerInterval), Seconds(refreshTimerInterval * 0.1),
                                        [this] { refreshTimerTick(); });
}

void AppModel::refreshTimerTick()
{
    if (!isPaused() && !taskbarIsHidden && initialWindowListReady) {
        insideTimerTick = true;
        refresh(false, true);
        insideTimerTick = false;
    }
    if (nothingCanChangeUnannounced()) {
        refreshTimer.reset();
        refreshTimerParked = true;
    }
}

// The timer finds changes that no notification announces. Where every change is announced, the timer is not needed any
// more when two conditions hold: a tick has found no change, and the badges have been read since the last refresh that
// the timer did not cause.
bool AppModel::nothingCanChangeUnannounced() const
{
    if (!platform.applications.announcesEveryChange() || !trusted || !initialWindowListReady)
        return false;
    if (isPaused() || taskbarIsHidden)
        return true;
    const bool wantsBadges =
        settings().notificationBadgeStyle != NotificationBadgeStyle::none || settings().showAttentionApps;
    return lastReadingUnchanged && (!wantsBadges || (lastBadgeScan && *lastBadgeScan > lastAskedRefresh));
}

void AppModel::workspaceNotification()
{
    if (taskbarIsHidden || isPaused()) {
        deferredWorkspaceRefresh = true;
        return;
    }
    refresh();
}

void AppModel::setInactiveReason(const std::string &reason, bool active)
{
    const bool wasInactive = systemIsInactive();
    if (active)
        inactive.insert(reason);
    else
        inactive.erase(reason);
    if (wasInactive != systemIsInactive())
        publish(ModelProperty::systemIsInactive);
    if (!wasInactive || systemIsInactive())
        return;
    setTrusted(platform.accessibility.trusted());
    deferredWorkspaceRefresh = false;
    refresh(true, false);
}

void AppModel::setTaskbarHidden(bool hidden)
{
    if (taskbarIsHidden == hidden)
        return;
    taskbarIsHidden = hidden;
    if (hidden)
        return;
    setTrusted(platform.accessibility.trusted());
    refresh(true, false);
    deferredWorkspaceRefresh = false;
}

void AppModel::refreshForStartMenuShow()
{
    taskbarIsHidden = false;
    setTrusted(platform.accessibility.trusted());
    refresh(true, false);
}

void AppModel::refreshAfterWindowStateChange(bool immediate)
{
    if (immediate)
        refresh();
    if (settings().expertCoalesceActionRefreshes)
        delayed.cancel(delayedRefreshTask);
    delayedRefreshTask = delayed.schedule(followUpDelay, [this] { refresh(); });
}

void AppModel::beginTaskResize()
{
    if (taskResizeSuspended)
        return;
    taskResizeSuspended = true;
    refreshTimer.reset();
    refreshTimerParked = false;
    if (taskResizePauseHandler)
        taskResizePauseHandler(true);
}

void AppModel::endTaskResize()
{
    if (!taskResizeSuspended)
        return;
    taskResizeSuspended = false;
    if (taskResizePauseHandler)
        taskResizePauseHandler(false);
    configureRefreshTimer();
    refresh();
}

}  // namespace korvane
