#include "Views/Kit/SymbolButton.h"

#include "Views/Kit/Painting.h"
#include "Views/Kit/SymbolPainting.h"
#include "Views/Kit/ToolTip.h"

#include <QEnterEvent>
#include <QPainter>
#include <cmath>

namespace korvane {

SymbolButton::SymbolButton(const QSize &size, QWidget *parent) : QAbstractButton(parent), fixedSize(size)
{
    setFocusPolicy(Qt::NoFocus);
    resize(size);
}

void SymbolButton::setLook(const Look &newLook)
{
    if (look == newLook)
        return;
    look = newLook;
    update();
}

void SymbolButton::setTip(const QString &tip)
{
    if (toolTip() == tip)
        return;
    setPlainToolTip(*this, tip);
    setAccessibleName(tip);
}

void SymbolButton::enterEvent(QEnterEvent *event)
{
    QAbstractButton::enterEvent(event);
    Q_EMIT hoverChanged(true);
}

void SymbolButton::leaveEvent(QEvent *event)
{
    QAbstractButton::leaveEvent(event);
    Q_EMIT hoverChanged(false);
}

void SymbolButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setOpacity(look.opacity);
    if (look.symbol.isEmpty()) {
        painter.setPen(Qt::white);
        painter.setFont(systemFont(std::lround(look.size)));
        painter.drawText(rect(), Qt::AlignCenter, look.text);
        return;
    }
    const QSizeF size(look.size, look.size * look.stretchY);
    paintSymbol(painter, look.symbol,
                QRectF(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size));
}

}  // namespace korvane
