#include "Models/Tasks/WindowMemory.h"

#include "Models/Base/Identifiers.h"

#include <algorithm>
#include <unordered_set>

namespace korvane {

WindowMemory::Changes WindowMemory::updatePreviousWindows(const std::vector<const RunningAppItem *> &items)
{
    Changes changes;
    std::unordered_set<std::string_view> currentIDs;
    currentIDs.reserve(items.size());
    const RunningAppItem *activeItem = nullptr;
    for (const RunningAppItem *item : items) {
        currentIDs.insert(item->id);
        if (item->isActive && !activeItem)
            activeItem = item;
    }

    const auto oldActive = activeStrip;
    if (activeItem && activeStrip != activeItem->id) {
        activeStrip = activeItem->id;
        changes.activeStrip = true;
    }
    if (activeStrip && !currentIDs.contains(*activeStrip)) {
        activeStrip.reset();
        changes.activeStrip = true;
    }

    const auto isGone = [&](const auto &entry) { return !currentIDs.contains(entry.second); };
    std::erase_if(activeWindows, isGone);
    WindowByApplication previous = previousWindows;
    std::erase_if(previous, isGone);

    // The window that lost the focus becomes the previous window of its application.
    if (activeItem && oldActive && *oldActive != activeItem->id) {
        const auto lost = std::find_if(activeWindows.begin(), activeWindows.end(),
                                       [&](const auto &entry) { return entry.second == *oldActive; });
        if (lost != activeWindows.end())
            previous[lost->first] = *oldActive;
    }
    for (const RunningAppItem *item : items) {
        if (!item->isActive)
            continue;
        const std::string key = Identifiers::applicationMemoryKey(*item);
        const auto old = activeWindows.find(key);
        if (old == activeWindows.end())
            previous.erase(key);
        else if (old->second != item->id)
            previous[key] = old->second;
        activeWindows[key] = item->id;
    }
    if (previous != previousWindows) {
        previousWindows = std::move(previous);
        changes.previousWindows = true;
    }
    return changes;
}

bool WindowMemory::isPreviousWindow(const RunningAppItem &item) const
{
    if (item.isActive || previousWindows.empty())
        return false;
    const auto previous = previousWindows.find(Identifiers::applicationMemoryKey(item));
    return previous != previousWindows.end() && previous->second == item.id;
}

bool WindowMemory::isActiveBlueStripWindow(const RunningAppItem &item) const
{
    return item.isActive || activeStrip == item.id;
}

namespace RecentWindows {

void record(std::vector<std::string> &recents, const std::string &id)
{
    recordNew(recents, {id});
}

void recordNew(std::vector<std::string> &recents, const std::vector<std::string> &newIDs)
{
    const std::unordered_set<std::string_view> isNew(newIDs.begin(), newIDs.end());
    std::erase_if(recents, [&](const std::string &id) { return isNew.contains(id); });
    recents.insert(recents.begin(), newIDs.begin(), newIDs.end());
    if (recents.size() > limit)
        recents.resize(limit);
}

}  // namespace RecentWindows
}  // namespace korvane
