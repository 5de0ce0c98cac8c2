// What the buttons of tasks and groups do: their clicks, their close glyphs and their menus. Each function gets the
// task or group that the button held, and keeps using it even if the button changes or goes away.
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

// The drag id for a window that is dragged out of its group's list.
std::string rowDragID(const RunningAppItem &item);

}  // namespace korvane::TaskCommands
