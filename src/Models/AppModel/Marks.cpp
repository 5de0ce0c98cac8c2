// Colours, recents and the attention filter: what is remembered beside the windows themselves.
#include "Models/AppModel/AppModel.h"

#include <algorithm>

namespace korvane {

using V = SettingsValues;

// ---------------------------------------------------------------------------------------------------- badges

bool AppModel::shouldShowTaskbarAttentionIndicator() const
{
    return DockBadges::shouldShowIndicator(attention, settings());
}

void AppModel::addAttentionIndicatorApp(const std::string &name)
{
    auto &apps = store.edit().attentionIndicatorApps;
    if (name.empty() || std::find(apps.begin(), apps.end(), name) != apps.end())
        return;
    apps.push_back(name);
    std::sort(apps.begin(), apps.end());
    saveAppearanceSettings();
    publish(&V::attentionIndicatorApps);
}

void AppModel::removeAttentionIndicatorApp(const std::string &name)
{
    auto &apps = store.edit().attentionIndicatorApps;
    std::erase(apps, name);
    if (apps.empty())
        set(&V::attentionIndicatorPolicy, FilterPolicy::blacklist);
    saveAppearanceSettings();
    publish(&V::attentionIndicatorApps);
}

void AppModel::allowAllAttentionIndicatorApps()
{
    setAttentionIndicatorFilter(FilterPolicy::blacklist, {});
}

void AppModel::setAttentionIndicatorFilter(const Choice<FilterPolicy> &policy, std::vector<std::string> apps)
{
    std::sort(apps.begin(), apps.end());
    const bool empty = apps.empty();
    store.edit().attentionIndicatorApps = std::move(apps);
    set(&V::attentionIndicatorPolicy, empty ? FilterPolicy::blacklist : policy);
    saveAppearanceSettings();
    publish(&V::attentionIndicatorApps);
}

// ---------------------------------------------------------------------------------------------------- recency

void AppModel::recordRecent(const RunningAppItem &item)
{
    RecentWindows::record(store.edit().recentWindowIDs, item.id);
    publish(&V::recentWindowIDs);
    store.save(&V::recentWindowIDs);
}

std::vector<RunningAppItem> AppModel::recentWindows() const
{
    std::vector<RunningAppItem> recents;
    for (const std::string &id : settings().recentWindowIDs)
        if (const RunningAppItem *task = taskWithID(id))
            recents.push_back(*task);
    return recents;
}

void AppModel::clearRecents()
{
    store.edit().recentWindowIDs.clear();
    publish(&V::recentWindowIDs);
    store.forget(&V::recentWindowIDs);
}

// ---------------------------------------------------------------------------------------------------- colours

std::optional<std::string> AppModel::liveTabColorName(const std::string &id) const
{
    const auto color = liveColors.find(id);
    return color == liveColors.end() ? std::nullopt : std::optional(color->second);
}

void AppModel::setLiveTabColorName(const std::optional<std::string> &name, const std::string &id)
{
    const auto old = liveTabColorName(id);
    if (name) {
        liveColors[id] = *name;
        manualColorIDs.insert(id);
    } else {
        liveColors.erase(id);
        manualColorIDs.erase(id);
    }
    if (name != old)
        announceChange();
}

void AppModel::setDefaultAppColorName(const std::optional<std::string> &name, const std::string &bundleIdentifier,
                                      const std::vector<std::string> &liveIDs)
{
    auto &colors = store.edit().defaultAppColors;
    if (name)
        colors[bundleIdentifier] = *name;
    else
        colors.erase(bundleIdentifier);
    store.save(&V::defaultAppColors);
    for (const std::string &id : liveIDs)
        manualColorIDs.erase(id);
    manualRefreshAndRepaint();
}

void AppModel::manualRefreshAndRepaint()
{
    refresh(true, false);
    std::erase_if(liveColors, [this](const auto &color) { return !manualColorIDs.contains(color.first); });
    const auto colorByDefault = [this](const std::string &id, const std::optional<std::string> &bundleIdentifier) {
        if (manualColorIDs.contains(id) || !bundleIdentifier)
            return;
        const auto color = settings().defaultAppColors.find(*bundleIdentifier);
        if (color != settings().defaultAppColors.end())
            liveColors[id] = color->second;
    };
    for (const RunningAppItem &task : tasks)
        colorByDefault(task.id, task.bundleIdentifier);
    for (const RunningAppGroup &group : runningAppGroups())
        colorByDefault(group.id, group.windows.front().bundleIdentifier);
    regroupTaskbarForCurrentSettings();
}

}  // namespace korvane
