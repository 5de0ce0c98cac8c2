// Menus of the toolkit made from menus that are values.
#pragma once

#include "Models/Tasks/TaskMenus.h"

#include <QPoint>

class QMenu;
class QWidget;

namespace korvane {

// Belongs to the owner and goes away when it closes. What is chosen happens at the next turn, when the menu is gone;
// nothing happens if the owner has gone by then.
QMenu *makeContextMenu(const Menu &menu, QWidget &owner);
// Opens the menu upwards from that place of the desktop, as far as there is room.
void openUpwards(QMenu &menu, const QPoint &place);

}  // namespace korvane
