// Where the mouse is.
#pragma once

#include "Ports/Values/Geometry.h"

namespace korvane::platform {

class Pointer {
public:
    virtual ~Pointer() = default;
    // In desktop coordinates, whose origin is bottom left.
    virtual Point location() = 0;
    // Moves the pointer to a place in display coordinates, top left, without a mouse event.
    virtual void warp(Point display) = 0;
};

}  // namespace korvane::platform
