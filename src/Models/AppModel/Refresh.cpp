// One refresh: from the desktop to the published list.
#include "Models/AppModel/AppModel.h"

#include "Models/Base/Assert.h"

#include <algorithm>
#include <limits>
#include <unordered_set>
#include <utility>

namespace korvane {

using V = SettingsValues;

void AppModel::refresh(bool forceBadgeScan, bool skipUnchangedDownstream)
{
    if (taskResizeSuspended)
        return;
    if (!initialWindowListReady) {
        clearTasks();
        return;
    }
    if (!insideTimerTick) {
        lastAskedRefresh = platform.loop.monotonicNow();
        if (refreshTimerParked)
            configureRefreshTimer();
    }
    refreshing = true;
    ++refreshCount;
    const bool listWasCompared = !listChangedOutside;

    Reading reading;
    reading.applications = readApplications();
    const bool scanned = scanBadges(forceBadgeScan);
    if (scanned && settings().showAttentionApps)
        reading.attention.emplace();
    if (trusted)
        readAccessibleWindows(reading);
    else
        readVisibleWindows(reading);

    // When the windows are the same as the last time, the memory has already followed them, and the published list has
    // already been compared with them.
    const bool unchanged = reading.unchanged && listWasCompared;
    lastReadingUnchanged = unchanged;
    if (!unchanged)
        followWindows(reading.windows);
    publishAttention(std::move(reading.attention));
    if (skipUnchangedDownstream && settings().expertSkipUnchangedRefreshes && hasCompletedInitialRefresh) {
        KORVANE_ASSERT(!taskPlaces.hasDuplicates(), "two tasks of the list have one identifier");
        if (unchanged || equalsPublished(reading.windows)) {
            listChangedOutside = !trusted;
            refreshing = false;
            return;
        }
    }
    // The windows and their order are the same as before. Only their records can have changed.
    if (trusted && reading.sameWindows && listIsSorted && settings().expertSkipUnchangedRefreshes
        && hasCompletedInitialRefresh && reading.windows.size() == tasks.size() && patchTasks(reading.changed)) {
        pruneColors(tasks);
        listChangedOutside = false;
        refreshing = false;
        return;
    }

    placeNewWindows(reading.windows);
    const OrderIndex order(settings().taskOrder);
    TaskOrder::sort(reading.windows, order, [this](const RunningAppItem &item) {
        const std::size_t place = taskPlaces.orderedIndex(item.id);
        return place < tasks.size() ? place : std::numeric_limits<std::size_t>::max();
    });
    const auto equal = [](const RunningAppItem &left, const RunningAppItem *right) {
        return showsTheSame(left, *right);
    };
    if (!settings().expertSkipUnchangedRefreshes
        || !std::equal(tasks.begin(), tasks.end(), reading.windows.begin(), reading.windows.end(), equal)) {
        std::vector<RunningAppItem> sorted;
        sorted.reserve(reading.windows.size());
        for (const RunningAppItem *item : reading.windows)
            sorted.push_back(*item);
        setTasks(std::move(sorted));
    }
    listIsSorted = trusted;
    pruneColors(tasks);
    hasCompletedInitialRefresh = true;
    listChangedOutside = !trusted;
    refreshing = false;
}

// Updates the memory, and publishes the buttons that look different because a strip has moved.
void AppModel::followWindows(const ItemList &windows)
{
    const auto stripBefore = memory.activeBlueStripWindowID();
    const auto previousBefore = memory.previousWindowIDsByApplication();
    const auto changes = memory.updatePreviousWindows(windows);
    if (changes.activeStrip) {
        TaskChanges buttons;
        for (const auto &id : {stripBefore, memory.activeBlueStripWindowID()})
            if (id)
                buttons.ids.insert(*id);
        publish(ModelProperty::activeBlueStripWindowID, buttons);
    }
    if (changes.previousWindows) {
        TaskChanges buttons;
        for (const auto *one : {&previousBefore, &memory.previousWindowIDsByApplication()})
            for (const auto &[application, id] : *one)
                buttons.ids.insert(id);
        publish(ModelProperty::previousWindowIDsByApplication, buttons);
    }
}

ApplicationList AppModel::readApplications()
{
    ApplicationList applications;
    const Pid self = platform.applications.self();
    for (const platform::Application &application : platform.applications.running()) {
        if (application.policy != platform::ActivationPolicy::regular || application.pid == self
            || application.terminated)
            continue;
        applications.push_back(&application);
        knownApplications[application.pid].seenIn = refreshCount;
    }
    if (knownApplications.size() != applications.size())
        std::erase_if(knownApplications, [this](const auto &known) { return known.second.seenIn != refreshCount; });
    return applications;
}

bool AppModel::scanBadges(bool forceBadgeScan)
{
    const bool wantsBadges =
        (settings().notificationBadgeStyle != NotificationBadgeStyle::none || settings().showAttentionApps) && trusted;
    if (!wantsBadges) {
        cachedBadgedApps.clear();
        if (!attention.empty()) {
            attention.clear();
            publish(ModelProperty::attentionApps);
        }
        return false;
    }
    const auto now = platform.loop.monotonicNow();
    const bool due = !settings().expertCacheNotificationBadges || forceBadgeScan || !lastBadgeScan
                     || now - *lastBadgeScan >= platform::Seconds(std::max(1.0, settings().expertBadgeScanSeconds));
    if (!due)
        return false;
    cachedBadgedApps = DockBadges::dockBadgedAppNames(platform);
    lastBadgeScan = now;
    return true;
}

void AppModel::readAccessibleWindows(Reading &reading)
{
    static const std::string unnamed = "Application";
    std::size_t total = 0;
    for (const platform::Application *application : reading.applications) {
        KnownApplication &known = knownApplications.at(application->pid);
        const std::string &appName = application->localizedName ? *application->localizedName : unnamed;
        const bool hasBadge = !cachedBadgedApps.empty() && cachedBadgedApps.contains(appName);
        const auto revision = platform.accessibility.revision(application->pid);
        if (!revision || known.revision != revision || known.active != application->active || known.hasBadge != hasBadge
            || !known.metadata || !known.filtered) {
            reading.unchanged = false;
            auto items = discovery.accessibleWindowItems(*application, appMetadata(*application), hasBadge);
            std::vector<bool> blacklisted;
            for (const RunningAppItem &item : items)
                blacklisted.push_back(isBlacklisted(item.name));
            reading.sameWindows =
                reading.sameWindows && blacklisted == known.blacklisted
                && std::ranges::equal(items, known.items, {}, &RunningAppItem::id, &RunningAppItem::id);
            const auto before = std::exchange(known.items, std::move(items));
            known.blacklisted = std::move(blacklisted);
            if (reading.sameWindows)
                for (std::size_t i = 0; i < before.size(); ++i)
                    if (!known.blacklisted[i] && !isSameRecord(before[i], known.items[i]))
                        reading.changed.push_back(&known.items[i]);
            known.revision = revision;
            known.active = application->active;
            known.hasBadge = hasBadge;
            known.filtered = true;
        }
        seedDefaultColors(*application, known.items);
        total += known.items.size();
        if (hasBadge && reading.attention) {
            const AppMetadata &metadata = appMetadata(*application);
            reading.attention->push_back(
                {Identifiers::applicationMemoryKey(application->bundleIdentifier, application->pid), application->pid,
                 metadata.name, metadata.icon, metadata.bundleIdentifier});
        }
    }
    reading.windows.reserve(total);
    for (const platform::Application *application : reading.applications) {
        const KnownApplication &known = knownApplications.at(application->pid);
        for (std::size_t i = 0; i < known.items.size(); ++i)
            if (!known.blacklisted[i])
                reading.windows.push_back(&known.items[i]);
    }
    // When an application has come or gone, the list has changed, even if the windows of all other applications are the
    // same.
    reading.unchanged = reading.unchanged && reading.windows.size() == tasks.size();
}

void AppModel::readVisibleWindows(Reading &reading)
{
    reading.unchanged = false;
    reading.onScreenItems = discovery.visibleWindowItems(
        reading.applications, cachedBadgedApps,
        [this](const platform::Application &application) -> const AppMetadata & { return appMetadata(application); });
    for (const RunningAppItem &item : reading.onScreenItems)
        if (!isBlacklisted(item.name))
            reading.windows.push_back(&item);
}

// A new window takes its application's default colour once; a colour set later stays.
void AppModel::seedDefaultColors(const platform::Application &application, const std::vector<RunningAppItem> &items)
{
    if (!application.bundleIdentifier || settings().defaultAppColors.empty())
        return;
    const auto color = settings().defaultAppColors.find(*application.bundleIdentifier);
    if (color == settings().defaultAppColors.end())
        return;
    bool seeded = false;
    for (const RunningAppItem &item : items)
        if (!taskPlaces.contains(item.id))
            seeded = liveColors.try_emplace(item.id, color->second).second || seeded;
    if (seeded)
        publish(ModelProperty::liveTabColors);
}

void AppModel::publishAttention(std::optional<std::vector<AttentionAppItem>> list)
{
    const auto sameIDs = [](const AttentionAppItem &left, const AttentionAppItem &right) {
        return left.id == right.id;
    };
    if (list) {
        if (std::equal(list->begin(), list->end(), attention.begin(), attention.end(), sameIDs))
            return;
        attention = std::move(*list);
        publish(ModelProperty::attentionApps);
    } else if (!settings().showAttentionApps && !attention.empty()) {
        attention.clear();
        publish(ModelProperty::attentionApps);
    }
}

// Whether the windows are those of the published list, in any order.
bool AppModel::equalsPublished(const ItemList &windows) const
{
    if (windows.size() != tasks.size())
        return false;
    return std::all_of(windows.begin(), windows.end(), [this](const RunningAppItem *item) {
        const RunningAppItem *task = taskWithID(item->id);
        return task && showsTheSame(*task, *item);
    });
}

void AppModel::placeNewWindows(const ItemList &windows)
{
    if (!hasCompletedInitialRefresh)
        return;
    std::vector<std::string> newIDs;
    for (const RunningAppItem *item : windows)
        if (!taskPlaces.contains(item->id))
            newIDs.push_back(item->id);
    if (newIDs.empty())
        return;
    RecentWindows::recordNew(store.edit().recentWindowIDs, newIDs);
    publish(&V::recentWindowIDs);
    store.save(&V::recentWindowIDs);
    if (settings().newWindowsGo == NewWindowsPlace::first) {
        for (const RunningAppItem &task : tasks)
            newIDs.push_back(task.id);
        saveTaskOrder(std::move(newIDs));
    }
}

void AppModel::pruneColors(const std::vector<RunningAppItem> &sorted)
{
    if (liveColors.empty() && manualColorIDs.empty())
        return;
    std::unordered_set<std::string> valid;
    for (const RunningAppItem &item : sorted) {
        valid.insert(item.id);
        valid.insert(Identifiers::automaticGroup(item.processIdentifier));
        const auto member = settings().customGroupMembers.find(item.id);
        if (member != settings().customGroupMembers.end())
            valid.insert(Identifiers::customGroup(member->second));
    }
    const auto removed = std::erase_if(liveColors, [&](const auto &color) { return !valid.contains(color.first); });
    std::erase_if(manualColorIDs, [&](const std::string &id) { return !valid.contains(id); });
    if (removed > 0)
        publish(ModelProperty::liveTabColors);
}

const AppMetadata &AppModel::appMetadata(const platform::Application &application)
{
    KnownApplication &known = knownApplications[application.pid];
    if (!known.metadata) {
        auto icon = platform.applications.icon(application.pid);
        if (!icon)
            icon = platform.icons.symbol("app");
        KORVANE_ASSERT(icon, "the symbol \"app\" is missing");
        known.metadata = AppMetadata{application.localizedName.value_or("Application"), application.bundleIdentifier,
                                     std::move(icon)};
    }
    return *known.metadata;
}

bool AppModel::isBlacklisted(std::string_view name) const
{
    return nameFilter.matches(settings().blacklist, name);
}

void AppModel::addToBlacklist(std::string_view name)
{
    if (nameFilter.add(store.edit().blacklist, name))
        saveBlacklist();
}

void AppModel::removeFromBlacklist(std::string_view name)
{
    nameFilter.remove(store.edit().blacklist, name);
    saveBlacklist();
}

void AppModel::saveBlacklist()
{
    nameFilter.sort(store.edit().blacklist);
    store.save(&V::blacklist);
    for (auto &[pid, known] : knownApplications)
        known.filtered = false;
    publish(&V::blacklist);
    refresh();
}

}  // namespace korvane
