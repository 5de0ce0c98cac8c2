// How the bar and its tasks' buttons stand in the accessibility tree: a button can be pressed, and it can open its
// menu.
#pragma once

namespace korvane {

// Once for all bars; further calls do nothing.
void installTaskbarAccessibility();

}  // namespace korvane
