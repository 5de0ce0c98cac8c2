// The one observable object: the windows of the desktop as tasks, and every operation on them. It reads and acts
// through the ports, holds all state, and never calls a view. The sections below are implemented in the files of this
// folder. What can be computed without the model has headers of its own in the folders beside this one.
#pragma once

#include "Models/AppModel/Property.h"
#include "Models/Base/DelayedTasks.h"
#include "Models/Base/Identifiers.h"
#include "Models/Base/Records.h"
#include "Models/Settings/Settings.h"
#include "Models/Tasks/DockBadges.h"
#include "Models/Tasks/TabColors.h"
#include "Models/Tasks/TaskChanges.h"
#include "Models/Tasks/TaskDropRequests.h"
#include "Models/Tasks/TaskGrouping.h"
#include "Models/Tasks/TaskOrder.h"
#include "Models/Tasks/WindowDiscovery.h"
#include "Models/Tasks/WindowMemory.h"
#include "Ports/ObserverList.h"
#include "Ports/Platform.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_map>
#include <vector>

namespace korvane {

class AppModel final : public TaskDropRequests {
public:
    using UuidSource = std::function<std::string()>;

    // Reads the settings; touches no window before start().
    explicit AppModel(platform::Platform &platform, UuidSource makeUuid = Identifiers::makeUuid);
    AppModel(const AppModel &) = delete;
    AppModel &operator=(const AppModel &) = delete;
    ~AppModel();

    // ------------------------------------------------------------------------------------------------ observing
    // Something that a view may show has changed. Views gather these and look once at the next turn of the run loop.
    platform::ObserverList<> changed;
    // Names the property that was assigned. The calls come in the order of assignment.
    platform::ObserverList<Property> published;
    // Tells which tasks' buttons the same change concerns. Comes before `changed`.
    platform::ObserverList<const TaskChanges &> tasksChanged;

    const std::vector<RunningAppItem> &runningApps() const { return tasks; }  // in task order
    const std::vector<AttentionAppItem> &attentionApps() const { return attention; }
    // The place of the task in the list; absent when no task has that identifier.
    std::optional<std::size_t> placeOfTask(std::string_view id) const;
    bool accessibilityTrusted() const { return trusted; }
    bool systemIsInactive() const { return !inactive.empty(); }
    const WindowMemory &windowMemory() const { return memory; }
    const ColorNames &liveTabColors() const { return liveColors; }
    const std::set<std::string> &manualLiveColorIDs() const { return manualColorIDs; }
    const std::set<std::string> &openGroupedLists() const { return openLists; }
    int taskOverflowRowCount() const { return overflowRowCount; }
    bool taskOverflowRowsVisible() const { return overflowRowsVisible; }
    bool taskRowsExpanded() const { return rowsExpanded; }
    bool settingsWindowVisible() const { return settingsVisible; }
    // The task that stands for this program's own settings window; always there while the permission is missing.
    std::optional<RunningAppItem> settingsTaskItem() const;

    // ------------------------------------------------------------------------------------------------ settings
    const SettingsValues &settings() const { return store.values(); }
    // Assigns a setting as the settings panel does: a plain value is saved with its group at once.
    template <typename T> void set(T SettingsValues::*member, std::type_identity_t<T> value)
    {
        store.assign(member, std::move(value));
    }
    void saveQuicklyLaunchSettings();
    void saveAppearanceSettings();
    void saveCustomGroups();
    void saveStartFavorites();
    void restoreDefaults();
    void resetWindowStripColors();

    // ------------------------------------------------------------------------------------------------ refresh
    // Installs the observers and the timer and waits for the permission. The first list follows half a second after the
    // permission.
    void start();
    // Removes observers and timers and cancels what is pending.
    void stop();
    // Reads the desktop and publishes what changed. With `skipUnchangedDownstream` the refresh ends early when the list
    // is unchanged.
    void refresh(bool forceBadgeScan = false, bool skipUnchangedDownstream = false);
    // Refreshes 150 ms later, when the system knows of the action. With `immediate` it also refreshes now.
    void refreshAfterWindowStateChange(bool immediate = true);
    void manualRefreshAndRepaint();
    void refreshForStartMenuShow();
    void setTaskbarHidden(bool hidden);
    void setInactiveReason(const std::string &reason, bool active);
    // While a task is resized by hand, the list does not change. The handler gets true at the beginning and false at
    // the end.
    void beginTaskResize();
    void endTaskResize();
    void setTaskResizePauseHandler(std::function<void(bool)> handler) { taskResizePauseHandler = std::move(handler); }

