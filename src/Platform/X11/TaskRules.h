// Which windows are tasks, and which task a dialog stands for. Rules over what is known of the windows, nothing else.
#pragma once

#include "Platform/X11/WindowRecord.h"

#include <functional>

namespace korvane::platform::x11 {

// Null for a window that is not listed.
using FindWindow = std::function<const WindowRecord *(WindowId)>;

// Docks, desktops, menus and the like, windows that ask to be left out, and modal dialogs of a task are none.
bool isTask(const WindowRecord &window, const FindWindow &find);

// The window itself when it is a task, else the task that it is transient for, near or far; null without one.
const WindowRecord *taskFor(WindowId window, const FindWindow &find);

}  // namespace korvane::platform::x11
