// How the accessibility tree shows the bar and its tasks' buttons: a button can be pressed, and it can open its menu.
#pragma once

namespace korvane {

// Call this once for all bars; further calls do nothing.
void installTaskbarAccessibility();

}  // namespace korvane
