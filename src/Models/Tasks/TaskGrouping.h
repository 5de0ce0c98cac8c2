// From the flat list of windows to what a row of the bar shows: single windows, automatic groups and custom groups.
// Nothing here is stored; a group always stands at the place of its earliest window.
#pragma once

#include "Models/Base/Records.h"
#include "Models/Settings/SettingsTable.h"

#include <span>
#include <string_view>
#include <vector>

namespace korvane {

using Items = std::span<const RunningAppItem>;

namespace TaskGrouping {

inline constexpr std::string_view newGroupName = "New Group";
inline constexpr std::string_view newGroupGlyph = "📁";

// One automatic group per process, in the order of each process's first window.
std::vector<RunningAppGroup> runningAppGroups(Items items);
// What the rows show. `groupAll` groups every application that is not exempt.
std::vector<TaskbarEntry> taskbarEntries(Items items, const SettingsValues &settings, bool groupAll);
// Whether the mode and the list of specific applications group the windows of that application.
bool shouldGroup(std::string_view appName, const SettingsValues &settings);
// Whether every application is to be grouped on a bar that has `windowCount` windows and whose main row has room for
// `capacity` plain windows.
bool groupAll(const Choice<GroupingMode> &groupingMode, int capacity, std::size_t windowCount);
// The group key of a custom group's identifier; empty for any other identifier.
std::string_view customGroupKey(std::string_view groupID);

}  // namespace TaskGrouping
}  // namespace korvane
