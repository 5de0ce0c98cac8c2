// What can be observed of a model, part by part.
#include "tests/vectors/driver/DesktopJson.h"
#include "tests/vectors/driver/RecordJson.h"
#include "tests/vectors/driver/Scenario.h"

#include <algorithm>

namespace korvane::vectors {
namespace {

using V = SettingsValues;

template <typename T> Json sorted(std::vector<T> values)
{
    std::sort(values.begin(), values.end());
    return values;
}

template <typename Predicate> Json idsWhere(Scenario &scenario, Predicate predicate)
{
    Json ids = Json::array();
    for (const RunningAppItem &item : scenario.model().runningApps())
        if (predicate(item))
            ids.push_back(item.id);
    return ids;
}

Json entries(Scenario &scenario, bool groupAll)
{
    Json list = Json::array();
    for (const TaskbarEntry &entry : scenario.model().taskbarEntries(groupAll)) {
        Json ids = Json::array({entry.id});
        if (entry.group)
            for (const RunningAppItem &window : entry.group->windows)
                ids.push_back(window.id);
        list.push_back(ids);
    }
    return list;
}

Json refreshTimer(Scenario &scenario)
{
    const auto inspection = scenario.model().inspect();
    if (!inspection.refreshTimerInterval)
        return Json();
    return {{"interval", *inspection.refreshTimerInterval}, {"tolerance", *inspection.refreshTimerTolerance}};
}

Json properties(Scenario &scenario)
{
    Json all = Json::object();
    for (const Setting &setting : settingsTable())
        all[std::string(setting.property)] = settingJson(scenario.model().settings(), setting);
    return all;
}

Json wholeStore(Scenario &scenario)
{
    Json all = Json::object();
    for (const auto &[key, value] : scenario.desktop().defaults.all()) {
        all[key] = jsonOf(value);
        if (key == "forcedUngroupedWindows" && all[key].contains("array"))
            std::sort(all[key]["array"].begin(), all[key]["array"].end());
    }
    return all;
}

Json quicklyLaunchStore(Scenario &scenario)
{
    Json stored = Json::object();
    for (const Setting &setting : settingsTable()) {
        const auto &all = scenario.desktop().defaults.all();
        if (const auto found = all.find(setting.key);
            setting.group == SettingGroup::quicklyLaunch && found != all.end())
            stored[found->first] = jsonOf(found->second);
    }
    return stored;
}

Json storedFavorites(Scenario &scenario)
{
    const auto &all = scenario.desktop().defaults.all();
    const auto found = all.find("startFavorites");
    return found == all.end() ? Json() : jsonOf(found->second);
}

StateParts makeStateParts()
{
    StateParts parts{
        {"runningApps",
         [](Scenario &s) {
             const auto &tasks = s.model().runningApps();
             return s.namesTasksOnly() ? idsOf(tasks) : jsonOfList(tasks);
         }},
        {"attentionApps", [](Scenario &s) { return jsonOfList(s.model().attentionApps()); }},
        {"accessibilityTrusted", [](Scenario &s) { return Json(s.model().accessibilityTrusted()); }},
        {"systemIsInactive", [](Scenario &s) { return Json(s.model().systemIsInactive()); }},
        {"inactiveReasons", [](Scenario &s) { return sorted(s.model().inspect().inactiveReasons); }},
        {"taskbarIsHidden", [](Scenario &s) { return Json(s.model().inspect().taskbarIsHidden); }},
        {"deferredWorkspaceRefresh", [](Scenario &s) { return Json(s.model().inspect().deferredWorkspaceRefresh); }},
        {"taskResizeSuspended", [](Scenario &s) { return Json(s.model().inspect().taskResizeSuspended); }},
        {"refreshTimer", refreshTimer},
        {"initialWindowListReady", [](Scenario &s) { return Json(s.model().inspect().initialWindowListReady); }},
        {"hasCompletedInitialRefresh",
         [](Scenario &s) { return Json(s.model().inspect().hasCompletedInitialRefresh); }},
        {"cachedBadgedApps", [](Scenario &s) { return sorted(s.model().inspect().cachedBadgedApps); }},
        {"appMetadataCache", [](Scenario &s) { return sorted(s.model().inspect().appMetadataCache); }},
        {"liveTabColors", [](Scenario &s) { return Json(s.model().liveTabColors()); }},
        {"manualLiveColorIDs", [](Scenario &s) { return Json(s.model().manualLiveColorIDs()); }},
        {"activeBlueStripWindowID",
         [](Scenario &s) { return optionalJson(s.model().windowMemory().activeBlueStripWindowID()); }},
        {"activeWindowIDsByApplication",
         [](Scenario &s) { return Json(s.model().windowMemory().activeWindowIDsByApplication()); }},
        {"previousWindowIDsByApplication",
         [](Scenario &s) { return Json(s.model().windowMemory().previousWindowIDsByApplication()); }},
        {"recentWindows", [](Scenario &s) { return idsOf(s.model().recentWindows()); }},
        {"settingsTaskItem",
         [](Scenario &s) {
             const auto item = s.model().settingsTaskItem();
             return item ? jsonOf(*item) : Json();
         }},
        {"shouldShowTaskbarAttentionIndicator",
         [](Scenario &s) { return Json(s.model().shouldShowTaskbarAttentionIndicator()); }},
        {"previousWindows",
         [](Scenario &s) {
             return idsWhere(s, [&](const RunningAppItem &item) { return s.model().isPreviousWindow(item); });
         }},
        {"activeStripWindows",
         [](Scenario &s) {
             return idsWhere(s, [&](const RunningAppItem &item) { return s.model().isActiveBlueStripWindow(item); });
         }},
        {"entries", [](Scenario &s) { return entries(s, false); }},
        {"entriesGroupAll", [](Scenario &s) { return entries(s, true); }},
        {"dockScanCount", [](Scenario &s) { return Json(s.desktop().applications.dockQueries()); }},
        {"properties", properties},
        {"store", wholeStore},
        {"stored", quicklyLaunchStore},
        {"stored startFavorites", storedFavorites},
    };
    // Every setting is a part of its own name too.
    for (const Setting &setting : settingsTable())
        parts.emplace(std::string(setting.property),
                      [&setting](Scenario &s) { return settingJson(s.model().settings(), setting); });
    return parts;
}

}  // namespace

const StateParts &stateParts()
{
    static const StateParts parts = makeStateParts();
    return parts;
}

}  // namespace korvane::vectors
