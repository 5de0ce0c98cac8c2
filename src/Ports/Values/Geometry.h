// Lengths are points in double. The desktop's origin is bottom left, y upwards.
#pragma once

namespace korvane::platform {

struct Point {
    double x = 0, y = 0;
    friend bool operator==(const Point &, const Point &) = default;
};

struct Size {
    double width = 0, height = 0;
    friend bool operator==(const Size &, const Size &) = default;
};

struct Rect {
    double x = 0, y = 0, width = 0, height = 0;
    friend bool operator==(const Rect &, const Rect &) = default;

    // Half open: the minimum belongs to the rectangle, the maximum does not.
    bool contains(Point point) const
    {
        return point.x >= x && point.x < x + width && point.y >= y && point.y < y + height;
    }
    // Two rectangles intersect when they share an area.
    bool intersects(const Rect &other) const
    {
        return x < other.x + other.width && other.x < x + width && y < other.y + other.height && other.y < y + height;
    }
};

}  // namespace korvane::platform
