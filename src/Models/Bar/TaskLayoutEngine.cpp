#include "Models/Bar/TaskLayoutEngine.h"

#include "Models/Bar/LayoutMetrics.h"
#include "Models/Base/Assert.h"

#include <algorithm>
#include <numeric>

namespace korvane::TaskLayoutEngine {
namespace {

double sum(Widths widths)
{
    return std::accumulate(widths.begin(), widths.end(), 0.0);
}

double gaps(std::size_t count)
{
    return count == 0 ? 0.0 : static_cast<double>(count - 1) * LayoutMetrics::buttonSpacing;
}

double minimumOf(MinimumWidths minimumWidths, std::size_t index)
{
    if (!minimumWidths)
        return minimumTabWidth;
    KORVANE_ASSERT(index < minimumWidths->size(), "fewer minimum widths than tasks");
    return (*minimumWidths)[index];
}

template <typename WidthAt> std::size_t packed(std::size_t size, double available, WidthAt widthAt)
{
    const double room = std::max(minimumTabWidth, available);
    double used = 0;
    std::size_t count = 0;
    while (count < size) {
        const double gap = count == 0 ? 0 : LayoutMetrics::buttonSpacing;
        const double next = used + gap + widthAt(count);
        if (count > 0 && !(next <= room))
            break;
        used = next;
        ++count;
    }
    return count;
}

std::size_t packed(Widths widths, double available)
{
    return packed(widths.size(), available, [&](std::size_t i) { return widths[i]; });
}

// Takes `excess` out of the row. The tasks give width in the order of `rank`, largest first. The order is computed
// once, at the start. A task below its minimum is raised to the minimum, and the following tasks then give that much
// more.
template <typename Rank> void squeeze(std::vector<double> &row, MinimumWidths minimumWidths, double excess, Rank rank)
{
    std::vector<std::size_t> order(row.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::vector<double> ranks(row.size());
    for (std::size_t i = 0; i < row.size(); ++i)
        ranks[i] = rank(i);
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return ranks[a] > ranks[b]; });
    for (const std::size_t index : order) {
        if (!(excess > 0))
            break;
        const double step = std::min(excess, row[index] - minimumOf(minimumWidths, index));
        row[index] = row[index] - step;
        excess = excess - step;
    }
}

MainRow packedToMinimums(Widths widths, double available, MinimumWidths minimumWidths)
{
    const std::size_t count =
        packed(widths.size(), available, [&](std::size_t i) { return minimumOf(minimumWidths, i); });
    std::vector<double> row(widths.begin(), widths.begin() + static_cast<std::ptrdiff_t>(count));
    const double excess = std::max(0.0, sum(row) + gaps(count) - available);
    squeeze(row, minimumWidths, excess, [&](std::size_t i) { return row[i] - minimumOf(minimumWidths, i); });
    return {static_cast<int>(count), std::move(row)};
}

// Stacks the overflow rows above the bar. Each row's left edge limits the row above it, so that the stack never becomes
// wider towards the top.
std::vector<OverflowRow> stackRows(Widths widths, std::size_t lower, double screenWidth)
{
    std::vector<OverflowRow> rows;
    double leading = firstRowLimit;
    while (lower < widths.size()) {
        const auto remaining = widths.subspan(lower);
        const int rowNumber = static_cast<int>(rows.size());
        const double bufferWidth = std::max(0.0, firstRowBufferWidth - rowNumber * bufferReductionPerRow);
        const double rowBuffer = bufferWidth + LayoutMetrics::rowEndRoom;
        const double limit = leading;
        const double room = std::max(minimumTabWidth, screenWidth - limit - rowBuffer);
        const std::size_t count = std::max<std::size_t>(1, packed(remaining, room));
        const auto rowWidths = remaining.first(count);
        const double span = sum(rowWidths) + gaps(count) + rowBuffer;

        OverflowRow row;
        row.id = rowNumber + 1;
        row.lower = static_cast<int>(lower);
        row.count = static_cast<int>(count);
        row.leading = std::max(limit, screenWidth - span);
        row.widths.assign(rowWidths.begin(), rowWidths.end());
        row.height = rowHeight(rowNumber);
        row.bufferWidth = bufferWidth;
        leading = row.leading;
        lower += count;
        rows.push_back(std::move(row));
    }
    return rows;
}

TaskLayout assemble(std::vector<double> widths, MainRow main, double screenWidth)
{
    KORVANE_ASSERT(main.count >= 0 && static_cast<std::size_t>(main.count) <= widths.size(),
                   "the main row holds more tasks than there are");
    TaskLayout layout;
    layout.widths = std::move(widths);
    std::copy(main.widths.begin(), main.widths.end(), layout.widths.begin());
    layout.mainCount = main.count;
    layout.overflowRows = stackRows(layout.widths, static_cast<std::size_t>(main.count), screenWidth);
    return layout;
}

}  // namespace

double rowHeight(int rowNumber)
{
    return std::max(minimumRowHeight, firstRowHeight - rowNumber * rowHeightReduction);
}

int packedCount(Widths widths, double available)
{
    return static_cast<int>(packed(widths, available));
}

int mainCapacity(Widths widths, double available)
{
    return compressedMainRow(widths, available).count;
}

MainRow compressedMainRow(Widths widths, double available, MinimumWidths minimumWidths, bool packToMinimums)
{
    if (packToMinimums)
        return packedToMinimums(widths, available, minimumWidths);

    const std::size_t count = packed(widths, available);
    if (count >= widths.size())
        return {static_cast<int>(count), {widths.begin(), widths.end()}};

    std::vector<double> candidate(widths.begin(), widths.begin() + static_cast<std::ptrdiff_t>(count) + 1);
    const double excess = sum(candidate) + static_cast<double>(count) * LayoutMetrics::buttonSpacing - available;
    const double incoming = widths[count];
    double slack = 0;
    for (std::size_t i = 0; i < candidate.size(); ++i)
        slack += std::max(0.0, candidate[i] - minimumOf(minimumWidths, i));
    if (!(excess > 0 && excess <= incoming * 0.5 && excess <= slack)) {
        candidate.pop_back();
        return {static_cast<int>(count), std::move(candidate)};
    }
    squeeze(candidate, minimumWidths, excess, [&](std::size_t i) { return candidate[i]; });
    return {static_cast<int>(count) + 1, std::move(candidate)};
}

TaskLayout makeLayout(double screenWidth, double quicklyLaunchRightEdge, double mainTrailingControlsWidth,
                      Widths widths, MinimumWidths minimumWidths, bool packMainRowToMinimums)
{
    const double available = screenWidth - quicklyLaunchRightEdge - mainTrailingControlsWidth;
    return assemble({widths.begin(), widths.end()},
                    compressedMainRow(widths, available, minimumWidths, packMainRowToMinimums), screenWidth);
}

TaskLayout makeLockedLayout(double screenWidth, double quicklyLaunchRightEdge, double mainTrailingControlsWidth,
                            Widths mainWidths, Widths overflowWidths, MinimumWidths mainMinimumWidths,
                            bool packMainRowToMinimums)
{
    const double available = screenWidth - quicklyLaunchRightEdge - mainTrailingControlsWidth;
    std::vector<double> widths(mainWidths.begin(), mainWidths.end());
    widths.insert(widths.end(), overflowWidths.begin(), overflowWidths.end());
    return assemble(std::move(widths),
                    compressedMainRow(mainWidths, available, mainMinimumWidths, packMainRowToMinimums), screenWidth);
}

}  // namespace korvane::TaskLayoutEngine