    // ------------------------------------------------------------------------------------------------ discovery
    bool isBlacklisted(std::string_view name) const;
    void addToBlacklist(std::string_view name);
    void removeFromBlacklist(std::string_view name);
    void saveBlacklist();

    // ------------------------------------------------------------------------------------------------ badges
    bool shouldShowTaskbarAttentionIndicator() const;
    void addAttentionIndicatorApp(const std::string &name);
    void removeAttentionIndicatorApp(const std::string &name);
    void allowAllAttentionIndicatorApps();
    void setAttentionIndicatorFilter(const Choice<FilterPolicy> &policy, std::vector<std::string> apps);

    // ------------------------------------------------------------------------------------------------ recency
    bool isPreviousWindow(const RunningAppItem &item) const { return memory.isPreviousWindow(item); }
    bool isActiveBlueStripWindow(const RunningAppItem &item) const { return memory.isActiveBlueStripWindow(item); }
    void recordRecent(const RunningAppItem &item);
    // The recent tasks that are still there, newest first.
    std::vector<RunningAppItem> recentWindows() const;
    void clearRecents();
    void confirmClearRecents();

    // ------------------------------------------------------------------------------------------------ grouping
    std::vector<TaskbarEntry> taskbarEntries(bool groupAll) const;
    std::vector<RunningAppGroup> runningAppGroups() const { return TaskGrouping::runningAppGroups(tasks); }
    bool shouldGroup(std::string_view appName) const { return TaskGrouping::shouldGroup(appName, settings()); }
    // Forgets all manual ungrouping and announces a change.
    void regroupTaskbarForCurrentSettings();
    // The distinct application names of the tasks, sorted.
    std::vector<std::string> availableGroupingApps() const;
    void addSpecificGroupingApp(const std::string &appName);
    void removeSpecificGroupingApp(const std::string &appName);
    void setGroupedListOpen(bool open, const std::string &groupID);

    // ------------------------------------------------------------------------------------------------ custom groups
    void createCustomGroup(const std::vector<RunningAppItem> &items);
    void returnToParentGroup(const RunningAppItem &item);
    void renameCustomGroup(const RunningAppGroup &group, const std::string &name);
    void setCustomGroupIcon(const RunningAppGroup &group, const std::string &glyph);
    // A task was dropped on a group's button. This turns an automatic group into a custom group.
    void dropTask(const std::string &id, const RunningAppGroup &group) override;
    // A task was dropped on the middle of a plain task.
    void groupTask(const std::string &id, const std::string &targetID) override;
    // Removes names and glyphs that no member uses. Does not save.
    void removeEmptyCustomGroups();

    // ------------------------------------------------------------------------------------------------ order
    std::vector<RunningAppItem> windowsForDragID(const std::string &id) const;
    void setTaskPosition(const std::string &id, bool first);
    void dropTaskOnRow(const std::string &id, const std::string &adjacentTo, bool after) override;
    void dropTaskOnRow(const std::string &id, const std::string &before) { dropTaskOnRow(id, before, false); }
    void dropTaskAtOverflowRowEnd(const std::string &id, const std::string &targetID) override;
    void moveTasks(const std::vector<std::string> &ids, const std::string &adjacentTo, bool after);
    void moveTaskAfter(const std::string &id, const std::string &targetID,
                       const std::optional<std::string> &replacementAnchorID);
    void moveTask(const std::string &id, const std::string &before,
                  const std::optional<std::string> &replacementAnchorID);

