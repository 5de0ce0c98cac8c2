// The windows on the screen, front to back, from the mirror.
#pragma once

#include "Platform/X11/PropertyMirror.h"
#include "Ports/WindowList.h"

namespace korvane::platform {

class X11WindowList final : public WindowList {
public:
    explicit X11WindowList(x11::PropertyMirror &windows) : mirror(windows) {}

    // Minimised windows and windows on another desktop are left out.
    std::optional<std::vector<OnScreenWindow>> onScreen() override;

private:
    x11::PropertyMirror &mirror;
};

}  // namespace korvane::platform
