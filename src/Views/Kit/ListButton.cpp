#include "Views/Kit/ListButton.h"

#include "Views/Kit/ContextMenu.h"
#include "Views/Kit/Metrics.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>

namespace korvane {

ListButton::ListButton(QWidget *parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
}

void ListButton::setHighlighted(bool highlighted)
{
    if (isHighlighted == highlighted)
        return;
    isHighlighted = highlighted;
    update();
}

void ListButton::openMenu(const QPoint &place)
{
    const Menu items = contextMenu();
    if (items.empty())
        return;
    QMenu *menu = makeContextMenu(items, *this);
    connect(menu, &QMenu::aboutToHide, this, &ListButton::menuClosed, Qt::QueuedConnection);
    menu->popup(place);
}

void ListButton::contextMenuEvent(QContextMenuEvent *event)
{
    openMenu(event->globalPos());
}

void ListButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Menu || (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier))
        openMenu(mapToGlobal(rect().center()));
    else
        QAbstractButton::keyPressEvent(event);
}

void ListButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isHighlighted || underMouse()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromRgbF(1, 1, 1, static_cast<float>(Metrics::rowFocusOpacity)));
        painter.drawRoundedRect(QRectF(rect()).adjusted(Metrics::listPadding, 0, -Metrics::listPadding, 0),
                                Metrics::buttonRadius, Metrics::buttonRadius);
    }
    painter.setPen(Qt::white);
    paintContent(painter);
}

}  // namespace korvane
