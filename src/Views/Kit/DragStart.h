// Tells when a press has become a drag.
#pragma once

#include <QApplication>
#include <QMouseEvent>
#include <optional>

namespace korvane {

class DragStart {
public:
    void pressed(const QMouseEvent &event)
    {
        place = event.button() == Qt::LeftButton ? std::optional(event.pos()) : std::nullopt;
    }
    // Whether the drag begins with this motion; true once for each press.
    bool begins(const QMouseEvent &event)
    {
        if (!place || !(event.buttons() & Qt::LeftButton)
            || (event.pos() - *place).manhattanLength() < QApplication::startDragDistance())
            return false;
        place.reset();
        return true;
    }

private:
    std::optional<QPoint> place;
};

}  // namespace korvane
