// How windows, groups, drags and applications are named. Each scheme is a literal prefix followed by plain values. The
// prefix alone tells which scheme it is. Only whole identifiers are compared.
#pragma once

#include "Models/Base/Records.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace korvane::Identifiers {

inline constexpr std::string_view settingsTask = "korvane-settings";
inline constexpr std::string_view customGroupPrefix = "custom:";
inline constexpr std::string_view automaticGroupPrefix = "auto:";
inline constexpr std::string_view groupDragPrefix = "group::";
inline constexpr std::string_view groupWindowDragPrefix = "groupwindow::";

// "ax:" pid ":"
std::string accessibilityWindowPrefix(Pid pid);
// "identifier:" identifier ":hash:" hash, or "hash:" hash where the identifier is absent or empty.
std::string stableWindow(const std::optional<std::string> &identifier, std::uint64_t hash);
// "cg:" pid ":" number
std::string windowListWindow(Pid pid, std::int64_t number);
// "auto:" pid
std::string automaticGroup(Pid pid);
// "custom:" key
std::string customGroup(std::string_view groupKey);
// What a drag of a whole group carries: "group::" and the group's identifier.
std::string groupDrag(std::string_view groupID);
// The bundle identifier, or "pid:" and the process identifier where there is none.
std::string applicationMemoryKey(const std::optional<std::string> &bundleIdentifier, Pid pid);
inline std::string applicationMemoryKey(const RunningAppItem &item)
{
    return applicationMemoryKey(item.bundleIdentifier, item.processIdentifier);
}
// A fresh identifier in the standard text form of a UUID.
std::string makeUuid();

}  // namespace korvane::Identifiers
