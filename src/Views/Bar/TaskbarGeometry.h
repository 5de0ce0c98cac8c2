// Where everything on a bar stands, worked out from a layout without a widget. Whole points; y grows downwards.
#pragma once

#include "Models/Bar/TaskbarPass.h"
#include "Models/Settings/SettingsTable.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>
#include <vector>

namespace korvane {

// One overflow row's card.
struct CardPlace {
    int rowID = 0;
    std::size_t lower = 0, count = 0;  // the row's entries
    double rowHeight = 0;              // of the whole card; a tucked card shows only the top of it
    bool tucked = false;
    QRect shown;       // in the view
    QRect hoverStrip;  // in the view: where the card is when tucked; only for a card that is or may be tucked
    QRect buffer;      // in the card: room for the controls
    QRect endCap;      // in the card
};

// One entry's button.
struct TabPlace {
    int rowID = mainRowID;
    QRect rectangle;  // in the main row or in the card
};

struct TaskbarGeometry {
    QRect mainRow;  // in the view
    // In the main row
    QRect tabs, endZone, mediaControls, divider, attention, arrow, clock, closeAll, hideAll;
    std::vector<CardPlace> cards;  // nearest the bar first
    std::vector<TabPlace> places;  // beside the layout's entries

    // Null for the main row.
    const CardPlace *card(int rowID) const;
    // In the view. The whole tab, even if only a part of it can be seen.
    QRect tabInView(std::size_t entry) const;
    // The overflow row whose card or hover strip lies under a point of the view.
    std::optional<int> overflowRowAt(const QPoint &point) const;
};

struct TaskbarGeometryInput {
    const TaskbarLayout &layout;
    const SettingsValues &settings;
    QSize viewSize;
    bool taskRowsExpanded = false;
    bool overflowOpen = false;
};

TaskbarGeometry taskbarGeometry(const TaskbarGeometryInput &input);

}  // namespace korvane