    // ------------------------------------------------------------------------------------------------ window actions
    // The click on a task: restores, minimises or brings forward its window.
    void activate(const RunningAppItem &item);
    void activateApplication(Pid pid);
    void activateAttentionApp(const AttentionAppItem &item);
    // Null when the task's window is not found any more.
    platform::Element resolveWindow(const RunningAppItem &item) const { return discovery.resolveWindow(item); }

    // ------------------------------------------------------------------------------------------------ closing
    void closeFrontWindow(const RunningAppItem &item);
    void closeWindows(const RunningAppGroup &group);
    void closeAndRemoveCustomGroup(const RunningAppGroup &group);
    void minimizeAllWindows(const RunningAppGroup &group);
    void closeAllWindows();
    void hideVisibleWindows();
    void quit(const RunningAppItem &item);
    void confirmQuitApplication(const RunningAppItem &item);
    void confirmQuitGroup(const RunningAppGroup &group);
    void confirmCloseGroup(const RunningAppGroup &group);
    void confirmCloseAllWindows();
    void terminateApp();
    // Every alert is shown by this operation. Blocks until a button is pressed and returns the button's number.
    int runKorvaneModal(const platform::Alert &alert, double horizontalCenterFraction = 0.5);

    // ------------------------------------------------------------------------------------------------ colours
    std::optional<std::string> liveTabColorName(const std::string &id) const;
    void setLiveTabColorName(const std::optional<std::string> &name, const std::string &id);
    void setDefaultAppColorName(const std::optional<std::string> &name, const std::string &bundleIdentifier,
                                const std::vector<std::string> &liveIDs);

    // ------------------------------------------------------------------------------------------------ favorites
    // Adds the application at the end, unless it is already in the list. A custom group adds nothing, because it does
    // not belong to one application.
    void addToFavorites(const RunningAppItem &item);
    void addToFavorites(const RunningAppGroup &group);

    // ------------------------------------------------------------------------------------------------ permission
    void requestAccessibilityPermission();
    void openAccessibilitySettings();
    void resetAccessibilityPermission();
    void clearAccessibilityPermissionForUninstall();

    // ------------------------------------------------------------------------------------------------ launching
    // Does nothing when no application of that identifier is installed.
    void launch(const std::string &bundleIdentifier);
    // An application that already runs comes forward with all its windows.
    void openApplication(const std::string &path, const std::optional<std::string> &bundleIdentifier);

    // ------------------------------------------------------------------------------------------------ the bar's state
    void setSettingsWindowVisible(bool visible);
    void setSettingsCloseHandler(std::function<void()> handler) { settingsCloseHandler = std::move(handler); }
    void closeSettingsWindow();
    void setTaskOverflowRowCount(int count);
    void setTaskOverflowRowsVisible(bool visible);
    void setTaskRowsExpanded(bool expanded);

    // What only tests, diagnostics and bug reports look at.
    struct Inspection {
        std::vector<std::string> inactiveReasons;
        bool taskbarIsHidden, deferredWorkspaceRefresh, taskResizeSuspended;
        bool initialWindowListReady, hasCompletedInitialRefresh;
        bool refreshing;                                                    // inside refresh()
        std::optional<double> refreshTimerInterval, refreshTimerTolerance;  // absent while no timer runs
        std::vector<std::string> cachedBadgedApps;
        std::vector<Pid> appMetadataCache;
    };
    Inspection inspect() const;

private:
    using ItemList = std::vector<const RunningAppItem *>;
    // What is remembered of one application from refresh to refresh.
    struct KnownApplication {
        std::optional<AppMetadata> metadata;
        std::vector<RunningAppItem> items;  // as they were last read
        std::vector<bool> blacklisted;      // one for each item
        std::optional<std::uint64_t> revision;
        bool active = false, hasBadge = false, filtered = false;
        std::uint64_t seenIn = 0;  // number of the last refresh that found it
    };

    // What one refresh gathers on its way.
    struct Reading {
        ApplicationList applications;
        std::vector<RunningAppItem> onScreenItems;               // `windows` points into it without the permission
        ItemList windows;                                        // what the list will hold
        std::optional<std::vector<AttentionAppItem>> attention;  // absent when no scan took place
        ItemList changed;         // items whose records have changed; complete only while sameWindows
        bool unchanged = true;    // every application gave the same answer as the last time
        bool sameWindows = true;  // each application has the same windows as the last time, in the same order
    };

