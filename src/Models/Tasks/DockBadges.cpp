#include "Models/Tasks/DockBadges.h"

#include "Models/Tasks/ElementAttribute.h"

#include <algorithm>

namespace korvane::DockBadges {
namespace {

using platform::Element;

void collectDockBadges(platform::Platform &platform, const Element &element, BadgedNames &names, int depth)
{
    if (depth >= depthLimit)
        return;
    auto &accessibility = platform.accessibility;
    const auto title = elementAttribute<std::string>(accessibility, element, "AXTitle");
    const auto subrole = elementAttribute<std::string>(accessibility, element, "AXSubrole");
    const auto label = elementAttribute<std::string>(accessibility, element, "AXStatusLabel");
    if (subrole == "AXApplicationDockItem" && title && label && !platform.text.trimmed(*label).empty())
        names.insert(*title);
    if (const auto children = elementAttribute<std::vector<Element>>(accessibility, element, "AXChildren"))
        for (const Element &child : *children)
            collectDockBadges(platform, child, names, depth + 1);
}

}  // namespace

BadgedNames dockBadgedAppNames(platform::Platform &platform)
{
    BadgedNames names;
    const auto docks = platform.applications.withBundleIdentifier("com.apple.dock");
    if (!docks.empty())
        collectDockBadges(platform, platform.accessibility.application(docks.front().pid), names, 0);
    return names;
}

bool shouldShowIndicator(std::span<const AttentionAppItem> attentionApps, const SettingsValues &settings)
{
    if (!settings.showAttentionApps)
        return false;
    const auto &listed = settings.attentionIndicatorApps;
    const bool wanted = settings.attentionIndicatorPolicy == FilterPolicy::whitelist;
    return std::any_of(attentionApps.begin(), attentionApps.end(), [&](const AttentionAppItem &app) {
        return (std::find(listed.begin(), listed.end(), app.name) != listed.end()) == wanted;
    });
}

}  // namespace korvane::DockBadges
