// Remembers which window shows the active strip, and which window of each application was active before the present
// one.
#pragma once

#include "Models/Base/Records.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

class WindowMemory {
public:
    using WindowByApplication = std::map<std::string, std::string>;  // application memory key to task id

    struct Changes {
        bool activeStrip = false, previousWindows = false;
    };

    // Updates the memory from the list of a refresh, before the list is published. A second call with the same list
    // changes nothing.
    Changes updatePreviousWindows(const std::vector<const RunningAppItem *> &items);

    // Whether the task was active in its application before the present one. Always false for an active task.
    bool isPreviousWindow(const RunningAppItem &item) const;
    // Whether the task shows the active strip, also while this program or a windowless application has the focus.
    bool isActiveBlueStripWindow(const RunningAppItem &item) const;

    const std::optional<std::string> &activeBlueStripWindowID() const { return activeStrip; }
    const WindowByApplication &activeWindowIDsByApplication() const { return activeWindows; }
    const WindowByApplication &previousWindowIDsByApplication() const { return previousWindows; }

private:
    std::optional<std::string> activeStrip;
    WindowByApplication activeWindows, previousWindows;
};

namespace RecentWindows {

inline constexpr std::size_t limit = 8;

// Moves the task to the front. If there are more than eight, the oldest are removed.
void record(std::vector<std::string> &recents, const std::string &id);
// Adds new windows at the front as a block, in their order.
void recordNew(std::vector<std::string> &recents, const std::vector<std::string> &newIDs);

}  // namespace RecentWindows
}  // namespace korvane
