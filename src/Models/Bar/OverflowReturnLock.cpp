#include "Models/Bar/OverflowReturnLock.h"

#include "Models/Bar/TaskbarPass.h"

#include <algorithm>
#include <iterator>

namespace korvane {
namespace {

using WindowIDs = OverflowReturnLock::WindowIDs;

bool meets(const TaskbarEntry &entry, const WindowIDs &ids)
{
    return (entry.item && ids.contains(entry.item->id))
           || (entry.group
               && std::any_of(entry.group->windows.begin(), entry.group->windows.end(),
                              [&](const RunningAppItem &item) { return ids.contains(item.id); }));
}

void subtract(WindowIDs &from, const WindowIDs &ids)
{
    for (const std::string &id : ids)
        from.erase(id);
}

OverflowReturnLock::Entries leading(OverflowReturnLock::Entries entries, std::size_t count)
{
    return entries.first(std::min(count, entries.size()));
}

}  // namespace

void OverflowReturnLock::toggle(std::size_t currentMainCount, Entries entries)
{
    locked = !locked;
    mainIDs = locked ? TaskbarPass::windowIDs(leading(entries, currentMainCount)) : WindowIDs();
}

std::size_t OverflowReturnLock::partition(std::vector<TaskbarEntry> &entries, const WindowIDs &lockedMainWindowIDs)
{
    const auto others = std::stable_partition(
        entries.begin(), entries.end(), [&](const TaskbarEntry &entry) { return meets(entry, lockedMainWindowIDs); });
    return static_cast<std::size_t>(others - entries.begin());
}

std::pair<std::vector<TaskbarEntry>, std::vector<TaskbarEntry>>
OverflowReturnLock::partitionForLock(std::vector<TaskbarEntry> value) const
{
    const auto main = locked ? partition(value, mainIDs) : value.size();
    const auto others = value.begin() + static_cast<std::ptrdiff_t>(main);
    std::vector<TaskbarEntry> overflow(std::make_move_iterator(others), std::make_move_iterator(value.end()));
    value.erase(others, value.end());
    return {std::move(value), std::move(overflow)};
}

void OverflowReturnLock::ejectNonfittingLockedMainEntries(Entries entries, std::size_t mainCount)
{
    if (locked && mainCount < entries.size())
        subtract(mainIDs, TaskbarPass::windowIDs(entries.subspan(mainCount)));
}

void OverflowReturnLock::retainLockedMainGroupMembers(Entries entries)
{
    if (!locked)
        return;
    for (const TaskbarEntry &entry : entries)
        if (entry.group && meets(entry, mainIDs))
            mainIDs.merge(TaskbarPass::windowIDs({&entry, 1}));
}

void OverflowReturnLock::pruneLockedMainWindowIDs(const WindowIDs &liveIDs)
{
    if (locked)
        std::erase_if(mainIDs, [&](const std::string &id) { return !liveIDs.contains(id); });
}

void OverflowReturnLock::taskPositionSet(const WindowIDs &windowIDs, bool first, bool hasOverflow)
{
    if (!locked)
        return;
    if (first)
        mainIDs.insert(windowIDs.begin(), windowIDs.end());
    else if (hasOverflow)
        subtract(mainIDs, windowIDs);
}

void OverflowReturnLock::recordManualMainDrop()
{
    if (!locked)
        return;
    mainIDs.insert(draggedIDs.begin(), draggedIDs.end());
    draggedIDs.clear();
}

void OverflowReturnLock::recordManualOverflowDrop()
{
    if (locked)
        releaseDragged();
}

void OverflowReturnLock::recordOverflowRowEndDrop(bool wasEmpty, Entries entriesAtDrop, std::size_t mainCountAtDrop)
{
    if (wasEmpty && !locked) {
        locked = true;
        mainIDs = TaskbarPass::windowIDs(leading(entriesAtDrop, mainCountAtDrop));
    }
    releaseDragged();
}

// Releases the dragged windows from the main row. They do not belong to it any more.
void OverflowReturnLock::releaseDragged()
{
    if (locked)
        subtract(mainIDs, draggedIDs);
    draggedIDs.clear();
}

}  // namespace korvane
