// One layout pass of a bar: from the tasks, the settings and the width of the screen to entries, widths and rows. Pure;
// text is measured by the caller's function.
#pragma once

#include "Models/Bar/TaskLayoutEngine.h"
#include "Models/Settings/SettingsTable.h"
#include "Models/Tasks/TaskGrouping.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace korvane {

// The width of a text in points, in the font of the tabs.
using MeasureText = std::function<double(std::string_view)>;

struct TaskbarPassInput {
    Items runningApps;
    std::optional<RunningAppItem> settingsTask;  // stands after all other entries
    const SettingsValues &settings;
    std::size_t quicklyLaunchItemCount = 0;
    double width = 0;  // of the view
    bool showsAttentionIndicator = false;
    std::map<std::string, double> taskWidthOverrides;  // entry id to a width set by hand
    bool overflowReturnLocked = false;
    std::set<std::string> lockedMainWindowIDs;
};

inline constexpr int mainRowID = 0;  // overflow rows count from 1

struct TaskbarLayout {
    double quicklyLaunchRightEdge = 0;
    double mainTrailingControlsWidth = 0;
    int capacity = 0;  // plain windows that the main row would hold
    bool groupAll = false;
    std::vector<double> plainWidths;    // of each task as a tab of its own
    std::vector<TaskbarEntry> entries;  // for display: main entries, then overflow entries
    std::size_t partitionMainCount = 0;
    std::vector<double> wantedWidths, minimumWidths, widths;
    std::size_t mainCount = 0;
    std::vector<OverflowRow> overflowRows;
    bool hasOverflow = false;
    int rowCount = 1;  // the main row included
};

namespace TaskbarPass {

inline constexpr double maximumTabWidth = 220;

TaskbarLayout run(const TaskbarPassInput &input, const MeasureText &measure);
// The same for an input that differs from the input of `layout` only in the records of the tasks at those places. Only
// these tasks are measured again. Returns the places of their entries. Absent when the entries themselves have changed;
// `layout` is then not usable any more.
std::optional<std::vector<std::size_t>> rerun(TaskbarLayout &layout, const TaskbarPassInput &input,
                                              const std::vector<std::size_t> &changedTasks, const MeasureText &measure);

double tabWidth(double measuredTextWidth, bool grouped);
double preferredTabWidth(const TaskbarEntry &entry, const MeasureText &measure);
double preferredTabWidth(double measuredTextWidth, bool grouped, bool custom);
// The smallest width that a tab may be squeezed to. A width set by hand and a custom group are never squeezed.
double minimumWidth(double wantedWidth, bool custom, bool overridden);
double quicklyLaunchRightEdge(std::size_t itemCount, double iconSize);
double mainTrailingControlsWidth(const Choice<MediaSliderDisplay> &mediaSliderDisplay, bool showsAttentionIndicator);
double overflowCardWidth(const OverflowRow &row);
// The union of the entries' own window and the windows of their groups.
std::set<std::string> windowIDs(std::span<const TaskbarEntry> entries);

}  // namespace TaskbarPass
}  // namespace korvane
