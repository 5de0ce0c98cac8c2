#include "Models/Base/Records.h"

#include <algorithm>
#include <utility>

namespace korvane {

bool isSameRecord(const RunningAppItem &left, const RunningAppItem &right)
{
    return showsTheSame(left, right) && left.processIdentifier == right.processIdentifier
           && left.windowIndex == right.windowIndex && left.icon == right.icon && left.appName == right.appName
           && left.bundleIdentifier == right.bundleIdentifier;
}

Pid RunningAppGroup::processIdentifier() const
{
    return windows.empty() ? 0 : windows.front().processIdentifier;
}

bool RunningAppGroup::isActive() const
{
    return std::any_of(windows.begin(), windows.end(), [](const RunningAppItem &item) { return item.isActive; });
}

std::string RunningAppGroup::displayName() const
{
    if (isCustom || windows.empty())
        return appName;
    return windows.size() == 1 ? windows.front().name : appName + " Tabs";
}

TaskbarEntry TaskbarEntry::ofItem(RunningAppItem item)
{
    TaskbarEntry entry;
    entry.id = item.id;
    entry.item = std::move(item);
    return entry;
}

TaskbarEntry TaskbarEntry::ofGroup(RunningAppGroup group)
{
    TaskbarEntry entry;
    entry.id = group.id;
    entry.group = std::move(group);
    return entry;
}

std::string TaskbarEntry::title() const
{
    if (group)
        return group->displayName();
    return item ? item->name : std::string();
}

}  // namespace korvane
