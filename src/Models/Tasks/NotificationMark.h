// The red mark on a task whose application shows a badge. The style in the settings decides its shape. In points from
// the button's top leading corner, y downwards.
#pragma once

#include "Models/Settings/Choices.h"
#include "Ports/Values/Geometry.h"

#include <algorithm>
#include <optional>

namespace korvane {

struct NotificationMark {
    enum class Shape { corner, circle, roundedRectangle, line };

    Shape shape = Shape::corner;
    double opacity = 0;                    // of red
    platform::Rect frame;                  // what is filled; for a line, the square that it crosses
    double cornerRadius = 0;               // of the corner's right angle, or of the rectangle
    double lineWidth = 0, lineLength = 0;  // the line runs from (0, length) to (length, 0)
    double boxWidth = 0, boxHeight = 0;    // the room of the mark, with the free space around it
};

namespace NotificationMarks {

inline constexpr double taskbarSize = 13;

// Absent when the style has no mark or is unknown.
inline std::optional<NotificationMark> ofStyle(const Choice<NotificationBadgeStyle> &style, double size)
{
    using Style = NotificationBadgeStyle;
    using Shape = NotificationMark::Shape;
    switch (style.value().value_or(Style::none)) {
    case Style::triangle:
        return NotificationMark{Shape::corner, 0.65, {0, 0, size, size}, std::min(6.0, size), 0, 0, size, size};
    case Style::dot:
        return NotificationMark{Shape::circle, 0.72, {0, 0, 7, 7}, 0, 0, 0, 11, 11};
    case Style::line:
        return NotificationMark{Shape::roundedRectangle, 0.72, {5, 1, 25, 4}, 2, 0, 0, 30, 5};
    case Style::stripe:
        return NotificationMark{Shape::line, 0.72, {0, 0, size, size}, 0, 4, std::min(10.0, size), size, size};
    case Style::none:
        break;
    }
    return std::nullopt;
}

}  // namespace NotificationMarks
}  // namespace korvane
