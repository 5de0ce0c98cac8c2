#include "Views/Bar/TaskbarGeometry.h"

#include "Models/Bar/PanelGeometry.h"
#include "Views/Kit/Metrics.h"

#include <algorithm>
#include <cmath>

namespace korvane {
namespace {

int rounded(double length)
{
    return static_cast<int>(std::lround(length));
}

// The edges are rounded, not the widths, so that the gaps between the tabs stay even.
QRect tabRectangle(double x, double width, double rowHeight)
{
    const int left = rounded(x), right = rounded(x + width);
    return {left, rounded((rowHeight - Metrics::buttonHeight) / 2), right - left, Metrics::buttonHeight};
}

// From the right edge leftwards: the small buttons, the clock, the attention column, the sliders' buttons.
void placeControls(TaskbarGeometry &geometry, bool mediaOnTaskbar)
{
    const int top = (Metrics::barHeight - Metrics::buttonHeight) / 2;
    int right = geometry.mainRow.width() - Metrics::barEndPadding;
    const auto take = [&](int width) {
        right -= width;
        return QRect(right, top, width, Metrics::buttonHeight);
    };
    const QRect windowButtons = take(Metrics::trayButtonWidth);
    geometry.closeAll = {windowButtons.topLeft(), QSize(windowButtons.width(), Metrics::smallButtonHeight)};
    geometry.hideAll = geometry.closeAll.translated(0, Metrics::smallButtonHeight);
    geometry.clock = take(Metrics::clockWidth);
    const QRect column = take(Metrics::trayButtonWidth);
    geometry.attention = {column.topLeft(), QSize(column.width(), Metrics::smallButtonHeight)};
    geometry.arrow = geometry.attention.translated(0, Metrics::smallButtonHeight);
    if (mediaOnTaskbar) {
        right -= Metrics::buttonSpacing;
        geometry.divider = {right - 1, Metrics::dividerPadding, 1,
                            geometry.mainRow.height() - 2 * Metrics::dividerPadding};
        right -= 1 + Metrics::buttonSpacing;
        geometry.mediaControls = take(2 * Metrics::trayButtonWidth);
    }
    geometry.tabs = {0, 0, std::max(0, right), geometry.mainRow.height()};
}

void placeMainTabs(TaskbarGeometry &geometry, const TaskbarLayout &layout)
{
    double x = layout.quicklyLaunchRightEdge;
    for (std::size_t i = 0; i < layout.mainCount; ++i) {
        geometry.places[i] = {mainRowID, tabRectangle(x, layout.widths[i], Metrics::barHeight)};
        x += layout.widths[i] + Metrics::buttonSpacing;
    }
    // All the free room behind the last tab, but never less than a narrow strip.
    const int left = rounded(layout.mainCount > 0 ? x - Metrics::buttonSpacing : x);
    const int right = std::max(left + Metrics::narrowestEndZone, geometry.tabs.right() + 1);
    geometry.endZone = {left, (Metrics::barHeight - Metrics::buttonHeight) / 2, right - left, Metrics::buttonHeight};
}

// The first task stands at the right end.
void placeOverflowTabs(TaskbarGeometry &geometry, const TaskbarLayout &layout, const OverflowRow &row)
{
    double right = Metrics::cardPadding + Metrics::buttonSpacing * std::max(0, row.count - 1);
    for (const double width : row.widths)
        right += width;
    for (int i = 0; i < row.count; ++i) {
        const auto index = static_cast<std::size_t>(row.lower + i);
        right -= layout.widths[index];
        geometry.places[index] = {row.id, tabRectangle(right, layout.widths[index], row.height)};
        right -= Metrics::buttonSpacing;
    }
}

}  // namespace

TaskbarGeometry taskbarGeometry(const TaskbarGeometryInput &input)
{
    const TaskbarLayout &layout = input.layout;
    const SettingsValues &settings = input.settings;
    TaskbarGeometry geometry;
    geometry.mainRow = {0, input.viewSize.height() - Metrics::barHeight, input.viewSize.width(), Metrics::barHeight};
    geometry.places.resize(layout.entries.size());
    placeControls(geometry, settings.mediaSliderDisplay == MediaSliderDisplay::taskbar);
    placeMainTabs(geometry, layout);

    // At least one point of each card shows above the row that lies over it.
    const auto above = [&](double top, double height) {
        return top - std::max(1.0, height - settings.overflowCardOverlapPixels);
    };
    double top = geometry.mainRow.top(), tuckedTop = top;
    for (const OverflowRow &row : layout.overflowRows) {
        const double height =
            PanelGeometry::shownHeight(row.height, settings.tuckAwayOverflowPixels, settings.autoHideOverflow,
                                       input.taskRowsExpanded, input.overflowOpen);
        const double tuckedHeight = std::min<double>(row.height, settings.tuckAwayOverflowPixels);
        top = above(top, height);
        tuckedTop = above(tuckedTop, tuckedHeight);
        const int width = rounded(TaskbarPass::overflowCardWidth(row)), rowHeight = rounded(row.height);
        CardPlace card;
        card.rowID = row.id;
        card.lower = static_cast<std::size_t>(row.lower);
        card.count = static_cast<std::size_t>(row.count);
        card.rowHeight = row.height;
        card.tucked = height < row.height;
        card.shown = {rounded(row.leading), rounded(top), width, rounded(height)};
        if (card.tucked || settings.autoHideOverflow)
            card.hoverStrip = {card.shown.left(), rounded(tuckedTop - PanelGeometry::hoverStripRoom), width,
                               rounded(settings.tuckAwayOverflowPixels + PanelGeometry::hoverStripRoom)};
        card.endCap = {width - Metrics::endCapWidth, (rowHeight - Metrics::endCapHeight) / 2, Metrics::endCapWidth,
                       Metrics::endCapHeight};
        const int bufferWidth = rounded(row.bufferWidth);
        card.buffer = {card.endCap.left() - bufferWidth, (rowHeight - Metrics::buttonHeight) / 2, bufferWidth,
                       Metrics::buttonHeight};
        geometry.cards.push_back(card);
        placeOverflowTabs(geometry, layout, row);
    }
    return geometry;
}

const CardPlace *TaskbarGeometry::card(int rowID) const
{
    const auto found =
        std::find_if(cards.begin(), cards.end(), [rowID](const CardPlace &card) { return card.rowID == rowID; });
    return found == cards.end() ? nullptr : &*found;
}

QRect TaskbarGeometry::tabInView(std::size_t entry) const
{
    const TabPlace &place = places.at(entry);
    const CardPlace *row = card(place.rowID);
    return place.rectangle.translated(row ? row->shown.topLeft() : mainRow.topLeft());
}

// Lower rows lie over higher ones, and every card lies over every strip. An open row keeps its strip. Otherwise the
// pointer could be above a low card, and the row would open and close again and again.
std::optional<int> TaskbarGeometry::overflowRowAt(const QPoint &point) const
{
    for (const CardPlace &card : cards)
        if (card.shown.contains(point))
            return card.rowID;
    if (mainRow.contains(point))
        return std::nullopt;
    for (const CardPlace &card : cards)
        if (card.hoverStrip.contains(point))
            return card.rowID;
    return std::nullopt;
}

}  // namespace korvane