    // Observing
    void publish(Property property);
    void publish(Property property, const TaskChanges &changes);
    void announceChange() { publish(ModelProperty::modelChanged); }
    void setTasks(std::vector<RunningAppItem> items);
    bool patchTasks(const ItemList &items);
    void followWindows(const ItemList &windows);
    void clearTasks();
    void setTrusted(bool value);

    // Settings
    void settingChanged(const Setting &setting);
    void saveTaskOrder(std::vector<std::string> order);

    // Refresh
    void configureRefreshTimer();
    void refreshTimerTick();
    bool nothingCanChangeUnannounced() const;
    void workspaceNotification();
    void startupRound();
    bool isPaused() const { return settings().expertPauseWhenDisplaySleeps && systemIsInactive(); }
    ApplicationList readApplications();
    bool scanBadges(bool forceBadgeScan);
    void readAccessibleWindows(Reading &reading);
    void readVisibleWindows(Reading &reading);
    void seedDefaultColors(const platform::Application &application, const std::vector<RunningAppItem> &items);
    void publishAttention(std::optional<std::vector<AttentionAppItem>> list);
    bool equalsPublished(const ItemList &windows) const;
    void placeNewWindows(const ItemList &windows);
    void pruneColors(const std::vector<RunningAppItem> &sorted);
    const AppMetadata &appMetadata(const platform::Application &application);
    const RunningAppItem *taskWithID(std::string_view id) const;

    void addFavorite(StartFavorite favorite);

    // Order, groups and closing
    void ungroup(const std::vector<RunningAppItem> &windows);
    std::optional<std::string> replacementAnchor(const std::string &id) const;
    std::vector<std::string> taskIDs() const;
    void storeOrder(std::vector<std::string> order);
    std::string makeGroup(const std::string &name);
    void join(const std::vector<RunningAppItem> &items, const std::string &groupKey);
    void forgetTasks(const std::set<std::string> &ids);
    bool pressCloseButton(const platform::Element &window);
    bool confirmed(const std::string &message, const std::string &informative, const std::string &button = "Continue");
    void raise(const platform::Element &window, Pid pid);

    platform::Platform &platform;
    UuidSource makeUuid;
    Settings store;
    platform::Subscription settingsObservation;
    WindowDiscovery discovery;
    NameFilter nameFilter;

    std::vector<RunningAppItem> tasks;
    OrderIndex taskPlaces;  // of `tasks`
    std::vector<AttentionAppItem> attention;
    bool trusted = false;
    std::set<std::string> inactive;
    WindowMemory memory;
    ColorNames liveColors;
    std::set<std::string> manualColorIDs;
    std::set<std::string> openLists;
    int overflowRowCount = 0;
    bool overflowRowsVisible = false, rowsExpanded = false, settingsVisible = false;

    std::unordered_map<Pid, KnownApplication> knownApplications;
    std::uint64_t refreshCount = 0;
    // True when the published list is not the list that the last accessible reading was compared with.
    bool listChangedOutside = true;
    // True when the published list consists of accessible windows and sorting it again would not change its order.
    bool listIsSorted = false;
    BadgedNames cachedBadgedApps;
    std::optional<platform::Seconds> lastBadgeScan;

    bool taskbarIsHidden = false, deferredWorkspaceRefresh = false, taskResizeSuspended = false;
    bool initialWindowListReady = false, hasCompletedInitialRefresh = false, refreshing = false;
    std::function<void(bool)> taskResizePauseHandler;
    std::function<void()> settingsCloseHandler;
    std::vector<platform::Subscription> observers;
    platform::Subscription refreshTimer;
    double refreshTimerInterval = 0;
    bool refreshTimerParked = false;  // it starts again at the next refresh that something else asks for
    bool insideTimerTick = false, lastReadingUnchanged = false;
    platform::Seconds lastAskedRefresh{0};  // by anything but the timer
    DelayedTasks delayed;
    DelayedTasks::Handle delayedRefreshTask, startupRefreshTask;
};

}  // namespace korvane
