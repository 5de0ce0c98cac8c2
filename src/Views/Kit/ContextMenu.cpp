#include "Views/Kit/ContextMenu.h"

#include "Views/Kit/Metrics.h"
#include "Views/Kit/TitleText.h"

#include <QAction>
#include <QMenu>

namespace korvane {
namespace {

// Titles come from strangers too. Nothing in them may become a mnemonic or a shortcut, and a long title must not make
// the menu too wide.
QString menuText(const std::string &title, const QMenu &menu)
{
    return menu.fontMetrics()
        .elidedText(displayText(title), Qt::ElideRight, Metrics::widestMenuText)
        .replace(u'&', QStringLiteral("&&"));
}

void fill(QMenu &menu, const Menu &items, QWidget &owner)
{
    bool dividerDue = false;
    for (const MenuItem &item : items) {
        if (item.isDivider()) {
            dividerDue = !menu.isEmpty();
            continue;
        }
        if (std::exchange(dividerDue, false))
            menu.addSeparator();
        if (!item.submenu.empty()) {
            fill(*menu.addMenu(menuText(item.title, menu)), item.submenu, owner);
            continue;
        }
        QObject::connect(menu.addAction(menuText(item.title, menu)), &QAction::triggered, &owner,
                         [&owner, action = item.action] {
                             if (action)
                                 QMetaObject::invokeMethod(&owner, action, Qt::QueuedConnection);
                         });
    }
}

}  // namespace

QMenu *makeContextMenu(const Menu &menu, QWidget &owner)
{
    auto *made = new QMenu(&owner);
    made->setAttribute(Qt::WA_DeleteOnClose);
    fill(*made, menu, owner);
    return made;
}

void openUpwards(QMenu &menu, const QPoint &place)
{
    menu.popup(place - QPoint(0, menu.sizeHint().height()));
}

}  // namespace korvane
