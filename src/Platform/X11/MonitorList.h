// The monitors in the server's list, and the two coordinate systems that are made from their pixels.
#pragma once

#include "Platform/X11/Connection.h"
#include "Ports/Screens.h"
#include "Ports/Values/Geometry.h"

#include <cstdint>
#include <vector>

namespace korvane::platform::x11 {

struct Monitor {
    std::uint32_t name = 0;  // an atom, so it is the same whenever a monitor with that name comes back
    int x = 0, y = 0, width = 0, height = 0;
    bool primary = false;
    friend bool operator==(const Monitor &, const Monitor &) = default;

    bool contains(int px, int py) const { return px >= x && px < x + width && py >= y && py < y + height; }
};

// The primary monitor comes first, the others in the server's order. Monitors without an area are left out.
std::vector<Monitor> readMonitors(Connection &connection);
std::vector<Monitor> arranged(std::vector<Monitor> monitors);

// Converts pixels of the device to points. Both systems start at a corner of the first monitor. The desktop's system
// starts at the bottom left with y upwards, the displays' system at the top left with y downwards.
class DesktopSpace {
public:
    DesktopSpace(const std::vector<Monitor> &monitors, double scale);

    Screen screen(const Monitor &monitor) const;
    Rect displayBounds(const Monitor &monitor) const;
    // The lower left corner of the pixel, so that even a pixel at the edge lies in the frame of its screen.
    Point location(int x, int y) const;
    // The pixel at a place in display coordinates, as x and y.
    std::pair<int, int> pixel(Point display) const;

private:
    Monitor first;
    double scale;
};

}  // namespace korvane::platform::x11
