// A task moves back from an overflow row to the main row by itself when room appears there. This lock stops that: while
// it is on, the windows it names stay on the main row and all others stay off it.
#pragma once

#include "Models/Base/Records.h"

#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace korvane {

class OverflowReturnLock {
public:
    using Entries = std::span<const TaskbarEntry>;
    using WindowIDs = std::set<std::string>;

    bool overflowReturnLocked() const { return locked; }
    const WindowIDs &lockedMainWindowIDs() const { return mainIDs; }
    const WindowIDs &draggedWindowIDs() const { return draggedIDs; }

    // The button: locks what is on the main row now, or unlocks.
    void toggle(std::size_t currentMainCount, Entries entries);
    // Moves the entries that hold a locked window before all others, and returns their number. Each part keeps its
    // order.
    static std::size_t partition(std::vector<TaskbarEntry> &entries, const WindowIDs &lockedMainWindowIDs);
    // The same with the present state of the lock: returns what belongs to the main row, and what does not. When
    // unlocked, everything belongs to the main row.
    std::pair<std::vector<TaskbarEntry>, std::vector<TaskbarEntry>>
    partitionForLock(std::vector<TaskbarEntry> value) const;
    // What the layout pushed out of the main row stays out.
    void ejectNonfittingLockedMainEntries(Entries entries, std::size_t mainCount);
    // A window that joins a group on the main row belongs to the main row too.
    void retainLockedMainGroupMembers(Entries entries);
    // Forgets windows that are gone.
    void pruneLockedMainWindowIDs(const WindowIDs &liveIDs);
    // "Set First" brings windows to the main row. "Set Last" removes them from it when there is an overflow row.
    void taskPositionSet(const WindowIDs &windowIDs, bool first, bool hasOverflow);

    // The windows of the present drag; empty when it has ended.
    void setDraggedWindowIDs(WindowIDs ids) { draggedIDs = std::move(ids); }
    // A drop on a target of the main row, and a drop on a target of an overflow row. Both do nothing while unlocked.
    void recordManualMainDrop();
    void recordManualOverflowDrop();
    // A drop on an overflow row's end cap. On the empty row it turns the lock on, which keeps the task there.
    void recordOverflowRowEndDrop(bool wasEmpty, Entries entriesAtDrop, std::size_t mainCountAtDrop);

private:
    void releaseDragged();

    bool locked = false;
    WindowIDs mainIDs, draggedIDs;
};

}  // namespace korvane
