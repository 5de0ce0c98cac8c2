#include "Models/Tasks/TaskGrouping.h"

#include "Models/Base/Identifiers.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace korvane::TaskGrouping {
namespace {

// The custom group of each window. A membership counts only if its group has a name.
class ActiveMembership {
public:
    explicit ActiveMembership(const SettingsValues &values) : settings(values) {}

    // Null for a window in no custom group.
    const std::string *groupOf(const RunningAppItem &item) const
    {
        if (settings.customGroupMembers.empty())
            return nullptr;
        const auto member = settings.customGroupMembers.find(item.id);
        if (member == settings.customGroupMembers.end() || !settings.customGroupNames.contains(member->second))
            return nullptr;
        return &member->second;
    }

private:
    const SettingsValues &settings;
};

TaskbarEntry customGroupEntry(const std::string &key, std::vector<RunningAppItem> members,
                              const SettingsValues &settings)
{
    RunningAppGroup group;
    group.id = Identifiers::customGroup(key);
    const auto name = settings.customGroupNames.find(key);
    group.appName = name != settings.customGroupNames.end() ? name->second : std::string(newGroupName);
    group.icon = members.front().icon;
    group.windows = std::move(members);
    group.isCustom = true;
    const auto glyph = settings.customGroupIcons.find(key);
    group.customIconGlyph = glyph != settings.customGroupIcons.end() ? glyph->second : std::string(newGroupGlyph);
    return TaskbarEntry::ofGroup(std::move(group));
}

RunningAppGroup automaticGroupOf(const RunningAppItem &first)
{
    RunningAppGroup group;
    group.id = Identifiers::automaticGroup(first.processIdentifier);
    group.appName = first.appName;
    group.icon = first.icon;
    return group;
}

}  // namespace

std::vector<RunningAppGroup> runningAppGroups(Items items)
{
    std::vector<RunningAppGroup> groups;
    std::unordered_map<Pid, std::size_t> places;
    for (const RunningAppItem &item : items) {
        const auto [place, isNew] = places.try_emplace(item.processIdentifier, groups.size());
        if (isNew)
            groups.push_back(automaticGroupOf(item));
        groups[place->second].windows.push_back(item);
    }
    return groups;
}

std::vector<TaskbarEntry> taskbarEntries(Items items, const SettingsValues &settings, bool groupAll)
{
    const ActiveMembership membership(settings);
    const bool specific = settings.groupingMode == GroupingMode::specific;
    const auto isGrouped = [&](const RunningAppItem &item) {
        if (settings.forcedUngroupedWindows.contains(item.id))
            return false;
        return groupAll || (specific && shouldGroup(item.appName, settings));
    };

    // The name and the icon of an automatic group are those of the process's first window, even if that window is not
    // in the group.
    std::unordered_map<Pid, const RunningAppItem *> firstOfProcess;
    std::unordered_map<Pid, std::vector<RunningAppItem>> automaticMembers;
    std::unordered_map<std::string_view, std::vector<RunningAppItem>> customMembers;
    for (const RunningAppItem &item : items) {
        firstOfProcess.try_emplace(item.processIdentifier, &item);
        if (const std::string *key = membership.groupOf(item))
            customMembers[*key].push_back(item);
        else if (groupAll || specific)
            if (!settings.forcedUngroupedWindows.contains(item.id))
                automaticMembers[item.processIdentifier].push_back(item);
    }

    std::vector<TaskbarEntry> entries;
    entries.reserve(items.size());
    std::unordered_set<Pid> seenProcesses;
    for (const RunningAppItem &item : items) {
        if (const std::string *key = membership.groupOf(item)) {
            if (auto members = customMembers.find(*key); !members->second.empty())
                entries.push_back(customGroupEntry(*key, std::exchange(members->second, {}), settings));
        } else if (!isGrouped(item)) {
            entries.push_back(TaskbarEntry::ofItem(item));
        } else if (seenProcesses.insert(item.processIdentifier).second) {
            RunningAppGroup group = automaticGroupOf(*firstOfProcess.at(item.processIdentifier));
            group.windows = std::move(automaticMembers[item.processIdentifier]);
            if (!group.windows.empty())
                entries.push_back(TaskbarEntry::ofGroup(std::move(group)));
        }
    }
    return entries;
}

bool shouldGroup(std::string_view appName, const SettingsValues &settings)
{
    if (settings.groupingMode != GroupingMode::specific)
        return settings.groupingMode == GroupingMode::always;
    const auto &apps = settings.specificGroupingApps;
    const bool listed = std::find(apps.begin(), apps.end(), appName) != apps.end();
    return settings.specificGroupingPolicy == FilterPolicy::whitelist ? listed : !listed;
}

bool groupAll(const Choice<GroupingMode> &groupingMode, int capacity, std::size_t windowCount)
{
    return groupingMode == GroupingMode::always
           || (groupingMode == GroupingMode::asNeeded && static_cast<std::size_t>(std::max(0, capacity)) < windowCount);
}

std::string_view customGroupKey(std::string_view groupID)
{
    return groupID.starts_with(Identifiers::customGroupPrefix) ? groupID.substr(Identifiers::customGroupPrefix.size())
                                                               : std::string_view();
}

}  // namespace korvane::TaskGrouping
