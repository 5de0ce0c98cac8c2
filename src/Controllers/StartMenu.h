// What the other controllers need from the start menu.
#pragma once

#include "Ports/Values/Geometry.h"

namespace korvane {

class StartMenu {
public:
    virtual ~StartMenu() = default;
    virtual bool isVisible() const = 0;
    // Opens above the start button, whose frame is given in desktop coordinates. Does nothing when it is already open.
    virtual void show(const platform::Rect &above) = 0;
    virtual void fadeOut() = 0;
    virtual bool containsMouse() const = 0;
    // The bar's own opacity, from 0 to 1.
    virtual void setTaskbarFadeProgress(double progress) = 0;
};

}  // namespace korvane
