// A task's width set by hand: the drag of its grip, and which widths set by hand are kept.
#pragma once

#include "Models/Base/Records.h"
#include "Models/Settings/SettingsTable.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>

namespace korvane {

// What a grip's drag asks of its owner.
struct TaskResizeActions {
    std::function<void()> beginResize;
    std::function<void(double width)> commitWidth;
    std::function<void()> endResize;
    std::function<void()> disarm;
};

// The drag of one grip. During the drag the button keeps its width. Only the grip moves and shows where the new edge
// will be.
class TaskResize {
public:
    explicit TaskResize(TaskResizeActions ownerActions) : actions(std::move(ownerActions)) {}

    // The pointer moved; the first call begins the drag at the width that the button has.
    void changed(double currentWidth, double horizontalTranslation);
    // Does nothing without a drag.
    void ended();
    // The grip disappeared during the drag: no width is set, but the list may change again.
    void cancelled();

    bool resizing() const { return isResizing; }
    double dragStartWidth() const { return startWidth; }
    double latestWidth() const { return latest; }
    double guideOffset() const { return guide; }
    // Where the grip's middle stands over a button of that width.
    double gripCentreX(double currentWidth) const { return currentWidth - gripInset + guide; }

private:
    static constexpr double gripInset = 5.5;

    TaskResizeActions actions;
    bool isResizing = false;
    double startWidth = 0, latest = 0, guide = 0;
};

namespace TaskWidthOverrides {

using Overrides = std::map<std::string, double>;  // entry id to width

// Drops the widths of entries that can't come back: closed windows, ended processes, groups without members.
void prune(Overrides &overrides, std::span<const RunningAppItem> tasks, const StringMap &customGroupMembers,
           const std::optional<std::string> &settingsTaskID);

}  // namespace TaskWidthOverrides
}  // namespace korvane
