#include "Views/TaskRow.h"

#include "Views/Metrics.h"
#include "Views/Painting.h"

#include <QPainter>

namespace korvane {

MainRowGround::MainRowGround(QWidget *parent) : QWidget(parent) {}

void MainRowGround::setLook(const GroundLook &newLook)
{
    if (look == newLook)
        return;
    look = newLook;
    update();
}

void MainRowGround::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintTaskbarBackground(painter, rect(), look.opacity, look.translucent);
}

OverflowRowCard::OverflowRowCard(QWidget *parent) : QWidget(parent) {}

void OverflowRowCard::setLook(const GroundLook &newLook, double newRowHeight)
{
    if (look == newLook && rowHeight == newRowHeight)
        return;
    look = newLook;
    rowHeight = newRowHeight;
    update();
}

void OverflowRowCard::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    paintCard(painter, QRectF(0, 0, width(), rowHeight), look.opacity, look.translucent);
    paintEndCap(painter, QRectF(width() - metrics::endCapWidth + 0.5, (rowHeight - metrics::endCapHeight) / 2 + 0.5,
                                metrics::endCapWidth - 1.0, metrics::endCapHeight - 1.0));
}

}  // namespace korvane
