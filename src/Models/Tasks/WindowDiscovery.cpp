#include "Models/Tasks/WindowDiscovery.h"

#include "Models/Base/Identifiers.h"
#include "Models/Tasks/ElementAttribute.h"

#include <algorithm>

namespace korvane {

using platform::Element;

namespace {

RunningAppItem itemOf(const platform::Application &application, const AppMetadata &metadata)
{
    RunningAppItem item;
    item.processIdentifier = application.pid;
    item.appName = metadata.name;
    item.icon = metadata.icon;
    item.bundleIdentifier = metadata.bundleIdentifier;
    return item;
}

}  // namespace

std::optional<std::vector<Element>> WindowDiscovery::windows(Pid pid) const
{
    auto &accessibility = platform.accessibility;
    return elementAttribute<std::vector<Element>>(accessibility, accessibility.application(pid), "AXWindows");
}

std::optional<std::string> WindowDiscovery::title(const Element &window) const
{
    const auto text = elementAttribute<std::string>(platform.accessibility, window, "AXTitle");
    if (!text)
        return std::nullopt;
    std::string trimmed = platform.text.trimmed(*text);
    return trimmed.empty() ? std::nullopt : std::optional(std::move(trimmed));
}

std::optional<std::string> WindowDiscovery::axIdentifier(const Element &window) const
{
    return elementAttribute<std::string>(platform.accessibility, window, "AXIdentifier");
}

std::string WindowDiscovery::stableWindowIdentifier(const Element &window) const
{
    return Identifiers::stableWindow(axIdentifier(window), platform.accessibility.hash(window));
}

bool WindowDiscovery::isMinimized(const Element &window) const
{
    return elementAttribute<bool>(platform.accessibility, window, "AXMinimized").value_or(false);
}

Element WindowDiscovery::resolveWindow(const RunningAppItem &item) const
{
    const auto elements = windows(item.processIdentifier);
    if (!elements || elements->empty())
        return nullptr;
    const std::string prefix = Identifiers::accessibilityWindowPrefix(item.processIdentifier);
    if (item.id.starts_with(prefix)) {
        const std::string_view wanted = std::string_view(item.id).substr(prefix.size());
        for (const Element &element : *elements)
            if (stableWindowIdentifier(element) == wanted)
                return element;
    }
    // The index alone is not enough: the order may have changed since the task was read.
    const auto index = static_cast<std::size_t>(std::max<std::int64_t>(0, item.windowIndex));
    if (item.windowIndex >= 0 && index < elements->size() && title((*elements)[index]) == item.name)
        return (*elements)[index];
    const auto titled = std::find_if(elements->begin(), elements->end(),
                                     [&](const Element &element) { return title(element) == item.name; });
    return titled == elements->end() ? nullptr : *titled;
}

std::vector<RunningAppItem> WindowDiscovery::accessibleWindowItems(const platform::Application &application,
                                                                   const AppMetadata &metadata, bool hasBadge) const
{
    auto &accessibility = platform.accessibility;
    const Element applicationElement = accessibility.application(application.pid);
    const auto elements = elementAttribute<std::vector<Element>>(accessibility, applicationElement, "AXWindows");
    if (!elements)
        return {};
    const auto focused = elementAttribute<Element>(accessibility, applicationElement, "AXFocusedWindow");
    const std::string prefix = Identifiers::accessibilityWindowPrefix(application.pid);

    std::vector<RunningAppItem> items;
    items.reserve(elements->size());
    for (const Element &element : *elements) {
        RunningAppItem item = itemOf(application, metadata);
        item.name = title(element).value_or(metadata.name);
        item.id = prefix + stableWindowIdentifier(element);
        item.windowIndex = static_cast<std::int64_t>(items.size());
        item.isActive = focused && application.active && accessibility.equal(*focused, element);
        item.hasNotificationBadge = hasBadge;
        items.push_back(std::move(item));
    }
    return items;
}

std::vector<RunningAppItem> WindowDiscovery::visibleWindowItems(const ApplicationList &applications,
                                                                const std::unordered_set<std::string> &badgedApps,
                                                                const MetadataOf &metadataOf) const
{
    const auto onScreen = platform.windowList.onScreen();
    if (!onScreen)
        return {};
    std::unordered_map<std::int64_t, const platform::Application *> owners;
    for (const platform::Application *application : applications)
        owners.try_emplace(application->pid, application);

    std::vector<RunningAppItem> items;
    std::unordered_map<std::int64_t, std::int64_t> perProcessCounts;
    for (const platform::OnScreenWindow &window : *onScreen) {
        if (window.layer != 0 || !window.ownerPid || !window.number)
            continue;
        const auto owner = owners.find(*window.ownerPid);
        if (owner == owners.end())
            continue;
        const platform::Application &application = *owner->second;
        const AppMetadata &metadata = metadataOf(application);
        RunningAppItem item = itemOf(application, metadata);
        item.windowIndex = perProcessCounts[*window.ownerPid]++;
        item.name = window.name ? platform.text.trimmed(*window.name) : std::string();
        if (item.name.empty())
            item.name = metadata.name;
        item.id = Identifiers::windowListWindow(application.pid, *window.number);
        item.isActive = application.active && item.windowIndex == 0;
        item.hasNotificationBadge = badgedApps.contains(metadata.name);
        items.push_back(std::move(item));
    }
    return items;
}

bool NameFilter::matches(const std::vector<std::string> &names, std::string_view name) const
{
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string &entry) { return text.caseInsensitive(entry, name) == 0; });
}

bool NameFilter::add(std::vector<std::string> &names, std::string_view name) const
{
    std::string trimmed = text.trimmed(name);
    if (trimmed.empty() || matches(names, trimmed))
        return false;
    names.push_back(std::move(trimmed));
    return true;
}

void NameFilter::remove(std::vector<std::string> &names, std::string_view name) const
{
    std::erase_if(names, [&](const std::string &entry) { return text.caseInsensitive(entry, name) == 0; });
}

void NameFilter::sort(std::vector<std::string> &names) const
{
    std::stable_sort(names.begin(), names.end(), [&](const std::string &left, const std::string &right) {
        return text.localizedCaseInsensitive(left, right) < 0;
    });
}

}  // namespace korvane
