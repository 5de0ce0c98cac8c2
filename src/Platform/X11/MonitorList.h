// The monitors as the server lists them, and the two coordinate systems made of their pixels.
#pragma once

#include "Platform/X11/Connection.h"
#include "Ports/Screens.h"
#include "Ports/Values/Geometry.h"

#include <cstdint>
#include <vector>

namespace korvane::platform::x11 {

struct Monitor {
    std::uint32_t name = 0;  // an atom, so the same whenever a monitor of that name comes back
    int x = 0, y = 0, width = 0, height = 0;
    bool primary = false;
    friend bool operator==(const Monitor &, const Monitor &) = default;

    bool contains(int px, int py) const { return px >= x && px < x + width && py >= y && py < y + height; }
};

// The primary one first, the others as the server has them; those without an area are left out.
std::vector<Monitor> readMonitors(Connection &connection);
std::vector<Monitor> arranged(std::vector<Monitor> monitors);

// Pixels of the device to points. Both systems start at a corner of the first monitor: the desktop's at the bottom left
// with y upwards, the displays' at the top left with y downwards.
class DesktopSpace {
public:
    DesktopSpace(const std::vector<Monitor> &monitors, double scale);

    Screen screen(const Monitor &monitor) const;
    Rect displayBounds(const Monitor &monitor) const;
    // The pixel's lower left corner, so that it lies in the frame of its screen also at the edges.
    Point location(int x, int y) const;
    // The pixel at a place in display coordinates, as x and y.
    std::pair<int, int> pixel(Point display) const;

private:
    Monitor first;
    double scale;
};

}  // namespace korvane::platform::x11
