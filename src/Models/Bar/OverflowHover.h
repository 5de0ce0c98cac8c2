// Decides when the tucked overflow rows of one bar open and close: by a resting pointer, by the arrow button or by a
// drag. Timers are not cancelled. Instead, pending rows are kept in sets of row numbers, so that a timer that runs late
// finds nothing to do.
#pragma once

#include "Models/Base/DelayedTasks.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <set>

namespace korvane {

// What the machine tells its owner.
struct OverflowHoverActions {
    std::function<void(bool)> setTaskOverflowRowsVisible;
    std::function<void(bool)> setTaskRowsExpanded;
    std::function<void()> changed;  // a state that is drawn has changed
};

class OverflowHover {
public:
    using Rows = std::set<int>;

    static constexpr platform::Seconds openDelay{0.12}, closeDelay{0.4}, arrowDelay{0.6};

    OverflowHover(platform::MainLoop &loop, OverflowHoverActions actions, bool autoHideOverflow);

    // The pointer came to a row, or left it. `pointerX` counts from the left edge of its screen and is absent when the
    // pointer is on no screen. Over the start area a pointer opens nothing. Does nothing while the rows are not tucked
    // away.
    void overflowHoverChanged(bool value, int rowID, std::optional<double> pointerX);
    // A drag that rests on the arrow counts as well.
    void overflowArrowHoverChanged(bool value);
    // The arrow's click: pins tucked rows open, or collapses and expands rows that are not tucked away.
    void toggleArrow(bool taskRowsExpanded);
    // A drag is over the overflow area.
    void revealForDrag();
    void dragEnded();
    // The setting has another value: forgets everything that held rows open.
    void setAutoHideOverflow(bool value);

    bool autoHideOverflow() const { return autoHide; }
    bool overflowOpen() const { return latchedOpen || dragReveal || arrowHovered || !hoveredRows.empty(); }
    bool overflowLatchedOpen() const { return latchedOpen; }
    bool overflowDragReveal() const { return dragReveal; }
    bool overflowArrowHovered() const { return arrowHovered; }
    const Rows &hoveredOverflowRows() const { return hoveredRows; }
    const Rows &pendingHoverEnters() const { return enters; }
    const Rows &pendingHoverLeaves() const { return leaves; }

private:
    void scheduleOverflowClose(int value);
    void settle(bool wasOpen);

    OverflowHoverActions actions;
    DelayedTasks delayed;
    bool autoHide;
    bool latchedOpen = false, dragReveal = false, arrowHovered = false;
    std::uint64_t arrowHoverToken = 0;
    Rows hoveredRows, enters, leaves;
};

}  // namespace korvane
