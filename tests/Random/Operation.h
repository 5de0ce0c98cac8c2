// One thing that happens on the desktop or that the user does, in a form that can be made up at random and made
// smaller.
#pragma once

#include <cstdint>
#include <ostream>

namespace korvane::testing {

enum class Act : std::uint8_t {
    // On the desktop
    launchApplication,
    endApplication,
    openWindow,
    closeWindow,
    retitleWindow,
    blankTitle,
    focusWindow,
    minimizeWindow,
    hideApplication,
    badgeApplication,
    loseAnswer,
    letTimePass,
    losePermission,
    gainPermission,
    // By the user
    activateTask,
    closeTask,
    closeGroup,
    closeAll,
    hideAll,
    quitApplication,
    createGroup,
    dropOntoGroup,
    groupTwoTasks,
    returnToParent,
    renameGroup,
    closeCustomGroup,
    moveToEnd,
    dropOnRow,
    dropAtRowEnd,
    colorTask,
    setDefaultColor,
    blacklistTask,
    changeGroupingMode,
    newWindowsFirst,
    hideBar,
    restoreDefaults,
    count,
};

// The numbers choose among what there is at that moment, so every operation has a meaning on every desktop.
struct Operation {
    Act act = Act::count;
    std::uint8_t first = 0, second = 0;
};

inline std::ostream &operator<<(std::ostream &stream, const Operation &operation)
{
    return stream << "{Act(" << static_cast<int>(operation.act) << "), " << static_cast<int>(operation.first) << ", "
                  << static_cast<int>(operation.second) << "}";
}

}  // namespace korvane::testing
