#include "Models/Bar/TaskbarPass.h"

#include "Models/Bar/LayoutMetrics.h"

#include <algorithm>
#include <cmath>

namespace korvane::TaskbarPass {
namespace {

bool holdsLockedWindow(const TaskbarEntry &entry, const std::set<std::string> &locked)
{
    if (entry.item && locked.contains(entry.item->id))
        return true;
    return entry.group
           && std::any_of(entry.group->windows.begin(), entry.group->windows.end(),
                          [&](const RunningAppItem &item) { return locked.contains(item.id); });
}

}  // namespace

TaskbarLayout run(const TaskbarPassInput &input, const MeasureText &measure)
{
    const SettingsValues &settings = input.settings;
    TaskbarLayout layout;
    layout.quicklyLaunchRightEdge =
        quicklyLaunchRightEdge(input.quicklyLaunchItemCount, settings.quicklyLaunchIconSize);
    layout.mainTrailingControlsWidth =
        mainTrailingControlsWidth(settings.mediaSliderDisplay, input.showsAttentionIndicator);

    std::vector<double> plainWidths;
    plainWidths.reserve(input.runningApps.size());
    for (const RunningAppItem &item : input.runningApps)
        plainWidths.push_back(tabWidth(measure(item.name), false));
    layout.capacity = TaskLayoutEngine::mainCapacity(plainWidths, input.width - layout.mainTrailingControlsWidth
                                                                      - layout.quicklyLaunchRightEdge);
    layout.groupAll = TaskGrouping::groupAll(settings.groupingMode, layout.capacity, input.runningApps.size());

    layout.entries = TaskGrouping::taskbarEntries(input.runningApps, settings, layout.groupAll);
    if (input.settingsTask)
        layout.entries.push_back(TaskbarEntry::ofItem(*input.settingsTask));
    layout.partitionMainCount = layout.entries.size();
    if (input.overflowReturnLocked) {
        const auto overflow =
            std::stable_partition(layout.entries.begin(), layout.entries.end(), [&](const TaskbarEntry &entry) {
                return holdsLockedWindow(entry, input.lockedMainWindowIDs);
            });
        layout.partitionMainCount = static_cast<std::size_t>(overflow - layout.entries.begin());
    }

    for (const TaskbarEntry &entry : layout.entries) {
        const auto byHand = input.taskWidthOverrides.find(entry.id);
        const bool overridden = byHand != input.taskWidthOverrides.end();
        const double wanted = overridden ? byHand->second : preferredTabWidth(entry, measure);
        layout.wantedWidths.push_back(wanted);
        layout.minimumWidths.push_back(minimumWidth(wanted, entry.group && entry.group->isCustom, overridden));
    }

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
    if (layout.overflowRows.empty() && settings.mediaSliderDisplay == MediaSliderDisplay::overflow) {
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
    return layout;
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
