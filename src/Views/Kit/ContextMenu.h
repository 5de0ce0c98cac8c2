// Makes menus of the toolkit from menus that are values.
#pragma once

#include "Models/Tasks/TaskMenus.h"

#include <QPoint>

class QMenu;
class QWidget;

namespace korvane {

// The menu belongs to the owner and is deleted when it closes. The chosen action runs at the next turn, when the menu
// is gone. Nothing happens if the owner is gone by then.
QMenu *makeContextMenu(const Menu &menu, QWidget &owner);
// Opens the menu upwards from a place of the desktop, as far as the room above allows.
void openUpwards(QMenu &menu, const QPoint &place);

}  // namespace korvane
