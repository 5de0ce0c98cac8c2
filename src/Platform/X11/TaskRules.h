// Which windows are tasks, and which task a dialog belongs to. These are pure rules over the known windows.
#pragma once

#include "Platform/X11/WindowRecord.h"

#include <functional>

namespace korvane::platform::x11 {

// Null for a window that is not listed.
using FindWindow = std::function<const WindowRecord *(WindowId)>;

// False for docks, desktops, menus and the like, for windows that ask to be left out, and for modal dialogs of a task.
bool isTask(const WindowRecord &window, const FindWindow &find);

// The window itself when it is a task. Otherwise the task that it is transient for, directly or through other windows;
// null without one.
const WindowRecord *taskFor(WindowId window, const FindWindow &find);

}  // namespace korvane::platform::x11
