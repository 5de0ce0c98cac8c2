#include "Models/Bar/TaskbarPass.h"

#include "Models/Bar/LayoutMetrics.h"
#include "Models/Bar/OverflowReturnLock.h"

#include <algorithm>
#include <cmath>

namespace korvane::TaskbarPass {
namespace {

void measureRoom(TaskbarLayout &layout, const TaskbarPassInput &input)
{
    layout.quicklyLaunchRightEdge =
        quicklyLaunchRightEdge(input.quicklyLaunchItemCount, input.settings.quicklyLaunchIconSize);
    layout.mainTrailingControlsWidth =
        mainTrailingControlsWidth(input.settings.mediaSliderDisplay, input.showsAttentionIndicator);
    layout.capacity = TaskLayoutEngine::mainCapacity(layout.plainWidths, input.width - layout.mainTrailingControlsWidth
                                                                             - layout.quicklyLaunchRightEdge);
}

bool groupsAll(const TaskbarLayout &layout, const TaskbarPassInput &input)
{
    return TaskGrouping::groupAll(input.settings.groupingMode, layout.capacity, input.runningApps.size());
}

void measureEntry(TaskbarLayout &layout, std::size_t index, const TaskbarPassInput &input, const MeasureText &measure)
{
    const TaskbarEntry &entry = layout.entries[index];
    const auto byHand = input.taskWidthOverrides.find(entry.id);
    const bool overridden = byHand != input.taskWidthOverrides.end();
    const double wanted = overridden ? byHand->second : preferredTabWidth(entry, measure);
    layout.wantedWidths[index] = wanted;
    layout.minimumWidths[index] = minimumWidth(wanted, entry.group && entry.group->isCustom, overridden);
}

// Returns the place of the entry that holds the task, alone or in a group; absent when no entry holds it.
std::optional<std::size_t> replaceTask(std::vector<TaskbarEntry> &entries, const RunningAppItem &task)
{
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].item && entries[i].item->id == task.id) {
            entries[i].item = task;
            return i;
        }
        if (!entries[i].group)
            continue;
        auto &windows = entries[i].group->windows;
        const auto window = std::ranges::find(windows, task.id, &RunningAppItem::id);
        if (window != windows.end()) {
            *window = task;
            return i;
        }
    }
    return std::nullopt;
}

void layOut(TaskbarLayout &layout, const TaskbarPassInput &input)
{
    TaskLayout tasks;
    if (input.overflowReturnLocked) {
        const std::span<const double> wanted(layout.wantedWidths);
        const std::vector<double> mainMinimums(layout.minimumWidths.begin(),
                                               layout.minimumWidths.begin()
                                                   + static_cast<std::ptrdiff_t>(layout.partitionMainCount));
        tasks = TaskLayoutEngine::makeLockedLayout(
            input.width, layout.quicklyLaunchRightEdge, layout.mainTrailingControlsWidth,
            wanted.first(layout.partitionMainCount), wanted.subspan(layout.partitionMainCount), &mainMinimums);
    } else {
        tasks =
            TaskLayoutEngine::makeLayout(input.width, layout.quicklyLaunchRightEdge, layout.mainTrailingControlsWidth,
                                         layout.wantedWidths, &layout.minimumWidths);
    }
    layout.widths = std::move(tasks.widths);
    layout.mainCount = static_cast<std::size_t>(tasks.mainCount);
    layout.overflowRows = std::move(tasks.overflowRows);
    if (layout.overflowRows.empty() && input.settings.mediaSliderDisplay == MediaSliderDisplay::overflow) {
        OverflowRow controls;
        controls.id = 1;
        controls.lower = tasks.mainCount;
        controls.leading = std::max(TaskLayoutEngine::firstRowLimit, input.width - LayoutMetrics::controlsRowWidth);
        controls.height = TaskLayoutEngine::firstRowHeight;
        controls.bufferWidth = LayoutMetrics::controlsRowBufferWidth;
        layout.overflowRows.push_back(std::move(controls));
    }
    layout.hasOverflow = !layout.overflowRows.empty();
    layout.rowCount = static_cast<int>(layout.overflowRows.size()) + 1;
}

}  // namespace

