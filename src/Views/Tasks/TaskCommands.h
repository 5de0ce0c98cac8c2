// What the buttons of tasks and groups do: their clicks, their close glyphs and their menus. Everything here is given
// the task or group as the button held it, and goes on with that whatever becomes of the button meanwhile.
#pragma once

#include "Models/Tasks/TaskMenus.h"
#include "Views/Tasks/TaskButtonHost.h"

namespace korvane::TaskCommands {

// The click on a task's tab. The program's own task opens its settings.
void click(const TaskButtonHost &host, const RunningAppItem &item);
void close(const TaskButtonHost &host, const RunningAppItem &item);
void close(const TaskButtonHost &host, const RunningAppGroup &group);

Menu menu(const TaskButtonHost &host, const RunningAppItem &item);
Menu menu(const TaskButtonHost &host, const RunningAppGroup &group);
Menu headerMenu(const TaskButtonHost &host, const RunningAppGroup &group);
Menu rowMenu(const TaskButtonHost &host, const RunningAppItem &item);

// What a drag of a window out of its group's list carries.
std::string rowDragID(const RunningAppItem &item);

}  // namespace korvane::TaskCommands
