// How tall a panel has to be for the rows it holds. Points.
#pragma once

namespace korvane {

struct GeometryKey {
    int overflowCount = 0;  // rows above the main row
    double tuck = 0, overlap = 0;
    bool autoHideOverflow = true, rowsExpanded = false;
    friend bool operator==(const GeometryKey &, const GeometryKey &) = default;
};

struct OverflowGeometry {
    double collapsedHeight = 0;  // with the rows tucked away
    double normalHeight = 0;     // with room for all that the bar may show
    friend bool operator==(const OverflowGeometry &, const OverflowGeometry &) = default;
};

namespace PanelGeometry {

// The room above the top row for the strip that opens tucked rows under the pointer.
inline constexpr double hoverStripRoom = 20;

OverflowGeometry overflowGeometry(const GeometryKey &key);
// The height that an overflow row's card shows: all of it when open, the top strip when tucked.
double shownHeight(double rowHeight, double tuck, bool autoHideOverflow, bool rowsExpanded, bool overflowOpen);

}  // namespace PanelGeometry
}  // namespace korvane
