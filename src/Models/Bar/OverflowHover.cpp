#include "Models/Bar/OverflowHover.h"

#include "Models/Bar/TaskLayoutEngine.h"

namespace korvane {

OverflowHover::OverflowHover(platform::MainLoop &loop, OverflowHoverActions owner, bool autoHideOverflow)
    : actions(std::move(owner)), delayed(loop), autoHide(autoHideOverflow)
{}

// Tells the owner whether the rows are open, but only when this has changed.
void OverflowHover::settle(bool wasOpen)
{
    if (overflowOpen() != wasOpen)
        actions.setTaskOverflowRowsVisible(autoHide && overflowOpen());
    actions.changed();
}

void OverflowHover::overflowHoverChanged(bool value, int rowID, std::optional<double> pointerX)
{
    if (!autoHide)
        return;
    if (!value) {
        enters.erase(rowID);
        leaves.insert(rowID);
        scheduleOverflowClose(rowID);
        return;
    }
    if (!pointerX || *pointerX < TaskLayoutEngine::firstRowLimit) {
        enters.erase(rowID);
        return;
    }
    leaves.erase(rowID);
    enters.insert(rowID);
    delayed.schedule(openDelay, [this, rowID] {
        if (!autoHide || enters.erase(rowID) == 0)
            return;
        const bool wasOpen = overflowOpen();
        hoveredRows.insert(rowID);
        settle(wasOpen);
    });
}

void OverflowHover::scheduleOverflowClose(int value)
{
    delayed.schedule(closeDelay, [this, value] {
        if (leaves.erase(value) == 0)
            return;
        const bool wasOpen = overflowOpen();
        hoveredRows.erase(value);
        settle(wasOpen);
    });
}

void OverflowHover::overflowArrowHoverChanged(bool value)
{
    const std::uint64_t token = ++arrowHoverToken;
    if (!value) {
        const bool wasOpen = overflowOpen();
        arrowHovered = false;
        settle(wasOpen);
        return;
    }
    delayed.schedule(arrowDelay, [this, token] {
        if (token != arrowHoverToken)
            return;
        const bool wasOpen = overflowOpen();
        arrowHovered = true;
        settle(wasOpen);
    });
}

void OverflowHover::toggleArrow(bool taskRowsExpanded)
{
    if (!autoHide) {
        actions.setTaskRowsExpanded(!taskRowsExpanded);
        return;
    }
    const bool wasOpen = overflowOpen();
    latchedOpen = !latchedOpen;
    settle(wasOpen);
}

void OverflowHover::revealForDrag()
{
    if (dragReveal)
        return;
    const bool wasOpen = overflowOpen();
    dragReveal = true;
    settle(wasOpen);
}

void OverflowHover::dragEnded()
{
    if (!dragReveal)
        return;
    const bool wasOpen = overflowOpen();
    dragReveal = false;
    settle(wasOpen);
}

void OverflowHover::setAutoHideOverflow(bool value)
{
    if (autoHide == value)
        return;
    autoHide = value;
    latchedOpen = false;
    hoveredRows.clear();
    enters.clear();
    leaves.clear();
    actions.setTaskOverflowRowsVisible(false);
    if (autoHide)
        actions.setTaskRowsExpanded(true);
    actions.changed();
}

}  // namespace korvane
