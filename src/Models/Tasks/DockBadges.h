// Which applications show a badge, read from the dock's element tree, and which of them may raise the indicator.
#pragma once

#include "Models/Settings/SettingsTable.h"
#include "Ports/Platform.h"

#include <span>
#include <string>
#include <string_view>
#include <unordered_set>

namespace korvane {

using BadgedNames = std::unordered_set<std::string>;

namespace DockBadges {

// Elements at this depth and deeper are not looked at: application, lists and items are all that is needed.
inline constexpr int depthLimit = 5;

// The titles of the badged items. Empty without a dock or when it does not answer.
BadgedNames dockBadgedAppNames(platform::Platform &platform);
// The tool tip of the mark on the bar.
constexpr std::string_view attentionToolTip(std::size_t attentionCount)
{
    return attentionCount == 0 ? "No apps need attention" : "Notifications";
}
// Whether the attention list raises the mark on the bar, under the filter of the settings.
bool shouldShowIndicator(std::span<const AttentionAppItem> attentionApps, const SettingsValues &settings);

}  // namespace DockBadges
}  // namespace korvane
