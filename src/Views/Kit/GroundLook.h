// How the background of a row is drawn.
#pragma once

namespace korvane {

struct GroundLook {
    double opacity = 1;
    bool translucent = false;  // whether the desktop can shine through
    friend bool operator==(const GroundLook &, const GroundLook &) = default;
};

}  // namespace korvane
