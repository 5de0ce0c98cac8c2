#include "Models/Bar/TaskResize.h"

#include "Models/Bar/TaskLayoutEngine.h"
#include "Models/Bar/TaskbarPass.h"
#include "Models/Base/Identifiers.h"

#include <algorithm>

namespace korvane {

void TaskResize::changed(double currentWidth, double horizontalTranslation)
{
    if (!isResizing) {
        isResizing = true;
        startWidth = currentWidth;
        latest = currentWidth;
        guide = 0;
        actions.beginResize();
    }
    latest = std::min(TaskbarPass::maximumTabWidth,
                      std::max(TaskLayoutEngine::minimumTabWidth, startWidth + horizontalTranslation));
    guide = latest - startWidth;
}

void TaskResize::ended()
{
    if (!isResizing)
        return;
    actions.commitWidth(latest);
    actions.endResize();
    isResizing = false;
    guide = 0;
    actions.disarm();
}

void TaskResize::cancelled()
{
    if (!isResizing)
        return;
    isResizing = false;
    guide = 0;
    actions.endResize();
}

namespace TaskWidthOverrides {

void prune(Overrides &overrides, std::span<const RunningAppItem> tasks, const StringMap &customGroupMembers,
           const std::optional<std::string> &settingsTaskID)
{
    if (overrides.empty())
        return;
    std::set<std::string> valid;
    for (const RunningAppItem &task : tasks) {
        valid.insert(task.id);
        valid.insert(Identifiers::automaticGroup(task.processIdentifier));
    }
    for (const auto &[id, key] : customGroupMembers)
        valid.insert(Identifiers::customGroup(key));
    if (settingsTaskID)
        valid.insert(*settingsTaskID);
    std::erase_if(overrides, [&](const auto &entry) { return !valid.contains(entry.first); });
}

}  // namespace TaskWidthOverrides
}  // namespace korvane
