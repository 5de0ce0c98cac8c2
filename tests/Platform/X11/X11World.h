// The desktop of the contracts on a real X server with a window manager.
#pragma once

#include "tests/Ports/DesktopWorld.h"

namespace korvane::platform {

std::unique_ptr<DesktopWorld> makeX11World();

}  // namespace korvane::platform
