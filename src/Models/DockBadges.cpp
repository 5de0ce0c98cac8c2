#include "Models/DockBadges.h"

#include <algorithm>

namespace korvane::DockBadges {
namespace {

using platform::AxStatus;
using platform::Element;
using platform::Value;

std::optional<std::string> axStringAttribute(platform::Accessibility &accessibility, const Element &element,
                                             std::string_view attribute)
{
    Value value;
    if (accessibility.copy(element, attribute, value) != AxStatus::success)
        return std::nullopt;
    auto *text = std::get_if<std::string>(&value);
    return text ? std::optional(std::move(*text)) : std::nullopt;
}

void collectDockBadges(platform::Platform &platform, const Element &element, BadgedNames &names, int depth)
{
    if (depth >= depthLimit)
        return;
    auto &accessibility = platform.accessibility;
    const auto title = axStringAttribute(accessibility, element, "AXTitle");
    const auto subrole = axStringAttribute(accessibility, element, "AXSubrole");
    const auto label = axStringAttribute(accessibility, element, "AXStatusLabel");
    if (subrole == "AXApplicationDockItem" && title && label && !platform.text.trimmed(*label).empty())
        names.insert(*title);
    Value children;
    if (accessibility.copy(element, "AXChildren", children) != AxStatus::success)
        return;
    if (const auto *list = std::get_if<std::vector<Element>>(&children))
        for (const Element &child : *list)
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
    const bool wanted = settings.attentionIndicatorPolicy == "whitelist";
    return std::any_of(attentionApps.begin(), attentionApps.end(), [&](const AttentionAppItem &app) {
        return (std::find(listed.begin(), listed.end(), app.name) != listed.end()) == wanted;
    });
}

}  // namespace korvane::DockBadges