TaskbarLayout run(const TaskbarPassInput &input, const MeasureText &measure)
{
    TaskbarLayout layout;
    layout.plainWidths.reserve(input.runningApps.size());
    for (const RunningAppItem &item : input.runningApps)
        layout.plainWidths.push_back(tabWidth(measure(item.name), false));
    measureRoom(layout, input);
    layout.groupAll = groupsAll(layout, input);

    layout.entries = TaskGrouping::taskbarEntries(input.runningApps, input.settings, layout.groupAll);
    if (input.settingsTask)
        layout.entries.push_back(TaskbarEntry::ofItem(*input.settingsTask));
    layout.partitionMainCount = input.overflowReturnLocked
                                    ? OverflowReturnLock::partition(layout.entries, input.lockedMainWindowIDs)
                                    : layout.entries.size();

    layout.wantedWidths.resize(layout.entries.size());
    layout.minimumWidths.resize(layout.entries.size());
    for (std::size_t i = 0; i < layout.entries.size(); ++i)
        measureEntry(layout, i, input, measure);
    layOut(layout, input);
    return layout;
}

std::optional<std::vector<std::size_t>> rerun(TaskbarLayout &layout, const TaskbarPassInput &input,
                                              const std::vector<std::size_t> &changedTasks, const MeasureText &measure)
{
    if (layout.plainWidths.size() != input.runningApps.size())
        return std::nullopt;
    for (const std::size_t task : changedTasks)
        layout.plainWidths[task] = tabWidth(measure(input.runningApps[task].name), false);
    measureRoom(layout, input);
    if (layout.groupAll != groupsAll(layout, input))
        return std::nullopt;
    std::vector<std::size_t> changedEntries;
    for (const std::size_t task : changedTasks) {
        const auto entry = replaceTask(layout.entries, input.runningApps[task]);
        if (!entry)
            return std::nullopt;
        changedEntries.push_back(*entry);
        measureEntry(layout, *entry, input, measure);
    }
    layOut(layout, input);
    return changedEntries;
}

double tabWidth(double measuredTextWidth, bool grouped)
{
    return std::min(maximumTabWidth, std::max(TaskLayoutEngine::minimumTabWidth,
                                              std::ceil(measuredTextWidth) + LayoutMetrics::besideTitle
                                                  + (grouped ? LayoutMetrics::groupRoom : 0)));
}

double preferredTabWidth(double measuredTextWidth, bool grouped, bool custom)
{
    const double width = tabWidth(measuredTextWidth, grouped);
    return custom ? std::min(maximumTabWidth, width + LayoutMetrics::customGroupRoom) : width;
}

double preferredTabWidth(const TaskbarEntry &entry, const MeasureText &measure)
{
    return preferredTabWidth(measure(entry.title()), entry.isGrouped(), entry.group && entry.group->isCustom);
}

double minimumWidth(double wantedWidth, bool custom, bool overridden)
{
    return overridden || custom ? wantedWidth : TaskLayoutEngine::minimumTabWidth;
}

double quicklyLaunchRightEdge(std::size_t itemCount, double iconSize)
{
    return static_cast<double>(itemCount) * (iconSize + LayoutMetrics::launcherSpacing)
           + LayoutMetrics::launchersPadding + LayoutMetrics::startButtonWidth;
}

double mainTrailingControlsWidth(const Choice<MediaSliderDisplay> &mediaSliderDisplay, bool showsAttentionIndicator)
{
    if (mediaSliderDisplay != MediaSliderDisplay::taskbar)
        return LayoutMetrics::trailingControlsWidth;
    return LayoutMetrics::trailingControlsWidth + LayoutMetrics::mediaControlsRoom
           + (showsAttentionIndicator ? LayoutMetrics::attentionMarkRoom : 0);
}

double overflowCardWidth(const OverflowRow &row)
{
    double width = 0;
    for (const double task : row.widths)
        width += task;
    return width + LayoutMetrics::buttonSpacing * std::max(0, row.count - 1) + row.bufferWidth
           + LayoutMetrics::rowEndRoom;
}

std::set<std::string> windowIDs(std::span<const TaskbarEntry> entries)
{
    std::set<std::string> ids;
    for (const TaskbarEntry &entry : entries) {
        if (entry.item)
            ids.insert(entry.item->id);
        if (entry.group)
            for (const RunningAppItem &item : entry.group->windows)
                ids.insert(item.id);
    }
    return ids;
}

}  // namespace korvane::TaskbarPass
