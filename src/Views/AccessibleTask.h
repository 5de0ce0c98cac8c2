// How a task's button stands in the accessibility tree: it can be pressed, and it can open its menu.
#pragma once

namespace korvane {

// Once for all task buttons; further calls do nothing.
void installTaskAccessibility();

}  // namespace korvane
